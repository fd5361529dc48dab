#include "gui/component/TextBox.h"

#include <algorithm>
#include <utility>

#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::gui::component {

/// From this height on (px at 96 dpi) a text box has several lines.
static constexpr int kTwoLines = 40;

TextBox::TextBox(const util::xml::Element& tag)
    : Element(tag),
      m_text(tag.attribute("defaulttext")),
      m_entered(m_text),
      m_hint(tag.attribute("hint")),
      m_editable(ReadFlag(tag.attribute("editable"), true)),
      m_multiLine(std::max({GetAttributes().height, GetAttributes().desiredHeight,
                            GetAttributes().minHeight}) >= kTwoLines) {}

bool TextBox::KnowsAttribute(std::string_view name) const {
  return name == "editable" || name == "defaulttext" || name == "hint" ||
         Element::KnowsAttribute(name);
}

void TextBox::SetText(const std::string& text) {
  m_entered = text;
  if (std::exchange(m_text, text) != text) Changed(kValueChange);
}

void TextBox::SetEditable(bool editable) {
  if (std::exchange(m_editable, editable) != editable) Changed(kRangeChange);
}

void TextBox::SetHint(const std::string& hint) {
  m_hint = hint;
  m_hintIsEnglish = false;
  Changed(kLabelChange);
}

std::string TextBox::GetShownHint() const {
  return m_hintIsEnglish ? Translate(m_hint) : m_hint;
}

void TextBox::SelectAll() {
  m_selectAll = true;
  Changed(kValueChange);
}

bool TextBox::TakeSelectAll() {
  return std::exchange(m_selectAll, false);
}

void TextBox::TypeByUser(const std::string& text) {
  if (std::exchange(m_text, text) != text) Post(kMsgTyped);
}

void TextBox::EnterByUser() {
  if (std::exchange(m_entered, m_text) != m_text && !Post(kMsgValueChanged)) return;
  Post(kMsgEntered);
}

void TextBox::LeaveByUser() {
  if (std::exchange(m_entered, m_text) != m_text) Post(kMsgValueChanged);
}

void TextBox::RevertByUser() {
  if (m_text == m_entered) return;
  m_text = m_entered;
  Changed(kValueChange);
  Post(kMsgTyped);
}

}  // namespace orv::gui::component
