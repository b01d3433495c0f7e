#include <QApplication>
#include <QMainWindow>
#include <QStandardItemModel>
#include <QTreeView>

// The yardstick: a main window with an empty tree. With two numbers, ROWS and GROUPS, the tree holds so many
// rows in so many open folders.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    auto* tree = new QTreeView;
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({QStringLiteral("Contacts")});
    const auto arguments = QApplication::arguments();
    const int rows = arguments.value(1).toInt();
    const int groups = qMax(1, arguments.value(2).toInt());
    for (int i = 0; i < rows; ++i) {
        if (i < groups)
            model.appendRow(new QStandardItem(QStringLiteral("Group %1").arg(i + 1)));
        model.item(i % groups)->appendRow(new QStandardItem(QStringLiteral("Contact %1").arg(i + 1)));
    }
    tree->setUniformRowHeights(true);
    tree->setModel(&model);
    tree->expandAll();
    window.setCentralWidget(tree);
    window.setWindowTitle(QStringLiteral("Empty window"));
    window.show();
    return QApplication::exec();
}
