#include "core/instances/InstanceManager.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "core/CoreRequest.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceUndo.h"
#include "core/instances/NameRules.h"
#include "core/instances/RecordKeys.h"
#include "core/interface/CCamera.h"
#include "core/services/Log.h"
#include "core/tools/Tool.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

/// The last run of digits of a name, as position and number; position npos without one.
struct NameNumber {
  std::size_t position = std::string::npos;
  std::size_t digits = 0;
  std::int64_t value = 0;
};

NameNumber FindNumber(std::string_view name) {
  NameNumber number;
  std::size_t begin = name.size();
  while (begin > 0 && name[begin - 1] >= '0' && name[begin - 1] <= '9') --begin;
  if (begin == name.size() || name.size() - begin > 15) return number;
  number.position = begin;
  number.digits = name.size() - begin;
  util::parseNumber(name.substr(begin), number.value);
  return number;
}

std::string WithNumber(const std::string& stem, std::int64_t value, std::size_t digits) {
  std::string text = std::to_string(value);
  if (text.size() < digits) text.insert(0, digits - text.size(), '0');
  return stem + text;
}

void Collect(const InstanceReference& row, bool onlyChecked, std::vector<Instance*>& out) {
  if (onlyChecked && !row.IsChecked()) return;
  if (row.GetInstance()) out.push_back(row.GetInstance());
  for (const auto& child : row.children) Collect(*child, onlyChecked, out);
}

bool Contains(const std::vector<int>& rows, int row) {
  return std::find(rows.begin(), rows.end(), row) != rows.end();
}

}  // namespace

InstanceManager::InstanceManager() : m_root(0, {}) {}

InstanceManager::~InstanceManager() = default;

// --- looking up ---

InstanceReference* InstanceManager::Find(const std::string& name) const {
  for (InstanceReference* row : GetRows())
    if (row->GetInstance() && row->GetLabel() == name) return row;
  return nullptr;
}

Instance* InstanceManager::FindInstance(const std::string& name) const {
  const InstanceReference* row = Find(name);
  return row ? row->GetInstance() : nullptr;
}

void InstanceManager::SetSelection(const std::vector<int>& rows) {
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  const std::vector<int> before = std::exchange(m_selection, {});
  for (const int row : rows)
    if (FindRow(row) && !Contains(m_selection, row)) m_selection.push_back(row);
  for (const int row : before)
    if (!Contains(m_selection, row)) GetCore()->GetMessages().Tell(RowSelected{row, false});
  for (const int row : m_selection)
    if (!Contains(before, row)) GetCore()->GetMessages().Tell(RowSelected{row, true});
}

void InstanceManager::DropOldSelection() {
  const auto isGone = [this](int row) { return !FindRow(row); };
  m_selection.erase(std::remove_if(m_selection.begin(), m_selection.end(), isGone),
                    m_selection.end());
}

Instance* InstanceManager::FindByIdentity(int identity) const {
  const InstanceReference* const row = FindRow(identity);
  return row ? row->GetInstance() : nullptr;
}

std::vector<Instance*> InstanceManager::List(bool onlyChecked) const {
  std::vector<Instance*> instances;
  Collect(m_root, onlyChecked, instances);
  return instances;
}

std::string InstanceManager::UniqueName(const std::string& name) const {
  std::vector<std::string_view> taken(m_reservedNames.begin(), m_reservedNames.end());
  for (const InstanceReference* row : GetRows()) taken.push_back(row->GetLabel());
  if (std::find(taken.begin(), taken.end(), name) == taken.end()) return name;
  const NameNumber number = FindNumber(name);
  const bool numbered = number.position != std::string::npos;
  const std::string stem = numbered ? name.substr(0, number.position) : name + "_";
  const std::size_t digits = numbered ? number.digits : 2;
  // In a scene of many rigs most are in the way by their number: each is looked at once.
  const std::int64_t first = number.value + 1;
  std::vector<bool> used(taken.size() + 1);
  for (const std::string_view other : taken) {
    if (other.compare(0, stem.size(), stem) != 0) continue;
    const NameNumber own = FindNumber(other);
    if (own.position != stem.size() || own.digits < digits) continue;
    if (own.digits > digits && other[own.position] == '0') continue;  // as WithNumber never writes
    const auto place = static_cast<std::size_t>(own.value - first);
    if (place < used.size()) used[place] = true;
  }
  for (std::int64_t value = first;; ++value) {
    const auto place = static_cast<std::size_t>(value - first);
    if (place < used.size() && used[place]) continue;
    const std::string candidate = WithNumber(stem, value, digits);
    if (std::find(taken.begin(), taken.end(), candidate) == taken.end()) return candidate;
  }
}

