// The tree of rigs.
#pragma once

#include <string>
#include <vector>

#include "core/windows/MainWindowPage.h"
#include "gui/componentinterface/Tree.h"

namespace orv::gui {
struct MoveRequest;
}
namespace orv::rws::core {
class Instance;
class InstanceReference;
}  // namespace orv::rws::core

namespace orv::rws::core::windows {

/// Shows the rows of the core and lets the user arrange, check, rename, copy and delete them. It
/// follows the core's messages row by row, so folds and scroll stay.
class MainWindowRigs : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCommand(int command) override;
  void ShowCommands() override;
  void OnCore(const util::Message& message) override;
  void OnSettingsChanged() override;

 private:
  using Tree = gui::componentinterface::Tree;

  void Fill();
  Tree::Row Describe(const InstanceReference& row) const;
  std::string StateOf(const InstanceReference& row) const;
  void ShowRow(int id);
  void ShowStates();
  void ShowSelection();

  /// These rows in the order of the tree, without those that stand in another one of them.
  std::vector<int> TopsOf(const std::vector<int>& ids) const;
  std::vector<int> GetSelectedTops() const;
  /// False, with the reason told, while a run holds the rows.
  bool MayEdit();
  template <class Edit>
  void AsOneStep(const char* name, Edit&& edit);

  void Check(int id, bool checked);
  /// Takes record all inputs of the selected rigs, or play them.
  void Arm(bool armed);
  void Rename(int id, const std::string& text);
  std::string Move(const gui::MoveRequest& request);
  std::string MoveRow(InstanceReference& row, InstanceReference* group, InstanceReference* before);
  std::string Duplicate();
  void Delete();
  void DeleteRow(int id);
  std::string Group();
  void Ungroup();
};

}  // namespace orv::rws::core::windows
