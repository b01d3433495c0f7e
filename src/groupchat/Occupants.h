#pragma once

#include "contacts/KeyedList.h"

#include <QAbstractListModel>
#include <QString>

// Who is in a room.
struct Occupant {
    QString Key;   // the address in the room
    QString Text;  // the nick
    QString Image; // a key of the shared image list
};

// The occupants of one room, in the order in which they came, for a view to show. Positions count from 1, 0
// stands for none.
class Occupants : public QAbstractListModel, private KeyedList<Occupant>
{
    Q_OBJECT

public:
    enum Role { ImageRole = Qt::UserRole, KeyRole };

    using KeyedList::Count;
    int NodeIndexByKey(const QString& key) const { return find(key); }
    // Empty for a stranger.
    QString NodeTextByKey(const QString& key) const;
    // Null out of range.
    const Occupant* node(int position) const { return Item(position); }

    // Nobody stands in the list twice: somebody who is in it is given the name.
    void add(const QString& key, const QString& name);
    void setText(int position, const QString& nick);
    void setImage(int position, const QString& imageKey);
    void removeNode(int position);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : Count(); }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void tellChange(int position, int role);
};
