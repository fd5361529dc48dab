#include "core/InstanceManager.h"

#include <algorithm>
#include <map>
#include <set>

#include "adaptor/AdaptorInterface.h"
#include "core/CoreImplementation.h"
#include "core/CoreNode.h"
#include "core/Instance.h"
#include "core/InstanceUndo.h"
#include "core/Log.h"
#include "core/NameRules.h"
#include "core/Tool.h"
#include "core/interface/CCamera.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

/// The last run of digits of a name, as position and number; position npos without one.
struct NameNumber {
  std::size_t position = std::string::npos;
  std::size_t digits = 0;
  long long value = 0;
};

NameNumber FindNumber(const std::string& name) {
  NameNumber number;
  std::size_t begin = name.size();
  while (begin > 0 && name[begin - 1] >= '0' && name[begin - 1] <= '9') --begin;
  if (begin == name.size() || name.size() - begin > 15) return number;
  number.position = begin;
  number.digits = name.size() - begin;
  number.value = std::stoll(name.substr(begin));
  return number;
}

std::string WithNumber(const std::string& stem, long long value, std::size_t digits) {
  std::string text = std::to_string(value);
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return stem + text;
}

void Collect(const InstanceReference& row, bool onlyChecked, std::vector<Instance*>& out) {
  if (row.GetInstance() && (row.checked || !onlyChecked)) out.push_back(row.GetInstance());
  for (const auto& child : row.children) Collect(*child, onlyChecked, out);
}

InstanceReference* FindIn(const InstanceReference& row, const std::string& name) {
  for (const auto& child : row.children) {
    if (child->GetInstance() && child->GetLabel() == name) return child.get();
    if (InstanceReference* found = FindIn(*child, name)) return found;
  }
  return nullptr;
}

int IndexOf(const InstanceReference& row) {
  const auto& siblings = row.parent->children;
  for (std::size_t i = 0; i < siblings.size(); ++i) {
    if (siblings[i].get() == &row) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace

InstanceManager::InstanceManager() : m_root("") {}

InstanceManager::~InstanceManager() = default;

// --- looking up ---

InstanceReference* InstanceManager::Find(const std::string& name) const {
  return FindIn(m_root, name);
}

Instance* InstanceManager::FindInstance(const std::string& name) const {
  const InstanceReference* row = Find(name);
  return row ? row->GetInstance() : nullptr;
}

std::vector<Instance*> InstanceManager::List(bool onlyChecked) const {
  std::vector<Instance*> instances;
  Collect(m_root, onlyChecked, instances);
  return instances;
}

std::string InstanceManager::UniqueName(const std::string& name) const {
  std::set<std::string> taken(m_reservedNames.begin(), m_reservedNames.end());
  for (const Instance* instance : List(false)) taken.insert(instance->GetInstanceName());
  if (taken.count(name) == 0) return name;
  const NameNumber number = FindNumber(name);
  const bool numbered = number.position != std::string::npos;
  const std::string stem = numbered ? name.substr(0, number.position) : name + "_";
  const std::size_t digits = numbered ? number.digits : 2;
  for (long long value = number.value + 1;; ++value) {
    const std::string candidate = WithNumber(stem, value, digits);
    if (taken.count(candidate) == 0) return candidate;
  }
}

// --- rows ---

InstanceReference* InstanceManager::InsertRow(std::unique_ptr<InstanceReference> row, int index) {
  auto& rows = m_root.children;
  row->parent = &m_root;
  const auto at =
      index < 0 || index > static_cast<int>(rows.size()) ? rows.end() : rows.begin() + index;
  return rows.insert(at, std::move(row))->get();
}

InstanceReference* InstanceManager::AddRow(std::unique_ptr<Instance> instance) {
  return InsertRow(std::make_unique<InstanceReference>(std::move(instance)), -1);
}

void InstanceManager::RemoveRow(InstanceReference* row) {
  if (!row || !row->parent) return;
  auto& siblings = row->parent->children;
  siblings.erase(siblings.begin() + IndexOf(*row));
}

void InstanceManager::MoveBefore(InstanceReference* row, InstanceReference* before) {
  if (!row || row == before) return;
  const int from = IndexOf(*row);
  int to = before ? IndexOf(*before) : static_cast<int>(m_root.children.size());
  if (to > from) --to;
  if (from == to) return;
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.BeginUndoBlock("Change order");
  MoveRow(from, to);
  adaptor.PushUndo(new InstanceReferenceOrderRestore(*this, from, to));
  adaptor.EndUndoBlock();
}

void InstanceManager::MoveRow(int from, int to) {
  auto& rows = m_root.children;
  std::unique_ptr<InstanceReference> row = std::move(rows[static_cast<std::size_t>(from)]);
  rows.erase(rows.begin() + from);
  rows.insert(rows.begin() + to, std::move(row));
}

// --- create, delete, rename, clone ---

Instance* InstanceManager::Create(Tool* tool, const std::string& name) {
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.BeginUndoBlock("Create " + tool->GetDisplayId());
  Instance* instance = tool->CreateInstance(name);
  if (!instance) {
    adaptor.CancelUndoBlock();
    return nullptr;
  }
  // Behind the steps of the nodes: a redo has them back before the instance looks for them.
  adaptor.PushUndo(new InstanceReferenceCreateRestore(*this, instance->GetInstanceName()));
  adaptor.EndUndoBlock();
  return instance;
}

void InstanceManager::Delete(InstanceReference* row, bool undoable) {
  if (!row || !row->GetInstance()) return;
  Instance& instance = *row->GetInstance();
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  if (!undoable) {
    ReleaseUserNodes(instance);
    std::vector<CoreNode*> nodes = instance.GetNodes();
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) adaptor.DiscardNode(*node);
    RemoveRow(row);
    return;
  }
  adaptor.BeginUndoBlock("Delete " + instance.GetInstanceName());
  // Ahead of the steps of the nodes: an undo has them back before the instance looks for them.
  adaptor.PushUndo(new InstanceReferenceDeleteRestore(*this, *row));
  ReleaseUserNodes(instance);
  std::vector<CoreNode*> nodes = instance.GetNodes();
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) (*node)->deleteMe();
  RemoveRow(row);
  adaptor.EndUndoBlock();
}

