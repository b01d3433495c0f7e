#include "contacts/forms/RosterDelegate.h"

#include "contacts/ContactTree.h"
#include "desktop/forms/ImageList.h"
#include "desktop/forms/StoredColour.h"

#include <QPalette>

namespace
{

// `wanted` moved away from `ground` until it can be read on it; a chosen colour must not vanish in a dark
// theme.
QColor readable(QColor wanted, const QColor& ground)
{
    constexpr int leastDistance = 70;
    const bool dark = qGray(ground.rgb()) < 128;
    for (int step = 0; step < 8 && qAbs(qGray(wanted.rgb()) - qGray(ground.rgb())) < leastDistance; ++step)
        wanted = dark ? wanted.lighter(130) : wanted.darker(130);
    return wanted;
}

// The layout takes all of a text before it cuts it to the row, and anew with every repaint.
constexpr qsizetype longestText = 200;

} // namespace

void RosterDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text.truncate(longestText);
    const TreeNode& node = *ContactTree::node(index);
    const bool open = option->state & QStyle::State_Open;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = ImageList::icon(open && !node.expandedImage.isEmpty() ? node.expandedImage : node.image);
    option->font.setBold(node.bold);
    if (node.colour != 0)
        option->palette.setColor(QPalette::Text, readable(storedcolour::toColour(node.colour),
                                                          option->palette.color(QPalette::Base)));
}
