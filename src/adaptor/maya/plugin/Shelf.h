// The plug-in's shelf.
#pragma once

#include <string>

namespace orv::rws::adaptor::maya {

/// Both lines of MEL, for a look at them; `icon` is a path.
std::string ShelfLine(const std::string& icon);
std::string ShelfRemovalLine();

/// Adds the shelf tab with the button of the main window where it is missing. False when the icon
/// could not be put into the user's folder or the host refused; `problem` tells.
bool AddShelf(std::string& problem);
void RemoveShelf();

}  // namespace orv::rws::adaptor::maya
