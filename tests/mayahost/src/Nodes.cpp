// Function sets of objects and nodes.
#include <maya/MFnBase.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MStringArray.h>

#include <algorithm>

#include "Fn.h"
#include "Notify.h"
#include "State.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MObject MObject::kNullObj;
bool MObject::hasFn(MFn::Type type) const { return thing && thing->Has(type); }
MFn::Type MObject::apiType() const { return thing ? thing->type : MFn::kInvalid; }
const char* MObject::apiTypeStr() const { return KindName(apiType()); }
bool MObjectHandle::isValid() const {
  const auto thing = fThing.lock();
  const auto* node = dynamic_cast<const Node*>(thing.get());
  return thing && (!node || node->inScene || Pretends(Wrong::kHandles));
}
unsigned int MObjectHandle::hashCode() const {
  const auto* node = dynamic_cast<const Node*>(fThing.lock().get());
  return node ? static_cast<unsigned int>(node->serial) * 2654435761u : 0;
}

MFn::Type MFnBase::type() const { return MFn::kBase; }
bool MFnBase::hasObj(MFn::Type kind) const { return kind == type() || kind == MFn::kBase || fObject.hasFn(kind); }
bool MFnBase::hasObj(const MObject& object) const { return object.hasFn(type()); }
MObject MFnBase::object(MStatus* status) const { return Ok(status, !fObject.isNull()), fObject; }
MStatus MFnBase::Take(const MObject& object) {
  const bool fits = object.hasFn(type());
  fObject = fits ? object : MObject();
  return fits ? MS::kSuccess : MS::kInvalidParameter;
}
MStatus MFnBase::setObject(MObject& object) { return Take(object); }
MStatus MFnBase::setObject(const MObject& object) { return Take(object); }

FN_SET(MFnDependencyNode, MFn::kDependencyNode)

