// Lengths of documents and lengths on the screen.
#pragma once

namespace orv::gui::component::qt {

/// Pixels at 96 dpi as pixels of the screen, by the logical resolution, and back.
int Scaled(int pixels);
int Unscaled(int pixels);

}  // namespace orv::gui::component::qt
