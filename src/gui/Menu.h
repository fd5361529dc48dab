// Entries of a popup or a menu bar.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "gui/Attributes.h"
#include "util/xml/Element.h"

namespace orv::gui {

struct MenuItem {
  int id = kNoId;
  std::string label;
  std::string shortcut;  ///< "Ctrl+Shift+S", portable text
  std::string icon;      ///< path of an image, aliases allowed
  std::string tooltip;
  std::string whyDisabled;  ///< shown as it is in place of the tooltip while it is disabled
  bool checkable = false, checked = false, enabled = true, visible = true;
  bool separator = false;
  bool english = false;  ///< whether `label` and `tooltip` are to be translated when shown
  bool isMenu = false;   ///< opens `items`
  std::vector<MenuItem> items;
};

/// The entries with their state. Choosing one posts kMsgMenuItem with its id.
class Menu {
 public:
  /// `item`, `separator` and `menu` children.
  void Read(const util::xml::Element& tag);

  const std::vector<MenuItem>& GetItems() const { return m_items; }
  void SetItems(std::vector<MenuItem> items);
  /// Entries of the menu with this id, for what changes at run time, such as recent files.
  bool SetItems(int menuId, std::vector<MenuItem> items);
  /// Null when there is none.
  const MenuItem* Find(int id) const;
  /// False when there is no such item.
  bool SetEnabled(int id, bool enabled, const std::string& why = {});
  bool SetChecked(int id, bool checked);
  bool SetVisible(int id, bool visible);
  /// Shown as it is.
  bool SetLabel(int id, const std::string& label);
  /// Called after each change; true when entries came or went.
  void SetObserver(std::function<void(bool structure)> observer);

 private:
  MenuItem* FindToChange(int id);
  template <class Edit>
  bool Change(int id, Edit&& edit);

  std::vector<MenuItem> m_items;
  std::function<void(bool)> m_observer;
};

}  // namespace orv::gui
