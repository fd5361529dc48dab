// What the desktop program writes for others.
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/plot/PlotPainter.h"
#include "app/plot/PlotScene.h"
#include "app/session/CleanScene.h"
#include "app/session/DeliveryFile.h"
#include "app/session/PosesFile.h"
#include "app/session/SceneRange.h"
#include "app/session/anyhost/Names.h"
#include "app/session/delivery/AnimatedFile.h"
#include "app/studio/StagePane.h"
#include "app/studio/Studio.h"
#include "app/studio/windows/PreviewWindow.h"
#include "app/studio/windows/ProgressWindow.h"
#include "core/CoreImplementation.h"
#include "gui/Texts.h"
#include "util/AtomicFile.h"
#include "util/FrameGrid.h"

namespace orv::app {

using gui::Translate;

void Studio::ExportScene() {
  const std::string title = Translate("Export for delivery");
  const std::string stem = std::filesystem::path(m_document.GetTitle()).stem().string();
  const std::string path = m_windows.ChooseFileToSave(title, Translate("Scenes (*.glb *.gltf)"),
                                                      "exports", stem + "_delivery.glb", ".glb");
  if (path.empty()) return;
  std::error_code none;
  if (std::filesystem::equivalent(path, m_document.GetPath(), none))
    return Show(title, Problem{path,
                               Translate("this is the open scene's own file, which would "
                                         "lose its rigs"),
                               Translate("choose another name"),
                               {}});
  // A scene of its own: the open one keeps its rigs.
  const QTemporaryDir folder;
  const std::string copy = QFile::encodeName(folder.filePath("scene.glb")).toStdString();
  std::string problem = m_document.GetSession().Save(copy);
  if (!problem.empty()) return Show(title, Problem{"", problem, "", {}});
  auto read = rws::adaptor::headless::GltfReader::Read(copy, {});
  if (!read) return Show(title, Problem{"", read.error, "", {}});
  const Working working(*this);
  ProgressWindow progress(m_windows, title, Translate("Writing %1...", {FileNameOf(path)}));
  CleanResult cleaned =
      CleanScene(*read.scene, {}, KeyedRange(*read.scene), progress.MakeMonitor());
  if (progress.IsCancelled()) return;
  problem = WriteDelivery(*read.scene, path, cleaned.warnings);
  if (!problem.empty()) return Show(title, Problem{"", problem, "", {}});
  TellDone(Translate("%1 was written.", {path}), cleaned.warnings);
}

void Studio::ExportPoses() {
  const std::string path =
      m_windows.ChooseFileToSave(Translate("Export poses"), Translate("Tables (*.csv)"), "exports",
                                 m_document.GetTitle() + ".csv", ".csv");
  if (path.empty()) return;
  PosesResult written;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, Translate("Export poses"),
                            Translate("Writing %1...", {FileNameOf(path)}));
    written = WritePoses(m_document.GetScene(), {}, PlaybackRange(m_document.GetScene()), path,
                         progress.MakeMonitor());
    if (progress.IsCancelled()) return;
  }
  if (!written.error.empty())
    return Show(Translate("Export poses"), Problem{"", written.error, "", {}});
  TellDone(Translate("%1 was written.", {path}), {});
}

void Studio::ExportAnimation() {
  const std::string title = Translate("Export animation");
  const std::string stem = std::filesystem::path(m_document.GetTitle()).stem().string();
  const std::string path = m_windows.ChooseFileToSave(
      title,
      Translate("Maya scenes (*.ma);;Animation for Maya's clipboard (*.anim);;USD stages (*.usda)"),
      "exports", stem + ".ma", ".ma");
  if (path.empty()) return;
  AnimatedResult written;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, title, Translate("Writing %1...", {FileNameOf(path)}));
    written = WriteAnimated(m_document.GetScene(), {}, PlaybackRange(m_document.GetScene()),
                            rws::adaptor::UpAxis::kY, path, progress.MakeMonitor());
    if (progress.IsCancelled()) return;
  }
  if (!written.error.empty()) return Show(title, Problem{"", written.error, "", {}});
  TellDone(Translate("%1 was written.", {path}), written.warnings);
}

