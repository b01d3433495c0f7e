#include "services/forms/ResultGrid.h"

#include "messaging/WindowTag.h"
#include "services/forms/ListParts.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace
{

constexpr int leastAddress = 2000 / windowtag::twipsPerPixel; // logical pixels
constexpr int mostWidth = 300;
constexpr int rowsMeasured = 200;

// A value as it stands between tabs.
QString cell(const QModelIndex& index)
{
    return index.data(ResultModel::ValueRole).toString().simplified();
}

} // namespace

ResultGrid::ResultGrid(QWidget* parent) : QTableView(parent), action_(tr("&Add"))
{
    sorted_.setSourceModel(&results_);
    sorted_.setSortRole(ResultModel::SortRole);
    sorted_.setSortLocaleAware(true);
    setModel(&sorted_);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setTabKeyNavigation(false); // Tab leaves the grid
    setAlternatingRowColors(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    auto* header = horizontalHeader();
    header->setHighlightSections(false);
    header->setResizeContentsPrecision(rowsMeasured);
    header->setStretchLastSection(true);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    connect(this, &QTableView::doubleClicked, this, &ResultGrid::addRequested);
}

void ResultGrid::showResults(searchanswers::Results results, const QString& hint)
{
    hint_ = hint;
    setAccessibleDescription(results.rows.isEmpty() ? hint : QString());
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    results_.setResults(std::move(results));
    fitColumns();
    emit chosen({});
}

void ResultGrid::fitColumns()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    resizeColumnsToContents();
    for (int column = 0; column < sorted_.columnCount(); ++column)
        setColumnWidth(column, std::clamp(columnWidth(column), column == 0 ? leastAddress : 0, mostWidth));
}

QString ResultGrid::selectedJid() const
{
    const auto rows = selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.first().data(ResultModel::ValueRole).toString() : QString();
}

QString ResultGrid::selectedText() const
{
    auto rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const auto& row : std::as_const(rows)) {
        QStringList cells;
        for (int column = 0; column < sorted_.columnCount(); ++column)
            cells += cell(row.siblingAtColumn(column));
        lines += cells.join(u'\t');
    }
    return lines.join(u'\n');
}

void ResultGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    emit chosen(selectedJid());
}

void ResultGrid::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    chooseByTab(*this, *event);
}

void ResultGrid::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter) {
        if (!selectedJid().isEmpty())
            emit addRequested();
    } else if (event->matches(QKeySequence::Copy)) {
        QGuiApplication::clipboard()->setText(selectedText());
    } else {
        QTableView::keyPressEvent(event);
    }
}

void ResultGrid::contextMenuEvent(QContextMenuEvent* event)
{
    if (!selectionModel()->hasSelection())
        return;
    const QString jid = selectedJid();
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnuResults"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto* clipboard = QGuiApplication::clipboard();
    menu->addAction(action_, this, &ResultGrid::addRequested)->setEnabled(!jid.isEmpty());
    menu->addAction(tr("Send &Message"), this, [this, jid] { emit messageRequested(jid); })
        ->setEnabled(!jid.isEmpty());
    menu->addSeparator();
    menu->addAction(tr("&Copy"), this, [this, clipboard] { clipboard->setText(selectedText()); });
    menu->addAction(tr("Copy A&ddress"), this, [jid, clipboard] { clipboard->setText(jid); })
        ->setEnabled(!jid.isEmpty());
    menu->addSeparator();
    menu->addAction(tr("&Sort by This Column"), this,
                    [this] { sortByColumn(currentIndex().column(), Qt::AscendingOrder); });
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    menu->popup(byKey ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                      : event->globalPos());
}

void ResultGrid::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    if (results_.rowCount() == 0)
        paintHint(*this, hint_);
}
