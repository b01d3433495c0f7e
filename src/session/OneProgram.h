#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QSocketNotifier;

// Only one program runs on a profile: the first one holds a lock on a file beside the settings and listens on
// a socket of its own, by which a later start summons it. The system gives the lock back however the program
// ends. Where no lock can be had, as on some network folders, every start counts as the first.
class OneProgram : public QObject
{
    Q_OBJECT

public:
    // The program of the profile with this settings file.
    explicit OneProgram(const QString& settingsFile);
    ~OneProgram() override;

    bool isFirst() const { return first_; }
    // Lets the first program come up; false when it doesn't answer in this time.
    bool summonFirst(int patienceMs = 5'000) const;

signals:
    // The program was started once more.
    void summoned();

private:
    bool lock(const QString& file);
    void listen();

    QByteArray socketPath_;
    bool first_ = false;
    int lock_ = -1;
    int listening_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};
