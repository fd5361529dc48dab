#include "gui/component/Items.h"

#include "gui/Attributes.h"
#include "gui/Texts.h"

namespace orv::gui::component {

std::vector<componentinterface::Item> ReadItems(const util::xml::Element& tag) {
  std::vector<componentinterface::Item> items;
  for (const util::xml::Element* child : tag.children) {
    if (child->name != "item" || child->kind != util::xml::kTag) continue;
    componentinterface::Item item;
    item.id = ReadInt(child->attribute("id"), kNoId);
    item.text = child->attribute("label");
    item.icon = child->attribute("icon");
    item.tooltip = child->child("tooltip").text();
    item.enabled = ReadFlag(child->attribute("enabled"), true);
    item.english = true;
    items.push_back(std::move(item));
  }
  return items;
}

std::string ShownText(const componentinterface::Item& item) {
  return item.english ? Translate(item.text) : item.text;
}

}  // namespace orv::gui::component
