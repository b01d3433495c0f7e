#include "sandbox/SandboxServer.h"
#include "sandbox/demo/Bench.h"
#include "sandbox/demo/Cast.h"
#include "sandbox/demo/Life.h"
#include "sandbox/demo/TerminationSignal.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>
#include <optional>

namespace
{

struct Options {
    quint16 port = 0;
    std::optional<int> contacts; // of the account for measurements
    int groups = 10;
    bool printPort = false;
};

// The option's number, or nothing after a line on standard error.
std::optional<int> number(const QCommandLineParser& parser, const QString& option, int most)
{
    bool isNumber = false;
    const int value = parser.value(option).toInt(&isNumber);
    if (isNumber && value >= 0 && value <= most)
        return value;
    std::fprintf(stderr, "--%s needs a number from 0 to %d\n", qPrintable(option), most);
    return std::nullopt;
}

std::optional<Options> parsed(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A Jabber server on loopback with a small living world."));
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("port"), QStringLiteral("Listen on 127.0.0.1:<port>; 0 takes a free one."),
          QStringLiteral("port"), QStringLiteral("0")},
         {QStringLiteral("contacts"),
          QStringLiteral("Give the account bench/bench <n> contacts, and let nothing happen by itself."),
          QStringLiteral("n"), QStringLiteral("0")},
         {QStringLiteral("groups"), QStringLiteral("Spread these contacts over <n> groups."),
          QStringLiteral("n"), QStringLiteral("10")},
         {QStringLiteral("print-port"), QStringLiteral("Print the port alone on a line first.")}});
    parser.process(application);
    const auto port = number(parser, QStringLiteral("port"), 65535);
    const auto contacts = number(parser, QStringLiteral("contacts"), 1'000'000);
    const auto groups = number(parser, QStringLiteral("groups"), 1'000'000);
    if (!port || !contacts || !groups)
        return std::nullopt;
    Options options{quint16(*port), {}, *groups, parser.isSet(QStringLiteral("print-port"))};
    if (parser.isSet(QStringLiteral("contacts")))
        options.contacts = *contacts;
    return options;
}

void announce(quint16 port, bool alone)
{
    if (alone)
        std::printf("%d\n", port);
    std::printf("listening on 127.0.0.1:%d\n", port);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto options = parsed(application);
    if (!options)
        return 2;

    sandbox::SandboxServer server;
    server.keepRecord(false);
    sandbox::demo::populate(server.world());
    std::optional<sandbox::demo::Life> life;
    if (options->contacts)
        sandbox::bench::populate(server.world(), *options->contacts, options->groups);
    else
        life.emplace(server);

    sandbox::demo::TerminationSignal termination;
    QObject::connect(&termination, &sandbox::demo::TerminationSignal::received, &application,
                     &QCoreApplication::quit);
    if (!server.listen(options->port)) {
        std::fprintf(stderr, "can't listen on port %d: %s\n", options->port,
                     qPrintable(server.errorString()));
        return 1;
    }
    announce(server.port(), options->printPort);
    return QCoreApplication::exec();
}
