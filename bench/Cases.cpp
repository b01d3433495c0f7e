#include "Cases.h"

#include "Profile.h"
#include "Sandbox.h"

#include <QCoreApplication>

#include <algorithm>
#include <stdexcept>

namespace
{

constexpr int startRuns = 15;
constexpr int restRuns = 3;
constexpr int groups = 50;
const QString ms = QStringLiteral("ms");
const QString mib = QStringLiteral("MiB");

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

template <typename T, typename Member>
double medianOf(const QList<T>& runs, Member member)
{
    QList<double> values;
    for (const auto& run : runs)
        values += double(std::invoke(member, run));
    return median(values);
}

} // namespace

QString Cases::program(const char* name)
{
    return QCoreApplication::applicationDirPath() + u'/' + QLatin1String(name);
}

void Cases::start()
{
    const Profile profile(QStringLiteral("localhost"), false);
    const auto environment = profile.environment(display_.name());
    const auto measure = [&](const char* name, const char* title, QList<double>& wall, QList<double>& cpu) {
        display_.clear();
        const Child child(program(name), {}, environment);
        display_.awaitWindow(title);
        wall += child.wallMs();
        cpu += child.cpuMs();
    };
    QList<double> wall, cpu, emptyWall, emptyCpu;
    for (int run = 0; run < startRuns; ++run) {
        measure("breloim-bench-empty", "Empty", emptyWall, emptyCpu);
        measure("breloim", "", wall, cpu);
    }
    table_.add(
        {QStringLiteral("start to window mapped, wall"), ms, median(wall), median(emptyWall), {}, 1.3});
    table_.add({QStringLiteral("start to window mapped, CPU"), ms, median(cpu), median(emptyCpu), {}, 1.3});
}

