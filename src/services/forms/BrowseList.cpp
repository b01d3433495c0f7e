#include "services/forms/BrowseList.h"

#include "desktop/forms/ImageList.h"

#include <QKeyEvent>
#include <QPainter>
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
    for (const auto& row : rows) {
        auto* item = new QListWidgetItem(picture, row.name.left(longestName), this);
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
    if (count() > 0 || hint_.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, hint_);
}
