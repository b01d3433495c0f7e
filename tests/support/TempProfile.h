#pragma once

#include <QString>
#include <QTemporaryDir>

// A home of the test's own: the XDG base directories point into a temporary folder while it lives.
class TempProfile
{
public:
    TempProfile();
    ~TempProfile();
    TempProfile(const TempProfile&) = delete;
    TempProfile& operator=(const TempProfile&) = delete;

    QString path() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
    QByteArray oldConfig_;
    QByteArray oldData_;
};
