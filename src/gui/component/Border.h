// `border`: a frame around components.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Border.h"

namespace orv::gui::component {

/// Its children stand below each other.
class Border : public Element<componentinterface::Border> {
 public:
  explicit Border(const util::xml::Element& tag);
  const char* GetElement() const override { return "border"; }
  bool KnowsAttribute(std::string_view name) const override;

  BorderStyle GetBorderStyle() const override;
  void SetBorderStyle(BorderStyle style) override;

  const Padding& GetPadding() const { return m_padding; }
  int GetSpacing() const { return m_spacing; }

 private:
  Padding m_padding;
  int m_spacing;
};

}  // namespace orv::gui::component
