#pragma once

#include <QString>

// The settings in memory: read once at start, worked on by everybody, written once at exit. Each member is
// named as its key. The initial values are those that a missing key reads as.
struct Settings {
    bool CheckHotmail = false;
    bool CheckYahooMail = false;
    bool CheckError = false;
    bool CheckGateways = false;
    bool StartInSystemTray = false;
    bool SoundOnNewMessage = false;
    QString SoundOnNewMessageFile = QStringLiteral("\\Sounds\\message1.wav");
    bool SoundOnOnLine = false;
    QString SoundOnOnLineFile = QStringLiteral("\\Sounds\\online.wav");
    bool SoundOnOffLine = false;
    QString SoundOnOffLineFile;
    bool CurrentWindowOnTop = true;
    bool NewWindowOnTop = false;
    bool AutoLogon = false;
    QString Server; // host or host:port; the default server when the key is missing
    QString UserName;
    QString Resource = QStringLiteral("BreloIM"); // shared by the keys Resource and Session
    QString Priority = QStringLiteral("1");
    bool SavePassword = false;
    QString Password;
    bool SSL = false;
    bool BeginAtStartup = true;
    bool AutoReconnect = true;
    bool OnTop = false;
    QString StatusAv;
    QString StatusAway = QStringLiteral("Al momento non al computer");
    QString StatusXAway = QStringLiteral("Non al computer per un po'");
    QString StatusDND = QStringLiteral("I'm busy, go away.");
    bool AutoAwayTimer = false;
    int AutoAwayTimerMins = 5;
    QString AutoAwayTimerMsg = QStringLiteral("Al momento non al computer");
    bool AutoXAwayTimer = false;
    int AutoXAwayTimerMins = 8;
    QString AutoXAwayTimerMsg = QStringLiteral("Al momento non al computer");
    bool AuthAskForAll = true;
    bool AuthForAll = false;
    bool AuthDenyAll = false;
    bool AcceptMessageFromAll = true;
    bool DoNotReceiveMessFromUnAuth = false;
    bool AutoReplayToUnAuth = false;
    QString AutoReplayMess;
    int BalloonTime = 10000; // milliseconds
    bool BalloonEnable = true;
    int ColorOnline = 0xBA7E55; // blue-green-red
    int ColorOffline = 0;       // blue-green-red
    bool CharOnLineBold = true;
    double CharOnLineSize = 8.25; // points
    bool CharOnLineItalic = false;
    QString CharOnLineName = QStringLiteral("Verdana");
    bool CharOnffLineBold = false; // the key is spelt so; it is never written
    double CharOffLineSize = 8.25;
    QString CharOffLineName = QStringLiteral("Verdana");
    bool ShowOnlineUsers = false;
    bool AddSponsors = true;
    bool SponsorAdded = false;
    bool DialUp = false;
    bool ForceDialUp = true;
    bool NoBanList = true;
    bool UserMode = false; // the server offers jabber:iq:admin
};
