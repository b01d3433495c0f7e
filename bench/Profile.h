#pragma once

#include <QProcessEnvironment>
#include <QTemporaryDir>

// A person's folders of their own, with the settings file of the account bench/bench.
class Profile
{
public:
    Profile(const QString& server, bool autoLogon);

    // For a client that is to show itself on the display of this name.
    QProcessEnvironment environment(const QString& display) const;

private:
    QTemporaryDir folder_;
};
