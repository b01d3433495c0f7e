#pragma once

#include "desktop/Desktop.h"

#include <QString>

// The present time as transcripts and logs show it. A second's texts are made once, since a flood of messages
// asks for them many times.
class Stamps
{
public:
    // `clock` must outlive the object.
    explicit Stamps(const Clock& clock);

    // "HH:MM".
    const QString& shortTime();
    // The system's long format, without the time zone.
    const QString& longTime();
    // The system's long format.
    const QString& longDate();

    // The time at which a message was written, with the day where that isn't today; the present one where it
    // is not known, or lies ahead.
    QString shortTime(const QDateTime& written);
    QString longTime(const QDateTime& written);

private:
    bool isPast(const QDateTime& written);
    void refresh();

    const Clock& clock_;
    QString timeFormat_;
    QDateTime made_;
    QString shortTime_;
    QString longTime_;
    QString longDate_;
};
