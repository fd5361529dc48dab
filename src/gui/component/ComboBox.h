// `combobox`: a choice of one, or a text with suggestions.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/ComboBox.h"

namespace orv::gui::component {

class ComboBox : public Element<componentinterface::ComboBox> {
 public:
  explicit ComboBox(const util::xml::Element& tag);
  const char* GetElement() const override { return "combobox"; }
  bool KnowsAttribute(std::string_view name) const override;
  bool OwnsTag(std::string_view name) const override;

  void SetItems(std::vector<componentinterface::Item> items) override;
  const std::vector<componentinterface::Item>& GetItems() const override { return m_items; }
  void SelectIndex(int index) override;
  int GetIndex() const override { return m_index; }
  bool SelectId(int id) override;
  int GetSelectedId() const override;
  bool IsEditable() const override { return m_editable; }
  void SetText(const std::string& text) override;
  std::string GetText() const override;

  /// The toolkit's words for a choice, a letter typed, and a text confirmed.
  void ChooseByUser(int index);
  void TypeByUser(const std::string& text);
  void EnterByUser(const std::string& text, bool byEnter);

 private:
  std::vector<componentinterface::Item> m_items;
  int m_index;
  bool m_editable;
  std::string m_text;
  std::string m_entered;  ///< what was last set or confirmed
};

}  // namespace orv::gui::component
