// The pose of the selected node, in numbers.
#pragma once

#include "core/windows/MainWindowPage.h"
#include "core/windows/SceneBrowser.h"

namespace orv::rws::core::windows {

class MainWindowScene;

/// A drag on a number is one undo step: the scene follows at its end.
class MainWindowPose : public MainWindowPage {
 public:
  /// `scene` tells the node and outlives this one.
  MainWindowPose(MainWindowFrame& window, const MainWindowScene& scene)
      : MainWindowPage(window), m_scene(scene) {}

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void ShowCommands() override { Show(); }
  void OnLive() override { Show(); }
  void OnSettingsChanged() override;

 private:
  void Show();
  SceneBrowser::Space GetSpace() const;
  /// Shown over held: of lengths, by the user's unit.
  double Factor(int number) const;
  void Apply(int number, double shown);

  const MainWindowScene& m_scene;
  SceneBrowser::Pose m_pose;
  double m_unit = 1.0;  ///< of the user's, in a metre
  bool m_edited = false;
};

}  // namespace orv::rws::core::windows
