// `list`: a row or column of components.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/List.h"

namespace orv::gui::component {

class List : public Element<componentinterface::List> {
 public:
  explicit List(const util::xml::Element& tag);
  const char* GetElement() const override { return "list"; }
  bool KnowsAttribute(std::string_view name) const override;

  bool IsHorizontal() const override { return m_horizontal; }
  void SetHorizontal(bool horizontal) override;

  const Padding& GetPadding() const { return m_padding; }
  /// Between two children; kUnset: the toolkit's habit.
  int GetSpacing() const { return m_spacing; }

 private:
  bool m_horizontal;
  Padding m_padding;
  int m_spacing;
};

}  // namespace orv::gui::component
