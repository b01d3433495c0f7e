#pragma once

#include "desktop/Desktop.h"
#include "session/LateNetwork.h"

#include <QList>
#include <QStringList>

#include <functional>

// The world outside, written down. An unexpected box fails the test that shows it.
class RecordingBoxes : public MessageBoxes
{
public:
    struct Box {
        QString title;
        QString text;
        Icon icon;
        Buttons buttons;
        bool operator==(const Box&) const = default;
    };

    // Answers are used in order; without one, Ok or Cancel is given.
    QList<Answer> answers;
    QList<std::optional<QString>> inputs;
    QList<Box> shown;
    // Runs once, while the next box stands.
    std::function<void()> meanwhile;

    Answer show(const QString& title, const QString& text, Icon icon, Buttons buttons) override
    {
        stand({title, text, icon, buttons});
        if (!answers.isEmpty())
            return answers.takeFirst();
        return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
    std::optional<QString> input(const QString& title, const QString& prompt, const QString&) override
    {
        stand({title, prompt, Icon::None, Buttons::Ok});
        return inputs.isEmpty() ? std::nullopt : inputs.takeFirst();
    }

private:
    void stand(const Box& box)
    {
        shown += box;
        if (meanwhile)
            std::exchange(meanwhile, {})();
    }
};

struct RecordingLinks : LinkOpener {
    QStringList opened;
    bool works = true;
    bool open(const QString& link) override
    {
        if (works)
            opened += link;
        return works;
    }
};

struct RecordingSounds : SoundPlayer {
    QStringList played;
    void PlaySoundFile(const QString& file, bool) override { played += file; }
};

struct RecordingTray : TrayIcon {
    QString toolTip;
    QString icon;
    int balloonTime = 0;
    int balloonIcon = 0;
    QString title;
    QString text;
    int unread = 0;
    QStringList balloons; // "title|text" of each shown one
    bool reachable = true;
    void setToolTip(const QString& value) override { toolTip = value; }
    void setIcon(const QString& imageKey) override { icon = imageKey; }
    void setBalloonTime(int milliseconds) override { balloonTime = milliseconds; }
    void setBalloonIcon(int value) override { balloonIcon = value; }
    void setBalloonTitle(const QString& value) override { title = value; }
    void setBalloonText(const QString& value) override { text = value; }
    void showBalloon() override { balloons += title + u'|' + text; }
    void setUnread(int conversations) override { unread = conversations; }
    bool isReachable() const override { return reachable; }
};

struct HandClock : Clock {
    QDateTime time = QDateTime(QDate(2004, 5, 6), QTime(7, 8, 9));
    QDateTime now() const override { return time; }
};

struct HandPointer : Pointer {
    QPoint at;
    QPoint position() const override { return at; }
};

struct RecordingNetwork : NetworkChecks {
    bool online = true;
    QList<bool> dials;
    OwnAddress own{QStringLiteral("192.0.2.7"), {}};
    bool isConnected() override { return online; }
    OwnAddress ownAddress() override { return own; }
    bool dial(bool unattended) override
    {
        dials += unattended;
        return true;
    }
};

struct RecordingFiles : FileDialogs {
    struct Question {
        QString title;
        QString filter;
        bool operator==(const Question&) const = default;
    };
    QList<Question> asked;
    QStringList answers; // used in order; without one the dialog is cancelled
    QString openFile(const QString& title, const QString& filter) override
    {
        asked.append({title, filter});
        return answers.isEmpty() ? QString() : answers.takeFirst();
    }
};

struct RecordingLooks : LookDialogs {
    QList<int> colours; // answers, used in order; without one the dialog is cancelled
    QList<FontChoice> fonts;
    std::optional<int> colour(int) override { return next(colours); }
    std::optional<FontChoice> font(const FontChoice&) override { return next(fonts); }
    template <typename T>
    static std::optional<T> next(QList<T>& answers)
    {
        return answers.isEmpty() ? std::nullopt : std::optional(answers.takeFirst());
    }
};

// All recorders together. `install` puts them into a client's desktop.
struct RecordingDesktop {
    RecordingBoxes boxes;
    RecordingLinks links;
    RecordingSounds sounds;
    RecordingTray tray;
    HandClock clock;
    HandPointer pointer;
    RecordingNetwork network;
    RecordingFiles files;
    RecordingLooks looks;
    LateNetwork http; // the real one: tests bring servers of their own

    Desktop desktop()
    {
        return {&boxes, &links, &sounds, &tray, &clock, &pointer, &network, &files, &looks, &http};
    }
};
