#include "Profile.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

Profile::Profile(const QString& server, bool autoLogon)
{
    const QString config = folder_.filePath(QStringLiteral("config/BreloIM"));
    QFile file(config + QStringLiteral("/BreloIM.ini"));
    if (!QDir().mkpath(config) || !file.open(QIODevice::WriteOnly))
        throw std::runtime_error("the profile can't be written");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(
        "[Program%20Settings]\nServer=" + server.toUtf8() +
        "\nUserName=bench\nPassword=bench\nSavePassword=True\nBegin%20at%20Startup=False\nAuto%20Logon=" +
        (autoLogon ? "True\n" : "False\n"));
}

QProcessEnvironment Profile::environment(const QString& display) const
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), display);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder_.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), folder_.filePath(QStringLiteral("data")));
    return environment;
}
