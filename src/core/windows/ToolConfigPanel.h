// The configuration of a rig: its parameters and profiles.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/windows/ParameterRows.h"
#include "core/windows/ProfileRow.h"
#include "core/windows/Window.h"

namespace orv::rws::core {
class Instance;
class InstanceReference;
}  // namespace orv::rws::core

namespace orv::rws::core::windows {

/// Edits one rig, or several of one kind at once: then it shows the first one's values, marks those
/// in which the others differ, and sets all of them, as one undo step.
class ToolConfigPanel : public Window {
 public:
  /// `row` is that of the rig.
  ToolConfigPanel(Windows& windows, int row);
  ~ToolConfigPanel() override;

  int GetRig() const { return m_rigs.front(); }
  /// Rows of further rigs that are edited with it; those of another kind are passed over.
  void SetOthers(const std::vector<int>& rows);

  void OnLive() override;
  void OnSettingsChanged() override;

 protected:
  void OnBuilt() override;
  void OnHidden() override { KeepLook(); }
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;

 private:
  Instance* FindRig(int row) const;
  Instance* FindRig() const { return FindRig(m_rigs.front()); }
  std::vector<Instance*> FindRigs() const;
  /// Whether the rows are those of a rig that is there.
  bool HasRig() const;

  void ShowAll();
  void ShowTitle();
  void ShowBase();
  void ShowMixed();
  void KeepLook();

  void OnRow(int element, gui::Component& source, const util::Message& message);
  void BeginEdit(int element);
  void Edit(int element, const std::string& text);
  void EndEdit(int element, bool cancelled);
  void SetAll(int element, const std::string& text);
  void Reset(const std::vector<int>& elements);

  void OnMenu(int item, const gui::Component& source);
  void Tell(const std::string& text);

  std::vector<int> m_rigs;  ///< rows, never empty; the one that is shown first
  std::string m_kind;       ///< Tool::GetDisplayId
  ProfileRow m_profiles;
  std::unique_ptr<ParameterRows> m_rows;
  int m_dragged = -1;       ///< element of an open edit
  std::string m_dragValue;  ///< what it has come to
};

}  // namespace orv::rws::core::windows
