// Lines to choose from.
#pragma once

#include <string>
#include <vector>

#include "gui/componentinterface/Interface.h"
#include "gui/componentinterface/Item.h"

namespace orv::gui::componentinterface {

/// Fit for tens of thousands of items. Posts kMsgSelectionChanged, kMsgActivated, kMsgRenamed
/// (where editable) and kMsgCopied; `param` is the item's id.
class ListBox : public Interface {
 public:
  virtual void SetItems(std::vector<Item> items) = 0;
  virtual const std::vector<Item>& GetItems() const = 0;
  virtual void AddItem(const Item& item) = 0;
  virtual void AddItems(const std::vector<Item>& items) = 0;
  /// False when no item has its id.
  virtual bool SetItem(const Item& item) = 0;
  virtual bool RemoveItem(int id) = 0;
  /// Takes the first `count` away.
  virtual void RemoveFirst(int count) = 0;
  virtual void SetMultiSelect(bool several) = 0;
  virtual bool IsMultiSelect() const = 0;
  /// Ids that are there; the first becomes the current one.
  virtual void Select(const std::vector<int>& ids) = 0;
  virtual std::vector<int> GetSelected() const = 0;  ///< in the order of the list
  virtual bool IsEditable() const = 0;
  /// Items whose text does not hold it, in any case of letters, are hidden.
  virtual void SetFilter(const std::string& text) = 0;
  /// Keeps the end in sight when items are added; scrolling up by hand ends it.
  virtual void SetFollow(bool follow) = 0;
  virtual bool IsFollowing() const = 0;
  virtual void ShowItem(int id) = 0;
};

}  // namespace orv::gui::componentinterface
