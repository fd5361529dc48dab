#include "gui/component/CheckBox.h"

#include <utility>

#include "gui/GuiMessages.h"

namespace orv::gui::component {

using componentinterface::CheckState;

namespace {

CheckState ReadState(const std::string& text) {
  if (text == "undetermined" || text == "2") return CheckState::kUndetermined;
  return ReadFlag(text, false) ? CheckState::kOn : CheckState::kOff;
}

}  // namespace

CheckBox::CheckBox(const util::xml::Element& tag)
    : Element(tag),
      m_state(ReadState(tag.attribute("defaultstate"))),
      m_paintGroup(ReadInt(tag.attribute("paintgroup"), 0)),
      m_icons{tag.attribute("falseicon"), tag.attribute("trueicon"),
              tag.attribute("undeterminedicon")} {}

bool CheckBox::KnowsAttribute(std::string_view name) const {
  return name == "defaultstate" || name == "paintgroup" || name == "trueicon" ||
         name == "falseicon" || name == "undeterminedicon" || Element::KnowsAttribute(name);
}

void CheckBox::SetState(CheckState state) {
  if (std::exchange(m_state, state) != state) Changed(kValueChange);
}

const std::string& CheckBox::GetIcon(CheckState state) const {
  return m_icons[static_cast<std::size_t>(state)];
}

void CheckBox::CheckByUser(CheckState state) {
  SetState(state);
  if (Post(kMsgChecked, static_cast<int>(state))) Post(kMsgValueChanged, static_cast<int>(m_state));
}

}  // namespace orv::gui::component
