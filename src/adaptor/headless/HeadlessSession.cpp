#include "adaptor/headless/HeadlessSession.h"

#include <algorithm>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessDocument.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/Tool.h"
#include "util/xml/Tag.h"

namespace orv::rws::adaptor::headless {

namespace {

/// The file names a rig beside its record; where the two differ neither can be trusted.
std::string CompareHeads(const RigRecord& record, const util::xml::Tag& tag) {
  if (tag.attribute("type") != record.kind)
    return "its kind is \"" + record.kind + "\", but \"" + tag.attribute("type") +
           "\" in its record";
  if (tag.attribute("name") != record.name)
    return "its record is that of \"" + tag.attribute("name") + "\"";
  return {};
}

}  // namespace

struct HeadlessSession::KeptRecord {
  std::size_t place;
  RigRecord record;
};

HeadlessSession::HeadlessSession(const std::vector<CCameraPlugin*>& rigs, TemplateMaker maker)
    : m_document(std::make_unique<HeadlessDocument>()),
      m_core(std::make_unique<core::CoreImplementation>()) {
  HeadlessAdaptor& adaptor = m_document->adaptor();
  m_core->SetAdaptor(&adaptor);
  m_core->LoadTools(rigs, maker);
  adaptor.SetTimeHandler([this](double time) { m_core->UpdateTime(time); });
  adaptor.SetMessageHandler(
      [this](const std::string& title, const std::string& text) { Warn(title + ": " + text); });
}

HeadlessSession::~HeadlessSession() {
  // The document's undo steps know rigs by their instances: both are there until the core is gone.
  m_document->adaptor().SetTimeHandler(nullptr);
  m_core.reset();
}

HeadlessAdaptor& HeadlessSession::GetAdaptor() {
  return m_document->adaptor();
}

Scene& HeadlessSession::GetScene() {
  return m_document->scene();
}

std::vector<std::string> HeadlessSession::TakeWarnings() {
  for (std::string& text : m_document->takeWarnings()) Warn(text);
  for (std::string& text : m_document->adaptor().TakeWarnings()) Warn(text);
  return std::exchange(m_warnings, {});
}

void HeadlessSession::New() {
  m_core->DropAllRows();
  m_document->close();
  m_kept.clear();
  m_core->SetReservedNames({});
}

bool HeadlessSession::Open(const std::string& path, std::string& error, const std::string& clip) {
  m_core->StopRecording();
  ReadOptions options;
  options.clip = clip;
  if (!m_document->open(path, error, options)) return false;
  m_core->DropAllRows();  // the rigs of the scene before; none touches its nodes as it goes
  m_kept.clear();
  LoadRigs();
  return true;
}

void HeadlessSession::LoadRigs() {
  HeadlessAdaptor& adaptor = m_document->adaptor();
  // What opening a file does to the scene is no step of the user's.
  const std::vector<RigRecord> records = std::exchange(m_document->records(), {});
  std::vector<std::string> keptNames;
  for (const RigRecord& record : records) {
    if (record.damaged()) keptNames.push_back(record.name);
  }
  m_core->SetReservedNames(keptNames);
  bool anyNameless = false;
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::string problem = records[i].problem;
    util::xml::Tag record("");
    if (problem.empty() && record.loadText(records[i].record, &problem) != 0)
      problem = "its record can't be read: " + problem;
    if (problem.empty()) problem = CompareHeads(records[i], record);
    if (problem.empty() && m_core->LoadInstance(record, problem)) continue;
    m_kept.push_back({i, records[i]});
    if (!records[i].damaged()) keptNames.push_back(records[i].name);
    anyNameless = anyNameless || records[i].name.empty();
    Warn("the rig " +
         (records[i].name.empty() ? "number " + std::to_string(i + 1) : records[i].name) +
         " can't be opened: " + problem + " (its record is kept as it is when the scene is saved)");
  }
  m_core->SetReservedNames(keptNames);
  LoadRows();
  adaptor.KeepTagsOf(keptNames);
  // A record that does not even tell its name could own any of the tags.
  if (!anyNameless) adaptor.GatherNodes();
  adaptor.ClearUndoHistory();
}

void HeadlessSession::LoadRows() {
  const std::string text = GetScene().rows();
  if (text.empty()) return;
  util::xml::Tag rows("");
  if (const int error = rows.loadText(text))
    Warn(std::string("the groups of the rigs can't be read, so the rigs stand without them: ") +
         util::xml::errorText(error));
  else
    m_core->ReadRows(rows);
}

bool HeadlessSession::StoreRigs(std::string& error) {
  std::vector<RigRecord> records;
  for (core::Instance* instance : m_core->List(false)) {
    RigRecord record;
    record.kind = instance->GetTool()->GetDisplayId();
    record.name = instance->GetInstanceName();
    const util::xml::Tag tag = m_core->SaveInstance(*instance, error);
    if (tag.name.empty()) return false;
    record.record = tag.toText("", "\n");
    records.push_back(std::move(record));
  }
  for (const KeptRecord& kept : m_kept)
    records.insert(
        records.begin() + static_cast<std::ptrdiff_t>(std::min(kept.place, records.size())),
        kept.record);
  m_document->records() = std::move(records);
  util::xml::Tag rows("");
  m_core->WriteRows(rows);
  GetScene().rows() = rows.children.empty() ? std::string() : rows.children.front()->toText("", "");
  return true;
}

bool HeadlessSession::Save(const std::string& path, std::string& error) {
  return StoreRigs(error) && m_document->save(path, error);
}

}  // namespace orv::rws::adaptor::headless
