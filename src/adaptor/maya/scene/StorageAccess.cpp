#include "adaptor/maya/scene/StorageAccess.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MNamespace.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include "adaptor/maya/scene/CStorageNode.h"
#include "adaptor/maya/scene/StorageNode.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kTagAttribute[] = "RWT_tag";

std::string SpaceOf(const MFnDependencyNode& node) {
  const std::string name = node.name().asChar();
  const std::size_t colon = name.rfind(':');
  return colon == std::string::npos ? std::string() : name.substr(0, colon);
}

/// Calls `use` with each attribute of a storage node.
template <class Use>
void ForEachAttribute(bool ofRig, Use use) {
  if (ofRig)
    for (const StorageAttribute& row : kRigAttributes) use(row);
  else
    for (const StorageAttribute& row : kSceneAttributes) use(row);
}

void ReadValue(const MFnDependencyNode& node, const StorageAttribute& row, StorageValues& values) {
  MStatus status;
  const MPlug plug = node.findPlug(row.longName, true, &status);
  if (!status) return;
  if (row.kind == StorageKind::kText) {
    values.SetText(row.longName, plug.asString().asChar());
  } else if (row.kind == StorageKind::kNumber) {
    values.SetNumber(row.longName, plug.asInt());
  } else {
    const MObject data = plug.asMObject();
    // An array that nobody has set is no data at all.
    MFnStringArrayData array(data, &status);
    std::vector<std::string> texts;
    for (unsigned i = 0; status && i < array.length(); ++i) texts.emplace_back(array[i].asChar());
    values.SetTexts(row.longName, std::move(texts));
  }
}

bool WriteValue(const MFnDependencyNode& node, const StorageAttribute& row,
                const StorageValues& values) {
  MStatus status;
  MPlug plug = node.findPlug(row.longName, true, &status);
  if (!status) return false;
  if (row.kind == StorageKind::kText) return plug.setString(values.Text(row.longName).c_str());
  if (row.kind == StorageKind::kNumber) return plug.setInt(values.Number(row.longName));
  MStringArray texts;
  for (const std::string& text : values.Texts(row.longName)) texts.append(text.c_str());
  MFnStringArrayData maker;
  MObject data = maker.create(texts, &status);
  return status && plug.setMObject(data);
}

/// New nodes come into the root namespace while it lives.
class RootNamespace {
 public:
  RootNamespace() : m_before(MNamespace::currentNamespace()) {
    MNamespace::setCurrentNamespace(":");
  }
  ~RootNamespace() { MNamespace::setCurrentNamespace(m_before); }
  RootNamespace(const RootNamespace&) = delete;
  RootNamespace& operator=(const RootNamespace&) = delete;

 private:
  MString m_before;
};

}  // namespace

std::vector<StoredNode> FindStorage(const MTypeId& type, bool ofRigs, int& referenced) {
  std::vector<StoredNode> found;
  for (MItDependencyNodes it(MFn::kPluginDependNode); !it.isDone(); it.next()) {
    MObject object = it.thisNode();
    const MFnDependencyNode node(object);
    if (node.typeId() != type) continue;
    if (node.isFromReferencedFile()) {
      ++referenced;
      continue;
    }
    StoredNode stored{object, SpaceOf(node), {}};
    ForEachAttribute(ofRigs,
                     [&](const StorageAttribute& row) { ReadValue(node, row, stored.values); });
    found.push_back(std::move(stored));
  }
  return found;
}

std::vector<TaggedNode> FindTaggedNodes() {
  std::vector<TaggedNode> found;
  for (MItDependencyNodes it(MFn::kDependencyNode); !it.isDone(); it.next()) {
    MObject object = it.thisNode();
    const MFnDependencyNode node(object);
    MStatus status;
    const MPlug plug = node.findPlug(kTagAttribute, true, &status);
    if (!status || plug.isNull() || node.isFromReferencedFile()) continue;
    const std::string tag = plug.asString().asChar();
    if (!tag.empty()) found.push_back({object, SpaceOf(node), tag});
  }
  return found;
}

void SetTagOf(MObject& node, const std::string& tag) {
  MStatus status;
  MPlug plug = MFnDependencyNode(node).findPlug(kTagAttribute, true, &status);
  if (status) plug.setString(tag.c_str());
}

bool MakeStorage(const MTypeId& type, const std::string& name, bool ofRig,
                 const StorageValues& values) {
  const RootNamespace root;
  MStatus status;
  MFnDependencyNode node;
  MObject made = node.create(type, name.c_str(), &status);
  if (!status || made.isNull()) return false;
  bool written = true;
  ForEachAttribute(ofRig, [&](const StorageAttribute& row) {
    written = WriteValue(node, row, values) && written;
  });
  return written;
}

void DeleteStorage() {
  std::vector<MObject> nodes;
  for (MItDependencyNodes it(MFn::kPluginDependNode); !it.isDone(); it.next()) {
    MObject object = it.thisNode();
    const MFnDependencyNode node(object);
    if (node.typeId() != StorageNode::kId && node.typeId() != CStorageNode::kId) continue;
    if (!node.isFromReferencedFile()) nodes.push_back(object);
  }
  for (MObject& node : nodes) {
    // A user may have locked everything in the scene.
    MFnDependencyNode(node).setLocked(false);
    MGlobal::deleteNode(node);
  }
}

}  // namespace orv::rws::adaptor::maya
