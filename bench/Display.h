#pragma once

#include "Child.h"

#include <functional>
#include <memory>

struct xcb_connection_t;

// An X server of its own without a screen to look at, and the moment at which windows appear on it.
class Display
{
public:
    Display();
    ~Display();

    QString name() const { return name_; }
    // Returns as soon as a window whose title begins with `title` is mapped. Forget what was mapped before by
    // `clear`. Throws std::runtime_error after a minute.
    void awaitWindow(const QByteArray& title);
    void clear() { mapped_.clear(); }

private:
    void readEvents(int waitMs);
    bool hasTitle(quint32 window, const QByteArray& title) const;

    std::unique_ptr<Child> server_;
    QString name_;
    xcb_connection_t* connection_ = nullptr;
    QList<quint32> mapped_;
};
