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

void SceneStorage::Sort(std::vector<RigRecord>& records, std::vector<std::string> order) const {
  std::vector<std::pair<std::size_t, RigRecord>> placed;
  for (RigRecord& record : records) {
    const auto place = std::find(order.begin(), order.end(), record.name);
    placed.emplace_back(place - order.begin(), std::move(record));
    if (place != order.end()) *place += '/';  // of no rig: another of this name comes behind
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < placed.size(); ++i) records[i] = std::move(placed[i].second);
}

bool SceneStorage::IsOwn(const MObject& node) const {
  const MObjectHandle handle(node);
  return std::any_of(m_own.begin(), m_own.end(),
                     [&handle](const MObjectHandle& own) { return own == handle; });
}

std::vector<TaggedNode*> SceneStorage::NodesOf(const std::string& rig, const Group& group,
                                               bool ofSecond) {
  std::vector<TaggedNode*> nodes;
  std::vector<std::string> spaces;  // in which there are such nodes, in their order
  for (TaggedNode& node : m_came) {
    if (RenameTag(node.tag, rig, {}) == node.tag || !IsWithin(node.space, group.space)) continue;
    nodes.push_back(&node);
    if (std::find(spaces.begin(), spaces.end(), node.space) == spaces.end())
      spaces.push_back(node.space);
  }
  if (!ofSecond) return nodes;
  const std::string second = spaces.size() > 1 ? spaces[1] : std::string();
  nodes.erase(std::remove_if(nodes.begin(), nodes.end(),
                             [&](const TaggedNode* node) {
                               return spaces.size() < 2 || node->space != second;
                             }),
              nodes.end());
  return nodes;
}

void SceneStorage::RenameRig(RigRecord& record, Group& group, const std::vector<std::string>& taken,
                             bool isSecond) {
  const std::string old = record.name;
  const auto isFree = [&](const std::string& name) {
    return m_core.UniqueName(name) == name &&
           std::find(taken.begin(), taken.end(), name) == taken.end();
  };
  // As the core counts names up: with two digits.
  const std::size_t digits = old.find_last_not_of("0123456789") + 1;
  const std::string stem = digits < old.size() ? old.substr(0, digits) : old + "_";
  std::string name = m_core.UniqueName(old);
  for (int i = 2; !isFree(name); ++i) name = stem + (i < 10 ? "0" : "") + std::to_string(i);
  RenameRecord(record, name);
  if (record.name == old) return;
  for (TaggedNode* node : NodesOf(old, group, isSecond)) {
    node->tag = RenameTag(node->tag, old, name);
    SetTagOf(node->node, node->tag);
  }
  Tag rows("");
  if (isSecond || group.rows.empty() || rows.loadText(group.rows) != 0) return;
  RenameInRows(rows, old, name);
  group.rows = rows.toText("", "");
}

void SceneStorage::MakeUnique(std::vector<Group>& groups, bool beside) {
  // Who stands outside all namespaces keeps its name; then the deepest come first, since their
  // nodes stand within the namespaces around them too.
  const auto depth = [beside](const Group* group) {
    if (group->space.empty()) return beside ? 0 : 1000000;
    return 1 + static_cast<int>(std::count(group->space.begin(), group->space.end(), ':'));
  };
  std::vector<Group*> order;
  for (Group& group : groups) order.push_back(&group);
  std::stable_sort(order.begin(), order.end(),
                   [&](const Group* a, const Group* b) { return depth(a) > depth(b); });
  std::vector<std::string> taken;
  const auto isIn = [](const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  for (Group* group : order) {
    std::vector<std::string> own;  // as they were
    for (RigRecord& record : group->records) {
      if (record.Damaged()) continue;
      const bool isSecond = isIn(own, record.name);
      own.push_back(record.name);
      if (isIn(taken, record.name) || (beside && m_core.UniqueName(record.name) != record.name))
        RenameRig(record, *group, taken, isSecond);
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
