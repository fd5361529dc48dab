#include "core/windows/AllWindows.h"

#include "core/windows/Windows.h"

namespace orv::rws::core::windows {

void AddAllWindows(Windows&) {}

}  // namespace orv::rws::core::windows
