#pragma once

#include <QString>

// The folders of the contact tree that are there without a contact's word; key and text are equal.
namespace groups
{

inline QString gateways()
{
    return QStringLiteral("Gateways");
}
inline QString contacts()
{
    return QStringLiteral("Contacts");
}
inline QString waiting()
{
    return QStringLiteral("Waiting authorization");
}
inline QString hidden()
{
    return QStringLiteral("Hidden");
}

// The mark of a fixed group, and that of a group which the person made and which holds nobody yet.
inline QString tag()
{
    return QStringLiteral("IsGroup");
}
inline QString newTag()
{
    return QStringLiteral("NewGroup");
}

} // namespace groups
