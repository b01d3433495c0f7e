#pragma once

#include <QLoggingCategory>
#include <QString>

// Diagnostics of the engine, off unless the person switches the category "brelo.engine" on. Secrets are never
// written to it.
Q_DECLARE_LOGGING_CATEGORY(lcEngine)

// `xml` for the diagnostics: what passwords, digests and keys hold is replaced by "***".
QString masked(const QString& xml);
