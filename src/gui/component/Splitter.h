// `splitter`: components whose shares of the room the user moves.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Splitter.h"

namespace orv::gui::component {

/// Attributes: `type` as of a list, and `sizes`, numbers separated by blanks.
class Splitter : public Element<componentinterface::Splitter> {
 public:
  explicit Splitter(const util::xml::Element& tag);
  const char* GetElement() const override { return "splitter"; }
  bool KnowsAttribute(std::string_view name) const override;

  bool IsHorizontal() const override { return m_horizontal; }
  void SetSizes(const std::vector<int>& sizes) override;
  std::vector<int> GetSizes() const override { return m_sizes; }

  /// The toolkit's word for a moved handle.
  void MoveByUser(std::vector<int> sizes);

 private:
  bool m_horizontal;
  std::vector<int> m_sizes;
};

}  // namespace orv::gui::component
