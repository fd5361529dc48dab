#include "core/instances/Instance.h"

#include <cstring>
#include <utility>

#include "core/MessageQueue.h"
#include "core/config/ConfigElement.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/host/SnapshotMeshProxy.h"
#include "core/instances/InstanceHost.h"
#include "core/instances/NodeOwnerUndo.h"
#include "core/instances/OwnedUndo.h"
#include "core/interface/CCamera.h"
#include "core/interface/CSnapshot.h"
#include "core/interface/CSnapshot_Helper.h"
#include "core/interface/CSnapshot_Lens.h"
#include "core/interface/CVariableModUndo.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/CMesh.h"
#include "util/ReturnValue.h"

namespace orv::rws::core {

namespace {

/// Property kinds of a live spinner's input.
constexpr unsigned kLiveSpinnerKinds = 2 | 4 | 8;

/// Extension codes that serve the core's own template machinery.
enum InstanceExtension : int {
  kReadUserData = 38,
  kEraseUserData = 39,
  kAppendControl = 41,
  kReservedTemplateCall = 43,
  kReservedTemplateCall2 = 55,
  kReservedTemplateCall3 = 56,
  kPlainCall = 58,
  kAppendLabel = 60,
};

CoreNode* AsCoreNode(CNode* node) {
  return static_cast<CoreNode*>(node);
}

}  // namespace

/// Replaces the items of a combo box.
class Instance::COREComboUpdater : public util::DynamicObject, public CInterface::ComboUpdater {
 public:
  COREComboUpdater(Instance& instance, int elementId)
      : m_instance(instance), m_elementId(elementId) {}
  void Update(std::vector<std::string> items) override {
    ConfigElement* const element = m_instance.m_config.Find(m_elementId);
    if (!element) return;
    element->SetItems(std::move(items));
    m_instance.m_host.GetMessages().Tell(ParametersChanged{m_instance.m_identity, m_elementId});
  }

 private:
  Instance& m_instance;
  int m_elementId;
};

// --- life ---

Instance::Instance(InstanceHost& host, Tool* tool, CCamera* rig, const std::string& name)
    : InstanceVirtualDevice("Instance"),
      MessageNode("Instance"),
      m_pRig(rig),
      m_pTool(tool),
      m_name(host.UniqueName(name.empty() ? tool->GetDisplayId() + "_01" : name)),
      m_life(std::make_shared<int>(0)),
      m_identity(host.NextRowId()),
      m_host(host) {
  Device::name = m_name;
  m_pRig->m_pInterface = this;
  m_pTool->AddInstance(this);

  const std::string icons = "/core/images/treeicons/orvel_";
  m_iconPath = icons + "accessory_tools.png";
  std::vector<std::string> categories;
  m_pTool->GetCategories(categories);
  for (const std::string& category : categories) {
    if (category == "Vehicle") m_iconPath = icons + "vehicle_tools.png";
    if (category == "Camera") m_iconPath = icons + "camera_tools.png";
  }
}

Instance::~Instance() {
  m_life.reset();
  m_host.Forget(this);
  m_pRig->Destroy();
  m_pTool->RemoveInstance(this);
  if (AdaptorInterface* adaptor = m_host.GetAdaptor()) adaptor->ReleaseNodes(this);
}

AdaptorInterface& Instance::Adaptor() const {
  return *m_host.GetAdaptor();
}

void Instance::SetName(const std::string& name) {
  if (m_name != name) m_host.GetMessages().Tell(RowRenamed{m_identity, name});
  m_name = name;
  Device::name = name;
  m_nodeTags.clear();  // they begin with the old name
}

void Instance::SetCurrentProfile(const std::string& name) {
  if (m_currentProfile != name) m_host.GetMessages().Tell(ProfileChanged{m_identity, name});
  m_currentProfile = name;
}

void Instance::Rename(const std::string& name) {
  SetName(name);
  for (CoreNode* node : GetNodes()) {
    node->Rename(m_name + "_" + node->GetName());
    Adaptor().TagNode(node, m_name + "/" + node->GetName());
  }
}

std::vector<CoreNode*> Instance::GetNodes() const {
  std::vector<CoreNode*> nodes;
  util::ReturnValue<std::vector<CoreNode*>> result(nodes);
  Adaptor().GetNodesOfOwner(const_cast<Instance*>(this), result);
  return nodes;
}

// --- CExtendable ---

std::intptr_t Instance::Extension(int code, void* a, void* b) {
  switch (code) {
    case kReadUserData:
      return reinterpret_cast<std::intptr_t>(GetUserData(static_cast<int*>(a)));
    case kEraseUserData:
      ClearUserData();
      return 1;
    case kPublishOutput:
      if (!a) return 0;
      m_outputs.push_back(static_cast<unidevice::Property*>(a));
      return 1;
    case kAppendControl:
      return reinterpret_cast<std::intptr_t>(
          AddControl(a ? *static_cast<const std::string*>(a) : std::string()));
    case kPlainCall:
      return CExtendable::Extension(code, a, b);
    case kAppendLabel:
      if (!a) return 0;
      m_config.AddLabel(*static_cast<const std::string*>(a));
      return 1;
    case kReservedTemplateCall:
    case kReservedTemplateCall2:
    case kReservedTemplateCall3:
      return 1;
    default:
      return 0;
  }
}

void Instance::GetExtensions(std::vector<int>& out) {
  out.insert(out.end(),
             {kAppendControl, kReservedTemplateCall, kPlainCall, kReadUserData, kEraseUserData});
}

// --- inputs and configuration ---

int Instance::PushUndo(CUndo* step) {
  if (!step) return 1;
  std::shared_ptr<OwnedBlock> block;
  if (!m_host.IsRecording() && Adaptor().IsUndoBlockOpen()) {
    block = m_ownedBlock.lock();
    const int number = Adaptor().GetUndoBlock();
    if (!block || number == 0 || number != m_ownedBlockNumber) block = OpenOwnedBlock();
  }
  return Adaptor().PushUndo(new OwnedUndo(step, *this, std::move(block))) ? 0 : 1;
}

std::shared_ptr<OwnedBlock> Instance::OpenOwnedBlock() {
  auto block = std::make_shared<OwnedBlock>(*this);
  m_ownedBlock = block;
  m_ownedBlockNumber = Adaptor().GetUndoBlock();
  return block;
}

unidevice::Property* Instance::AddInput(std::string inputName, std::string label, unsigned flags) {
  // While the rig is being defined there is no row to tell of.
  if (m_host.GetMessages().IsHeard() && m_host.FindByIdentity(m_identity))
    m_host.GetMessages().Tell(InputsChanged{m_identity, InputsChanged::kAll});
  return m_properties.add(
      std::make_unique<unidevice::Property>(std::move(inputName), std::move(label), flags));
}

unidevice::Property* Instance::AddInput(std::string inputName, unsigned flags) {
  std::string label = inputName;
  return AddInput(std::move(inputName), std::move(label), flags);
}

void Instance::RebindInputs() {
  if (m_properties.rebind() > 0)
    m_host.GetMessages().Tell(InputsChanged{m_identity, InputsChanged::kAll});
}

unidevice::Property* Instance::FindInput(std::string inputName) {
  return m_properties.find(inputName);
}

void Instance::BeginConfig() {
  m_config.Begin();
}

void Instance::BeginGroup(std::string label, std::string tooltip) {
  m_config.BeginGroup(std::move(label), std::move(tooltip));
}

void* Instance::EndGroup() {
  return m_config.EndGroup();
}

void Instance::AddLiveSpinner(int elementId, const std::string& label) {
  const std::string inputName = "Spinner: " + label;
  m_liveSpinners.emplace_back(elementId, AddInput(inputName, kLiveSpinnerKinds));
}

void Instance::AddSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max,
                             int step, int, bool asInput, Callback* cb) {
  const int id = m_config.AddSpinnerInt(label, std::move(tooltip), value, min, max, step, cb);
  if (asInput) AddLiveSpinner(id, label);
}