void InstanceManager::DeleteAll() {
  while (!m_root.children.empty()) {
    InstanceReference* last = m_root.children.back().get();
    if (last->GetInstance())
      Delete(last, false);
    else
      m_root.children.pop_back();
  }
}

void InstanceManager::DropAllRows() {
  while (!m_root.children.empty()) m_root.children.pop_back();
}

void InstanceManager::ReleaseUserNodes(Instance& instance) {
  CInterface* const owner = &instance;
  for (CoreNode* node : instance.GetNodes()) {
    NodeHandle home = ParentOf(*node);
    while (home && home->GetOwner() == owner) home = ParentOf(*home);
    for (int i = node->GetChildCount() - 1; i >= 0; --i) {
      const NodeHandle child = ChildOf(*node, i);
      if (child && child->GetOwner() != owner) child->SetParent(home.get());
    }
  }
}

std::string InstanceManager::Rename(InstanceReference* row, const std::string& name) {
  Instance& instance = *row->GetInstance();
  if (name == instance.GetInstanceName()) return {};
  std::string problem;
  if (!IsNameAllowed(name, problem)) return problem;
  if (UniqueName(name) != name) return name + "- name already exists.";
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.BeginUndoBlock("Rename " + instance.GetInstanceName());
  const std::string old = instance.GetInstanceName();
  instance.Rename(name);
  adaptor.PushUndo(new InstanceReferenceRename(*this, old, name));
  adaptor.EndUndoBlock();
  return {};
}

Instance* InstanceManager::Clone(InstanceReference* row, std::string& problem) {
  Instance& source = *row->GetInstance();
  const std::string text = SaveInstance(source, problem);
  util::xml::Tag record("");
  if (text.empty() || record.loadText(text) != 0) return nullptr;
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const std::string name = UniqueName(source.GetInstanceName());
  record.setAttribute("name", name);

  adaptor.BeginUndoBlock("Clone " + source.GetInstanceName());
  Instance* clone = nullptr;
  if (DuplicateNodes(source, name, record, problem))
    clone = LoadInstance(record.toText(), IndexOf(*row) + 1, problem);
  if (!clone) {
    adaptor.CancelUndoBlock();
    return nullptr;
  }
  adaptor.PushUndo(new InstanceReferenceCreateRestore(*this, name));
  adaptor.EndUndoBlock();
  return clone;
}