void Cases::signedIn(int contacts)
{
    QList<Rest> client, empty;
    for (int run = 0; run < restRuns; ++run) {
        empty += emptyAtRest(contacts);
        client += clientAtRest(contacts);
    }
    const auto ownMiB = [](const Rest& rest) { return double(rest.memory.ownKiB) / 1024; };
    const auto residentMiB = [](const Rest& rest) { return double(rest.memory.residentKiB) / 1024; };
    const auto row = [&](const char* what, const QString& unit, auto member, std::optional<double> most) {
        table_.add({QStringLiteral("%L1 contacts: %2").arg(contacts).arg(QLatin1String(what)),
                    unit,
                    medianOf(client, member),
                    medianOf(empty, member),
                    most,
                    {}});
    };
    using Most = std::optional<double>;
    row("start to main window, wall", ms, &Rest::wallMs, {});
    row("start to idle, CPU", ms, &Rest::cpuMs, contacts == 10'000 ? Most(600) : Most());
    row("private memory at idle", mib, ownMiB, contacts == 0 ? Most(30) : Most());
    row("resident memory at idle", mib, residentMiB, contacts == 10'000 ? Most(60) : Most());
}

Cases::Rest Cases::clientAtRest(int contacts)
{
    const Sandbox sandbox(contacts, groups);
    const Profile profile(sandbox.address(), true);
    display_.clear();
    const Child child(program("breloim"), {}, profile.environment(display_.name()));
    display_.awaitWindow("BreloIM - bench");
    const double wall = child.wallMs();
    const double cpu = child.cpuMsAtIdle();
    return {wall, cpu, child.memory()};
}

Cases::Rest Cases::emptyAtRest(int rows)
{
    const Profile profile(QStringLiteral("localhost"), false);
    display_.clear();
    const Child child(program("breloim-bench-empty"), {QString::number(rows), QString::number(groups)},
                      profile.environment(display_.name()));
    display_.awaitWindow("Empty");
    const double wall = child.wallMs();
    const double cpu = child.cpuMsAtIdle();
    return {wall, cpu, child.memory()};
}

Cases::Figures Cases::inside(int contacts)
{
    const Sandbox sandbox(contacts, groups);
    const Profile profile(sandbox.address(), false);
    return figuresOf("breloim-bench-inside", {QString::number(contacts)}, profile);
}

Cases::Figures Cases::emptyFilled(int rows)
{
    const Profile profile(QStringLiteral("localhost"), false);
    return figuresOf("breloim-bench-empty",
                     {QString::number(rows), QString::number(groups), QStringLiteral("x")}, profile);
}

Cases::Figures Cases::figuresOf(const char* name, const QStringList& arguments, const Profile& profile)
{
    Child child(program(name), arguments, profile.environment(display_.name()));
    if (!child.process().waitForFinished(300'000) || child.process().exitCode() != 0)
        throw std::runtime_error(std::string(name) + " fails");
    Figures figures;
    const auto lines = child.process().readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines) {
        const auto words = line.split(' ');
        figures.insert(words.at(0), words.value(1).toDouble());
    }
    return figures;
}

void Cases::driven()
{
    const Pair few{inside(1'000), emptyFilled(1'000)};
    const Pair many{inside(10'000), emptyFilled(10'000)};
    addSignIn(few, 1'000, 120);
    addSignIn(many, 10'000, 300);
    table_.add({QStringLiteral("sign-in: CPU of 10,000 contacts over 1,000"),
                QStringLiteral("x"),
                many.client.value("signin_rest") / few.client.value("signin_rest"),
                many.empty.value("signin_cpu") / few.empty.value("signin_cpu"),
                10.0,
                {}});
    addFlood(many, "presences", QStringLiteral("10,000 presences (empty: texts set)"), 10'000, 40);
    addFlood(many, "messages", QStringLiteral("5,000 messages, 10 windows (empty: rows)"), 5'000, 130);
    addFlood(many, "pushes", QStringLiteral("1,000 roster pushes on 10,000 contacts"), 1'000, {});
    addLatency(few);
    addHostile(many);
}

void Cases::addHostile(const Pair& figures)
{
    static constexpr std::pair<const char*, const char*> steps[] = {
        {"brackets", "a link with 200,000 brackets"},
        {"emoji", "160 KB of joined emoji"},
        {"lines", "2,000,000 lines in one message"},
        {"combining", "names and texts of combining marks"},
        {"links", "100,000 characters of links"},
        {"queries", "100,000 queries in one request"},
        {"requests", "1,000 requests, 100 of one person"},
        {"resources", "100,000 resources of one contact"},
        {"strangers", "messages of 1,000 strangers"},
        {"log", "a log of 100 MiB is opened"},
        {"join", "a room of 2,000 is joined"},
        {"talk", "5,000 lines are said in a room"},
        {"search", "5,000 people are found"},
    };
    for (const auto& [step, what] : steps) {
        const QString name = QString::fromLatin1(what);
        table_.add({name + QStringLiteral(", CPU"),
                    ms,
                    figures.client.value(step + QByteArray("_rest")),
                    {},
                    {},
                    {}});
        table_.add({name + QStringLiteral(", loop away"),
                    ms,
                    figures.client.value(step + QByteArray("_away")),
                    {},
                    100.0,
                    {}});
    }
}

void Cases::addSignIn(const Pair& figures, int contacts, double mostMs)
{
    const QString what = QStringLiteral("%L1 contacts: sign-in to full tree, ").arg(contacts);
    const auto row = [&](const QString& clock, const char* key, std::optional<double> most) {
        table_.add({what + clock, ms, figures.client.value(key), figures.empty.value(key), most, {}});
    };
    row(QStringLiteral("wall"), "signin_wall", mostMs);
    row(QStringLiteral("CPU"), "signin_cpu", {});
    table_.add({what + QStringLiteral("loop away"), ms, figures.client.value("signin_away"), {}, 100.0, {}});
}

void Cases::addWall(const Pair& figures, const QByteArray& step, const QString& what)
{
    const double cpu = figures.client.value(step + "_cpu");
    table_.add(
        {what + QStringLiteral(", wall"), ms, figures.client.value(step + "_wall"), {}, 2 * cpu + 50, {}});
    table_.add({what + QStringLiteral(", CPU"), ms, cpu, {}, {}, {}});
}

void Cases::addLatency(const Pair& figures)
{
    table_.add({QStringLiteral("a message there and back at rest, median"),
                ms,
                figures.client.value("latency_median"),
                {},
                5.0,
                {}});
    table_.add({QStringLiteral("a message there and back at rest, slowest of 100"),
                ms,
                figures.client.value("latency_slowest"),
                {},
                {},
                {}});
}

void Cases::addFlood(const Pair& figures, const QByteArray& step, const QString& what, int count,
                     std::optional<double> mostUs)
{
    std::optional<double> empty;
    if (figures.empty.contains(step + "_cpu"))
        empty = figures.empty.value(step + "_cpu") * 1000 / count;
    addWall(figures, step, what);
    table_.add({what + QStringLiteral(", CPU each"),
                QStringLiteral("us"),
                figures.client.value(step + "_rest") * 1000 / count,
                empty,
                mostUs,
                {}});
    table_.add(
        {what + QStringLiteral(", loop away"), ms, figures.client.value(step + "_away"), {}, 100.0, {}});
    table_.add({what + QStringLiteral(", loop away, CPU"),
                ms,
                figures.client.value(step + "_away_cpu"),
                {},
                {},
                {}});
}
