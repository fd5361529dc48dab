// An entry of a combo box or list box.
#pragma once

#include <string>

namespace orv::gui::componentinterface {

/// The text is shown as it is; of items in a document it is translated when read out for showing.
struct Item {
  int id = 0;
  std::string text;
  std::string icon;  ///< path of an image
  std::string tooltip;
  bool enabled = true;
  bool english = false;  ///< to be translated when shown
  bool strong = false;   ///< drawn bold
  bool dim = false;      ///< drawn in the palette's weaker text colour
};

}  // namespace orv::gui::componentinterface
