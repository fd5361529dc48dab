// `checkbox`: a box to be ticked.
#pragma once

#include <array>

#include "gui/StdComponent.h"
#include "gui/componentinterface/CheckBox.h"

namespace orv::gui::component {

class CheckBox : public Element<componentinterface::CheckBox> {
 public:
  explicit CheckBox(const util::xml::Element& tag);
  const char* GetElement() const override { return "checkbox"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetState(componentinterface::CheckState state) override;
  componentinterface::CheckState GetState() const override { return m_state; }
  int GetPaintGroup() const override { return m_paintGroup; }
  const std::string& GetIcon(componentinterface::CheckState state) const override;

  /// The toolkit's word for a click.
  void CheckByUser(componentinterface::CheckState state);

 private:
  componentinterface::CheckState m_state;
  int m_paintGroup;
  std::array<std::string, 3> m_icons;  ///< by CheckState
};

}  // namespace orv::gui::component
