// Precompiled for every test program.
#pragma once

#include "../cmake/common.h"

#include <gtest/gtest.h>
