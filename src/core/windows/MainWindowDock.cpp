#include "core/windows/MainWindowDock.h"

#include <QString>
#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/Program.h"
#include "core/windows/ToolConfigPanel.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;

constexpr std::size_t kMostDocked = 8;
constexpr WindowKind kPanel = WindowKind::kToolConfig;

std::string Html(const std::string& text) {
  return QString::fromStdString(text).toHtmlEscaped().toStdString();
}

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

/// What a user without a rig may do, each with a link that does it.
std::string MainWindowDock::FirstSteps() const {
  struct Step {
    int command;
    const char* text;
    const char* link;
  };
  static constexpr Step kSteps[] = {
      {0, "A rig moves things. %1 in the list at the left makes one.", "Double-click on a tool"},
      {kCommandOpenModel, "%1 brings a car or a tank that has its rigs already.",
       "A pre-rigged model"},
      {kCommandImport, "%1 brings your own model into the scene.", "An import"},
      {kCommandHelp, "%1 lead from there to the first take.", "The first steps"}};
  const Program& program = GetWindows().GetProgram();
  std::string text = "<p><b>" + Html(Translate("What to do first")) + "</b></p>";
  for (const Step& step : kSteps) {
    const std::string link = Html(Translate(step.link));
    if (step.command == 0)
      text += "<p>" + Translate(step.text, {link}) + "</p>";
    else if (program.HasCommand(step.command))
      text += "<p>" +
              Translate(step.text,
                        {"<a href=\"" + std::to_string(step.command) + "\">" + link + "</a>"}) +
              "</p>";
  }
  return text;
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
  const bool isEmpty = GetCore().GetRows().empty();
  GetWindow().Tell(kDockHelp, isEmpty ? FirstSteps() : std::string());
  GetWindow().Tell(kDockHint, isEmpty    ? std::string()
                              : row == 0 ? Translate("Select a rig to see its parameters.")
                              : floats ? Translate("The parameters stand in a window of their own.")
                                       : std::string());
  if (gui::Component* button = GetWindow().Find(kDockFloat)) {
    button->SetVisible(row != 0);
    button->SetLabel(floats ? Translate("Back into this window")
                            : Translate("In a window of its own"));
  }
}

void MainWindowDock::OnComponent(gui::Component& source, util::Message& message) {
  if (const auto* link = gui::DataOf<gui::LinkClicked>(message);
      link && source.GetId() == kDockHelp)
    return GetWindow().RunCommand(QString::fromStdString(link->link).toInt());
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
  if (NewsIn<RowSelected>(message) || NewsIn<RowCreated>(message)) {
    Show();
  } else if (const auto* deleted = NewsIn<RowDeleted>(message)) {
    GetWindows().DropRow(deleted->row);
    m_docked.erase(std::remove(m_docked.begin(), m_docked.end(), deleted->row), m_docked.end());
    if (deleted->row == m_shown || GetCore().GetRows().empty()) Show();
  }
}

void MainWindowDock::OnLive() {
  // The window of a panel that floats may have been closed.
  if (m_shown != 0 && Floats(m_shown) != m_floats) Show();
}

}  // namespace orv::rws::core::windows
