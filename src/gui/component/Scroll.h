// `scroll`: a view on components that need more room.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Scroll.h"

namespace orv::gui::component {

/// Its children stand below each other.
class Scroll : public Element<componentinterface::Scroll> {
 public:
  explicit Scroll(const util::xml::Element& tag);
  const char* GetElement() const override { return "scroll"; }
  bool KnowsAttribute(std::string_view name) const override;

  void SetOffset(int x, int y) override;
  int GetOffsetX() const override { return m_x; }
  int GetOffsetY() const override { return m_y; }
  void Reveal(Component& component) override;

  const Padding& GetPadding() const { return m_padding; }
  int GetSpacing() const { return m_spacing; }
  /// The toolkit's word for a scroll by the user.
  void ScrollByUser(int x, int y);

  /// What it asks of its toolkit; its peer is one.
  class Pane {
   public:
    virtual ~Pane() = default;
    virtual void RevealChild(Component& component) = 0;
  };

 private:
  Padding m_padding;
  int m_spacing;
  int m_x = 0, m_y = 0;
};

}  // namespace orv::gui::component