void Instance::AddSpinner(std::string label, std::string tooltip, double* value, double min,
                          double max, double step, int decimals, bool asInput, Callback* cb) {
  const int id =
      m_config.AddSpinner(label, std::move(tooltip), value, min, max, step, decimals, cb);
  if (m_pRig->Extension(kIsComputed, value, nullptr) == 1) m_config.Find(id)->SetReadOnly();
  if (asInput) AddLiveSpinner(id, label);
}

void Instance::AddCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb) {
  m_config.AddCheckBox(std::move(label), std::move(tooltip), value, cb);
}

void Instance::AddTextBox(std::string label, std::string tooltip, std::string* value,
                          Callback* cb) {
  m_config.AddTextBox(std::move(label), std::move(tooltip), value, cb);
}

CInterface::ComboUpdater* Instance::AddComboBox(std::string label, std::string tooltip,
                                                std::vector<std::string> items, int* index,
                                                Callback* cb) {
  const int id =
      m_config.AddComboBox(std::move(label), std::move(tooltip), std::move(items), index, cb);
  m_comboUpdaters.push_back(std::make_unique<COREComboUpdater>(*this, id));
  return m_comboUpdaters.back().get();
}

void Instance::AddButton(std::string label, std::string tooltip, Callback* cb) {
  m_config.AddButton(std::move(label), std::move(tooltip), cb);
}

void Instance::ShowInputConfig() {
  m_host.ShowInputConfig(m_name);
}

std::string Instance::GetDataPath() {
  return m_pTool->GetDataPath();
}

// --- the blob ---

void Instance::SetUserData(const void* data, int size) {
  m_bHasUserData = true;
  const auto* bytes = static_cast<const unsigned char*>(data);
  if (size > 0 && bytes)
    m_userData.assign(bytes, bytes + size);
  else
    m_userData.clear();
}

const void* Instance::GetUserData(int* size) {
  static const unsigned char kNothing = 0;
  if (size) *size = static_cast<int>(m_userData.size());
  if (!m_bHasUserData) return nullptr;
  return m_userData.empty() ? &kNothing : m_userData.data();
}

