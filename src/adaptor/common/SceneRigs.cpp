#include "adaptor/common/SceneRigs.h"

#include <algorithm>
#include <utility>

#include "adaptor/common/HostAdaptor.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "core/tools/Tool.h"
#include "util/xml/Tag.h"

namespace orv::rws::adaptor {

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

void SceneRigs::Clear() {
  m_kept.clear();
  m_core.SetReservedNames({});
}

void SceneRigs::OpenAll(const std::vector<RigRecord>& records, std::size_t firstPlace) {
  std::vector<std::string> keptNames;
  for (const KeptRecord& kept : m_kept) keptNames.push_back(kept.record.name);
  for (const RigRecord& record : records) {
    if (record.Damaged()) keptNames.push_back(record.name);
  }
  m_core.SetReservedNames(keptNames);
  for (std::size_t i = 0; i < records.size(); ++i) {
    std::string problem = records[i].problem;
    util::xml::Tag record("");
    if (problem.empty() && record.loadText(records[i].record, &problem) != 0)
      problem = "its record can't be read: " + problem;
    if (problem.empty()) problem = CompareHeads(records[i], record);
    if (problem.empty() && m_core.LoadInstance(record, problem)) continue;
    m_kept.push_back({firstPlace + i, records[i]});
    if (!records[i].Damaged()) keptNames.push_back(records[i].name);
    m_warn("the rig " +
           (records[i].name.empty() ? "number " + std::to_string(i + 1) : records[i].name) +
           " can't be opened: " + problem +
           " (its record is kept as it is when the scene is saved)");
  }
  m_core.SetReservedNames(keptNames);
}

void SceneRigs::Load(const std::vector<RigRecord>& records, const std::string& rows) {
  m_kept.clear();
  OpenAll(records, 0);
  LoadRows(rows);
  Tidy();
}

void SceneRigs::Add(const std::vector<RigRecord>& records, const std::string& rows) {
  namespace keys = core::record;
  util::xml::Tag before("");
  m_core.WriteRows(before);
  util::xml::Tag joined(keys::kRows);
  if (!before.children.empty()) joined = *before.children.front();
  // Rigs that rows do not name come last, so those that are there are named.
  for (const core::Instance* instance : m_core.List(false)) {
    if (!before.children.empty()) break;
    util::xml::Tag rig(keys::kRig);
    rig.setAttribute(keys::kName, instance->GetInstanceName());
    joined.emplaceChild(std::move(rig));
  }
  OpenAll(records, m_core.List(false).size() + m_kept.size());
  util::xml::Tag added("");
  if (!rows.empty() && added.loadText(rows) == 0) {
    for (const util::xml::Element* child : added.children) joined.addChild(*child);
    LoadRows(joined.toText("", ""));
  } else if (!rows.empty()) {
    LoadRows(rows);  // tells what is wrong
  }
  Tidy();
}

void SceneRigs::Tidy() {
  std::vector<std::string> names;
  for (const KeptRecord& kept : m_kept) names.push_back(kept.record.name);
  // A record that does not even tell its name could own any of the tags.
  const bool anyNameless = std::find(names.begin(), names.end(), std::string()) != names.end();
  m_adaptor.KeepTagsOf(std::move(names));
  if (!anyNameless) m_adaptor.GatherNodes();
  // What opening a file does to the scene is no step of the user's.
  m_adaptor.ClearUndoHistory();
}

void SceneRigs::LoadRows(const std::string& text) {
  if (text.empty()) return;
  util::xml::Tag rows("");
  if (const int error = rows.loadText(text))
    m_warn(std::string("the groups of the rigs can't be read, so the rigs stand without them: ") +
           util::xml::errorText(error));
  else
    m_core.ReadRows(rows);
}

bool SceneRigs::Store(std::vector<RigRecord>& records, std::string& rows, std::string& error) {
  m_core.CheckSaving();
  std::vector<RigRecord> stored;
  for (core::Instance* instance : m_core.List(false)) {
    RigRecord record;
    record.kind = instance->GetTool()->GetDisplayId();
    record.name = instance->GetInstanceName();
    const util::xml::Tag tag = m_core.SaveInstance(*instance, error);
    if (tag.name.empty()) return false;
    record.record = tag.toText("", "\n");
    stored.push_back(std::move(record));
  }
  for (const KeptRecord& kept : m_kept)
    stored.insert(stored.begin() + static_cast<std::ptrdiff_t>(std::min(kept.place, stored.size())),
                  kept.record);
  records = std::move(stored);
  util::xml::Tag tag("");
  m_core.WriteRows(tag);
  rows = tag.children.empty() ? std::string() : tag.children.front()->toText("", "");
  return true;
}

}  // namespace orv::rws::adaptor
