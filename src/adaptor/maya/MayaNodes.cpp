// Nodes that the adaptor over Maya makes, copies, brings in and deletes.
#include <maya/MDagModifier.h>
#include <maya/MFileIO.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnMesh.h>
#include <maya/MFnNurbsCurve.h>
#include <maya/MFnNurbsSurface.h>
#include <maya/MGlobal.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MNamespace.h>
#include <maya/MObjectHandle.h>

#include <cmath>
#include <iterator>
#include <memory>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/Channels.h"
#include "adaptor/maya/HelperShader.h"
#include "adaptor/maya/LoggedModifier.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/MelText.h"
#include "adaptor/maya/ShapeReading.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr char kImportSpace[] = "rigwrightImport";

/// What a transform has around its channels.
constexpr const char* kFramePlugs[] = {
    "rotateAxisX",           "rotateAxisY",           "rotateAxisZ",
    "rotatePivotX",          "rotatePivotY",          "rotatePivotZ",
    "rotatePivotTranslateX", "rotatePivotTranslateY", "rotatePivotTranslateZ",
    "scalePivotX",           "scalePivotY",           "scalePivotZ",
    "scalePivotTranslateX",  "scalePivotTranslateY",  "scalePivotTranslateZ"};
constexpr const char* kLensPlugs[] = {
    "focalLength",          "focusDistance", "horizontalFilmAperture",
    "verticalFilmAperture", "nearClipPlane", "farClipPlane"};

void CopyValues(const MObject& from, const MObject& to, const char* const* names,
                std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    PutValue(FindPlug(to, names[i]), FindPlug(from, names[i]).asDouble());
}

/// Others than fixed ones follow from their kind.
void CopyTangent(const MFnAnimCurve& from, MFnAnimCurve& to, unsigned key, bool in) {
  const auto type = in ? from.inTangentType(key) : from.outTangentType(key);
  if (type != MFnAnimCurve::kTangentFixed) return;
  MFnAnimCurve::TangentValue x = 1, y = 0;
  from.getTangent(key, x, y, in);
  to.setTangent(key, x, y, in);
}

void CopyKeys(const MObject& from, const MObject& to, const char* name) {
  const MObject curve = CurveOf(FindPlug(from, name));
  if (curve.isNull()) return;
  const MFnAnimCurve keys(curve);
  MDGModifier modifier;
  const MObject copy = CurveFor(FindPlug(to, name), modifier);
  if (!DoLogged(modifier, std::string("copy the curve of ") + name)) return;
  MFnAnimCurve copied(copy);
  copied.setIsWeighted(keys.isWeighted());
  for (unsigned i = 0; i < keys.numKeys(); ++i) {
    copied.addKey(keys.time(i), keys.value(i), keys.inTangentType(i), keys.outTangentType(i));
    copied.setTangentsLocked(i, false);
    for (const bool in : {true, false}) CopyTangent(keys, copied, i, in);
    copied.setTangentsLocked(i, keys.tangentsLocked(i));
  }
  copied.setPreInfinityType(keys.preInfinityType());
  copied.setPostInfinityType(keys.postInfinityType());
}

/// Half a node is none.
HostNode* Discard(CMayaNode& node) {
  MObject transform = node.GetPath().node();
  MGlobal::deleteNode(transform);
  return nullptr;
}

/// A shape of this kind below a transform; null where the host refuses.
MObject AddShape(const char* type, const MObject& transform) {
  MDagModifier modifier;
  const MObject shape = modifier.createNode(type, transform);
  const std::string name = MFnDependencyNode(transform).name().asUTF8();
  modifier.renameNode(shape, (name + "Shape").c_str());
  return DoLogged(modifier, "make the shape of " + name) ? shape : MObject();
}

std::string BareNameOf(const MObject& node) {
  const std::string name = MFnDependencyNode(node).name().asUTF8();
  return name.substr(name.rfind(':') + 1);
}

/// The nodes of a namespace and of those within it, in the order of the scene.
std::vector<MObject> NodesIn(const std::string& space) {
  std::vector<MObject> nodes;
  for (MItDependencyNodes each; !each.isDone(); each.next()) {
    const std::string name = MFnDependencyNode(each.thisNode()).name().asUTF8();
    if (name.rfind(space + ":", 0) == 0) nodes.push_back(each.thisNode());
  }
  return nodes;
}

bool IsStorage(const MObject& node) {
  const MString type = MFnDependencyNode(node).typeName();
  return type == "StorageNode" || type == "CStorageNode";
}

