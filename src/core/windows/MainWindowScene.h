// The tree of the scene's nodes.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "core/windows/MainWindowPage.h"
#include "core/windows/SceneBrowser.h"
#include "gui/componentinterface/Tree.h"

namespace orv::rws::core::windows {

/// Shows the nodes and lets the user select them, hang them under others, and hand them to the
/// selected rig as ground or as car. Changes are taken over in the live rounds, however many there
/// were, and only where the tree differs.
class MainWindowScene : public MainWindowPage, private SceneBrowser::Observer {
 public:
  explicit MainWindowScene(MainWindowFrame& window);
  ~MainWindowScene() override;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCommand(int command) override;
  void ShowCommands() override;
  void OnCore(const util::Message& message) override;
  void OnLive() override;
  void OnSceneChanged() override { m_isOld = true; }
  void OnSettingsChanged() override;

  /// The first node that is selected, 0 without one.
  int GetCurrent() const;

 private:
  using Tree = gui::componentinterface::Tree;

  // SceneBrowser::Observer
  void OnNodes() override { m_isOld = true; }
  void OnNodeSelection() override { m_selectionIsOld = true; }

  void Follow();
  void Show();
  Tree::Row Describe(const SceneBrowser::Node& node) const;
  void ShowSelection();
  int FirstRig() const;
  void UseAsGround();
  void FitCar();

  SceneBrowser* m_browser = nullptr;                    ///< that this one observes
  std::unordered_map<int, SceneBrowser::Node> m_nodes;  ///< as they are shown
  bool m_isOld = true, m_selectionIsOld = true;
};

}  // namespace orv::rws::core::windows