bool InstanceManager::IsNameFree(const std::string& name, std::string& problem) const {
  if (!IsNameAllowed(name, problem)) return false;
  if (UniqueName(name) == name) return true;
  problem = name + "- name already exists.";
  return false;
}

InstanceReference* InstanceManager::AddRow(std::unique_ptr<Instance> instance, bool checked) {
  m_root.children.push_back(std::make_unique<InstanceReference>(std::move(instance)));
  InstanceReference& row = *m_root.children.back();
  row.parent = &m_root;
  row.SetChecked(checked);
  MessageQueue& messages = GetCore()->GetMessages();
  const int index = static_cast<int>(m_root.children.size()) - 1;
  if (messages.IsHeard())
    messages.Tell(RowCreated{row.GetId(), 0, index, false, row.GetLabel(), checked});
  return &row;
}

void InstanceManager::RemoveRow(InstanceReference* row) {
  if (!row || !row->parent) return;
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  const int id = row->GetId();
  auto& siblings = row->parent->children;
  siblings.erase(std::find_if(siblings.begin(), siblings.end(),
                              [row](const auto& sibling) { return sibling.get() == row; }));
  GetCore()->GetMessages().Tell(RowDeleted{id});
  DropOldSelection();
}

// --- create, delete, rename, clone ---

/// Rolls the block of a request back that could not be done. Within another's block, such as a
/// take's, that would take all of it back: there the request has discarded what it made.
void InstanceManager::CloseRefused(bool nested) {
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  if (nested)
    adaptor.EndUndoBlock();
  else
    adaptor.CancelUndoBlock();
}

namespace {

/// What `make` makes, held back until it stands; null when whoever was told has deleted it.
template <class Make>
Instance* MakeAnnounced(CoreImplementation& core, Make make) {
  int identity = 0;
  {
    const CoreRequest request(core);
    if (const Instance* const instance = make()) identity = instance->GetIdentity();
  }
  return identity != 0 ? core.FindByIdentity(identity) : nullptr;
}

}  // namespace

Instance* InstanceManager::Create(Tool* tool, const std::string& name) {
  return MakeAnnounced(*GetCore(), [&] { return MakeInstance(*tool, name); });
}

Instance* InstanceManager::MakeInstance(Tool& tool, const std::string& name) {
  if (!GetCore()->CheckLicence(tool.GetLicenceName())) return nullptr;
  GetCore()->GetLicensing().NoteUse();
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const bool nested = adaptor.IsUndoBlockOpen();
  adaptor.BeginUndoBlock("Create " + tool.GetDisplayId());
  Instance* instance = tool.CreateInstance(name);
  if (!instance) {
    CloseRefused(nested);
    return nullptr;
  }
  // Behind the steps of the nodes: a redo has them back before the instance looks for them.
  adaptor.PushUndo(new InstanceReferenceCreateRestore(*this, *instance));
  adaptor.EndUndoBlock();
  return instance;
}

void InstanceManager::Delete(InstanceReference* row, bool undoable) {
  if (!row || !row->GetInstance()) return;
  const CoreRequest request(*GetCore());
  Instance& instance = *row->GetInstance();
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  if (!undoable) {
    DiscardNodes(instance);
    RemoveRow(row);
    return;
  }
  adaptor.BeginUndoBlock("Delete " + instance.GetInstanceName());
  // Ahead of the steps of the nodes: an undo has them back before the instance looks for them.
  adaptor.PushUndo(new InstanceReferenceDeleteRestore(*this, instance));
  ReleaseUserNodes(instance);
  std::vector<CoreNode*> nodes = instance.GetNodes();
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) (*node)->deleteMe();
  RemoveRow(row);
  adaptor.EndUndoBlock();
}

