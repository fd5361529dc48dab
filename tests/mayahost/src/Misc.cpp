// Function sets of shaders, sets and references; namespaces.
#include <maya/MFnAmbientLight.h>
#include <maya/MFnDirectionalLight.h>
#include <maya/MFnLambertShader.h>
#include <maya/MFnPointLight.h>
#include <maya/MFnReference.h>
#include <maya/MFnSet.h>
#include <maya/MFnSpotLight.h>
#include <maya/MNamespace.h>
#include <maya/MObjectArray.h>

#include <algorithm>

#include "Fn.h"
#include "State.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN
FN_SET(MFnLambertShader, MFn::kLambert)
FN_SET(MFnSet, MFn::kSet)
FN_SET(MFnReference, MFn::kReference)

MObject MFnLambertShader::create(bool, MStatus* status) { return MFnDependencyNode::create("lambert", status); }
namespace {
MColor ColorOf(const MObject& object, const char* name, MStatus* status) {
  const NodePtr node = Need(object, status);
  if (!node) return {};
  const PlugRef plug = NumberOf(node, name);
  return {float(Get(ChildOf(plug, 0)).number), float(Get(ChildOf(plug, 1)).number), float(Get(ChildOf(plug, 2)).number)};
}
MStatus SetColorOf(const MObject& object, const char* name, const MColor& color) {
  const NodePtr node = NodeOf(object);
  bool all = node != nullptr;
  for (unsigned i = 0; i < 3 && node; ++i) all &= Put(ChildOf(NumberOf(node, name), i), {color[i], nullptr});
  return St(all);
}
}  // namespace
MColor MFnLambertShader::color(MStatus* status) const { return ColorOf(fObject, "color", status); }
MStatus MFnLambertShader::setColor(const MColor& color) { return SetColorOf(fObject, "color", color); }
MColor MFnLambertShader::transparency(MStatus* status) const { return ColorOf(fObject, "transparency", status); }
FN_DAG(MFnLight, MFn::kLight)
FN_DAG(MFnAmbientLight, MFn::kAmbientLight)
FN_DAG(MFnDirectionalLight, MFn::kDirectionalLight)
FN_DAG(MFnPointLight, MFn::kPointLight)
FN_DAG(MFnSpotLight, MFn::kSpotLight)
MObject MFnLight::Make(const char* type, const MObject& parent, MStatus* status) {
  MObject above = parent;
  const MObject made = MFnDagNode::create(type, above, status);
  if (made.hasFn(MFn::kTransform)) fObject = MFnDagNode(made).child(0);
  return made;
}
MObject MFnAmbientLight::create(MObject parent, MStatus* s) { return Make("ambientLight", parent, s); }
MObject MFnDirectionalLight::create(MObject parent, MStatus* s) { return Make("directionalLight", parent, s); }
MObject MFnPointLight::create(MObject parent, MStatus* s) { return Make("pointLight", parent, s); }
MObject MFnSpotLight::create(MObject parent, MStatus* s) { return Make("spotLight", parent, s); }
MColor MFnLight::color(MStatus* status) const { return ColorOf(fObject, "color", status); }
MStatus MFnLight::setColor(const MColor& color) { return SetColorOf(fObject, "color", color); }
namespace {
double NumberIn(const MObject& object, const char* name, MStatus* status) {
  const NodePtr node = Need(object, status);
  return node ? GetNumber(*node, name) : 0;
}
MStatus SetNumberIn(const MObject& object, const char* name, double value) { return St(NodeOf(object) && PutNumber(*NodeOf(object), name, value)); }
}  // namespace
float MFnLight::intensity(MStatus* s) const { return static_cast<float>(NumberIn(fObject, "intensity", s)); }
MStatus MFnLight::setIntensity(const float& v) { return SetNumberIn(fObject, "intensity", v); }
bool MFnLight::useRayTraceShadows(MStatus* s) const { return NumberIn(fObject, "useRayTraceShadows", s) != 0; }
MStatus MFnLight::setUseRayTraceShadows(const bool& on) { return SetNumberIn(fObject, "useRayTraceShadows", on); }
double MFnSpotLight::coneAngle(MStatus* s) const { return NumberIn(fObject, "coneAngle", s); }
MStatus MFnSpotLight::setConeAngle(double v) { return SetNumberIn(fObject, "coneAngle", v); }
double MFnSpotLight::penumbraAngle(MStatus* s) const { return NumberIn(fObject, "penumbraAngle", s); }
MStatus MFnSpotLight::setPenumbraAngle(double v) { return SetNumberIn(fObject, "penumbraAngle", v); }
double MFnSpotLight::dropOff(MStatus* s) const { return NumberIn(fObject, "dropoff", s); }
MStatus MFnSpotLight::setDropOff(double v) { return SetNumberIn(fObject, "dropoff", v); }
MStatus MFnLambertShader::setTransparency(const MColor& color) { return SetColorOf(fObject, "transparency", color); }
MObject MFnSet::create(const MSelectionList& members, Restriction restriction, MStatus* status) {
  MFnDependencyNode::create(restriction == kRenderableOnly ? "shadingEngine" : "objectSet", status);
  addMembers(members);
  return fObject;
}
MFnSet::Restriction MFnSet::restriction(MStatus* status) const { return Need(fObject, status) && fObject.hasFn(MFn::kShadingEngine) ? kRenderableOnly : kNone; }
namespace {
bool SameMember(const MSelectionList::Item& a, const MSelectionList::Item& b) { return a.node == b.node && a.plug == b.plug; }
MStatus Change(const NodePtr& set, const std::vector<MSelectionList::Item>& after) {
  if (!set) return MS::kFailure;
  Do([=] { set->members = after; }, [=, before = set->members] { set->members = before; });
  return MS::kSuccess;
}
MStatus AddTo(const MObject& object, const MSelectionList& list) {
  const NodePtr set = NodeOf(object);
  if (!set) return MS::kFailure;
  auto after = set->members;
  for (auto item : list.items) {
    if (set->info->IsA("shadingEngine") && !item.path.nodes.empty() && item.path.nodes.back()->info->IsA("transform") &&
        item.path.extendToShape() == MS::kSuccess)
      item.node = item.path.node();
    // A shape is in one set of those that shade only.
    for (const auto& [serial, other] : TheScene().nodes) {
      if (other == set || !set->info->IsA("shadingEngine") || !other->info->IsA("shadingEngine")) continue;
      auto less = other->members;
      less.erase(std::remove_if(less.begin(), less.end(), [&](const auto& m) { return m.node == item.node; }), less.end());
      if (less.size() != other->members.size()) Change(other, less);
    }
    if (std::none_of(after.begin(), after.end(), [&](const auto& m) { return SameMember(m, item); })) after.push_back(item);
  }
  return Change(set, after);
}
MStatus TakeFrom(const MObject& object, const MObject& member) {
  const NodePtr set = NodeOf(object);
  auto after = set ? set->members : std::vector<MSelectionList::Item>();
  const auto end = std::remove_if(after.begin(), after.end(), [&](const auto& m) { return m.node == member; });
  const bool had = end != after.end();
  after.erase(end, after.end());
  return had ? Change(set, after) : MStatus(MS::kFailure);
}
template <class... T>
MSelectionList ListOf(const T&... what) {
  MSelectionList list;
  return list.add(what...), list;
}
}  // namespace
MStatus MFnSet::clear() { return Change(NodeOf(fObject), {}); }
MStatus MFnSet::addMember(const MObject& object) { return AddTo(fObject, ListOf(object)); }
MStatus MFnSet::addMember(const MDagPath& path, const MObject& component) { return AddTo(fObject, ListOf(path, component)); }
MStatus MFnSet::addMember(const MPlug& plug) { return AddTo(fObject, ListOf(plug)); }
MStatus MFnSet::addMembers(const MSelectionList& list) { return AddTo(fObject, list); }
MStatus MFnSet::removeMember(const MObject& object) { return TakeFrom(fObject, object); }
MStatus MFnSet::removeMember(const MDagPath& path, const MObject&) { return TakeFrom(fObject, path.node()); }
MStatus MFnSet::removeMembers(const MSelectionList& list) {
  bool all = true;
  for (const auto& item : list.items) all &= removeMember(item.node) == MS::kSuccess;
  return St(all);
}
MString MFnSet::annotation(MStatus* status) const { return findPlug("annotation", false, status).asString(status); }
MStatus MFnSet::setAnnotation(const MString& text) { return findPlug("annotation", false).setValue(text); }
MStatus MFnSet::getUnion(const MObject& other, MSelectionList& result) const {
  MSelectionList more;
  if (getMembers(result, true) != MS::kSuccess || MFnSet(other).getMembers(more, true) != MS::kSuccess) return MS::kFailure;
  return result.merge(more);
}
MStatus MFnSet::getIntersection(const MObject& other, MSelectionList& result) const {
  MSelectionList more;
  if (getMembers(result, true) != MS::kSuccess || MFnSet(other).getMembers(more, true) != MS::kSuccess) return MS::kFailure;
  return result.intersect(more);
}
bool MFnSet::intersectsWith(const MObject& other, MStatus* status) const {
  MSelectionList both;
  const MStatus s = getIntersection(other, both);
  return status ? void(*status = s) : void(), !both.isEmpty();
}
MStatus MFnSet::getMembers(MSelectionList& members, bool) const {
  const NodePtr set = NodeOf(fObject);
  return set ? (members.items = set->members, MS::kSuccess) : MS::kFailure;
}
bool MFnSet::isMember(const MObject& object, MStatus* status) const {
  const NodePtr set = Need(fObject, status);
  return set && std::any_of(set->members.begin(), set->members.end(), [&](const auto& m) { return m.node == object; });
}
bool MFnSet::isMember(const MDagPath& path, const MObject&, MStatus* status) const { return isMember(path.node(), status); }

