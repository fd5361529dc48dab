#include "gui/Menu.h"

#include <utility>

namespace orv::gui {

namespace {

const MenuItem* FindIn(const std::vector<MenuItem>& items, int id) {
  for (const MenuItem& item : items) {
    if (item.id == id && !item.separator) return &item;
    if (const MenuItem* found = FindIn(item.items, id)) return found;
  }
  return nullptr;
}

std::vector<MenuItem> ReadItems(const util::xml::Element& tag) {
  std::vector<MenuItem> items;
  for (const util::xml::Element* child : tag.children) {
    if (child->kind != util::xml::kTag) continue;
    MenuItem item;
    item.separator = child->name == "separator";
    item.isMenu = child->name == "menu";
    if (!item.separator && !item.isMenu && child->name != "item") continue;
    item.english = true;
    item.id = ReadInt(child->attribute("id"), kNoId);
    item.label = child->attribute("label");
    item.shortcut = child->attribute("shortcut");
    item.icon = child->attribute("icon");
    item.tooltip = child->child("tooltip").text();
    item.checkable = ReadFlag(child->attribute("checkable"), false);
    item.checked = ReadFlag(child->attribute("checked"), false);
    item.enabled = ReadFlag(child->attribute("enabled"), true);
    item.visible = ReadFlag(child->attribute("visible"), true);
    if (item.isMenu) item.items = ReadItems(*child);
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace

void Menu::Read(const util::xml::Element& tag) {
  m_items = ReadItems(tag);
}

void Menu::SetItems(std::vector<MenuItem> items) {
  m_items = std::move(items);
  if (m_observer) m_observer(true);
}

bool Menu::SetItems(int menuId, std::vector<MenuItem> items) {
  MenuItem* menu = FindToChange(menuId);
  if (!menu) return false;
  menu->isMenu = true;
  menu->items = std::move(items);
  if (m_observer) m_observer(true);
  return true;
}

const MenuItem* Menu::Find(int id) const {
  return id == kNoId ? nullptr : FindIn(m_items, id);
}

MenuItem* Menu::FindToChange(int id) {
  return const_cast<MenuItem*>(Find(id));
}

template <class Edit>
bool Menu::Change(int id, Edit&& edit) {
  MenuItem* item = FindToChange(id);
  if (!item) return false;
  if (edit(*item) && m_observer) m_observer(false);
  return true;
}

bool Menu::SetEnabled(int id, bool enabled, const std::string& why) {
  return Change(id, [&](MenuItem& item) {
    const std::string reason = enabled ? std::string() : why;
    const bool other = item.enabled != enabled || item.whyDisabled != reason;
    item.enabled = enabled;
    item.whyDisabled = reason;
    return other;
  });
}

bool Menu::SetChecked(int id, bool checked) {
  return Change(id,
                [&](MenuItem& item) { return std::exchange(item.checked, checked) != checked; });
}

bool Menu::SetVisible(int id, bool visible) {
  return Change(id,
                [&](MenuItem& item) { return std::exchange(item.visible, visible) != visible; });
}

bool Menu::SetLabel(int id, const std::string& label) {
  return Change(id, [&](MenuItem& item) {
    item.english = false;
    return std::exchange(item.label, label) != label;
  });
}

void Menu::SetObserver(std::function<void(bool structure)> observer) {
  m_observer = std::move(observer);
}

}  // namespace orv::gui
