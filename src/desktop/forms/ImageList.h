#pragma once

#include <QIcon>
#include <QString>

// The pictures of the program, one list for all windows. Each is drawn from its SVG at first use and then
// kept as pixmaps of the sizes in use, so that a repaint only copies pixels. GUI thread only.
class ImageList
{
public:
    // The picture of `key`, which is case-sensitive ("Online" and "online" differ). A null icon for an
    // unknown key.
    static QIcon icon(const QString& key);
    // The key at `position`, counted from 1; empty outside the list. The order is a contract.
    static QString keyAt(int position);
    static int count();
};