void InstanceManager::DiscardNodes(Instance& instance) {
  ReleaseUserNodes(instance);
  const std::vector<CoreNode*> nodes = instance.GetNodes();
  for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
    GetCore()->GetAdaptor()->DiscardNode(*node);
}

void InstanceManager::DeleteAll() {
  const CoreRequest request(*GetCore());
  for (Instance* instance : List(false)) DiscardNodes(*instance);
  DropAllRows();
}

void InstanceManager::DropAllRows() {
  const CoreRequest request(*GetCore());
  std::vector<InstanceReference*> rows = GetRows();
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) RemoveRow(*row);
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
  if (row->IsGroup()) return RenameGroup(*row, name);
  Instance& instance = *row->GetInstance();
  std::string problem;
  if (name == instance.GetInstanceName() || !IsNameFree(name, problem)) return problem;
  const CoreRequest request(*GetCore());
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  adaptor.BeginUndoBlock("Rename " + instance.GetInstanceName());
  adaptor.PushUndo(new InstanceReferenceRename(instance));
  instance.Rename(name);
  adaptor.EndUndoBlock();
  return {};
}

Instance* InstanceManager::Clone(InstanceReference* row, std::string& problem) {
  return MakeAnnounced(*GetCore(), [&] { return MakeClone(*row, problem); });
}

Instance* InstanceManager::MakeClone(InstanceReference& row, std::string& problem) {
  Instance& source = *row.GetInstance();
  problem = GetCore()->GetLicensing().WhyNot(source.GetTool()->GetLicenceName());
  if (!problem.empty()) return nullptr;
  util::xml::Tag record = SaveInstance(source, problem);
  if (record.name.empty()) return nullptr;
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const std::string name = UniqueName(source.GetInstanceName());
  record.setAttribute(record::kName, name);

  const bool nested = adaptor.IsUndoBlockOpen();
  adaptor.BeginUndoBlock("Clone " + source.GetInstanceName());
  Instance* clone = nullptr;
  std::vector<CoreNode*> copies;
  if (DuplicateNodes(source, name, record, copies, problem)) clone = LoadInstance(record, problem);
  if (!clone) {
    for (auto copy = copies.rbegin(); copy != copies.rend(); ++copy) adaptor.DiscardNode(*copy);
    CloseRefused(nested);
    return nullptr;
  }
  PlaceBehind(*Find(name), row);
  adaptor.PushUndo(new InstanceReferenceCreateRestore(*this, *clone));
  adaptor.EndUndoBlock();
  return clone;
}

Instance* InstanceManager::AddFromRecord(const util::xml::Element& record, std::string& problem) {
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const bool nested = adaptor.IsUndoBlockOpen();
  adaptor.BeginUndoBlock("Add " + record.attribute(record::kName));
  Instance* const instance = LoadInstance(record, problem);
  if (!instance) {
    CloseRefused(nested);
    return nullptr;
  }
  adaptor.PushUndo(new InstanceReferenceCreateRestore(*this, *instance));
  adaptor.EndUndoBlock();
  return instance;
}