void Studio::ExportPicture() {
  const std::string path =
      m_windows.ChooseFileToSave(Translate("Export picture"), Translate("Pictures (*.png *.svg)"),
                                 "exports", m_document.GetTitle() + ".png", ".png");
  if (path.empty()) return;
  const Working working(*this);
  ProgressWindow progress(m_windows, Translate("Export picture"),
                          Translate("Writing %1...", {FileNameOf(path)}));
  std::vector<PlottedScene> scenes;
  scenes.push_back(PlotScene(m_document.GetScene(), m_document.GetCore().List(false),
                             PlaybackRange(m_document.GetScene()), m_document.GetTitle(),
                             progress.MakeMonitor()));
  if (progress.IsCancelled()) return;
  if (scenes.front().data.paths.empty())
    return Show(Translate("Export picture"),
                Problem{m_document.GetTitle(), Translate("there is no rig to draw"), "", {}});
  const PlotSheet sheet = SheetOf(std::move(scenes));
  const std::string picture = EndingOf(path) == ".svg" ? DrawSvg(sheet) : DrawPng(sheet);
  std::string error = picture.empty() ? Translate("the picture could not be made") : std::string();
  if (error.empty()) util::writeFile(path, picture, &error);
  if (!error.empty()) return Show(Translate("Export picture"), Problem{path, error, "", {}});
  TellDone(Translate("%1 was written.", {path}), {});
}

PreviewOptions Studio::PreviewOfRange() {
  const auto& scene = m_document.GetScene();
  const double duration = scene.GetFrameDuration();
  PreviewOptions options;
  options.camera = m_stage->GetCamera();
  options.eye = m_stage->GetEye();
  options.first = static_cast<int>(util::firstFrameFrom(scene.GetRangeStart(), duration));
  options.last = static_cast<int>(util::lastFrameUntil(scene.GetRangeEnd(), duration));
  options.isFixedQuality = m_options.isFixedQuality;
  return options;
}

void Studio::ExportPreview() {
  const std::string title = Translate("Export a preview");
  PreviewOptions options = PreviewOfRange();
  std::vector<PreviewWindow::Camera> cameras;
  std::vector<const rws::adaptor::headless::SceneNode*> nodes;
  PreviewWindow::Choice choice;
  for (const auto* node : m_document.GetScene().GetNodes()) {
    if (!node->GetLens()) continue;
    if (node == options.camera) choice.camera = static_cast<int>(cameras.size());
    const double aspect = node->GetLens()->aspectRatio;
    cameras.push_back({node->GetName(), aspect > 0.0 ? aspect : 16.0 / 9.0});
    nodes.push_back(node);
  }
  const std::string frames =
      Translate("Frames %1 to %2, a PNG file each, in a new folder",
                {std::to_string(options.first), std::to_string(options.last)});
  if (!PreviewWindow(m_windows, cameras, frames).Run(choice)) return;
  const std::string folder = m_windows.ChooseFileToSave(
      title, Translate("Folders (*)"), "exports",
      std::filesystem::path(m_document.GetTitle()).stem().string() + "_preview", "");
  if (folder.empty()) return;
  options.camera = choice.camera < 0 ? nullptr : nodes[static_cast<std::size_t>(choice.camera)];
  options.width = choice.width;
  options.height = choice.height;
  options.signs = choice.signs;
  if (choice.overlay) options.overlay = &m_stage->UseOverlay();
  PreviewResult result;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, title, Translate("Writing %1...", {FileNameOf(folder)}));
    result = WritePreview(m_document.GetAdaptor(), options, folder, progress.MakeMonitor());
  }
  if (result.isCancelled)
    return Tell(Translate("The preview was cancelled; nothing of it was kept."));
  if (result.problem) return Show(title, result.problem);
  TellDone(Translate("%1 was written.", {folder}), result.odd);
}

}  // namespace orv::app
