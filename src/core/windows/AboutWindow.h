// Name and version of the program.
#pragma once

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

class AboutWindow : public Window {
 public:
  explicit AboutWindow(Windows& windows);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
};

}  // namespace orv::rws::core::windows
