#pragma once

#include <QCoreApplication>
#include <QDateTime>
#include <QPoint>
#include <QString>

#include <optional>

class HttpClient;

// The seams to the world outside, each a tiny interface with a real version here and a recording one in the
// tests' kit.

// Boxes that wait for an answer. They run a nested event loop.
class MessageBoxes
{
public:
    enum class Icon { None, Information, Question, Exclamation, Critical };
    // Enter answers with the first that is named, save that it never says yes to a warning.
    enum class Buttons { Ok, YesNo, YesNoCancel, NoYesCancel };
    enum class Answer { Ok, Yes, No, Cancel };

    virtual ~MessageBoxes() = default;
    virtual Answer show(const QString& title, const QString& text, Icon icon, Buttons buttons) = 0;
    // Null on cancel.
    virtual std::optional<QString> input(const QString& title, const QString& prompt,
                                         const QString& preset) = 0;

    void information(const QString& title, const QString& text)
    {
        show(title, text, Icon::Information, Buttons::Ok);
    }
    void exclamation(const QString& title, const QString& text)
    {
        show(title, text, Icon::Exclamation, Buttons::Ok);
    }
    void critical(const QString& title, const QString& text)
    {
        show(title, text, Icon::Critical, Buttons::Ok);
    }
};

// Dialogs that let the person choose a file. They run a nested event loop.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;
    // `filter` is a name with its patterns in brackets. Empty on cancel.
    virtual QString openFile(const QString& title, const QString& filter) = 0;

    // A wave file; empty on cancel.
    QString ChooseWaveFile()
    {
        return openFile(QCoreApplication::translate("FileDialogs", "Please Choose a WAV File"),
                        QCoreApplication::translate("FileDialogs", "Wave Files (*.wav)"));
    }
};

// A font as the settings store it.
struct FontChoice {
    QString name;
    double size = 0; // points
    bool bold = false;
    bool italic = false;
    bool operator==(const FontChoice&) const = default;
};

// Dialogs that let the person choose how things look. They run a nested event loop; null on cancel.
class LookDialogs
{
public:
    virtual ~LookDialogs() = default;
    // Colours are blue-green-red, 0xBBGGRR.
    virtual std::optional<int> colour(int current) = 0;
    virtual std::optional<FontChoice> font(const FontChoice& current) = 0;
};

// Opens links and pages by the desktop's handler.
class LinkOpener
{
public:
    virtual ~LinkOpener() = default;
    // Opens http, https, ftp, mailto, xmpp and callto links; refuses all others and returns false.
    virtual bool open(const QString& link) = 0;
};

// Plays one wave file in the background, replacing what plays; silent on failure.
class SoundPlayer
{
public:
    virtual ~SoundPlayer() = default;
    virtual void PlaySoundFile(const QString& file, bool looped) = 0;
};

// The icon in the notification area.
class TrayIcon
{
public:
    virtual ~TrayIcon() = default;
    virtual void setToolTip(const QString& text) = 0;
    // A key of the shared image list.
    virtual void setIcon(const QString& imageKey) = 0;
    virtual void setBalloonTime(int milliseconds) = 0;
    // 0 for none, 1 for information, 2 for a warning, 3 for an error.
    virtual void setBalloonIcon(int icon) = 0;
    virtual void setBalloonTitle(const QString& text) = 0;
    virtual void setBalloonText(const QString& text) = 0;
    // Balloons that come together show as the last of them.
    virtual void showBalloon() = 0;
    // Shows that so many conversations wait to be read.
    virtual void setUnread(int conversations) = 0;
    // Whether the person can reach the icon now. Without it a hidden window has no way back.
    virtual bool isReachable() const = 0;
};

class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

class Pointer
{
public:
    virtual ~Pointer() = default;
    virtual QPoint position() const = 0;
};

// Whether the machine is on line, the dial-up where it is not, and the address of its own.
class NetworkChecks
{
public:
    // `text` is dotted for IPv4, empty when there is none; `fault` then says why.
    struct OwnAddress {
        QString text;
        QString fault;
    };

    virtual ~NetworkChecks() = default;
    virtual bool isConnected() = 0;
    // False when there was nothing to dial or it failed.
    virtual bool dial(bool unattended) = 0;
    // The address by which others reach this machine: that of the way to other networks, or the first.
    virtual OwnAddress ownAddress() = 0;
};

// The world outside as the client reaches it. None is owned; all outlive the client.
struct Desktop {
    MessageBoxes* boxes = nullptr;
    LinkOpener* links = nullptr;
    SoundPlayer* sounds = nullptr;
    TrayIcon* tray = nullptr;
    Clock* clock = nullptr;
    Pointer* pointer = nullptr;
    NetworkChecks* network = nullptr;
    FileDialogs* files = nullptr;
    LookDialogs* looks = nullptr;
    HttpClient* http = nullptr;
};
