// What the desktop program writes for others.
#include <QFile>
#include <QTemporaryDir>
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
#include "app/session/anyhost/Monitor.h"
#include "app/session/anyhost/Names.h"
#include "app/studio/Studio.h"
#include "core/CoreImplementation.h"
#include "gui/Texts.h"
#include "util/AtomicFile.h"

namespace orv::app {

using gui::Translate;

void Studio::ExportScene() {
  const std::string title = Translate("Export for delivery");
  const std::string path = m_windows.ChooseFileToSave(title, Translate("Scenes (*.glb *.gltf)"),
                                                      "exports", m_document.title(), ".glb");
  if (path.empty()) return;
  // A scene of its own: the open one keeps its rigs.
  const QTemporaryDir folder;
  const std::string copy = QFile::encodeName(folder.filePath("scene.glb")).toStdString();
  std::string problem = m_document.session().save(copy);
  if (!problem.empty()) return Show(title, Problem{"", problem, "", {}});
  auto read = rws::adaptor::headless::GltfReader::read(copy, {});
  if (!read) return Show(title, Problem{"", read.error, "", {}});
  CleanResult cleaned = cleanScene(*read.scene, {}, keyedRange(*read.scene), Monitor());
  problem = writeDelivery(*read.scene, path, cleaned.warnings);
  DocumentResult result;
  result.problem = Problem{"", problem, "", {}};
  result.warnings = std::move(cleaned.warnings);
  ShowResult(title, result);
}

void Studio::ExportPoses() {
  const std::string path =
      m_windows.ChooseFileToSave(Translate("Export poses"), Translate("Tables (*.csv)"), "exports",
                                 m_document.title() + ".csv", ".csv");
  if (path.empty()) return;
  const PosesResult written =
      writePoses(m_document.scene(), {}, playbackRange(m_document.scene()), path, Monitor());
  if (!written.error.empty()) Show(Translate("Export poses"), Problem{"", written.error, "", {}});
}

void Studio::ExportPicture() {
  const std::string path =
      m_windows.ChooseFileToSave(Translate("Export picture"), Translate("Pictures (*.png *.svg)"),
                                 "exports", m_document.title() + ".png", ".png");
  if (path.empty()) return;
  std::vector<PlottedScene> scenes;
  scenes.push_back(plotScene(m_document.scene(), m_document.core().List(false),
                             playbackRange(m_document.scene()), m_document.title(), Monitor()));
  if (scenes.front().data.paths.empty())
    return Show(Translate("Export picture"),
                Problem{m_document.title(), Translate("there is no rig to draw"), "", {}});
  const PlotSheet sheet = sheetOf(std::move(scenes));
  const std::string picture = endingOf(path) == ".svg" ? drawSvg(sheet) : drawPng(sheet);
  std::string error = picture.empty() ? Translate("the picture could not be made") : std::string();
  if (error.empty()) util::writeFile(path, picture, &error);
  if (!error.empty()) Show(Translate("Export picture"), Problem{path, error, "", {}});
}

}  // namespace orv::app
