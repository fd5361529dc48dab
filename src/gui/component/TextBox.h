// `textbox`: a text to be typed.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::gui::component {

class TextBox : public Element<componentinterface::TextBox> {
 public:
  explicit TextBox(const util::xml::Element& tag);
  const char* GetElement() const override { return "textbox"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetText(const std::string& text) override;
  const std::string& GetText() const override { return m_text; }
  void SetEditable(bool editable) override;
  bool IsEditable() const override { return m_editable; }
  void SetHint(const std::string& hint) override;
  std::string GetShownHint() const override;
  bool IsMultiLine() const override { return m_multiLine; }
  void SelectAll() override;

  /// The toolkit's words: a letter, Enter, and the end of typing. `RevertByUser` is Escape.
  void TypeByUser(const std::string& text);
  void EnterByUser();
  void LeaveByUser();
  void RevertByUser();
  const std::string& GetEntered() const { return m_entered; }
  /// Whether all text is to be selected; asked and reset by the peer.
  bool TakeSelectAll();

 private:
  std::string m_text;
  std::string m_entered;  ///< what was last set or confirmed
  std::string m_hint;
  bool m_hintIsEnglish = true;
  bool m_editable, m_multiLine;
  bool m_selectAll = false;
};

}  // namespace orv::gui::component
