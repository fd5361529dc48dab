#include "gui/component/ComboBox.h"

#include <utility>

#include "gui/GuiMessages.h"
#include "gui/component/Items.h"

namespace orv::gui::component {

using componentinterface::Item;

ComboBox::ComboBox(const util::xml::Element& tag)
    : Element(tag),
      m_items(ReadItems(tag)),
      m_editable(ReadFlag(tag.attribute("editable"), false)) {
  // The first choice stands until code tells another; a text to be typed begins empty.
  m_index = m_items.empty() || m_editable ? -1 : 0;
}

bool ComboBox::KnowsAttribute(std::string_view name) const {
  return name == "editable" || Element::KnowsAttribute(name);
}

bool ComboBox::OwnsTag(std::string_view name) const {
  return name == "item" || Element::OwnsTag(name);
}

void ComboBox::SetItems(std::vector<Item> items) {
  const int id = GetSelectedId();
  m_items = std::move(items);
  m_index = -1;
  for (std::size_t i = 0; i < m_items.size() && m_index < 0; ++i)
    if (id != kNoId && m_items[i].id == id) m_index = static_cast<int>(i);
  Changed(kItemsChange | kValueChange);
}

void ComboBox::SelectIndex(int index) {
  m_index = index >= 0 && index < static_cast<int>(m_items.size()) ? index : -1;
  m_text = m_entered = m_index < 0 ? std::string() : ShownText(m_items[m_index]);
  Changed(kValueChange);
}

bool ComboBox::SelectId(int id) {
  for (std::size_t i = 0; i < m_items.size(); ++i) {
    if (m_items[i].id != id) continue;
    SelectIndex(static_cast<int>(i));
    return true;
  }
  return false;
}

int ComboBox::GetSelectedId() const {
  return m_index < 0 ? kNoId : m_items[m_index].id;
}

void ComboBox::SetText(const std::string& text) {
  m_text = m_entered = text;
  Changed(kValueChange);
}

std::string ComboBox::GetText() const {
  if (m_editable) return m_text;
  return m_index < 0 ? std::string() : ShownText(m_items[m_index]);
}

void ComboBox::ChooseByUser(int index) {
  SelectIndex(index);
  Post(kMsgValueChanged, GetSelectedId());
}

void ComboBox::TypeByUser(const std::string& text) {
  m_text = text;
  m_index = -1;
  Post(kMsgTyped);
}

void ComboBox::EnterByUser(const std::string& text, bool byEnter) {
  m_text = text;
  if (std::exchange(m_entered, text) != text && !Post(kMsgValueChanged, kNoId)) return;
  if (byEnter) Post(kMsgEntered);
}

}  // namespace orv::gui::component
