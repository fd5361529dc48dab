// `button`: a push button.
#pragma once

#include <optional>

#include "gui/Color.h"
#include "gui/StdComponent.h"
#include "gui/component/ButtonImages.h"
#include "gui/componentinterface/Button.h"

namespace orv::gui::component {

class Button : public Element<componentinterface::Button> {
 public:
  explicit Button(const util::xml::Element& tag);
  const char* GetElement() const override { return "button"; }
  bool KnowsAttribute(std::string_view name) const override;

  void Click() override;
  void SetImage(componentinterface::ButtonImage which, const std::string& path) override;
  const std::string& GetImage(componentinterface::ButtonImage which) const override;
  bool IsFlat() const override { return m_flat; }
  bool IsDefault() const override { return m_default; }
  bool IsToggle() const override { return m_toggle; }
  void SetDown(bool down) override;
  bool IsDown() const override { return m_down; }

  /// Behind a flat one under the mouse and while it is pressed; null for the toolkit's own.
  const Rgba* GetHoverColor() const { return m_hover ? &*m_hover : nullptr; }
  const Rgba* GetPressedColor() const { return m_pressed ? &*m_pressed : nullptr; }

 private:
  ButtonImages m_images;
  bool m_flat, m_default, m_toggle;
  bool m_down = false;
  std::optional<Rgba> m_hover, m_pressed;
};

}  // namespace orv::gui::component
