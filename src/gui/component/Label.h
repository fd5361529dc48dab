// `label`: a text or an image.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Label.h"

namespace orv::gui::component {

class Label : public Element<componentinterface::Label> {
 public:
  explicit Label(const util::xml::Element& tag);
  const char* GetElement() const override { return "label"; }
  bool KnowsAttribute(std::string_view name) const override;

  /// The same as its text.
  void SetLabel(const std::string& label) override { SetText(label); }
  void SetText(const std::string& text) override;
  const std::string& GetText() const override { return GetLabel(); }
  std::string GetShownText() const override { return GetShownLabel(); }
  bool HasLinks() const override { return m_links; }
  bool Wraps() const override { return m_wraps; }
  void SetImage(const std::string& path) override;
  const std::string& GetImage() const override { return m_image; }

  /// The toolkit's word for a click on a link.
  void ClickLink(const std::string& link);

 private:
  bool m_links = false, m_wraps = false;
  std::string m_image;
};

}  // namespace orv::gui::component