/// What an import brings besides transforms and shapes, such as shaders, which is taken out of the
/// scene and put back.
struct ImportedRest {
  std::vector<MObjectHandle> nodes;
  std::unique_ptr<MDagModifier> out;
  int block = -1;  ///< whose step this is

  void Exchange() {
    if (out) {
      UndoLogged(*out, block);
      out.reset();
      return;
    }
    std::string names;
    // Curves go with what they drive.
    for (const MObjectHandle& node : nodes)
      if (node.isValid()) names += " " + QuoteMel(MFnDependencyNode(node.object()).name().asUTF8());
    if (names.empty()) return;
    out = std::make_unique<MDagModifier>();
    out->commandToExecute(("delete" + names).c_str());
    RedoLogged(*out, block);
  }
};

/// Keeps the host's selection over what changes it.
class KeptSelection {
 public:
  KeptSelection() {
    MGlobal::getActiveSelectionList(m_list);
    MGlobal::clearSelectionList();
  }
  ~KeptSelection() { MGlobal::setActiveSelectionList(m_list, MGlobal::kReplaceList); }
  KeptSelection(const KeptSelection&) = delete;
  KeptSelection& operator=(const KeptSelection&) = delete;

 private:
  MSelectionList m_list;
};

}  // namespace

CMayaNode* MayaAdaptorInterface::AddTransform(const std::string& sceneName, HostNode* parent) {
  const MObject place = parent ? static_cast<CMayaNode*>(parent)->GetObject() : MObject();
  MDagModifier modifier;
  const MObject made = modifier.createNode("transform", place);
  modifier.renameNode(made, FreeName(sceneName).c_str());
  if (!DoLogged(modifier, "make the node " + sceneName)) return nullptr;
  // Yaw first in the angles, as seen by who reads the curves.
  const RotationOrder order = MGlobal::isYAxisUp() ? RotationOrder::kZxy : RotationOrder::kXyz;
  if (!parent) FindPlug(made, "rotateOrder").setShort(static_cast<short>(order));
  CMayaNode* const node = NodeFor(made);
  if (node) node->WriteTrs(GetCurrentTime(), Trs(), false);
  return node;
}

HostNode* MayaAdaptorInterface::AddCamera(const std::string& sceneName, HostNode* parent,
                                          double fieldOfView, double nearClip) {
  CMayaNode* const node = AddTransform(sceneName, parent);
  if (!node) return nullptr;
  const MObject shape = AddShape("camera", node->GetObject());
  if (shape.isNull()) return Discard(*node);
  MFnCamera camera(shape);
  if (nearClip > 0.0 && std::isfinite(nearClip)) camera.setNearClippingPlane(nearClip * 100.0);
  node->WriteLens(LensValue::kFieldOfView, GetCurrentTime(), fieldOfView);
  return node;
}

HostNode* MayaAdaptorInterface::AddMesh(const std::string& sceneName, HostNode* parent,
                                        const util::CMesh* mesh) {
  CMayaNode* const node = AddTransform(sceneName, parent);
  if (!node) return nullptr;
  const bool hasFaces = mesh && !mesh->faces.empty();
  MObject shape;
  if (hasFaces) {
    shape = MakeMesh(*mesh, node->GetObject());
    MFnDependencyNode(shape).setName((node->GetSceneName() + "Shape").c_str());
  } else {
    shape = AddShape("mesh", node->GetObject());
  }
  if (shape.isNull()) return Discard(*node);
  MDagPath path;
  MDagPath::getAPathTo(shape, path);
  if (!hasFaces) FillMesh({}, path);
  ShadePlainly(path);
  // Helpers are no part of the picture.
  for (const char* seen : {"castsShadows", "receiveShadows", "motionBlur"})
    FindPlug(shape, seen).setBool(false);
  return node;
}

HostNode* MayaAdaptorInterface::AddHub(const std::string& sceneName, HostNode* parent) {
  return AddTransform(sceneName, parent);
}

