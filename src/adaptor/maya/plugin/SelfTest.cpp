#include "adaptor/maya/plugin/SelfTest.h"

#include <maya/MFileIO.h>
#include <maya/MGlobal.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <filesystem>

#include "adaptor/maya/plugin/PluginSession.h"
#include "adaptor/maya/scene/ModifiedFlag.h"
#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr const char* kStateNames[] = {"held", "refuted", "skipped"};

QJsonArray ProbeRows(const std::vector<ProbeOutcome>& outcomes) {
  QJsonArray rows;
  for (const ProbeOutcome& outcome : outcomes) {
    QJsonObject row;
    row["id"] = outcome.probe->id;
    row["belief"] = outcome.probe->belief;
    row["source"] = outcome.probe->source == ProbeSource::kDocumented ? "documentation" : "belief";
    row["result"] = kStateNames[static_cast<int>(outcome.state)];
    if (!outcome.detail.empty()) row["detail"] = QString::fromStdString(outcome.detail);
    QJsonArray notes;
    for (const std::string& note : outcome.notes) notes.append(QString::fromStdString(note));
    if (!notes.isEmpty()) row["seen"] = notes;
    if (outcome.state == ProbeState::kRefuted)
      row["off"] = QString::fromStdString(RefutedText(*outcome.probe));
    rows.append(row);
  }
  return rows;
}

int Count(const std::vector<ProbeOutcome>& outcomes, ProbeState state) {
  int count = 0;
  for (const ProbeOutcome& outcome : outcomes) count += outcome.state == state ? 1 : 0;
  return count;
}

std::string ReportText(const std::vector<ProbeOutcome>& outcomes) {
  QJsonObject report;
  report["maya"] = MGlobal::mayaVersion().asChar();
  report["api"] = MGlobal::apiVersion();
  report["plugin"] = "7.0";
  report["held"] = Count(outcomes, ProbeState::kHeld);
  report["refuted"] = Count(outcomes, ProbeState::kRefuted);
  report["skipped"] = Count(outcomes, ProbeState::kSkipped);
  report["probes"] = ProbeRows(outcomes);
  return QJsonDocument(report).toJson(QJsonDocument::Indented).toStdString();
}

std::vector<int> RefutedIn(const std::string& report) {
  std::vector<int> ids;
  const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(report));
  const QJsonArray rows = document.object()["probes"].toArray();
  for (const QJsonValue& row : rows)
    if (row.toObject()["result"].toString() == kStateNames[1])
      ids.push_back(row.toObject()["id"].toInt());
  return ids;
}

std::string WhyNoSelfTest() {
  const PluginSession* const session = PluginSession::Get();
  if (session && PluginSession::Get()->GetCore().IsRecording())
    return "The self-test waits until the take or the run has ended.";
  if (ModifiedFlag::IsSet())
    return "The self-test works in a new scene: save this one first, or make a new one.";
  return {};
}

}  // namespace

std::string GetSelfTestReport() {
  return core::DataRoot::GetDataFolder() + "/maya-selftest-" +
         std::to_string(MGlobal::apiVersion()) + ".json";
}

SelfTestResult RunSelfTest(const std::set<int>& forced) {
  const std::string why = WhyNoSelfTest();
  if (!why.empty()) return {{}, why};
  MFileIO::newFile(true);
  const std::vector<ProbeOutcome> outcomes = RunProbes(forced);
  MFileIO::newFile(true);
  const std::string text = ReportText(outcomes), path = GetSelfTestReport();
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  std::string problem;
  const bool written = util::writeFile(path, text, &problem);
  Features::instance().Reset();
  ApplyRefuted(RefutedIn(text));
  if (!written) return {{}, "The self-test's report can't be written: " + problem};
  std::string told = "Self-test: " + std::to_string(Count(outcomes, ProbeState::kHeld)) +
                     " held, " + std::to_string(Count(outcomes, ProbeState::kRefuted)) +
                     " refuted, " + std::to_string(Count(outcomes, ProbeState::kSkipped)) +
                     " skipped. The report is " + path;
  for (const ProbeOutcome& outcome : outcomes)
    if (outcome.state == ProbeState::kRefuted) told += "\n" + RefutedText(*outcome.probe);
  return {path, told};
}

std::string ApplyLastSelfTest() {
  std::string report;
  if (!util::readFile(GetSelfTestReport(), report))
    return "Orvel Rigwright has not been tested in this version of Maya yet: make a new scene and "
           "run OrvelSelfTestCmd, which takes some seconds";
  const std::vector<int> refuted = RefutedIn(report);
  ApplyRefuted(refuted);
  if (refuted.empty()) return {};
  std::string told;
  for (const Probe& probe : AllProbes())
    for (const int id : refuted)
      if (id == probe.id) told += (told.empty() ? "" : "\n") + RefutedText(probe);
  return told;
}

}  // namespace orv::rws::adaptor::maya
