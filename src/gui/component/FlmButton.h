// `flmbutton`: a button that consists of its images.
#pragma once

#include "gui/StdComponent.h"
#include "gui/component/ButtonImages.h"
#include "gui/componentinterface/FlmButton.h"

namespace orv::gui::component {

class FlmButton : public Element<componentinterface::FlmButton> {
 public:
  explicit FlmButton(const util::xml::Element& tag);
  const char* GetElement() const override { return "flmbutton"; }
  bool KnowsAttribute(std::string_view name) const override;

  void Click() override;
  void SetImage(componentinterface::ButtonImage which, const std::string& path) override;
  const std::string& GetImage(componentinterface::ButtonImage which) const override;

 private:
  ButtonImages m_images;
};

}  // namespace orv::gui::component