namespace {
MObject CreateOf(const NodeType* type, const MString& name, MStatus* status) {
  Ok(status, type);
  if (!type) return {};
  if (type->IsA("dagNode")) return Obj(CreateDag(type, name.asChar(), MObject()));
  const NodePtr node = MakeNode(type, name.length() ? LegalName(name.asChar()) : "");
  AddNode(node, nullptr);
  return Obj(node);
}
}  // namespace
MObject MFnDependencyNode::create(const MTypeId& id, MStatus* status) { return fObject = CreateOf(FindType(id.id()), "", status); }
MObject MFnDependencyNode::create(const MTypeId& id, const MString& name, MStatus* status) { return fObject = CreateOf(FindType(id.id()), name, status); }
MObject MFnDependencyNode::create(const MString& type, MStatus* status) { return fObject = CreateOf(FindType(type.asChar()), "", status); }
MObject MFnDependencyNode::create(const MString& type, const MString& name, MStatus* status) {
  return fObject = CreateOf(FindType(type.asChar()), name, status);
}
MTypeId MFnDependencyNode::typeId(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? node->info->id : 0;
}
MString MFnDependencyNode::typeName(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? node->info->name.c_str() : "";
}
MString MFnDependencyNode::name(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? node->name.c_str() : "";
}
MString MFnDependencyNode::absoluteName(MStatus* status) const { return ":" + name(status); }
MString MFnDependencyNode::uniqueName(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? NodeName(node).c_str() : "";
}
MString MFnDependencyNode::pluginName(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? node->info->plugin.c_str() : "";
}
MString MFnDependencyNode::setName(const MString& name, bool createNamespace, MStatus* status) {
  const NodePtr node = Need(fObject, status);
  if (!node) return "";
  if (const std::string space = NamespaceOf(name.asChar()); createNamespace && !space.empty()) TheScene().namespaces.insert(space);
  Ok(status, !Rename(node, name.asChar()).empty());
  return node->name.c_str();
}
MUuid MFnDependencyNode::uuid(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? MUuid(node->uuid.c_str()) : MUuid();
}
MStatus MFnDependencyNode::getConnections(MPlugArray& plugs) const {
  const NodePtr node = NodeOf(fObject);
  plugs.clear();
  if (!node) return MS::kFailure;
  for (const auto& [key, from] : node->inputs) plugs.append(MPlug(PlugRef{node.get(), key.first, key.second}));
  for (const auto& [key, to] : node->outputs) plugs.append(MPlug(PlugRef{node.get(), key.first, key.second}));
  return St(plugs.length() > 0);
}
unsigned int MFnDependencyNode::attributeCount(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? static_cast<unsigned int>(AllAttrs(*node).size()) : 0;
}
MObject MFnDependencyNode::attribute(unsigned int i, MStatus* status) const {
  const NodePtr node = NodeOf(fObject);
  const auto all = node ? AllAttrs(*node) : std::vector<AttrPtr>();
  Ok(status, i < all.size());
  return i < all.size() ? Obj(all[i]) : MObject();
}
MObject MFnDependencyNode::attribute(const MString& name, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  const AttrPtr attr = node ? FindAttr(*node, name.asChar()) : nullptr;
  Ok(status, attr != nullptr);
  return Obj(attr);
}
bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && FindAttr(*node, name.asChar());
}
MPlug MFnDependencyNode::findPlug(const MObject& attribute, bool, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  const auto attr = As<Attr>(attribute);
  const bool has = node && attr && FindAttr(*node, attr->name) == attr;
  Ok(status, has);
  return has ? MPlug(fObject, attribute) : MPlug();
}
MPlug MFnDependencyNode::findPlug(const MString& name, bool, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  const PlugRef plug = node ? RefOf(node, name.asChar()) : PlugRef{};
  if (status && node && !plug.node) *status = MS::kInvalidParameter;
  return plug.node ? MPlug(plug) : MPlug();
}
MFnDependencyNode::MAttrClass MFnDependencyNode::attributeClass(const MObject& attribute, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  const auto attr = As<Attr>(attribute);
  const bool has = node && attr && FindAttr(*node, attr->name) == attr;
  return Ok(status, has), !has ? kInvalidAttr : attr->Is(kDynamicAttr) ? kLocalDynamicAttr : kNormalAttr;
}
MStatus MFnDependencyNode::getAffectedAttributes(const MObject& attribute, MObjectArray& affected) const {
  const auto attr = As<Attr>(attribute);
  affected.clear();
  for (Attr* one : attr ? attr->affects : std::vector<Attr*>()) affected.append(Obj(one->shared_from_this()));
  return St(NodeOf(fObject) && attr);
}
MStatus MFnDependencyNode::getAffectedByAttributes(const MObject& attribute, MObjectArray& affecting) const {
  const NodePtr node = NodeOf(fObject);
  affecting.clear();
  for (const AttrPtr& one : node ? AllAttrs(*node) : std::vector<AttrPtr>())
    if (std::any_of(one->affects.begin(), one->affects.end(), [&](const Attr* a) { return a == attribute.thing.get(); })) affecting.append(Obj(one));
  return St(node && As<Attr>(attribute));
}
bool MFnDependencyNode::isNewAttribute(const MObject& attribute, MStatus* status) const { return attributeClass(attribute, status) == kLocalDynamicAttr; }
bool MFnDependencyNode::hasUniqueName(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && TheScene().byName.count(node->name) == 1;
}
MStatus MFnDependencyNode::setUuid(const MUuid& uuid) {
  const NodePtr node = NodeOf(fObject);
  return node && uuid.valid() ? (node->uuid = uuid.asString().asChar(), MS::kSuccess) : MS::kFailure;
}
MStatus MFnDependencyNode::addAttribute(const MObject& attribute, MAttrClass) {
  const NodePtr node = NodeOf(fObject);
  const auto attr = As<Attr>(attribute);
  return St(node && attr && AddAttr(node, attr));
}
MStatus MFnDependencyNode::removeAttribute(const MObject& attribute, MAttrClass) {
  const NodePtr node = NodeOf(fObject);
  const auto attr = As<Attr>(attribute);
  return St(node && attr && !node->reference && RemoveAttr(node, attr));
}
MPxNode* MFnDependencyNode::userNode(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? node->user.get() : nullptr;
}
bool MFnDependencyNode::isFromReferencedFile(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && node->reference;
}
bool MFnDependencyNode::isLocked(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && node->locked;
}
MStatus MFnDependencyNode::setLocked(bool locked) {
  const NodePtr node = NodeOf(fObject);
  if (node) Do([=] { node->locked = locked; }, [=, before = node->locked] { node->locked = before; });
  return St(node != nullptr);
}
bool MFnDependencyNode::isDefaultNode(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && node->isDefault;
}
MStatus MFnDependencyNode::setDoNotWrite(bool flag) {
  const NodePtr node = NodeOf(fObject);
  if (node) node->doNotWrite = flag;
  return St(node != nullptr);
}
bool MFnDependencyNode::canBeWritten(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && !node->doNotWrite;
}
MString MFnDependencyNode::parentNamespace(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && !Pretends(Wrong::kNamespaces) ? NamespaceOf(node->name).c_str() : "";
}
bool MFnDependencyNode::setAlias(const MString& alias, const MString&, const MPlug& plug, bool add, MStatus* status) {
  const PlugRef ref = plug.Ref();
  const bool own = ref.node && ref.node == fObject.thing.get() && (add || AliasOf(ref) == alias.asChar());
  const bool good = own && SetAlias(ref, add ? alias.asChar() : "");
  return Ok(status, good), good;
}
bool MFnDependencyNode::findAlias(const MString& alias, MObject& attribute, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  for (const auto& [name, key] : node ? node->aliases : decltype(node->aliases){})
    if (alias == name.c_str()) return attribute = Obj(key.first->shared_from_this()), true;
  return false;
}
bool MFnDependencyNode::getAliasList(MStringArray& aliases, MStatus* status) {
  const NodePtr node = Need(fObject, status);
  aliases.clear();
  for (const auto& [name, key] : node ? node->aliases : decltype(node->aliases){})
    aliases.append(name.c_str()), aliases.append(PlugName({node.get(), key.first, key.second}, true).c_str());
  return aliases.length() > 0;
}
MString MFnDependencyNode::plugsAlias(const MPlug& plug, MStatus* status) {
  const bool own = plug.Ref().node && plug.Ref().node == fObject.thing.get();
  return Ok(status, own), own ? AliasOf(plug.Ref()).c_str() : "";
}
MItDependencyNodes::MItDependencyNodes(MFn::Type filter, MStatus* status) {
  Ok(status);
  reset(filter);
}
MStatus MItDependencyNodes::reset(MFn::Type filter) {
  fItems.clear();
  fAt = 0;
  for (const auto& [serial, node] : TheScene().nodes)
    if (filter == MFn::kInvalid || node->Has(filter)) fItems.push_back(Obj(node));
  return MS::kSuccess;
}
MObject MItDependencyNodes::Now(MStatus* status) const {
  Ok(status, fAt < fItems.size());
  return fAt < fItems.size() ? fItems[fAt] : MObject();
}
MStatus MItDependencyNodes::next() {
  // A node that was deleted meanwhile is passed.
  do ++fAt;
  while (fAt < fItems.size() && !NodeOf(fItems[fAt])->inScene);
  return MS::kSuccess;
}
bool MItDependencyNodes::isDone(MStatus* status) const { return Ok(status), fAt >= fItems.size(); }

OPENMAYA_MAJOR_NAMESPACE_CLOSE
