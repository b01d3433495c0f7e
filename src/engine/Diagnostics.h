#pragma once

#include <QLoggingCategory>

// Diagnostics of the engine, off unless the person switches the category "brelo.engine" on. Secrets are never
// written to it.
Q_DECLARE_LOGGING_CATEGORY(lcEngine)
