#include "core/windows/MainWindowDock.h"

#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/ToolConfigPanel.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;

constexpr std::size_t kMostDocked = 8;
constexpr WindowKind kPanel = WindowKind::kToolConfig;

}  // namespace

int MainWindowDock::FirstRig() const {
  for (const int id : GetCore().GetSelection()) {
    const InstanceReference* row = GetCore().FindRow(id);
    if (row && !row->IsGroup()) return id;
  }
  return 0;
}

Window* MainWindowDock::FindDocked(int row) const {
  Window* panel = GetWindows().Find(kPanel, row);
  return panel && panel->IsDocked() ? panel : nullptr;
}

bool MainWindowDock::Floats(int row) const {
  const Window* panel = GetWindows().Find(kPanel, row);
  return panel && !panel->IsDocked() && panel->IsShown();
}

Window* MainWindowDock::Dock(int row) {
  m_docked.erase(std::remove(m_docked.begin(), m_docked.end(), row), m_docked.end());
  m_docked.push_front(row);
  while (m_docked.size() > kMostDocked) {
    if (FindDocked(m_docked.back())) GetWindows().Drop(kPanel, m_docked.back());
    m_docked.pop_back();
  }
  if (Window* panel = FindDocked(row)) return panel;
  gui::Component* area = GetWindow().Find(kDockArea);
  return area ? GetWindows().Dock(kPanel, row, *area) : nullptr;
}

void MainWindowDock::Show() {
  const int row = FirstRig();
  const bool floats = row != 0 && Floats(row);
  gui::Component* area = GetWindow().Find(kDockArea);
  if (!area) return;
  const gui::Frozen frozen(*area);
  if (row != m_shown || floats)
    if (Window* old = FindDocked(m_shown)) old->Hide();
  m_shown = row;
  m_floats = floats;
  if (row != 0 && !floats) {
    if (Window* panel = Dock(row)) {
      panel->Show();
      static_cast<ToolConfigPanel*>(panel)->SetOthers(GetCore().GetSelection());
    }
  }
  GetWindow().Tell(kDockHint, row == 0 ? Translate("Select a rig to see its parameters.")
                              : floats ? Translate("The parameters stand in a window of their own.")
                                       : std::string());
  if (gui::Component* button = GetWindow().Find(kDockFloat)) {
    button->SetVisible(row != 0);
    button->SetLabel(floats ? Translate("Back into this window")
                            : Translate("In a window of its own"));
  }
}

void MainWindowDock::OnComponent(gui::Component& source, util::Message& message) {
  if (source.GetId() != kDockFloat || message.id != gui::kMsgClicked || m_shown == 0) return;
  const bool floats = Floats(m_shown);
  GetWindows().Drop(kPanel, m_shown);
  if (!floats) GetWindows().Open(kPanel, m_shown);
  Show();
}

void MainWindowDock::OnCommand(int command) {
  if (command != kCommandConfigure || FirstRig() == 0) return;
  Show();
  if (m_floats) {
    GetWindows().Open(kPanel, m_shown);
    return;
  }
  GetWindow().ShowPage(kPageParameters);
  if (Window* panel = FindDocked(m_shown)) panel->GetRoot()->TakeFocus();
}

void MainWindowDock::OnCore(const util::Message& message) {
  if (NewsIn<RowSelected>(message)) {
    Show();
  } else if (const auto* deleted = NewsIn<RowDeleted>(message)) {
    GetWindows().DropRow(deleted->row);
    m_docked.erase(std::remove(m_docked.begin(), m_docked.end(), deleted->row), m_docked.end());
    if (deleted->row == m_shown) Show();
  }
}

void MainWindowDock::OnLive() {
  // The window of a panel that floats may have been closed.
  if (m_shown != 0 && Floats(m_shown) != m_floats) Show();
}

}  // namespace orv::rws::core::windows
