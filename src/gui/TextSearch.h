// Finding what a user has typed in what is shown.
#pragma once

#include <string>
#include <string_view>

namespace orv::gui {

/// Whether `text` holds `sought`, in any case of letters (ASCII and Latin-1; both are UTF-8). An
/// empty one is held by all.
bool HoldsText(std::string_view text, std::string_view sought);

}  // namespace orv::gui
