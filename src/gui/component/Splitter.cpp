#include "gui/component/Splitter.h"

#include <utility>

#include "gui/GuiMessages.h"

namespace orv::gui::component {

Splitter::Splitter(const util::xml::Element& tag)
    : Element(tag), m_horizontal(ReadHorizontal(tag)) {
  for (const std::string& word : Words(tag.attribute("sizes"))) m_sizes.push_back(ReadInt(word, 0));
}

bool Splitter::KnowsAttribute(std::string_view name) const {
  return name == "type" || name == "sizes" || Element::KnowsAttribute(name);
}

void Splitter::SetSizes(const std::vector<int>& sizes) {
  m_sizes = sizes;
  Changed(kValueChange);
}

void Splitter::MoveByUser(std::vector<int> sizes) {
  m_sizes = std::move(sizes);
  Post(kMsgValueChanged);
}

}  // namespace orv::gui::component
