// What the stand-in says to its user.
#pragma once
#include <string>

namespace mayahost {
enum class Spoken { kInfo, kWarning, kError, kStatus, kBox, kShelf };
/// Records a text; see Host.h.
void Say(Spoken kind, const std::string& text);
}  // namespace mayahost
