#include "engine/Diagnostics.h"

Q_LOGGING_CATEGORY(lcEngine, "brelo.engine", QtFatalMsg)
