#pragma once

#include <QString>

enum class PollResult { NewMail = 0, Nothing = 1, RunOut = 2000 };

// What a mail server's answer to a poll says: its HTTP status, 0 for none, and its text. New mail stands in a
// well-formed multi-status (RFC 4918) alone; a document type has no place there.
PollResult pollResult(int status, const QString& text);