bool InstanceManager::DuplicateNodes(Instance& source, const std::string& name,
                                     util::xml::Element& record, std::vector<CoreNode*>& copies,
                                     std::string& problem) {
  AdaptorInterface& adaptor = *GetCore()->GetAdaptor();
  const std::vector<CoreNode*> nodes = source.GetNodes();
  std::map<std::string, CoreNode*> copyOf;  // by the original's scene name
  for (CoreNode* node : nodes) {
    const NodeHandle original = ParentOf(*node);
    CNode* parent = original.get();
    if (original) {
      const auto copied = copyOf.find(original->GetSceneName());
      if (copied != copyOf.end()) parent = copied->second;
    }
    const std::string tag = name + "/" + node->GetName();
    CoreNode* copy = adaptor.DuplicateNode(
        node, {nullptr, node->GetName(), name + "_" + node->GetName()}, parent);
    if (!copy) {
      problem = "the host could not copy the node " + node->GetSceneName();
      return false;
    }
    adaptor.TagNode(copy, tag);
    copyOf.emplace(node->GetSceneName(), copy);
    copies.push_back(copy);
  }
  if (util::xml::Element* info = record.findChild(record::kNodeInfo)) {
    for (util::xml::Element* child : info->children)
      child->setAttribute(record::kHandle, name + "/" + child->attribute(record::kName));
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

util::xml::Tag InstanceManager::SaveInstance(Instance& instance, std::string& problem) const {
  if (instance.GetRig()->Store() != 0) {
    problem = "the rig " + instance.GetInstanceName() + " could not store itself";
    return util::xml::Tag("");
  }
  util::xml::Tag record("RWT_Plugin");
  instance.WriteRecord(record);
  const InstanceReference* row = Find(instance.GetInstanceName());
  record.setAttribute(record::kChecked, !row || row->IsChecked() ? "1" : "0");
  return record;
}

void InstanceManager::RebuildWithData(Instance& instance, const std::vector<unsigned char>& data) {
  const MessageQueue::Hold hold(GetCore()->GetMessages());
  const int identity = instance.GetIdentity();
  const std::string name = instance.GetInstanceName();
  std::string problem;
  const util::xml::Tag present = SaveInstance(instance, problem);
  if (present.name.empty()) return LogEntry(LogLevel::kError, problem);
  int size = 0;
  const auto* const stored = static_cast<const unsigned char*>(instance.GetUserData(&size));
  if (stored && std::equal(data.begin(), data.end(), stored, stored + size)) return;
  instance.SetUserData(data.data(), static_cast<int>(data.size()));
  util::xml::Tag wanted(present.name);
  instance.WriteRecord(wanted);
  wanted.setAttribute(record::kChecked, present.attribute(record::kChecked));
  const RowLayout layout = GetLayout();
  RemoveRow(Find(name));
  if (!LoadInstance(wanted, problem, identity)) {
    LogEntry(LogLevel::kError, "The memory of " + name + " could not be brought back: " + problem);
    LoadInstance(present, problem, identity);
  }
  Arrange(layout);
}

Instance* InstanceManager::LoadInstance(const util::xml::Element& record, std::string& problem,
                                        int identity) {
  return MakeAnnounced(*GetCore(), [&] { return MakeLoaded(record, problem, identity); });
}

Instance* InstanceManager::MakeLoaded(const util::xml::Element& record, std::string& problem,
                                      int identity) {
  const std::string kind = record.attribute("type");
  const std::string name = record.attribute(record::kName);
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
    problem = "another rig or group has the name \"" + name + "\"";
    return nullptr;
  }
  std::unique_ptr<Instance> instance(tool->MakeInstance(name));
  if (!instance || instance->GetRig()->Define() != 0) {
    problem = "the rig could not be built";
    return nullptr;
  }
  if (identity != 0) instance->SetIdentity(identity);
  // The values after Create are the better ones, which only a rig that was created has.
  if (!tool->GetConfigProfiles().Find(kFactorySettings)) tool->RecordDefaults(*instance);
  problem = instance->ReadRecord(record);
  const bool restored = problem.empty() && instance->GetRig()->Restore() == 0;
  const std::string lost = TellLostNodes(*instance);
  if (problem.empty() && !restored)
    problem = lost.empty() ? "a node that it needs is missing, or its data is damaged" : lost;
  if (!problem.empty()) return nullptr;
  if (!lost.empty()) LogEntry(LogLevel::kWarning, name + ": " + lost + "; the rig goes on without");
  return AddRow(std::move(instance), record.attribute(record::kChecked) != "0")->GetInstance();
}

}  // namespace orv::rws::core
