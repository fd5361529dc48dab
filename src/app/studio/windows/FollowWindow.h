// What is asked before a rig's line is driven once more.
#pragma once

#include <vector>

#include "app/session/LineFollowing.h"
#include "core/windows/ModalWindow.h"

namespace orv::rws::core {
class Instance;
}

namespace orv::app {

/// Asks whose line it is, which profile drives it, and how. Modal.
class FollowWindow : public rws::core::windows::ModalWindow {
 public:
  explicit FollowWindow(rws::core::windows::Windows& windows);

  /// Rigs that can follow a line, in the order of the list.
  static std::vector<rws::core::Instance*> GetRigs(const rws::core::CoreImplementation& core);

  /// False when the user cancels.
  bool Run(FollowWish& wish);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowProfiles();
  void ShowName();

  FollowWish m_wish;
  std::vector<std::string> m_rigs, m_profiles;  ///< an item's id is its place in the list
};

}  // namespace orv::app
