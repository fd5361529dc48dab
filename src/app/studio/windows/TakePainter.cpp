#include "app/studio/windows/TakePainter.h"

#include <QCoreApplication>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/session/SceneSession.h"
#include "app/session/document/SceneDocument.h"
#include "app/session/takes/KeptTakes.h"
#include "core/services/DataRoot.h"
#include "gui/Texts.h"

namespace orv::app {

namespace {

constexpr int kCalm = 1000;  ///< ms without anything going on before it begins

/// Empty where the text is not what the verb tells.
std::vector<TakePath> ReadTakePaths(const QByteArray& text) {
  std::vector<TakePath> paths;
  const auto all = nlohmann::json::parse(text.begin(), text.end(), nullptr, false);
  if (!all.is_object() || all.value("same", false) != true) return {};
  for (const auto& each : all.value("paths", nlohmann::json::array())) {
    TakePath path{each.value("rig", std::string()), {}};
    for (const auto& place : each.value("places", nlohmann::json::array()))
      if (place.is_array() && place.size() == 2 && place[0].is_number() && place[1].is_number())
        path.places.emplace_back(place[0].get<double>(), place[1].get<double>());
    if (!path.places.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace

TakePainter::TakePainter(SceneDocument& document, Done done)
    : m_document(document), m_done(std::move(done)) {
  m_calm.start();
}

TakePainter::~TakePainter() {
  Stop();
}

bool TakePainter::MayWork() const {
  return !m_document.GetPath().empty() && !m_document.IsDirty() && !m_document.IsRunning();
}

bool TakePainter::HasFailed(const KeptTake& take) const {
  return m_failed.count(take.hash) != 0;
}

void TakePainter::GoOn(const KeptTake* missing) {
  if (!MayWork() || !missing || (m_process && missing->hash != m_hash)) Stop();
  if (!MayWork()) m_calm.restart();
  if (missing && !m_process && m_calm.elapsed() > kCalm) Begin(*missing);
}

void TakePainter::Begin(const KeptTake& take) {
  m_hash = take.hash;
  m_process = new QProcess(QCoreApplication::instance());
  m_process->setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(m_process.data(),
                   static_cast<void (QProcess::*)(int, QProcess::ExitStatus)>(&QProcess::finished),
                   this, [this](int status, QProcess::ExitStatus how) {
                     Read(how == QProcess::NormalExit ? status : -1);
                   });
  QObject::connect(m_process.data(), &QProcess::errorOccurred, this,
                   [this](QProcess::ProcessError error) {
                     if (error == QProcess::FailedToStart) Read(-1);
                   });
  m_process->start(
      QCoreApplication::applicationDirPath() + "/rigwright",
      {"--json", "--quiet", "--data-root", QString::fromStdString(rws::core::DataRoot::Get()),
       "takes", QString::fromStdString(m_document.GetPath()), "path",
       QString::number(take.number)});
}

void TakePainter::Read(int status) {
  if (!m_process) return;
  QProcess* const process = m_process;
  m_process = nullptr;
  process->deleteLater();
  const std::vector<TakePath> paths =
      status == 0 ? ReadTakePaths(process->readAllStandardOutput()) : std::vector<TakePath>();
  if (paths.empty()) m_failed.insert(m_hash);
  for (const KeptTake& take : m_document.GetSession().GetTakes().GetTakes())
    if (take.hash == m_hash && !paths.empty()) return m_done(take, paths);
}

/// The process is not waited for: it goes when it has ended.
void TakePainter::Stop() {
  if (!m_process) return;
  QProcess* const process = m_process;
  m_process = nullptr;
  process->disconnect(this);
  QObject::connect(process,
                   static_cast<void (QProcess::*)(int, QProcess::ExitStatus)>(&QProcess::finished),
                   process, &QObject::deleteLater);
  process->kill();
}

std::string TakePainter::WhyNone(const KeptTake& take) const {
  using gui::Translate;
  if (HasFailed(take))
    return Translate("Its path is drawn when it is used: by itself it comes to other poses now.");
  if (MayWork()) return Translate("Its path is being drawn.");
  return Translate("Its path is drawn when the scene is saved, or when it is used.");
}

}  // namespace orv::app
