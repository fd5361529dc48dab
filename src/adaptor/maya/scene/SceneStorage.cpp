#include "adaptor/maya/scene/SceneStorage.h"

#include <algorithm>
#include <utility>

#include "adaptor/common/HostAdaptor.h"
#include "adaptor/maya/scene/CStorageNode.h"
#include "adaptor/maya/scene/ModifiedFlag.h"
#include "adaptor/maya/scene/PluginXML.h"
#include "adaptor/maya/scene/StateBuilder.h"
#include "adaptor/maya/scene/StorageNode.h"
#include "core/CoreImplementation.h"
#include "core/instances/RecordKeys.h"
#include "util/xml/Tag.h"

namespace orv::rws::adaptor::maya {

namespace {

using util::xml::Element;
using util::xml::Tag;

constexpr char kSceneNodeName[] = "rigwrightScene";
constexpr char kRigNodeName[] = "rigwrightRig";

/// Whether a node of the namespace `space` stands in `group` or below it.
bool IsWithin(const std::string& space, const std::string& group) {
  return group.empty() || space == group || space.rfind(group + ":", 0) == 0;
}

void RenameInRows(Element& rows, const std::string& from, const std::string& to) {
  for (Element* child : rows.children) {
    if (child->isTag(core::record::kRig) && child->attribute(core::record::kName) == from)
      child->setAttribute(core::record::kName, to);
    RenameInRows(*child, from, to);
  }
}

/// Both texts of rows as one.
std::string JoinRows(const std::string& first, const std::string& second) {
  Tag joined(""), added("");
  if (first.empty() || joined.loadText(first) != 0) return second;
  if (second.empty() || added.loadText(second) != 0) return first;
  for (const Element* child : added.children) joined.addChild(*child);
  return joined.toText("", "");
}

}  // namespace

SceneStorage::SceneStorage(core::CoreImplementation& core, HostAdaptor& adaptor, Teller tell)
    : m_core(core), m_adaptor(adaptor), m_tell(std::move(tell)), m_rigs(core, adaptor, m_tell) {}

bool SceneStorage::Write() {
  const ModifiedFlag flag;
  DeleteStorage();
  std::vector<RigRecord> records;
  std::string rows, error;
  if (!m_rigs.Store(records, rows, error)) {
    m_tell("the rigs are not in the file that is being written: " + error);
    return false;
  }
  SceneState state;
  state.rows = rows;
  for (const RigRecord& record : records) state.order.push_back(record.name);
  std::vector<std::string> handles;
  for (const TaggedNode& node : FindTaggedNodes()) handles.push_back(node.tag);
  StorageValues scene;
  scene.SetText(kAdaptorName, m_adaptor.GetAdaptorName());
  scene.SetText(kAdaptorState, BuildState(state));
  scene.SetTexts(kNodeHandles, std::move(handles));
  bool made = MakeStorage(StorageNode::kId, kSceneNodeName, false, scene);
  for (const RigRecord& record : records)
    made = MakeStorage(CStorageNode::kId, kRigNodeName, true, StoreRecord(record)) && made;
  if (made) return true;
  DeleteStorage();
  m_tell(
      "the rigs are not in the file that is being written: the nodes that keep them could not "
      "be made (load the plug-in anew and save again)");
  return false;
}

void SceneStorage::Clear() {
  const ModifiedFlag flag;
  DeleteStorage();
}

bool SceneStorage::IsThere() const {
  int referenced = 0;
  return !FindStorage(StorageNode::kId, false, referenced).empty() ||
         !FindStorage(CStorageNode::kId, true, referenced).empty();
}

void SceneStorage::Forget() {
  m_rigs.Clear();
  m_own.clear();
  m_came.clear();
  m_toldReferenced = false;
}

std::vector<SceneStorage::Group> SceneStorage::ReadGroups() {
  std::vector<Group> groups;
  std::vector<std::vector<std::string>> orders;
  const auto groupOf = [&](const std::string& space) {
    for (std::size_t i = 0; i < groups.size(); ++i)
      if (groups[i].space == space) return i;
    groups.push_back({space, {}, {}});
    orders.emplace_back();
    return groups.size() - 1;
  };
  int referenced = 0;
  for (const StoredNode& scene : FindStorage(StorageNode::kId, false, referenced)) {
    const std::size_t at = groupOf(scene.space);
    SceneState state;
    std::string problem;
    if (!ReadState(scene.values.Text(kAdaptorState), state, problem))
      m_tell(
          "the list of the rigs can't be read, so they stand in the order of the scene's nodes: " +
          problem);
    orders[at].insert(orders[at].end(), state.order.begin(), state.order.end());
    groups[at].rows = JoinRows(groups[at].rows, state.rows);
  }
  for (const StoredNode& rig : FindStorage(CStorageNode::kId, true, referenced))
    groups[groupOf(rig.space)].records.push_back(ReadRecord(rig.values));
  for (std::size_t i = 0; i < groups.size(); ++i) Sort(groups[i].records, orders[i]);
  return groups;
}

void SceneStorage::Sort(std::vector<RigRecord>& records,
                        const std::vector<std::string>& order) const {
  const auto place = [&order](const RigRecord& record) {
    return std::find(order.begin(), order.end(), record.name) - order.begin();
  };
  std::stable_sort(records.begin(), records.end(),
                   [&](const RigRecord& a, const RigRecord& b) { return place(a) < place(b); });
}

bool SceneStorage::IsOwn(const MObject& node) const {
  const MObjectHandle handle(node);
  return std::any_of(m_own.begin(), m_own.end(),
                     [&handle](const MObjectHandle& own) { return own == handle; });
}

void SceneStorage::RenameRig(RigRecord& record, Group& group,
                             const std::vector<std::string>& taken) {
  const std::string old = record.name;
  const auto isFree = [&](const std::string& name) {
    return m_core.UniqueName(name) == name &&
           std::find(taken.begin(), taken.end(), name) == taken.end();
  };
  std::string name = m_core.UniqueName(old);
  for (int i = 2; !isFree(name); ++i) name = old + "_" + std::to_string(i);
  RenameRecord(record, name);
  if (record.name == old) return;
  for (auto node = m_came.begin(); node != m_came.end();) {
    const std::string tag = RenameTag(node->tag, old, name);
    if (tag == node->tag || !IsWithin(node->space, group.space)) {
      ++node;
      continue;
    }
    SetTagOf(node->node, tag);
    node = m_came.erase(node);
  }
  Tag rows("");
  if (group.rows.empty() || rows.loadText(group.rows) != 0) return;
  RenameInRows(rows, old, name);
  group.rows = rows.toText("", "");
}

void SceneStorage::MakeUnique(std::vector<Group>& groups, bool beside) {
  std::vector<std::string> taken;
  // Deepest namespaces first: their nodes stand within those around them too.
  std::vector<Group*> order;
  for (Group& group : groups) order.push_back(&group);
  std::stable_sort(order.begin(), order.end(), [](const Group* a, const Group* b) {
    return std::count(a->space.begin(), a->space.end(), ':') + !a->space.empty() >
           std::count(b->space.begin(), b->space.end(), ':') + !b->space.empty();
  });
  // Who stands outside keeps its name.
  for (auto group = groups.begin(); !beside && group != groups.end(); ++group)
    if (group->space.empty())
      for (const RigRecord& record : group->records) taken.push_back(record.name);
  for (Group* group : order) {
    const bool keeps = !beside && group->space.empty();
    for (RigRecord& record : group->records) {
      if (keeps || record.Damaged()) continue;
      const bool clashes = std::find(taken.begin(), taken.end(), record.name) != taken.end() ||
                           (beside && m_core.UniqueName(record.name) != record.name);
      if (clashes) RenameRig(record, *group, taken);
      taken.push_back(record.name);
    }
  }
}

void SceneStorage::Open() {
  const ModifiedFlag flag;
  m_own.clear();
  m_came = FindTaggedNodes();
  std::vector<Group> groups = ReadGroups();
  MakeUnique(groups, false);
  std::vector<RigRecord> records;
  std::string rows;
  for (Group& group : groups) {
    records.insert(records.end(), group.records.begin(), group.records.end());
    rows = JoinRows(rows, group.rows);
  }
  DeleteStorage();
  m_rigs.Load(records, rows);
  m_came.clear();
}

void SceneStorage::NoteOwn() {
  m_own.clear();
  for (const TaggedNode& node : FindTaggedNodes()) m_own.emplace_back(node.node);
}

void SceneStorage::Add() {
  const ModifiedFlag flag;
  m_came = FindTaggedNodes();
  m_came.erase(std::remove_if(m_came.begin(), m_came.end(),
                              [this](const TaggedNode& node) { return IsOwn(node.node); }),
               m_came.end());
  std::vector<Group> groups = ReadGroups();
  MakeUnique(groups, true);
  DeleteStorage();
  for (const Group& group : groups) m_rigs.Add(group.records, group.rows);
  m_own.clear();
  m_came.clear();
}

void SceneStorage::TellReferenced() {
  if (m_toldReferenced) return;
  int referenced = 0;
  FindStorage(CStorageNode::kId, true, referenced);
  if (referenced == 0) return;
  m_toldReferenced = true;
  m_tell("the rigs of referenced files stay closed (import the reference to work with them)");
}

}  // namespace orv::rws::adaptor::maya
