// `progressbar`: how much is done.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Progressbar.h"

namespace orv::gui::component {

class Progressbar : public Element<componentinterface::Progressbar> {
 public:
  using Element::Element;
  const char* GetElement() const override { return "progressbar"; }

  void SetProgress(double progress) override;
  double GetProgress() const override { return m_progress; }

 private:
  double m_progress = 0.0;
};

}  // namespace orv::gui::component
