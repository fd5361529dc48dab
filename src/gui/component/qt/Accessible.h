// What our own widgets tell those who read windows aloud.
#pragma once

namespace orv::gui::component::qt {

/// Any number of calls.
void InstallAccessibility();

}  // namespace orv::gui::component::qt
