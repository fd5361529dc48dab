// The tools of the main window.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/windows/MainWindowPage.h"

namespace orv::rws::core {
class Tool;
}

namespace orv::rws::core::windows {

/// Lists the kinds of rigs by category, finds them by name and description, tells of the one that
/// is selected and makes rigs.
class MainWindowTools : public MainWindowPage {
 public:
  using MainWindowPage::MainWindowPage;

  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void ShowCommands() override { ShowProduct(); }
  void OnCore(const util::Message& message) override;
  void OnSettingsChanged() override;

 private:
  void Fill();
  bool Matches(Tool& tool, const std::string& words) const;
  /// Null when a category or nothing is selected.
  Tool* GetSelected() const;
  Tool* Find(int key) const;
  /// Why no rig of it can be made; empty when one can.
  std::string WhyNot(Tool& tool) const;
  void ShowProduct();
  void Create();

  std::map<int, std::string> m_tools;   ///< Tool::GetDisplayId by the row's key
  int m_hovered = 0;                    ///< key of the row under the mouse
  gui::Component* m_product = nullptr;  ///< root of the product's page
};

}  // namespace orv::rws::core::windows
