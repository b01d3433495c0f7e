#include "messaging/Stamps.h"

#include <QLocale>
#include <QRegularExpression>

Stamps::Stamps(const Clock& clock) : clock_(clock), timeFormat_(QLocale().timeFormat(QLocale::LongFormat))
{
    static const QRegularExpression zone(QStringLiteral("\\s*\\(?\\bt+\\b\\)?\\s*"));
    timeFormat_ = timeFormat_.replace(zone, QStringLiteral(" ")).trimmed();
}

const QString& Stamps::shortTime()
{
    refresh();
    return shortTime_;
}

const QString& Stamps::longTime()
{
    refresh();
    return longTime_;
}

const QString& Stamps::longDate()
{
    refresh();
    return longDate_;
}

QString Stamps::shortTime(const QDateTime& written)
{
    if (!isPast(written))
        return shortTime();
    const QString time = written.toString(QStringLiteral("HH:mm"));
    const bool today = written.date() == made_.date();
    return today ? time : time + u' ' + QLocale().toString(written.date(), QLocale::ShortFormat);
}

QString Stamps::longTime(const QDateTime& written)
{
    if (!isPast(written))
        return longTime();
    const QString time = QLocale().toString(written.time(), timeFormat_);
    const bool today = written.date() == made_.date();
    return today ? time : time + u' ' + QLocale().toString(written.date(), QLocale::LongFormat);
}

bool Stamps::isPast(const QDateTime& written)
{
    refresh();
    return written.isValid() && written < made_;
}

void Stamps::refresh()
{
    const QDateTime now = clock_.now();
    // Compared as it stands: a count of seconds would ask for the time zone each time.
    if (made_ == now)
        return;
    made_ = now;
    const QLocale locale;
    const QTime time = now.time();
    shortTime_ =
        QStringLiteral("%1:%2").arg(time.hour(), 2, 10, QChar(u'0')).arg(time.minute(), 2, 10, QChar(u'0'));
    longTime_ = locale.toString(time, timeFormat_);
    longDate_ = locale.toString(now.date(), QLocale::LongFormat);
}
