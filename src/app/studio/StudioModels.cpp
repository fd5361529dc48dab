// Models that come into the scene, by the menu or by drag and drop, and those made of it.
#include <QTimer>
#include <algorithm>
#include <filesystem>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Names.h"
#include "app/session/models/ModelFile.h"
#include "app/studio/StagePane.h"
#include "app/studio/Studio.h"
#include "app/studio/windows/ImportWindow.h"
#include "app/studio/windows/MakeModelWindow.h"
#include "app/studio/windows/ModelsWindow.h"
#include "app/studio/windows/ProgressWindow.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/Log.h"
#include "gui/Texts.h"

namespace orv::app {

using gui::Translate;

namespace {

bool IsScene(const std::string& path) {
  const std::string ending = EndingOf(path);
  return ending == ".glb" || ending == ".gltf";
}

bool IsRiggedModel(const std::string& path) {
  return EndingOf(path) == ".prm";
}

}  // namespace

void Studio::OpenDropped(const std::vector<std::string>& paths) {
  // The dragging program waits until the event has been handled.
  QTimer::singleShot(0, this, [this, paths] { TakeDropped(paths); });
}

void Studio::TakeDropped(const std::vector<std::string>& paths) {
  // Scenes first: the others come into what is then open.
  const auto scene = std::find_if(paths.begin(), paths.end(), IsScene);
  if (scene != paths.end() && (!MayDiscard() || !Open(*scene))) return;
  for (const std::string& path : paths) {
    if (IsScene(path)) {
      if (path != *scene)
        Tell(
            Translate("%1 was not opened: there is one scene at a time. Import a model from the "
                      "File menu brings it into the open scene.",
                      {FileNameOf(path)}));
      continue;
    }
    if (IsLocked(FileNameOf(path))) return;
    if (IsRiggedModel(path))
      AddModel(path);
    else
      Import(path);
  }
}

void Studio::ImportModel() {
  std::string filter;
  for (const std::string& ending : ModelFile::Endings())
    filter += (filter.empty() ? "*" : " *") + ending;
  const std::string path = m_windows.ChooseFile(
      Translate("Import a model"),
      Translate("Models (%1)", {filter}) + ";;" + Translate("All files (*)"), "models");
  if (path.empty()) return;
  if (IsRiggedModel(path))
    AddModel(path);
  else
    Import(path);
}

void Studio::Import(const std::string& path) {
  const std::string title = Translate("Import a model");
  ModelFile file;
  bool cancelled = false;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, title, Translate("Reading %1...", {FileNameOf(path)}));
    const Problem problem = file.Read(path, progress.MakeMonitor(), cancelled);
    if (problem) return Show(title, problem);
  }
  ImportOptions options;
  if (cancelled || !ImportWindow(m_windows, path, file.GetFacts()).Run(options)) return;
  ImportResult result;
  {
    const Working working(*this);
    result = file.AddTo(m_document.GetSession(), options, Monitor());
  }
  if (result.problem) return Show(title, result.problem);
  ShowNodes(result.nodes);
  std::vector<std::string> notes = result.warnings;
  for (const std::string& text : m_document.TakeWarnings()) notes.push_back(text);
  TellDone(Translate("%1 is in the scene.", {FileNameOf(path)}), notes);
}

void Studio::ShowNodes(const std::vector<std::string>& names) {
  m_browser.SelectNamed(names);
  view::StageView* const picture = m_stage->GetView();
  if (picture && !m_stage->GetCamera()) picture->FrameSelected();
}

std::vector<std::string> Studio::GetGrounds() {
  std::vector<std::string> grounds;
  for (const auto* node : m_document.GetScene().GetNodes())
    if (node->HasMesh() && node->GetTag().empty() && !node->IsHub())
      grounds.push_back(node->GetName());
  // What is called so is meant; else what came first may be.
  std::stable_partition(grounds.begin(), grounds.end(), [](const std::string& name) {
    return name.rfind("ground", 0) == 0 || name.rfind("Ground", 0) == 0 ||
           name.rfind("Terrain", 0) == 0;
  });
  return grounds;
}

void Studio::AddModel(const std::string& path) {
  ModelChoice choice{path, {}};
  if (!ModelsWindow(m_windows, GetGrounds()).Run(choice)) return;
  AddedModel added;
  {
    const Working working(*this);
    added = AddRiggedModel(m_document.GetSession(), choice.path, {{}, choice.ground});
  }
  if (added.problem) return Show(Translate("Pre-rigged models"), added.problem);
  auto& core = m_document.GetCore();
  std::vector<int> rows;
  for (const std::string& rig : added.rigs)
    if (const auto* found = core.FindInstance(rig)) rows.push_back(found->GetIdentity());
  core.SetSelection(rows);
  ShowNodes(added.nodes);
  std::vector<std::string> notes = added.warnings;
  for (const std::string& text : m_document.TakeWarnings()) notes.push_back(text);
  TellDone(Translate("%1 is in the scene: %2.", {FileNameOf(choice.path), Joined(added.rigs)}),
           notes);
}

void Studio::MakeModel() {
  const std::string title = Translate("Make a pre-rigged model");
  ModelSelection selection;
  ModelCard card;
  if (!MakeModelWindow(m_windows, m_browser).Run(selection, card)) return;
  std::error_code ignored;
  std::filesystem::create_directories(ModelsWindow::GetUserFolder(), ignored);
  const std::string path =
      m_windows.ChooseFileToSave(title, ModelsWindow::GetFilter(), "own models",
                                 card.title + ".prm", ".prm", ModelsWindow::GetUserFolder());
  if (path.empty()) return;
  std::vector<std::string> warnings;
  const Problem problem = MakeRiggedModel(m_document.GetSession(), selection, card, path, warnings);
  if (problem) return Show(title, problem);
  TellDone(Translate("%1 was written.", {path}), warnings);
}

std::string Studio::MoreInLog(std::size_t count) {
  return Translate(count == 1 ? "One more stands in the log." : "%1 more stand in the log.",
                   {std::to_string(count)});
}

void Studio::TellDone(const std::string& text, const std::vector<std::string>& notes) {
  constexpr std::size_t kMostTold = 3;
  std::string told = text;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    rws::core::LogEntry(rws::core::LogLevel::kWarning, notes[i]);
    if (i < kMostTold) told += "\n" + notes[i];
  }
  if (notes.size() > kMostTold) told += "\n" + MoreInLog(notes.size() - kMostTold);
  Tell(told);
}

}  // namespace orv::app
