// The hourglass while a long operation works.
#pragma once

#include "base/interaction.h"

namespace base {

// Shown for as long as it lives.
class Busy {
public:
    explicit Busy(Interaction& user) : user_(user) { user_.busy(true); }
    ~Busy() { user_.busy(false); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    Interaction& user_;
};

} // namespace base
