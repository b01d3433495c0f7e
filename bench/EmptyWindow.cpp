#include <QApplication>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTimer>
#include <QTreeView>

#include <cstdio>
#include <ctime>
#include <functional>

// The yardstick: a main window with an empty tree of one column, its header shown.
//   breloim-bench-empty                 shows it
//   breloim-bench-empty ROWS GROUPS     with so many rows in so many open folders
//   breloim-bench-empty ROWS GROUPS x   fills it only once it is shown, changes and adds rows, prints what a
//   row
//                                       costs in each step (a name and a number a line, in ms), and ends

namespace
{

constexpr int addedRows = 5000;

double cpuMs()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

void fill(QStandardItemModel& model, int rows, int groups)
{
    for (int i = 0; i < rows; ++i) {
        if (i < groups)
            model.appendRow(new QStandardItem(QStringLiteral("Group %1").arg(i + 1)));
        model.item(i % groups)->appendRow(new QStandardItem(QStringLiteral("Contact %1").arg(i + 1)));
    }
}

// Every row gets another text, a tick of the event loop for every hundred.
void change(QStandardItemModel& model, int rows, int groups)
{
    for (int i = 0; i < rows; ++i) {
        model.item(i % groups)->child(i / groups)->setText(QStringLiteral("Changed %1").arg(i + 1));
        if (i % 100 == 99)
            QApplication::processEvents();
    }
}

void measure(const char* name, const std::function<void()>& work)
{
    QElapsedTimer clock;
    clock.start();
    const double cpu = cpuMs();
    work();
    QApplication::processEvents();
    std::printf("%s_wall %.3f\n%s_cpu %.3f\n", name, double(clock.nsecsElapsed()) / 1e6, name, cpuMs() - cpu);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    const int rows = arguments.value(1).toInt();
    const int groups = qMax(1, arguments.value(2).toInt());
    const bool later = arguments.size() > 3;
    QMainWindow window;
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({QStringLiteral("Contacts")});
    auto* tree = new QTreeView;
    tree->setUniformRowHeights(true);
    if (!later)
        fill(model, rows, groups);
    tree->setModel(&model);
    tree->expandAll();
    window.setCentralWidget(tree);
    window.setWindowTitle(QStringLiteral("Empty window"));
    window.show();
    if (!later)
        return QApplication::exec();
    QTimer::singleShot(500, &window, [&] {
        measure("signin", [&] {
            fill(model, rows, groups);
            tree->expandAll();
        });
        measure("presences", [&] { change(model, rows, groups); });
        measure("messages", [&] { fill(model, addedRows, groups); });
        QApplication::quit();
    });
    return QApplication::exec();
}
