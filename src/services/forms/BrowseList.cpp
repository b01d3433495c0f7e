#include "services/forms/BrowseList.h"

#include "desktop/forms/ImageList.h"
#include "services/forms/ListParts.h"

#include <QKeyEvent>
#include <QSet>
#include <QTextDocument>

namespace
{

constexpr int serverPicture = 22;      // its place in the image list
constexpr qsizetype longestName = 200; // characters
constexpr int jidRole = Qt::UserRole;

} // namespace

BrowseList::BrowseList(QWidget* parent) : QListWidget(parent)
{
    setUniformItemSizes(true);
    setIconSize({16, 16});
    connect(this, &QListWidget::itemDoubleClicked, this, &BrowseList::opened);
}

void BrowseList::addRows(const QList<browseanswers::Row>& rows)
{
    const QIcon picture = ImageList::icon(ImageList::keyAt(serverPicture));
    QSet<std::pair<QString, QString>> known;
    for (int row = 0; row < count(); ++row)
        known.insert({item(row)->data(jidRole).toString(), item(row)->text()});
    for (const auto& row : rows) {
        const std::pair shown(row.jid, row.name.left(longestName));
        if (known.contains(shown))
            continue;
        known.insert(shown);
        auto* item = new QListWidgetItem(picture, shown.second, this);
        item->setData(jidRole, row.jid);
        item->setToolTip(Qt::convertFromPlainText(row.jid.left(longestName)));
    }
}

QString BrowseList::selectedJid() const
{
    const auto rows = selectedItems();
    return rows.isEmpty() ? QString() : rows.first()->data(jidRole).toString();
}

void BrowseList::setHint(const QString& text)
{
    hint_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void BrowseList::focusInEvent(QFocusEvent* event)
{
    QListWidget::focusInEvent(event);
    chooseByTab(*this, *event);
}

void BrowseList::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !selectedItems().isEmpty())
        emit opened();
    else if (event->key() == Qt::Key_Down && selectedItems().isEmpty() && count() > 0)
        setCurrentRow(0); // the toolkit's caret stands there unseen, and would step over it
    else
        QListWidget::keyPressEvent(event);
}

void BrowseList::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() == 0)
        paintHint(*this, hint_);
}
