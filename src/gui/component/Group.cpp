#include "gui/component/Group.h"

#include <utility>

#include "gui/GuiMessages.h"

namespace orv::gui::component {

Group::Group(const util::xml::Element& tag)
    : Element(tag),
      m_padding(ReadPadding(tag.attribute("padding"), {})),
      m_spacing(ReadInt(tag.attribute("spacing"), kUnset)),
      m_foldable(tag.hasAttribute("fold")),
      m_folded(tag.attribute("fold") == "closed") {}

bool Group::KnowsAttribute(std::string_view name) const {
  return name == "padding" || name == "spacing" || name == "fold" || Element::KnowsAttribute(name);
}

void Group::SetFoldable(bool foldable) {
  if (std::exchange(m_foldable, foldable) != foldable) Changed(kValueChange);
}

void Group::SetFolded(bool folded) {
  if (std::exchange(m_folded, folded) != folded) Changed(kValueChange);
}

void Group::FoldByUser(bool folded) {
  SetFolded(folded);
  Post(kMsgFolded, folded);
}

}  // namespace orv::gui::component
