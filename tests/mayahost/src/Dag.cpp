// Paths and function sets of the hierarchy.
#include <maya/MDagPathArray.h>
#include <maya/MFnCamera.h>
#include <maya/MFnTransform.h>
#include <maya/MItDag.h>
#include <maya/MObjectArray.h>

#include <algorithm>
#include <cmath>

#include "Fn.h"
#include "Notify.h"

namespace mayahost {
bool ToSpace(const MDagPath& path, MSpace::Space space, MMatrix& matrix) {
  matrix = MMatrix();
  if (space != MSpace::kWorld) return true;
  if (path.nodes.empty()) return false;
  matrix = path.inclusiveMatrix();
  return true;
}
NodePtr CreateDag(const NodeType* type, const std::string& name, const MObject& parent, bool add) {
  NodePtr above = NodeOf(parent);
  if (!type->IsA("shape") || above) {
    const NodePtr node = MakeNode(type, LegalName(name));
    if (add) AddNode(node, above.get());
    return node;
  }
  static const std::map<std::string, std::string> kBases = {{"mesh", "polySurface"}, {"nurbsCurve", "curve"}, {"nurbsSurface", "nurbsSurface"}};
  const auto base = kBases.find(type->name);
  above = MakeNode(FindType("transform"), name.empty() ? (base == kBases.end() ? type->name : base->second) + "1" : LegalName(name));
  if (!add) return above;
  AddNode(above, nullptr);
  std::size_t end = above->name.size();
  while (end > 0 && std::isdigit(static_cast<unsigned char>(above->name[end - 1]))) --end;
  AddNode(MakeNode(type, ":" + above->name.substr(0, end) + "Shape" + above->name.substr(end)), above.get());
  return above;
}
namespace {
/// Attributes of its own, so that what becomes of one node's isn't the other's.
AttrPtr Copied(const AttrPtr& attr, Attr* parent, std::map<Attr*, Attr*>& copies) {
  const auto copy = std::make_shared<Attr>(*attr);
  copies[attr.get()] = copy.get(), copy->parent = parent;
  for (AttrPtr& child : copy->children) child = Copied(child, copy.get(), copies);
  return copy;
}
}  // namespace
NodePtr DuplicateNode(const NodePtr& node, Node* parent) {
  const NodePtr copy = MakeNode(node->info, Short(node->name));
  std::map<Attr*, Attr*> copies;
  for (const AttrPtr& attr : node->dynamic) copy->dynamic.push_back(Copied(attr, nullptr, copies));
  const auto key = [&](const PlugKey& of) { return PlugKey{copies.count(of.first) ? copies.at(of.first) : of.first, of.second}; };
  for (const auto& [of, value] : node->values) copy->values[key(of)] = value;
  for (const auto& [of, from] : node->inputs)
    if (!of.first->IsCompound() && of.first->type != MFn::kMessageAttribute) copy->values[key(of)] = Get({node.get(), of.first, of.second});
  for (const auto& [of, flags] : node->flags) copy->flags[key(of)] = flags;
  for (const auto& [alias, of] : node->aliases) copy->aliases.emplace_back(alias, key(of));
  if (node->IsDag()) copy->shape = ShapeOf(*node);
  if (node->curve) copy->curve = std::make_unique<Curve>(*node->curve);
  if (copy->user && node->user) copy->user->copyInternalData(node->user.get());
  AddNode(copy, parent);
  for (const NodePtr& child : node->children) DuplicateNode(child, copy.get());
  return copy;
}
PlugRef NumberOf(const NodePtr& node, const char* name) { return {node.get(), FindAttr(*node, name).get(), {}}; }
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

bool MDagPath::isValid(MStatus* status) const {
  Ok(status);
  const Node* above = TheScene().world.get();
  for (const NodePtr& node : nodes) {
    if (!node->inScene || std::find(node->parents.begin(), node->parents.end(), above) == node->parents.end()) return false;
    above = node.get();
  }
  return !nodes.empty();
}
MString MDagPath::fullPathName(MStatus* status) const { return Ok(status, isValid()), isValid() ? PathName(*this, true).c_str() : ""; }
MString MDagPath::partialPathName(MStatus* status) const { return Ok(status, isValid()), isValid() ? PathName(*this, false).c_str() : ""; }
MObject MDagPath::node(MStatus* status) const { return Ok(status, !nodes.empty()), nodes.empty() ? MObject() : Obj(nodes.back()); }
MObject MDagPath::transform(MStatus* status) const {
  for (std::size_t i = nodes.size(); i-- > 0;)
    if (nodes[i]->info->IsA("transform")) return Ok(status), Obj(nodes[i]);
  return Ok(status, false), MObject();
}
bool MDagPath::hasFn(MFn::Type type, MStatus* status) const {
  Ok(status, !nodes.empty());
  if (nodes.empty()) return false;
  if (nodes.back()->Has(type)) return true;
  // A transform's path answers for its one shape too.
  unsigned int shapes = 0;
  numberOfShapesDirectlyBelow(shapes);
  MDagPath below = *this;
  return shapes == 1 && nodes.back()->info->IsA("transform") && below.extendToShape() == MS::kSuccess && below.nodes.back()->Has(type);
}
MFn::Type MDagPath::apiType(MStatus* status) const { return node(status).apiType(); }
unsigned int MDagPath::length(MStatus* status) const { return Ok(status), static_cast<unsigned int>(nodes.size()); }
unsigned int MDagPath::pathCount(MStatus* status) const { return Ok(status, !nodes.empty()), !nodes.empty(); }
MStatus MDagPath::getPath(MDagPath& path, unsigned int i) const { return i < pathCount() ? (path = *this, MS::kSuccess) : MS::kInvalidParameter; }
bool MDagPath::isTemplated(MStatus* status) const {
  Ok(status, !nodes.empty());
  return std::any_of(nodes.begin(), nodes.end(), [](const NodePtr& node) { return GetNumber(*node, "template") != 0; });
}
unsigned int MDagPath::childCount(MStatus* status) const {
  Ok(status, !nodes.empty());
  return static_cast<unsigned int>(nodes.empty() ? TheScene().world->children.size() : nodes.back()->children.size());
}
MObject MDagPath::child(unsigned int i, MStatus* status) const {
  const bool has = i < childCount();
  Ok(status, has);
  return has ? Obj(nodes.empty() ? TheScene().world->children[i] : nodes.back()->children[i]) : MObject();
}
MStatus MDagPath::push(const MObject& child) {
  const NodePtr node = NodeOf(child);
  const Node* above = nodes.empty() ? TheScene().world.get() : nodes.back().get();
  if (!node || std::find(node->parents.begin(), node->parents.end(), above) == node->parents.end()) return MS::kInvalidParameter;
  return nodes.push_back(node), MS::kSuccess;
}
MStatus MDagPath::pop(unsigned int num) {
  if (num > nodes.size()) return MS::kFailure;
  return nodes.resize(nodes.size() - num), MS::kSuccess;
}
MStatus MDagPath::extendToShape() {
  unsigned int count = 0;
  numberOfShapesDirectlyBelow(count);
  if (!nodes.empty() && nodes.back()->info->IsA("shape")) return MS::kSuccess;
  return count == 1 ? extendToShapeDirectlyBelow(0) : MStatus(MS::kFailure);
}
MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const {
  count = 0;
  if (nodes.empty()) return MS::kFailure;
  for (const NodePtr& child : nodes.back()->children) count += child->info->IsA("shape");
  return MS::kSuccess;
}
MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int i) {
  if (nodes.empty()) return MS::kFailure;
  for (const NodePtr& child : nodes.back()->children)
    if (child->info->IsA("shape") && i-- == 0) return nodes.push_back(child), MS::kSuccess;
  return MS::kInvalidParameter;
}
bool MDagPath::isInstanced(MStatus* status) const { return Ok(status, !nodes.empty()), !nodes.empty() && PathsTo(nodes.back()).size() > 1; }
unsigned int MDagPath::instanceNumber(MStatus* status) const {
  Ok(status, !nodes.empty());
  const auto paths = nodes.empty() ? std::vector<MDagPath>() : PathsTo(nodes.back());
  const auto at = std::find(paths.begin(), paths.end(), *this);
  return at == paths.end() ? 0 : static_cast<unsigned int>(at - paths.begin());
}
bool MDagPath::isVisible(MStatus* status) const {
  Ok(status, !nodes.empty());
  return std::all_of(nodes.begin(), nodes.end(),
                     [](const NodePtr& node) { return GetNumber(*node, "visibility") != 0 && GetNumber(*node, "intermediateObject") == 0; });
}
MMatrix MDagPath::inclusiveMatrix(MStatus* status) const {
  Ok(status, !nodes.empty());
  MMatrix matrix;
  for (const NodePtr& node : nodes) {
    if (node->info->IsA("transform") && GetNumber(*node, "inheritsTransform") == 0) matrix = MMatrix();
    matrix = LocalMatrix(*node) * matrix;
  }
  return matrix;
}
MMatrix MDagPath::exclusiveMatrix(MStatus* status) const {
  MDagPath above = *this;
  above.pop(nodes.empty() ? 0 : 1);
  const MMatrix m = above.inclusiveMatrix();
  return Ok(status, !nodes.empty()), m;
}
MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path) {
  const auto paths = PathsTo(NodeOf(node));
  if (paths.empty()) return MS::kFailure;
  return path = paths[0], MS::kSuccess;
}
MDagPath MDagPath::getAPathTo(const MObject& node, MStatus* status) {
  MDagPath path;
  const MStatus s = getAPathTo(node, path);
  return status ? void(*status = s) : void(), path;
}
MStatus MDagPath::getAllPathsTo(const MObject& node, MDagPathArray& paths) {
  paths.clear();
  for (const MDagPath& path : PathsTo(NodeOf(node))) paths.append(path);
  return St(paths.length() > 0);
}

