// All that a user can see and reach, as JSON.
#pragma once

#include <nlohmann/json_fwd.hpp>

class QWidget;

namespace orv::app {

/// An array with an object for each widget that is shown and has an id, a name or the focus: id,
/// class, accessible name, role, value, rectangle on the screen, and whether it is enabled, takes
/// the focus, has it, and shows less than its text. A menu has its entries too, as they stand in
/// the code, and those of the menus below it.
nlohmann::json DumpWidgets(QWidget& window);

}  // namespace orv::app
