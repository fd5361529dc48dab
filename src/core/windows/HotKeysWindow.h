// The page of hot keys.
#pragma once

#include "core/windows/Window.h"

namespace orv::rws::core::windows {

class HotKeysWindow : public Window {
 public:
  explicit HotKeysWindow(Windows& windows);
  void OnSettingsChanged() override { OnBuilt(); }

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
};

}  // namespace orv::rws::core::windows