FN_DAG(MFnDagNode, MFn::kDagNode)
MStatus MFnDagNode::setObject(MObject& object) { return fPath = MDagPath(), Take(object); }
MStatus MFnDagNode::setObject(const MObject& object) { return fPath = MDagPath(), Take(object); }
MStatus MFnDagNode::setObject(const MDagPath& path) {
  fPath = path;
  MStatus status = Take(path.node());
  if (status != MS::kSuccess && fPath.hasFn(type()) && fPath.extendToShape() == MS::kSuccess) status = Take(fPath.node());
  if (status != MS::kSuccess) fPath = MDagPath();
  return status;
}
namespace {
MObject NewDag(const NodeType* type, const MString& name, const MObject& parent, MStatus* status) {
  const bool can = type && type->IsA("dagNode") && (parent.isNull() || parent.hasFn(MFn::kDagNode));
  Ok(status, can);
  return can ? Obj(CreateDag(type, name.asChar(), parent)) : MObject();
}
}  // namespace
MObject MFnDagNode::create(const MTypeId& id, MObject& parent, MStatus* status) { return fObject = NewDag(FindType(id.id()), "", parent, status); }
MObject MFnDagNode::create(const MTypeId& id, const MString& name, MObject& parent, MStatus* status) {
  return fObject = NewDag(FindType(id.id()), name, parent, status);
}
MObject MFnDagNode::create(const MString& type, MObject& parent, MStatus* status) { return fObject = NewDag(FindType(type.asChar()), "", parent, status); }
MObject MFnDagNode::create(const MString& type, const MString& name, MObject& parent, MStatus* status) {
  return fObject = NewDag(FindType(type.asChar()), name, parent, status);
}
unsigned int MFnDagNode::parentCount(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? static_cast<unsigned int>(node->parents.size()) : 0;
}
MObject MFnDagNode::parent(unsigned int i, MStatus* status) const {
  const NodePtr node = NodeOf(fObject);
  const bool has = node && i < node->parents.size();
  Ok(status, has);
  return has ? Obj(node->parents[i]->Ptr()) : MObject();
}
unsigned int MFnDagNode::childCount(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? static_cast<unsigned int>(node->children.size()) : 0;
}
MObject MFnDagNode::child(unsigned int i, MStatus* status) const {
  const NodePtr node = NodeOf(fObject);
  const bool has = node && i < node->children.size();
  Ok(status, has);
  return has ? Obj(node->children[i]) : MObject();
}
MStatus MFnDagNode::addChild(MObject& child, unsigned int, bool keepExistingParents) {
  const NodePtr node = NodeOf(fObject), below = NodeOf(child);
  if (!node || !below) return MS::kFailure;
  return St(Reparent(below, below->parents.empty() ? nullptr : below->parents[0], node.get(), keepExistingParents));
}
MStatus MFnDagNode::removeChild(MObject& child) {
  const NodePtr node = NodeOf(fObject), below = NodeOf(child);
  if (!node || !below || std::find(below->parents.begin(), below->parents.end(), node.get()) == below->parents.end()) return MS::kFailure;
  return St(Reparent(below, node.get(), below->parents.size() > 1 ? nullptr : TheScene().world.get()));
}
MStatus MFnDagNode::removeChildAt(unsigned int i) {
  MObject below = child(i);
  return below.isNull() ? MStatus(MS::kInvalidParameter) : removeChild(below);
}
bool MFnDagNode::inModel(MStatus* status) const { return Need(fObject, status) && NodeOf(fObject)->inScene; }
bool MFnDagNode::inUnderWorld(MStatus* status) const { return Need(fObject, status), false; }
bool MFnDagNode::isInstanceable(MStatus* status) const { return Need(fObject, status) != nullptr; }
namespace {
MBoundingBox BoxOf(Node& node) {
  MBoundingBox box;
  if (const ShapePtr shape = ShapeOf(node)) {
    for (std::size_t i = 0; i + 2 < shape->points.size(); i += 3) box.expand(MPoint(shape->points[i], shape->points[i + 1], shape->points[i + 2]));
    for (const MPoint& cv : shape->cvs) box.expand(cv);
  }
  if (node.info->IsA("locator")) {
    const MVector p(GetNumber(node, "localPositionX"), GetNumber(node, "localPositionY"), GetNumber(node, "localPositionZ"));
    const MVector s(GetNumber(node, "localScaleX"), GetNumber(node, "localScaleY"), GetNumber(node, "localScaleZ"));
    box.expand(MPoint(p - s)), box.expand(MPoint(p + s));
  }
  for (const NodePtr& child : node.children) box.expand(BoxOf(*child));
  if (node.info->IsA("transform")) box.transformUsing(LocalMatrix(node));
  return box;
}
}  // namespace
MBoundingBox MFnDagNode::boundingBox(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? BoxOf(*node) : MBoundingBox();
}
MStatus MFnDagNode::getConnectedSetsAndMembers(unsigned int, MObjectArray& sets, MObjectArray& components, bool renderable) const {
  sets.clear(), components.clear();
  for (const auto& [serial, set] : TheScene().nodes)
    for (const auto& member : set->members)
      if (member.node == fObject && (!renderable || set->info->IsA("shadingEngine"))) sets.append(Obj(set)), components.append(MObject());
  return St(!fObject.isNull());
}
MObject MFnDagNode::dagRoot(MStatus* status) const { return Ok(status), Obj(TheScene().world); }
bool MFnDagNode::hasParent(const MObject& other, MStatus* status) const {
  const NodePtr node = Need(fObject, status), above = NodeOf(other);
  return node && above && std::find(node->parents.begin(), node->parents.end(), above.get()) != node->parents.end();
}
bool MFnDagNode::hasChild(const MObject& other, MStatus* status) const {
  const NodePtr node = Need(fObject, status), below = NodeOf(other);
  return node && below && std::find(below->parents.begin(), below->parents.end(), node.get()) != below->parents.end();
}
bool MFnDagNode::isInstanced(bool indirect, MStatus* status) const { return instanceCount(indirect, status) > 1; }
unsigned int MFnDagNode::instanceCount(bool total, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return !node ? 0 : static_cast<unsigned int>(total ? PathsTo(node).size() : node->parents.size());
}
MObject MFnDagNode::duplicate(bool instance, bool, MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  if (!node || node->parents.empty()) return {};
  if (!instance) {
    NotifyDuplicate(true);
    const MObject made = Obj(DuplicateNode(node, node->parents[0]));
    return NotifyDuplicate(false), made;
  }
  const NodePtr made = MakeNode(FindType("transform"), Short(node->name));
  AddNode(made, node->parents[0]);
  made->values = node->values;
  for (const NodePtr& child : node->children) Reparent(child, nullptr, made.get(), true);
  return Obj(made);
}
MStatus MFnDagNode::getPath(MDagPath& path) const {
  if (!fPath.nodes.empty()) return path = fPath, MS::kSuccess;
  return MDagPath::getAPathTo(fObject, path);
}
MDagPath MFnDagNode::dagPath(MStatus* status) const { return Ok(status, !fPath.nodes.empty()), fPath; }
MStatus MFnDagNode::getAllPaths(MDagPathArray& paths) const { return MDagPath::getAllPathsTo(fObject, paths); }
MString MFnDagNode::fullPathName(MStatus* status) const {
  MDagPath path;
  return getPath(path), path.fullPathName(status);
}
MString MFnDagNode::partialPathName(MStatus* status) const {
  MDagPath path;
  return getPath(path), path.partialPathName(status);
}
MMatrix MFnDagNode::transformationMatrix(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node ? LocalMatrix(*node) : MMatrix();
}
bool MFnDagNode::isIntermediateObject(MStatus* status) const {
  const NodePtr node = Need(fObject, status);
  return node && GetNumber(*node, "intermediateObject") != 0;
}
MStatus MFnDagNode::setIntermediateObject(bool on) {
  const NodePtr node = NodeOf(fObject);
  return St(node && PutNumber(*node, "intermediateObject", on));
}

