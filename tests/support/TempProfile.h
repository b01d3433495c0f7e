#pragma once

#include <QString>
#include <QTemporaryDir>

// A home of the test's own: the XDG base directories point into a temporary folder while it lives.
class TempProfile
{
public:
    TempProfile()
    {
        qputenv("XDG_CONFIG_HOME", (path() + "/config").toUtf8());
        qputenv("XDG_DATA_HOME", (path() + "/data").toUtf8());
    }
    ~TempProfile()
    {
        qputenv("XDG_CONFIG_HOME", oldConfig_);
        qputenv("XDG_DATA_HOME", oldData_);
    }
    Q_DISABLE_COPY(TempProfile)

    QString path() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
    const QByteArray oldConfig_ = qgetenv("XDG_CONFIG_HOME");
    const QByteArray oldData_ = qgetenv("XDG_DATA_HOME");
};
