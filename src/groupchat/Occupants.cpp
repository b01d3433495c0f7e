#include "groupchat/Occupants.h"

#include "groupchat/RoomStatus.h"
#include "messaging/LongLines.h"

#include <algorithm>

namespace
{

constexpr qsizetype longestTip = 200; // characters of a nick

// A nick with a line break could pass for another line of the history and of the log.
QString onOneLine(QString nick)
{
    std::replace_if(nick.begin(), nick.end(), longlines::breaksLine, QChar(u' '));
    return nick;
}

} // namespace

QString Occupants::NodeTextByKey(const QString& key) const
{
    const auto* occupant = record(key);
    return occupant ? occupant->Text : QString();
}

void Occupants::add(const QString& key, const QString& name)
{
    if (const int position = find(key))
        return setText(position, name);
    beginInsertRows({}, Count(), Count());
    append(key, {key, onOneLine(name), QLatin1String(roomstatus::ofShow({})->imageKey)});
    endInsertRows();
}

void Occupants::setText(int position, const QString& nick)
{
    auto* occupant = Item(position);
    const QString name = onOneLine(nick);
    if (!occupant || occupant->Text == name)
        return;
    occupant->Text = name;
    tellChange(position, Qt::DisplayRole);
}

void Occupants::setImage(int position, const QString& imageKey)
{
    auto* occupant = Item(position);
    if (!occupant || occupant->Image == imageKey)
        return;
    occupant->Image = imageKey;
    tellChange(position, ImageRole);
}

void Occupants::removeNode(int position)
{
    if (!Item(position))
        return;
    beginRemoveRows({}, position - 1, position - 1);
    Remove(position);
    endRemoveRows();
}

void Occupants::tellChange(int position, int role)
{
    const auto changed = index(position - 1);
    emit dataChanged(changed, changed, {role});
}

// A reader of the screen hears the status in words.
QVariant Occupants::data(const QModelIndex& index, int role) const
{
    const auto* occupant = Item(index.row() + 1);
    if (!occupant)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return occupant->Text;
    case ImageRole:
        return occupant->Image;
    case KeyRole:
        return occupant->Key;
    case Qt::AccessibleDescriptionRole:
        return roomstatus::inWords(occupant->Image);
    case Qt::ToolTipRole:
        return occupant->Text.left(longestTip).toHtmlEscaped() + QStringLiteral("<br>") +
               roomstatus::inWords(occupant->Image).toHtmlEscaped();
    default:
        return {};
    }
}