bool InstanceManager::DuplicateNodes(Instance& source, const std::string& name,
                                     util::xml::Element& record, std::string& problem) {
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const std::vector<CoreNode*> nodes = source.GetNodes();
  std::map<std::string, CoreNode*> copies;  // by the original's scene name
  for (CoreNode* node : nodes) {
    const NodeHandle original = ParentOf(*node);
    CNode* parent = original.get();
    if (original) {
      const auto copied = copies.find(original->GetSceneName());
      if (copied != copies.end()) parent = copied->second;
    }
    const std::string tag = name + "/" + node->GetName();
    CoreNode* copy = adaptor.DuplicateNode(
        node, {nullptr, node->GetName(), name + "_" + node->GetName()}, parent);
    if (!copy) {
      problem = "the host could not copy the node " + node->GetSceneName();
      return false;
    }
    adaptor.TagNode(copy, tag);
    copies.emplace(node->GetSceneName(), copy);
  }
  if (util::xml::Element* info = record.findChild("nodeinfo")) {
    for (util::xml::Element* child : info->children)
      child->setAttribute("handle", name + "/" + child->attribute("name"));
  }
  return true;
}

// --- records ---

namespace {

/// Which of the saved nodes that the rig asked for are gone; empty when all are there.
std::string TellLostNodes(const Instance& instance) {
  constexpr std::size_t kMostNames = 5;
  const std::set<std::string>& lost = instance.GetLostNodes();
  if (lost.empty()) return {};
  std::string names;
  std::size_t told = 0;
  for (const std::string& name : lost)
    if (told++ < kMostNames) names += (names.empty() ? "" : ", ") + name;
  if (lost.size() > kMostNames)
    names += " and " + std::to_string(lost.size() - kMostNames) + " more";
  return (lost.size() == 1 ? "its node " : "its nodes ") + names +
         " can't be found: another program has deleted it or dropped its custom data";
}

}  // namespace

std::string InstanceManager::SaveInstance(Instance& instance, std::string& problem) const {
  if (instance.GetRig()->Store() != 0) {
    problem = "the rig " + instance.GetInstanceName() + " could not store itself";
    return {};
  }
  util::xml::Tag record("RWT_Plugin");
  instance.WriteRecord(record);
  const InstanceReference* row = Find(instance.GetInstanceName());
  record.setAttribute("checked", !row || row->checked ? "1" : "0");
  return record.toText("", "\n");
}

Instance* InstanceManager::LoadInstance(const std::string& recordText, int index,
                                        std::string& problem) {
  util::xml::Tag record("");
  if (record.loadText(recordText, &problem) != 0) {
    problem = "its record can't be read: " + problem;
    return nullptr;
  }
  const std::string kind = record.attribute("type");
  const std::string name = record.attribute("name");
  if (record.name != "RWT_Plugin" || kind.empty() || name.empty()) {
    problem = "its record names no kind and no name";
    return nullptr;
  }
  if (!IsNameAllowed(name, problem)) return nullptr;
  Tool* tool = GetCore()->GetLibrary().Find(kind);
  if (!tool) {
    problem = "there is no rig kind \"" + kind + "\" (rigwright tools lists the kinds)";
    return nullptr;
  }
  if (UniqueName(name) != name) {
    problem = "another rig has the name \"" + name + "\"";
    return nullptr;
  }
  std::unique_ptr<Instance> instance(tool->MakeInstance(name));
  if (!instance || instance->GetRig()->Define() != 0) {
    problem = "the rig could not be built";
    return nullptr;
  }
  tool->RecordDefaults(*instance);
  problem = instance->ReadRecord(record);
  const bool restored = problem.empty() && instance->GetRig()->Restore() == 0;
  const std::string lost = TellLostNodes(*instance);
  if (problem.empty() && !restored)
    problem = lost.empty() ? "a node that it needs is missing, or its data is damaged" : lost;
  if (!problem.empty()) return nullptr;
  if (!lost.empty()) LogEntry(LogLevel::kWarning, name + ": " + lost + "; the rig goes on without");
  auto row = std::make_unique<InstanceReference>(std::move(instance));
  row->checked = record.attribute("checked") != "0";
  return InsertRow(std::move(row), index)->GetInstance();
}

}  // namespace orv::rws::core
