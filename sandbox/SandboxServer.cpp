#include "sandbox/SandboxServer.h"
