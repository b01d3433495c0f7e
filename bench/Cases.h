#pragma once

#include "Display.h"
#include "Table.h"

#include <QHash>

class Profile;

// What is measured. Each adds its rows to the table.
class Cases
{
public:
    explicit Cases(Table& table) : table_(table) {}

    // From the process' start until its first window is mapped.
    void start();
    // A signed-in client at rest, with so many contacts in 50 groups.
    void signedIn(int contacts);
    // The client driven from within: signing in with 1,000 and 10,000 contacts, floods and pushes.
    void driven();

private:
    struct Rest {
        double wallMs = 0; // to the main window
        double cpuMs = 0;
        Memory memory;
    };
    using Figures = QHash<QByteArray, double>;

    Rest clientAtRest(int contacts);
    Rest emptyAtRest(int rows);
    struct Pair {
        Figures client;
        Figures empty;
    };

    Figures inside(int contacts);
    // The empty window that fills, changes and adds rows.
    Figures emptyFilled(int rows);
    Figures figuresOf(const char* name, const QStringList& arguments, const Profile& profile);
    void addSignIn(const Pair& figures, int contacts, double mostMs);
    void addHostile(const Pair& figures);
    void addLatency(const Pair& figures);
    // Nothing may take longer than twice its work, and what a turn of the event loop costs.
    void addWall(const Pair& figures, const QByteArray& step, const QString& what);
    void addFlood(const Pair& figures, const QByteArray& step, const QString& what, int count,
                  std::optional<double> mostUs);
    static QString program(const char* name);

    Table& table_;
    Display display_;
};
