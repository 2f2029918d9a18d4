// Precompiled for the desktop program: the toolkit's headers that nearly every file needs.
#pragma once

#include "common.h"

#include <QtWidgets>
