#include "mailwatch/Farewells.h"

#include <QEventLoop>
#include <QTimer>

Farewells::~Farewells()
{
    if (calls_.empty())
        return;
    constexpr int mostMs = 2'000;
    QEventLoop loop;
    allGone_ = [&loop] { loop.quit(); };
    QTimer::singleShot(mostMs, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void Farewells::send(HttpClient& http, const HttpQuestion& question)
{
    const int number = ++last_;
    calls_[number] = http.ask(question, [this, number](const HttpAnswer&) { drop(number); });
}

void Farewells::drop(int number)
{
    calls_.erase(number);
    if (calls_.empty())
        allGone_();
}
