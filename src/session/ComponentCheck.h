#pragma once

#include <QString>

// Tests what the client can't live without. Empty when all is there, else the text to show before the end.
QString componentCheck();