/// In places alike the channels are the same numbers; elsewhere they tell the same poses.
void MayaAdaptorInterface::CopyPose(CMayaNode& from, CMayaNode& to) {
  const bool isAlike = (from.ParentNode() == nullptr) == (to.ParentNode() == nullptr) &&
                       (from.Inherits() || !from.ParentNode());
  const std::vector<double> times = from.KeyTimes();
  if (times.empty() || !isAlike)
    to.WriteTrs(GetCurrentTime(), from.ReadTrs(GetCurrentTime()), false);
  if (times.empty()) return;
  if (isAlike) {
    for (const char* channel : kPoseChannels) {
      PutValue(FindPlug(to.GetObject(), channel), FindPlug(from.GetObject(), channel).asDouble());
      CopyKeys(from.GetObject(), to.GetObject(), channel);
    }
  }
  std::vector<PoseSample> poses;
  for (const double time : times) poses.push_back({time, from.ReadTrs(time)});
  if (isAlike)
    to.KeepSamples(poses.front().time, poses);
  else
    to.WriteKeys(poses.front().time, poses);
}

HostNode* MayaAdaptorInterface::AddCopy(HostNode& original, const std::string& sceneName,
                                        HostNode* parent) {
  auto& from = static_cast<CMayaNode&>(original);
  CMayaNode* const node = AddTransform(sceneName, parent);
  if (!node) return nullptr;
  const MObject source = from.GetObject(), copy = node->GetObject();
  FindPlug(copy, "rotateOrder").setShort(FindPlug(source, "rotateOrder").asShort());
  CopyValues(source, copy, kFramePlugs, std::size(kFramePlugs));
  node->CopyShapes(from);
  CopyPose(from, *node);
  node->PutShown(from.IsShown());
  return node;
}

void CMayaNode::CopyShapes(const CMayaNode& from) {
  const MDagPath path = from.GetPath();
  const MDagPath camera = FindShape(path, MFn::kCamera);
  if (camera.isValid()) {
    const MObject copy = AddShape("camera", GetObject());
    CopyValues(camera.node(), copy, kLensPlugs, std::size(kLensPlugs));
    for (const char* name : {"focalLength", "focusDistance"}) CopyKeys(camera.node(), copy, name);
  }
  const MDagPath curve = FindShape(path, MFn::kNurbsCurve);
  if (curve.isValid()) MFnNurbsCurve().copy(curve.node(), GetObject());
  const MDagPath surface = FindShape(path, MFn::kNurbsSurface);
  if (surface.isValid()) MFnNurbsSurface().copy(surface.node(), GetObject());
  const MDagPath mesh = FindShape(path, MFn::kMesh);
  if (!mesh.isValid()) return;
  MDagPath copied;
  MFnMesh copy;
  MDagPath::getAPathTo(copy.copy(mesh.node(), GetObject()), copied);
  ShadePlainly(copied);
  m_mesh = from.SharedMesh();
  if (IsOwnShader(LambertOf(mesh))) PutColour(from.ReadColour());
}

void MayaAdaptorInterface::Remove(HostNode& node) {
  auto& own = static_cast<CMayaNode&>(node);
  if (own.IsReferenced()) return;
  own.LeaveTake();
  MGlobal::executeCommand(("delete " + QuoteMel(own.GetPath().fullPathName().asUTF8())).c_str(),
                          false, false);
}

std::string MayaAdaptorInterface::ReadNodes(const std::string& file, const std::string& prefix,
                                            std::vector<HostNode*>& roots) {
  const KeptSelection selection;
  std::string space = kImportSpace;
  for (int i = 2; MNamespace::namespaceExists(space.c_str()); ++i)
    space = kImportSpace + std::to_string(i);
  m_importing = true;
  const MStatus status = MFileIO::import(file.c_str(), nullptr, false, space.c_str());
  m_importing = false;
  if (!status) return file + " can't be read: " + status.errorString().asUTF8();
  auto rest = std::make_shared<ImportedRest>();
  rest->block = GetUndo().openId();
  for (MObject object : NodesIn(space)) {
    if (IsStorage(object)) {
      // Rigs of another scene.
      MFnDependencyNode(object).setLocked(false);
      MGlobal::deleteNode(object);
      continue;
    }
    if (!object.hasFn(MFn::kDagNode)) rest->nodes.emplace_back(object);
    const std::string name = prefix + BareNameOf(object);
    MFnDependencyNode(object).setName((":" + FreeName(name)).c_str());
    CMayaNode* const node = object.hasFn(MFn::kTransform) ? NodeFor(object) : nullptr;
    if (!node) continue;
    node->PutTag("");
    if (!node->ParentNode()) roots.push_back(node);
  }
  MNamespace::removeNamespace(space.c_str());
  PushExchange("CDagModifierRestoreObj", [rest] { rest->Exchange(); });
  return {};
}

}  // namespace orv::rws::adaptor::maya
