// The list of the windows that there are.
#pragma once

namespace orv::rws::core::windows {

class Windows;

/// Adds the makers of all windows, and what the core shows by itself.
void AddAllWindows(Windows& windows);

}  // namespace orv::rws::core::windows
