// `group`: components under a heading.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Group.h"

namespace orv::gui::component {

/// Its children stand below each other.
class Group : public Element<componentinterface::Group> {
 public:
  explicit Group(const util::xml::Element& tag);
  const char* GetElement() const override { return "group"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetFoldable(bool foldable) override;
  bool IsFoldable() const override { return m_foldable; }
  void SetFolded(bool folded) override;
  bool IsFolded() const override { return m_folded; }

  const Padding& GetPadding() const { return m_padding; }
  int GetSpacing() const { return m_spacing; }
  /// The toolkit's word for a click on the heading.
  void FoldByUser(bool folded);

 private:
  Padding m_padding;
  int m_spacing;
  bool m_foldable, m_folded;
};

}  // namespace orv::gui::component
