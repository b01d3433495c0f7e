#pragma once

#include "desktop/Http.h"

#include <functional>
#include <map>
#include <memory>

// Requests whose answers change nothing. Only the end of the program waits for them, for a moment.
class Farewells
{
public:
    Farewells() = default;
    Q_DISABLE_COPY(Farewells)
    // Gives those that are still under way 2 s more, all together.
    ~Farewells();

    // `http` must outlive the object.
    void send(HttpClient& http, const HttpQuestion& question);

private:
    void drop(int number);

    std::map<int, std::unique_ptr<QObject>> calls_;
    int last_ = 0;
    std::function<void()> allGone_ = [] {};
};