void Instance::ClearUserData() {
  m_bHasUserData = false;
  m_userData.clear();
}

// --- nodes and snapshots ---

void Instance::DeleteNode(CNode* node, bool undoable) {
  if (!node) return;
  AdaptorInterface& adaptor = Adaptor();
  if (undoable) adaptor.BeginUndoBlock("Delete node");
  if (adaptor.IsUndoBlockOpen()) {
    NoteOwner(*AsCoreNode(node));
    AsCoreNode(node)->deleteMe();
  } else {
    adaptor.DiscardNode(AsCoreNode(node));
  }
  if (undoable) adaptor.EndUndoBlock();
}

CNode* Instance::FindNode(std::string nodeName) {
  if (CoreNode* known = Adaptor().FindNode(this, nodeName)) return known;
  const auto saved = m_nodeTags.find(nodeName);
  if (saved == m_nodeTags.end()) return nullptr;
  CoreNode* const node =
      Adaptor().ClaimTaggedNodes({this, nodeName, m_name + "_" + nodeName}, saved->second);
  if (!node) m_lostNodes.insert(m_name + "_" + nodeName);
  return node;
}

CNode* Instance::CreateCameraNode(std::string nodeName, CNode* parent, double fieldOfView,
                                  double nearClip) {
  const NodeIdentity identity{this, nodeName, m_name + "_" + nodeName};
  return Mark(Adaptor().CreateCameraNode(identity, parent, fieldOfView, nearClip));
}

CNode* Instance::CreateMeshNode(std::string nodeName, CNode* parent, const util::CMesh* mesh,
                                int flags) {
  const NodeIdentity identity{this, nodeName, m_name + "_" + nodeName};
  return Mark(Adaptor().CreateMeshNode(identity, parent, mesh, flags));
}

CNode* Instance::Mark(CoreNode* made) {
  if (!made) return nullptr;
  Adaptor().TagNode(made, m_name + "/" + made->GetName());
  NoteOwner(*made);
  return made;
}

void Instance::NoteOwner(CoreNode& node) {
  if (Adaptor().IsUndoBlockOpen())
    Adaptor().PushUndo(new NodeOwnerUndo(*this, node.GetName(), node.GetTag()));
}

void Instance::Reserved2(std::string, util::CMesh) {}

CSnapshot* Instance::GetSnapshot(CNode* node, double time) {
  return node ? AsCoreNode(node)->GetSnapshot(time) : nullptr;
}

CSnapshot_Helper* Instance::GetSnapshotHelper(CNode* node) {
  return node ? AsCoreNode(node)->GetSnapshotHelper() : nullptr;
}

CSnapshot_Mesh* Instance::GetSnapshotMesh(CNode* node, double time) {
  if (!node) return nullptr;
  CSnapshot_Mesh* target = AsCoreNode(node)->GetSnapshotMesh(time);
  if (!target) return nullptr;
  if (m_freeMeshes.empty()) return new Snapshot_Mesh_Proxy(AsCoreNode(node), target);
  Snapshot_Mesh_Proxy* const proxy = m_freeMeshes.back().release();
  m_freeMeshes.pop_back();
  proxy->Bind(AsCoreNode(node), target);
  return proxy;
}

CSnapshot_Lens* Instance::GetSnapshotLens(CNode* node, double time) {
  return node ? AsCoreNode(node)->GetSnapshotLens(time) : nullptr;
}

void Instance::ReleaseNode(void* object) {
  auto* const extendable = static_cast<CExtendable*>(object);
  if (auto* const node = dynamic_cast<CNode*>(extendable))
    node->Release();
  else
    Adaptor().ReleaseSnapshot(extendable);
}

void Instance::ReleaseSnapshotMesh(CSnapshot_Mesh* snapshot) {
  if (!snapshot) return;
  auto* const proxy = static_cast<Snapshot_Mesh_Proxy*>(snapshot);
  proxy->Free();
  m_freeMeshes.emplace_back(proxy);
}

void Instance::ReleaseSnapshotLens(CSnapshot_Lens* snapshot) {
  Adaptor().ReleaseSnapshot(snapshot);
}

void Instance::ReleaseSnapshotHelper(CSnapshot_Helper* snapshot) {
  Adaptor().ReleaseSnapshot(snapshot);
}

void Instance::ReleaseSnapshot(CSnapshot* snapshot) {
  Adaptor().ReleaseSnapshot(snapshot);
}

// --- host ---

double Instance::GetTime() {
  return Adaptor().GetCurrentTime();
}

double Instance::GetFrameRate() {
  return m_host.GetFrameRate();
}

double Instance::GetFrameDuration() {
  return m_host.GetFrameDuration();
}

void Instance::RefreshViews() {
  if (!m_host.IsRecording()) Adaptor().RefreshViews();
}

int Instance::MessageBox(std::string title, std::string text, unsigned flags) {
  return m_host.MessageBox(title, text, flags);
}

}  // namespace orv::rws::core
