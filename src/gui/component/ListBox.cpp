#include "gui/component/ListBox.h"

#include <algorithm>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/component/Items.h"

namespace orv::gui::component {

using componentinterface::Item;

ListBox::ListBox(const util::xml::Element& tag)
    : Element(tag),
      m_items(ReadItems(tag)),
      m_editable(ReadFlag(tag.attribute("editable"), false)),
      m_several(ReadFlag(tag.attribute("several"), false)) {
  IndexFrom(0);
}

bool ListBox::KnowsAttribute(std::string_view name) const {
  return name == "editable" || name == "several" || Element::KnowsAttribute(name);
}

bool ListBox::OwnsTag(std::string_view name) const {
  return name == "item" || Element::OwnsTag(name);
}

void ListBox::IndexFrom(std::size_t first) {
  for (std::size_t i = first; i < m_items.size(); ++i) m_places[m_items[i].id] = m_removed + i;
}

int ListBox::IndexOf(int id) const {
  const auto place = m_places.find(id);
  return place == m_places.end() ? -1 : static_cast<int>(place->second - m_removed);
}

void ListBox::SetItems(std::vector<Item> items) {
  if (m_observer) m_observer->BeginReset();
  m_items = std::move(items);
  m_places.clear();
  m_removed = 0;
  IndexFrom(0);
  DropLostSelection();
  if (m_observer) m_observer->EndReset();
}

void ListBox::AddItems(const std::vector<Item>& items) {
  if (items.empty()) return;
  const int first = static_cast<int>(m_items.size());
  if (m_observer) m_observer->BeginInsert(first, first + static_cast<int>(items.size()) - 1);
  m_items.insert(m_items.end(), items.begin(), items.end());
  IndexFrom(first);
  if (m_observer) m_observer->EndInsert();
}

bool ListBox::SetItem(const Item& item) {
  const int index = IndexOf(item.id);
  if (index < 0) return false;
  m_items[index] = item;
  if (m_observer) m_observer->ItemChanged(index);
  return true;
}

bool ListBox::RemoveItem(int id) {
  const int index = IndexOf(id);
  if (index < 0) return false;
  if (m_observer) m_observer->BeginRemove(index, index);
  m_places.erase(id);
  m_items.erase(m_items.begin() + index);
  IndexFrom(index);
  DropLostSelection();
  if (m_observer) m_observer->EndRemove();
  return true;
}

void ListBox::RemoveFirst(int count) {
  count = std::min(count, static_cast<int>(m_items.size()));
  if (count <= 0) return;
  if (m_observer) m_observer->BeginRemove(0, count - 1);
  for (int i = 0; i < count; ++i) m_places.erase(m_items[i].id);
  m_items.erase(m_items.begin(), m_items.begin() + count);
  // Places count from an item that has gone, so that those that stay needn't be told.
  m_removed += count;
  DropLostSelection();
  if (m_observer) m_observer->EndRemove();
}

void ListBox::DropLostSelection() {
  m_selected.erase(std::remove_if(m_selected.begin(), m_selected.end(),
                                  [this](int id) { return IndexOf(id) < 0; }),
                   m_selected.end());
}

void ListBox::SetMultiSelect(bool several) {
  m_several = several;
  Changed(kRangeChange);
}

void ListBox::Select(const std::vector<int>& ids) {
  m_selected = ids;
  DropLostSelection();
  if (!m_several && m_selected.size() > 1) m_selected.resize(1);
  if (m_observer) m_observer->SelectionSet();
}

std::vector<int> ListBox::GetSelected() const {
  std::vector<int> ids = m_selected;
  std::sort(ids.begin(), ids.end(), [this](int a, int b) { return IndexOf(a) < IndexOf(b); });
  return ids;
}

void ListBox::SetFilter(const std::string& text) {
  if (std::exchange(m_filter, text) != text) Changed(kItemsChange);
}

void ListBox::SetFollow(bool follow) {
  m_follow = follow;
  Changed(kValueChange);
}

void ListBox::ShowItem(int id) {
  const int index = IndexOf(id);
  if (m_observer && index >= 0) m_observer->Reveal(index);
}

void ListBox::SelectByUser(std::vector<int> ids, int current) {
  m_selected = std::move(ids);
  Post(kMsgSelectionChanged, current);
}

}  // namespace orv::gui::component
