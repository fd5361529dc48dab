// A choice of one, or a text with suggestions.
#pragma once

#include <string>
#include <vector>

#include "gui/componentinterface/Interface.h"
#include "gui/componentinterface/Item.h"

namespace orv::gui::componentinterface {

/// The user's choice posts kMsgValueChanged with the item's id. An editable one posts kMsgTyped at
/// each letter and kMsgValueChanged (`param` kNoId) at Enter or when the focus leaves.
class ComboBox : public Interface {
 public:
  virtual void SetItems(std::vector<Item> items) = 0;
  virtual const std::vector<Item>& GetItems() const = 0;
  /// -1 for none; out of range is none.
  virtual void SelectIndex(int index) = 0;
  virtual int GetIndex() const = 0;
  /// False, with the choice as it was, when no item has this id.
  virtual bool SelectId(int id) = 0;
  virtual int GetSelectedId() const = 0;  ///< kNoId without
  virtual bool IsEditable() const = 0;
  virtual void SetText(const std::string& text) = 0;
  /// Of an editable one what it holds, else the chosen item's.
  virtual std::string GetText() const = 0;
};

}  // namespace orv::gui::componentinterface
