#pragma once

#include "base/version.h"

namespace td {

using base::version;

} // namespace td