MItDag::MItDag(TraversalType type, MFn::Type filter, MStatus* status) : fType(type), fFilter(filter) {
  Ok(status);
  reset();
}
MStatus MItDag::reset() { return reset(fRoot, fType, fFilter); }
MStatus MItDag::reset(const MObject& root, TraversalType type, MFn::Type filter) {
  MDagPath path;
  const bool world = root.isNull() || root.thing == TheScene().world;
  if (!world && MDagPath::getAPathTo(root, path) != MS::kSuccess) return MS::kInvalidParameter;
  return reset(path, type, filter);
}
MStatus MItDag::reset(const MDagPath& root, TraversalType type, MFn::Type filter) {
  fRoot = root, fType = type, fFilter = filter;
  fOpen.assign(1, {root, 0});
  if (!Fits()) next();
  return MS::kSuccess;
}
bool MItDag::Fits() const {
  const auto& nodes = fOpen.front().path.nodes;
  return fFilter == MFn::kInvalid || (!nodes.empty() && nodes.back()->Has(fFilter));
}
void MItDag::Advance() {
  const Step now = fOpen.front();
  fOpen.erase(fOpen.begin());
  if (std::exchange(fPruned, false)) return;
  const auto& children = now.path.nodes.empty() ? TheScene().world->children : now.path.nodes.back()->children;
  std::size_t at = fType == kBreadthFirst ? fOpen.size() : 0;
  for (const NodePtr& child : children) {
    Step step{now.path, now.depth + 1};
    step.path.nodes.push_back(child);
    fOpen.insert(fOpen.begin() + static_cast<std::ptrdiff_t>(at++), step);
  }
}
MStatus MItDag::prune() { return fPruned = true, St(!fOpen.empty()); }
MStatus MItDag::getAllPaths(MDagPathArray& paths) const { return MDagPath::getAllPathsTo(currentItem(), paths); }
bool MItDag::isInstanced(bool indirect, MStatus* status) const { return instanceCount(indirect, status) > 1; }
unsigned int MItDag::instanceCount(bool total, MStatus* status) const { return MFnDagNode(currentItem()).instanceCount(total, status); }
bool MItDag::willTraverseUnderWorld(MStatus* status) const { return Ok(status), fUnderWorld; }
MStatus MItDag::next() {
  do Advance();
  while (!fOpen.empty() && !Fits());
  return MS::kSuccess;
}
MObject MItDag::currentItem(MStatus* status) const {
  Ok(status, !fOpen.empty());
  return fOpen.empty() ? MObject() : fOpen.front().path.nodes.empty() ? Obj(TheScene().world) : fOpen.front().path.node();
}
MObject MItDag::root(MStatus* status) const { return Ok(status), fRoot.nodes.empty() ? Obj(TheScene().world) : fRoot.node(); }
unsigned int MItDag::depth(MStatus* status) const { return Ok(status, !fOpen.empty()), fOpen.empty() ? 0 : fOpen.front().depth; }
MString MItDag::fullPathName(MStatus* status) const { return Ok(status, !fOpen.empty()), fOpen.empty() ? MString() : fOpen.front().path.fullPathName(); }
MString MItDag::partialPathName(MStatus* status) const { return Ok(status, !fOpen.empty()), fOpen.empty() ? MString() : fOpen.front().path.partialPathName(); }
MStatus MItDag::getPath(MDagPath& path) const { return fOpen.empty() ? MStatus(MS::kFailure) : (path = fOpen.front().path, St(!path.nodes.empty())); }
bool MItDag::isDone(MStatus* status) const { return Ok(status), fOpen.empty(); }
MItDag::TraversalType MItDag::traversalType(MStatus* status) const { return Ok(status), fType; }

OPENMAYA_MAJOR_NAMESPACE_CLOSE
