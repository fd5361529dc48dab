// Texts of Qt's own dialogs.
#pragma once

#include <string>

namespace orv::app {

/// Has file dialogs, message buttons and menus of text fields speak a language, such as "de", by
/// Qt's own translations: those beside the program in "translations", else those of the system's
/// Qt. English needs none. False when there are none; then they speak English.
bool LoadQtTexts(const std::string& language);

}  // namespace orv::app
