#include "core/windows/MainWindowUndo.h"

#include "core/CoreImplementation.h"
#include "core/services/Translation.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ListBox.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::Item;
using gui::componentinterface::ListBox;

/// What begins the names of steps that end with a name or a parameter's label, the longer before
/// those that they begin with.
constexpr const char* kSteps[] = {
    Translatable("Add %1"),    Translatable("Change response of %1"),
    Translatable("Change %1"), Translatable("Check %1"),
    Translatable("Clone %1"),  Translatable("Create group %1"),
    Translatable("Create %1"), Translatable("Delete group %1"),
    Translatable("Delete %1"), Translatable("Drop %1"),
    Translatable("Fit %1"),    Translatable("Import %1"),
    Translatable("Map %1"),    Translatable("Move %1"),
    Translatable("Place %1"),  Translatable("Rename %1"),
    Translatable("Reset %1"),  Translatable("Scale %1"),
    Translatable("Select %1"), Translatable("SetParent %1"),
    Translatable("Turn %1"),   Translatable("Uncheck %1"),
};

/// Hosts and scenes hold the names of steps in English.
std::string StepName(const std::string& name) {
  const std::string whole = Translate(name);
  if (whole != name) return whole;
  for (const std::string step : kSteps) {
    const std::string verb = step.substr(0, step.size() - 2);
    if (name.compare(0, verb.size(), verb) != 0) continue;
    // A node's name has a mark, which tells it from a label.
    const std::string what = name.substr(verb.size());
    return Translate(step, {what.compare(0, 1, "#") == 0 ? what.substr(1) : Translate(what)});
  }
  return name;
}

/// For a menu, in which "&" marks a letter.
std::string InMenu(std::string text) {
  for (std::size_t at = 0; (at = text.find('&', at)) != std::string::npos; at += 2)
    text.insert(at, "&");
  return text;
}

}  // namespace

void MainWindowUndo::Show() {
  if (SceneBrowser* browser = GetBrowser()) {
    m_steps = browser->GetUndoSteps();
  } else if (gui::Component* button = GetWindow().Find(kPageUndo)) {
    button->SetVisible(false);  // the host shows its own
  }
  std::vector<Item> items(m_steps.names.size() + 1);
  items[0].text = Translate("As it was opened");
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i].id = static_cast<int>(i);
    if (i > 0) items[i].text = StepName(m_steps.names[i - 1]);
    items[i].dim = i > m_steps.position;
  }
  With<ListBox>(kUndoList, [&](ListBox& list) {
    const int position = static_cast<int>(m_steps.position);
    list.SetItems(std::move(items));
    list.Select({position});
    list.ShowItem(position);
  });
}

void MainWindowUndo::ShowCommands() {
  const std::string locked = GetWindow().WhyLocked();
  const bool own = GetBrowser() != nullptr;
  const std::size_t at = m_steps.position;
  const bool canUndo = !own || at > 0, canRedo = !own || at < m_steps.names.size();
  GetWindow().ShowCommandLabel(
      kCommandUndo, own && canUndo
                        ? Translate("&Undo %1", {InMenu(StepName(m_steps.names[at - 1]))})
                        : Translate("&Undo"));
  GetWindow().ShowCommandLabel(
      kCommandRedo, own && canRedo ? Translate("&Redo %1", {InMenu(StepName(m_steps.names[at]))})
                                   : Translate("&Redo"));
  GetWindow().ShowCommand(kCommandUndo, canUndo && locked.empty(),
                          canUndo ? locked : Translate("There is nothing to undo."));
  GetWindow().ShowCommand(kCommandRedo, canRedo && locked.empty(),
                          canRedo ? locked : Translate("There is nothing to redo."));
  GetWindow().SetEnabled(kUndoList, locked.empty(), locked);
}

void MainWindowUndo::OnCommand(int command) {
  if (!GetWindow().WhyLocked().empty()) return;
  if (command == kCommandUndo) GetCore().Undo();
  if (command == kCommandRedo) GetCore().Redo();
}

void MainWindowUndo::OnComponent(gui::Component& source, util::Message& message) {
  if (source.GetId() != kUndoList || !GetBrowser()) return;
  // With the keyboard one moves along the list first.
  if (message.id != gui::kMsgActivated || message.param < 0) return;
  GetBrowser()->GoToStep(static_cast<std::size_t>(message.param));
  Show();
}

}  // namespace orv::rws::core::windows
