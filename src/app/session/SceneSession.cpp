#include "app/session/SceneSession.h"

#include <QDateTime>
#include <algorithm>
#include <filesystem>
#include <utility>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/GltfWriter.h"
#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "app/session/Losses.h"
#include "app/session/takes/KeptTakes.h"
#include "core/CoreImplementation.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/Product.h"
#include "core/tools/Tool.h"
#include "plugins/release/all/AllRigs.h"
#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

namespace orv::app {

SceneSession::SceneSession()
    : m_session(std::make_unique<rws::adaptor::headless::HeadlessSession>(
          rws::addon::AllRigs(), rws::addon::MakeTemplatePlugin)),
      m_takes(std::make_unique<KeptTakes>(*this)) {
  m_takes->now = [] { return QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toStdString(); };
  m_takes->version = rws::core::kProductVersion;
}

SceneSession::~SceneSession() = default;

std::string SceneSession::Open(const std::string& path, const std::string& clip) {
  std::string error;
  if (!m_session->Open(path, error, clip)) return error;
  m_losses.reset();
  m_folder = std::filesystem::absolute(path).parent_path().string() + "/";
  m_warnings = m_session->TakeWarnings();
  error = FindLostRecords(path, clip);
  const std::string takes = m_takes->Load();
  if (!takes.empty()) m_warnings.push_back(path + ": " + takes);
  RestartLosses();  // last: it knows nodes and rigs by where they are
  return error;
}

void SceneSession::Clear() {
  m_losses.reset();
  m_session->New();
  m_takes->Load();
  m_warnings.clear();
  m_session->TakeWarnings();
  RestartLosses();
}

std::string SceneSession::Save(const std::string& path) {
  std::string error;
  m_takes->Store();
  return m_session->Save(path, error) ? std::string() : error;
}

std::unique_ptr<rws::adaptor::headless::Scene> SceneSession::Copy(std::string& error) {
  namespace headless = rws::adaptor::headless;
  std::string bytes;
  m_takes->Store();
  if (!m_session->Store(error)) return nullptr;
  const headless::WriteResult written =
      headless::GltfWriter::WriteMemory(GetScene(), headless::GltfForm::kBinary, bytes);
  error = written.error;
  if (!written) return nullptr;
  headless::ReadOptions options;
  options.folder = m_folder;
  headless::ReadResult read = headless::GltfReader::ReadMemory(std::move(bytes), "scene", options);
  error = read.error;
  return std::move(read.scene);
}

std::vector<std::string> SceneSession::TakeWarnings() {
  for (std::string& text : m_session->TakeWarnings()) m_warnings.push_back(std::move(text));
  return std::exchange(m_warnings, {});
}

LossReport SceneSession::FindLosses() const {
  return m_losses ? m_losses->Report() : LossReport();
}

void SceneSession::RestartLosses() {
  m_losses = std::make_unique<Losses>(GetCore(), GetScene());
}

rws::core::CoreImplementation& SceneSession::GetCore() {
  return m_session->GetCore();
}

rws::adaptor::headless::HeadlessAdaptor& SceneSession::GetAdaptor() {
  return m_session->GetAdaptor();
}

rws::adaptor::headless::Scene& SceneSession::GetScene() {
  return m_session->GetScene();
}

const rws::core::CoreImplementation& SceneSession::GetCore() const {
  return m_session->GetCore();
}

const rws::adaptor::headless::HeadlessAdaptor& SceneSession::GetAdaptor() const {
  return m_session->GetAdaptor();
}

std::map<std::string, std::set<std::string>> SceneSession::NodeFamilies() {
  std::map<std::string, std::set<std::string>> families;
  for (const auto* node : GetScene().GetNodes()) {
    if (!node->GetTag().empty()) return {};  // of a record that could not be opened, which was told
    const std::string& name = node->GetName();
    for (std::size_t at = name.find('_'); at != std::string::npos; at = name.find('_', at + 1))
      families[name.substr(0, at)].insert(name.substr(at + 1));
  }
  for (auto family = families.begin(); family != families.end();)
    family = family->second.size() < 2 ? families.erase(family) : std::next(family);
  return families;
}

std::string SceneSession::FindLostRecords(const std::string& path, const std::string& clip) {
  std::error_code ignored;
  if (!GetCore().List(false).empty() || !std::filesystem::is_regular_file(path, ignored)) return {};
  const std::map<std::string, std::set<std::string>> families = NodeFamilies();
  if (families.empty()) return {};
  // What nodes a kind has is known by making one, for which the scene gives way for a moment.
  m_session->New();
  for (rws::core::Tool* tool : GetCore().GetLibrary().GetTools()) {
    const rws::core::Instance* rig = GetCore().CreateToolFromFactory(tool->GetDisplayId(), {});
    if (!rig) continue;
    const std::vector<rws::core::CoreNode*> nodes = rig->GetNodes();
    for (const auto& [name, found] : families) {
      const auto there = std::count_if(nodes.begin(), nodes.end(), [&found = found](auto* node) {
        return found.count(node->GetName()) > 0;
      });
      if (there < 2 || 2 * static_cast<std::size_t>(there) < nodes.size()) continue;
      m_warnings.push_back(
          path + ": the nodes " + name + "_... are named like those of a " + tool->GetDisplayId() +
          ", but the file has no record of that rig: it is a delivery, or another program has "
          "dropped the custom data (export with custom properties, or go on from the file before)");
    }
  }
  std::string error;
  const bool opened = m_session->Open(path, error, clip);
  m_session->TakeWarnings();  // told already
  return opened ? std::string() : error;
}

}  // namespace orv::app
