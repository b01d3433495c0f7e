#pragma once

#include "realdesktop/XDisplay.h"
#include "sandbox/SandboxServer.h"
#include "support/TempProfile.h"

#include <QTest>

#include <optional>

// Waits for what a window manager and a client do together.
#define SOON(condition) QTest::qWaitFor([&] { return bool(condition); }, 30'000)

// A test on a real desktop: a home of its own, and a sandbox server where romeo has the contacts juliet and
// tybalt. What fails is photographed into the build folder.
class DesktopTest : public QObject
{
    Q_OBJECT

protected slots:
    void initTestCase();
    virtual void init();
    virtual void cleanup();

protected:
    using State = XDisplay::State;

    XDisplay::Window signIn() const { return x.window("Login"); }
    XDisplay::Window main() const { return x.window("BreloIM - romeo@127.0.0.1"); }
    XDisplay::Window chat() const { return x.window("Juliet - juliet@127.0.0.1"); }
    // The notice that the main window is in the tray.
    XDisplay::Window toldWhere() const { return x.window("BreloIM - Brelo Instant Messenger"); }
    bool isActive(XDisplay::Window window) const { return window && x.active() == window; }
    QRect framed(XDisplay::Window window) const { return x.place(window).marginsAdded(x.frame(window)); }

    QString address() const;
    // Opens juliet's conversation from the contact list.
    bool openChatByKeys();
    // Moves the frame where no window manager would put it, and tells where it is now.
    QRect putAside(XDisplay::Window window);
    void julietSays(const QString& body);

    XDisplay x;
    std::optional<TempProfile> profile;
    std::optional<sandbox::SandboxServer> server;
};
