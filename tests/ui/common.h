// Precompiled for the tests of the desktop program.
#pragma once

#include "../common.h"

#include <QtWidgets>
