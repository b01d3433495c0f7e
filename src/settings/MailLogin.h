#pragma once

#include <QString>

// What the mail watcher's window is filled with. A password is none of it.
struct MailLogin {
    QString Username;
    QString Url;
    bool operator==(const MailLogin&) const = default;
};