MStatus MNamespace::addNamespace(const MString& name, const MString* parent) {
  const std::string above = parent ? FullNamespace(parent->asChar()) : "";
  const std::string full = above.empty() ? FullNamespace(name.asChar()) : above + ":" + name.asChar();
  return St(LegalName(full) == full && TheScene().namespaces.insert(full).second);
}
MStatus MNamespace::removeNamespace(const MString& name, bool removeContents) {
  const std::string space = FullNamespace(name.asChar());
  MObjectArray objects;
  if (!TheScene().namespaces.count(space) || getNamespaceObjects(name, objects, true) != MS::kSuccess || (objects.length() && !removeContents))
    return MS::kFailure;
  for (const MObject& object : objects)
    if (const NodePtr node = NodeOf(object); node->inScene) DeleteNode(node);
  for (auto at = TheScene().namespaces.begin(); at != TheScene().namespaces.end();)
    at = (*at + ":").find(space + ":") == 0 ? TheScene().namespaces.erase(at) : std::next(at);
  return MS::kSuccess;
}
bool MNamespace::namespaceExists(const MString& name, MStatus* status) {
  return Ok(status), FullNamespace(name.asChar()).empty() || TheScene().namespaces.count(FullNamespace(name.asChar()));
}
MStatus MNamespace::setCurrentNamespace(const MString& name) {
  return namespaceExists(name) ? (TheScene().currentNamespace = FullNamespace(name.asChar()), MS::kSuccess) : MS::kFailure;
}
MString MNamespace::currentNamespace(MStatus* status) { return Ok(status), (":" + TheScene().currentNamespace).c_str(); }
MString MNamespace::rootNamespace(MStatus* status) { return Ok(status), ":"; }
MStringArray MNamespace::getNamespaces(const MString& parent, bool recurse, MStatus* status) {
  MStringArray all;
  Ok(status);
  const std::string above = FullNamespace(parent.asChar());
  for (const std::string& space : TheScene().namespaces)
    if (NamespaceOf(space) == above || (recurse && (above.empty() || space.find(above + ":") == 0))) all.append(space.c_str());
  return all;
}
MStatus MNamespace::getNamespaceObjects(const MString& name, MObjectArray& objects, bool recurse) {
  const std::string space = FullNamespace(name.asChar());
  objects.clear();
  if (!namespaceExists(name)) return MS::kFailure;
  for (const auto& [serial, node] : TheScene().nodes)
    if (NamespaceOf(node->name) == space || (recurse && node->name.find(space + ":") == 0)) objects.append(Obj(node));
  return MS::kSuccess;
}
MString MNamespace::getNamespaceFromName(const MString& name, MStatus* status) {
  return Ok(status), Pretends(Wrong::kNamespaces) ? "" : NamespaceOf(name.asChar()).c_str();
}
MString MNamespace::parentNamespace(MStatus* status) {
  const std::string& now = TheScene().currentNamespace;
  return Ok(status, !now.empty()), (":" + NamespaceOf(now)).c_str();
}
MString MNamespace::validateName(const MString& name, MStatus* status) { return Ok(status), LegalName(name.asChar()).c_str(); }
MString MNamespace::stripNamespaceFromName(const MString& name, MStatus* status) { return Ok(status), Short(name.asChar()).c_str(); }
MString MFnReference::fileName(bool, bool includePath, bool includeCopyNumber, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  std::string file = node ? FileOf(node) : "";
  if (!includeCopyNumber) file = WithoutCopy(file);
  return (includePath ? file : file.substr(file.rfind('/') + 1)).c_str();
}
MString MFnReference::associatedNamespace(bool shortName, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? (shortName ? Short(SpaceOf(*node)) : SpaceOf(*node)).c_str() : "";
}
MStatus MFnReference::nodes(MObjectArray& nodes) const {
  nodes.clear();
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->reference && node->reference == fObject.thing.get()) nodes.append(Obj(node));
  return St(!fObject.isNull());
}
bool MFnReference::containsNode(const MObject& object, MStatus* status) const {
  const NodePtr node = NodeOf(object);
  Ok(status, !fObject.isNull());
  return node && node->reference && node->reference == fObject.thing.get();
}
bool MFnReference::isLoaded(MStatus* status) const {
  MObjectArray all;
  return nodes(all), Ok(status), all.length() > 0;
}
bool MFnReference::isLocked(MStatus* status) const { return Need(fObject, status) && GetNumber(*NodeOf(fObject), "locked") != 0; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
