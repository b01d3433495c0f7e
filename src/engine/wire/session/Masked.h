#pragma once

#include <QString>

// `xml` for the diagnostics: what passwords, digests and keys hold is replaced by "***".
QString masked(const QString& xml);
