#pragma once

#include <QStringList>

// The list of a contact's resources. One empty entry stands for "none known yet".
namespace resources
{

inline void AddResource(QStringList& list, const QString& resource)
{
    if (list.size() == 1 && list.first().isEmpty())
        list.clear();
    list.append(resource);
}

// Walks as many places as there were entries at the start, so that of two equal entries in a row one stays.
// Kept.
inline void RemoveResource(QStringList& list, const QString& resource)
{
    const auto count = list.size();
    for (qsizetype place = 0; place < count && place < list.size(); ++place) {
        if (list.at(place) == resource)
            list.removeAt(place);
    }
}

} // namespace resources
