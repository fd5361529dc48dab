// The host's own node types and what their attributes are.
#include <algorithm>
#include <sstream>

#include "Command.h"

namespace mayahost {
namespace {

struct OwnType {
  const char* name;
  MFn::Type fn;
  const char* base;
  /// long/short:kind[:default[:flags]]; a kind with 3 behind it has three children. Flags: k keyable, h hidden, a array, w one value per
  /// instance, o computed, n not saved.
  const char* attrs;
};
constexpr OwnType kOwnTypes[] = {
    {"dependNode", MFn::kDependencyNode, "", "message/msg:message:0:hn isHistoricallyInteresting/ihi:int:2:h caching/cch:bool:0:h nodeState/nds:enum:0:h"},
    {"dagNode", MFn::kDagNode, "dependNode",
     "visibility/v:bool:1:k intermediateObject/io:bool template/tmp:bool instObjGroups/iog:message:0:awn worldMatrix/wm:matrix:0:wo "
     "worldInverseMatrix/wim:matrix:0:wo parentMatrix/pm:matrix:0:wo parentInverseMatrix/pim:matrix:0:wo matrix/m:matrix:0:o inverseMatrix/im:matrix:0:o "
     "drawOverride/do:message"},
    {"transform", MFn::kTransform, "dagNode",
     "translate/t:len3:0:k rotate/r:ang3:0:k scale/s:dbl3:1:k shear/sh:dbl3 rotatePivot/rp:len3 rotatePivotTranslate/rpt:len3 scalePivot/sp:len3 "
     "scalePivotTranslate/spt:len3 rotateAxis/ra:ang3 rotateOrder/ro:enum inheritsTransform/it:bool:1 displayHandle/dh:bool"},
    {"joint", MFn::kJoint, "transform", "jointOrient/jo:ang3 radius/radi:double:1 segmentScaleCompensate/ssc:bool:1"},
    {"shape", MFn::kShape, "dagNode", ""},
    {"locator", MFn::kLocator, "shape", "localPosition/lp:len3 localScale/los:dbl3:1"},
    {"camera", MFn::kCamera, "shape",
     "focalLength/fl:double:35:k horizontalFilmAperture/hfa:double:1.41732 verticalFilmAperture/vfa:double:0.94488 nearClipPlane/ncp:len:0.1 "
     "farClipPlane/fcp:len:10000 focusDistance/fd:len:5:k fStop/fs:double:5.6 depthOfField/dof:bool centerOfInterest/coi:len:5 filmFit/ff:enum:1 "
     "orthographic/o:bool lensSqueezeRatio/lsr:double:1 cameraScale/cs:double:1 renderable/rnd:bool horizontalFilmOffset/hfo:double "
     "verticalFilmOffset/vfo:double shutterAngle/sa:ang:2.5132741228718345 overscan/ovr:double:1 orthographicWidth/ow:len:10"},
    {"light", MFn::kLight, "shape", "color/cl:color3:1:k intensity/in:float:1:k useRayTraceShadows/urs:bool emitDiffuse/ed:bool:1 emitSpecular/sn:bool:1"},
    {"ambientLight", MFn::kAmbientLight, "light", "ambientShade/as:float:0.45"},
    {"directionalLight", MFn::kDirectionalLight, "light", ""},
    {"pointLight", MFn::kPointLight, "light", "decayRate/de:enum"},
    {"spotLight", MFn::kSpotLight, "light", "decayRate/de:enum coneAngle/ca:ang:0.6981317007977318:k penumbraAngle/pa:ang:0:k dropoff/dro:double:0:k"},
    {"controlPoint", MFn::kGeometric, "shape", "castsShadows/csh:bool:1 receiveShadows/rcsh:bool:1 motionBlur/mb:bool:1 primaryVisibility/vis:bool:1"},
    {"mesh", MFn::kMesh, "controlPoint", "inMesh/i:mesh:0:h outMesh/o:mesh:0:o worldMesh/w:mesh:0:wo displayColors/dcol:bool"},
    {"nurbsCurve", MFn::kNurbsCurve, "controlPoint", "create/cr:curve:0:h local/l:curve:0:o worldSpace/ws:curve:0:wo"},
    {"nurbsSurface", MFn::kNurbsSurface, "controlPoint", "create/cr:surface:0:h local/l:surface:0:o worldSpace/ws:surface:0:wo"},
    {"pointConstraint", MFn::kConstraint, "transform", "constraintTranslate/ct:len3:0:o offset/o:len3"},
    {"time", MFn::kTime, "dependNode", "outTime/o:time:0:n"},
    {"animCurve", MFn::kAnimCurve, "dependNode", "input/i:time:0:hn preInfinity/pre:enum postInfinity/pst:enum weightedTangents/wgt:bool"},
    {"animCurveTA", MFn::kAnimCurveTimeToAngular, "animCurve", "output/o:ang:0:o"},
    {"animCurveTL", MFn::kAnimCurveTimeToDistance, "animCurve", "output/o:len:0:o"},
    {"animCurveTT", MFn::kAnimCurveTimeToTime, "animCurve", "output/o:time:0:o"},
    {"animCurveTU", MFn::kAnimCurveTimeToUnitless, "animCurve", "output/o:double:0:o"},
    {"animCurveUA", MFn::kAnimCurveUnitlessToAngular, "animCurve", "output/o:ang:0:o"},
    {"animCurveUL", MFn::kAnimCurveUnitlessToDistance, "animCurve", "output/o:len:0:o"},
    {"animCurveUT", MFn::kAnimCurveUnitlessToTime, "animCurve", "output/o:time:0:o"},
    {"animCurveUU", MFn::kAnimCurveUnitlessToUnitless, "animCurve", "output/o:double:0:o"},
    {"objectSet", MFn::kSet, "dependNode", "dagSetMembers/dsm:message:0:an annotation/an:string"},
    {"shadingEngine", MFn::kShadingEngine, "objectSet", "surfaceShader/ss:color3 displacementShader/ds:message volumeShader/vs:message"},
    {"lambert", MFn::kLambert, "dependNode", "color/c:color3:0.5 transparency/it:color3 diffuse/dc:float:0.8 outColor/oc:color3:0:o"},
    {"blinn", MFn::kBlinn, "lambert", "eccentricity/ec:float:0.3"},
    {"phong", MFn::kPhong, "lambert", "cosinePower/cp:float:20"},
    {"animLayer", MFn::kAnimLayer, "objectSet", "weight/wgt:double:1"},
    {"pairBlend", MFn::kPairBlend, "dependNode", "inTranslate1/it1:len3 inTranslate2/it2:len3 weight/w:double:1 outTranslate/ot:len3:0:o"},
    {"addDoubleLinear", MFn::kDependencyNode, "dependNode", "input1/i1:len input2/i2:len output/o:len:0:o"},
    {"multDoubleLinear", MFn::kDependencyNode, "dependNode", "input1/i1:len:1 input2/i2:len:1 output/o:len:0:o"},
    {"reference", MFn::kReference, "dependNode", "fileNames/fn:string locked/lk:bool"},
    {"unknown", MFn::kUnknown, "dependNode", ""},
    {"network", MFn::kDependencyNode, "dependNode", ""},
};

void MakeOwnTypes();
/// Also for statics of other sources, which may come first.
std::map<std::string, std::unique_ptr<NodeType>>& Types() {
  static std::map<std::string, std::unique_ptr<NodeType>> types;
  static bool begun = false;
  if (!std::exchange(begun, true)) MakeOwnTypes();
  return types;
}

AttrPtr OfKind(const std::string& kind, const std::string& name, const std::string& brief) {
  static const std::map<std::string, std::pair<MFn::Type, int>> kKinds = {{"bool", {MFn::kNumericAttribute, MFnNumericData::kBoolean}},
                                                                          {"int", {MFn::kNumericAttribute, MFnNumericData::kInt}},
                                                                          {"float", {MFn::kNumericAttribute, MFnNumericData::kFloat}},
                                                                          {"double", {MFn::kNumericAttribute, MFnNumericData::kDouble}},
                                                                          {"dbl", {MFn::kNumericAttribute, MFnNumericData::kDouble}},
                                                                          {"color", {MFn::kNumericAttribute, MFnNumericData::kFloat}},
                                                                          {"ang", {MFn::kUnitAttribute, 1}},
                                                                          {"len", {MFn::kUnitAttribute, 2}},
                                                                          {"time", {MFn::kUnitAttribute, 3}},
                                                                          {"enum", {MFn::kEnumAttribute, 0}},
                                                                          {"string", {MFn::kTypedAttribute, MFnData::kString}},
                                                                          {"mesh", {MFn::kTypedAttribute, MFnData::kMesh}},
                                                                          {"curve", {MFn::kTypedAttribute, MFnData::kNurbsCurve}},
                                                                          {"surface", {MFn::kTypedAttribute, MFnData::kNurbsSurface}},
                                                                          {"matrix", {MFn::kMatrixAttribute, MFnData::kMatrix}},
                                                                          {"message", {MFn::kMessageAttribute, 0}}};
  if (kind.back() != '3') return MakeAttr(kKinds.at(kind).first, name, brief, kKinds.at(kind).second);
  const std::string part = kind.substr(0, kind.size() - 1);
  const auto made = MakeAttr(part == "color" ? MFn::kAttribute3Float : MFn::kAttribute3Double, name, brief,
                             part == "color" ? MFnNumericData::k3Float : MFnNumericData::k3Double);
  const char* ends = name == "shear" ? nullptr : part == "color" ? "RGB" : "XYZ";
  for (int i = 0; i < 3; ++i) {
    static const char* const kShear[] = {"XY", "XZ", "YZ"};
    const std::string end = ends ? std::string(1, ends[i]) : kShear[i];
    std::string low = end;
    std::transform(low.begin(), low.end(), low.begin(), [](unsigned char c) { return std::tolower(c); });
    AddChildAttr(*made, OfKind(part, name + end, brief + low));
  }
  return made;
}

void Set(Attr& attr, double fallback, const std::string& flags) {
  attr.fallback = fallback;
  const auto put = [&](char c, unsigned on, unsigned off = 0) {
    if (flags.find(c) != std::string::npos) attr.flags = (attr.flags | on) & ~off;
  };
  put('k', kKeyable), put('h', kHidden), put('a', kIsArray), put('w', kIsArray | kWorldSpaceAttr, kStorable), put('n', 0, kStorable);
  put('o', 0, kStorable | kWritable);
  for (const auto& child : attr.children) Set(*child, fallback, flags);
}

void MakeOwnTypes() {
  for (const OwnType& own : kOwnTypes) {
    NodeType& type = AddType(own.name, own.fn, FindType(own.base), 0x100 + static_cast<unsigned>(&own - kOwnTypes));
    std::istringstream words(own.attrs);
    for (std::string word; words >> word;) {
      std::string part[4];
      std::istringstream parts(word);
      for (std::string& p : part) std::getline(parts, p, ':');
      const auto slash = part[0].find('/');
      const AttrPtr attr = OfKind(part[1], part[0].substr(0, slash), part[0].substr(slash + 1));
      Set(*attr, std::atof(part[2].c_str()), part[3]);
      type.attrs.push_back(attr);
      IndexAttr(type, attr);
      if (attr->name == "rotateOrder") attr->fields = {{0, "xyz"}, {1, "yzx"}, {2, "zxy"}, {3, "xzy"}, {4, "yxz"}, {5, "zyx"}};
    }
  }
}

}  // namespace

const NodeType* FindType(const std::string& name) {
  const auto at = Types().find(name);
  return at == Types().end() ? nullptr : at->second.get();
}
const NodeType* FindType(unsigned id) {
  for (const auto& [name, type] : Types())
    if (type->id == id) return type.get();
  return nullptr;
}
NodeType& AddType(const std::string& name, MFn::Type fn, const NodeType* base, unsigned id) {
  auto type = std::make_unique<NodeType>();
  type->name = name, type->fn = fn, type->base = base, type->id = id;
  if (base) type->byName = base->byName;
  return *(Types()[name] = std::move(type));
}
void RemoveType(unsigned id) {
  if (const NodeType* type = FindType(id)) Types().erase(std::string(type->name));
}
AttrPtr MakeAttr(MFn::Type type, const std::string& name, const std::string& brief, int subtype) {
  const auto attr = std::make_shared<Attr>(type);
  attr->name = name, attr->brief = brief.empty() ? name : brief, attr->subtype = subtype;
  return attr;
}
std::pair<int, int> PartsOf(int subtype) {
  using D = MFnNumericData;
  static const std::map<int, std::pair<int, int>> kParts = {{D::k2Short, {2, D::kShort}},   {D::k3Short, {3, D::kShort}},   {D::k2Int, {2, D::kInt}},
                                                            {D::k3Int, {3, D::kInt}},       {D::k2Float, {2, D::kFloat}},   {D::k3Float, {3, D::kFloat}},
                                                            {D::k2Double, {2, D::kDouble}}, {D::k3Double, {3, D::kDouble}}, {D::k4Double, {4, D::kDouble}}};
  const auto at = kParts.find(subtype);
  return at == kParts.end() ? std::pair(1, subtype) : at->second;
}
MFn::Type NumericData(int subtype) {
  using D = MFnNumericData;
  static const std::map<int, MFn::Type> kTypes = {{D::k2Short, MFn::kData2Short},   {D::k3Short, MFn::kData3Short},   {D::k2Int, MFn::kData2Int},
                                                  {D::k3Int, MFn::kData3Int},       {D::k2Float, MFn::kData2Float},   {D::k3Float, MFn::kData3Float},
                                                  {D::k2Double, MFn::kData2Double}, {D::k3Double, MFn::kData3Double}, {D::k4Double, MFn::kData4Double}};
  const auto at = kTypes.find(subtype);
  return at == kTypes.end() ? MFn::kNumericData : at->second;
}
MFn::Type NumericAttr(int subtype) {
  static const std::map<MFn::Type, MFn::Type> kTypes = {
      {MFn::kData2Short, MFn::kAttribute2Short},   {MFn::kData3Short, MFn::kAttribute3Short},   {MFn::kData2Int, MFn::kAttribute2Int},
      {MFn::kData3Int, MFn::kAttribute3Int},       {MFn::kData2Float, MFn::kAttribute2Float},   {MFn::kData3Float, MFn::kAttribute3Float},
      {MFn::kData2Double, MFn::kAttribute2Double}, {MFn::kData3Double, MFn::kAttribute3Double}, {MFn::kData4Double, MFn::kAttribute4Double}};
  const auto at = kTypes.find(NumericData(subtype));
  return at == kTypes.end() ? MFn::kNumericAttribute : at->second;
}
void AddChildAttr(Attr& parent, const AttrPtr& child) {
  child->parent = &parent;
  parent.children.push_back(child);
}
void IndexAttr(NodeType& type, const AttrPtr& attr) {
  type.byName[attr->name] = type.byName[attr->brief] = attr;
  for (const auto& child : attr->children) IndexAttr(type, child);
}

namespace {
AttrPtr Among(const std::vector<AttrPtr>& attrs, const std::string& name) {
  for (const AttrPtr& attr : attrs) {
    if (attr->name == name || attr->brief == name) return attr;
    if (AttrPtr child = Among(attr->children, name)) return child;
  }
  return nullptr;
}
void Gather(const std::vector<AttrPtr>& attrs, std::vector<AttrPtr>& all) {
  for (const AttrPtr& attr : attrs) {
    all.push_back(attr);
    Gather(attr->children, all);
  }
}
void GatherOf(const NodeType* type, std::vector<AttrPtr>& all) {
  if (type->base) GatherOf(type->base, all);
  Gather(type->attrs, all);
}
}  // namespace

AttrPtr FindAttr(const Node& node, const std::string& name) {
  const auto at = node.info->byName.find(name);
  return at != node.info->byName.end() ? at->second : Among(node.dynamic, name);
}
std::vector<AttrPtr> AllAttrs(const Node& node) {
  std::vector<AttrPtr> all;
  GatherOf(node.info, all);
  Gather(node.dynamic, all);
  return all;
}

namespace {
MFn::Type Above(MFn::Type t) {
  static const std::map<MFn::Type, MFn::Type> kAbove = {{MFn::kBase, MFn::kInvalid},
                                                        {MFn::kInvalid, MFn::kInvalid},
                                                        {MFn::kDependencyNode, MFn::kNamedObject},
                                                        {MFn::kTimeAttribute, MFn::kUnitAttribute},
                                                        {MFn::kDoubleLinearAttribute, MFn::kUnitAttribute},
                                                        {MFn::kDoubleAngleAttribute, MFn::kUnitAttribute},
                                                        {MFn::kFloatMatrixAttribute, MFn::kMatrixAttribute},
                                                        {MFn::kSingleIndexedComponent, MFn::kComponent},
                                                        {MFn::kPointConstraint, MFn::kConstraint},
                                                        {MFn::kPointLight, MFn::kLight},
                                                        {MFn::kDirectionalLight, MFn::kLight},
                                                        {MFn::kAmbientLight, MFn::kLight},
                                                        {MFn::kSpotLight, MFn::kLight}};
  if (const auto at = kAbove.find(t); at != kAbove.end()) return at->second;
  if (t > MFn::kAnimCurve && t <= MFn::kAnimCurveUnitlessToUnitless) return MFn::kAnimCurve;
  if (t >= MFn::kAttribute2Double && t <= MFn::kAttribute3Short) return MFn::kNumericAttribute;
  if (t > MFn::kAttribute && t <= MFn::kGenericAttribute) return MFn::kAttribute;
  if (t > MFn::kNumericData && t <= MFn::kData3Short) return MFn::kNumericData;
  if (t > MFn::kData && t <= MFn::kPluginData) return MFn::kData;
  if (t > MFn::kComponent && t < MFn::kSingleIndexedComponent) return MFn::kSingleIndexedComponent;
  return MFn::kBase;
}
bool Chain(MFn::Type t, MFn::Type fn) {
  for (; t != MFn::kInvalid; t = Above(t))
    if (t == fn) return true;
  return false;
}
}  // namespace

const char* KindName(MFn::Type type) {
#define MAYAHOST_KIND(kind) #kind,
  static const char* const kNames[] = {MAYAHOST_KINDS(MAYAHOST_KIND)};
#undef MAYAHOST_KIND
  return kNames[type];
}
bool Thing::Has(MFn::Type fn) const {
  if (const auto* data = dynamic_cast<const Data*>(this)) {
    if (data->shape && type == MFn::kMeshData && fn == MFn::kMesh) return true;
    if (data->shape && type == MFn::kNurbsCurveData && fn == MFn::kNurbsCurve) return true;
    if (data->shape && type == MFn::kNurbsSurfaceData && fn == MFn::kNurbsSurface) return true;
  }
  if (const auto* attr = dynamic_cast<const Attr*>(this))
    if (fn == MFn::kCompoundAttribute && attr->IsCompound()) return true;
  return Chain(type, fn);
}
bool Node::Has(MFn::Type fn) const {
  for (const NodeType* t = info; t; t = t->base)
    if (Chain(t->fn, fn)) return true;
  return false;
}

}  // namespace mayahost

namespace mayahost {
std::vector<std::string> PluginTypes() {
  std::vector<std::string> names;
  for (const auto& [name, type] : Types())
    if (type->creator) names.push_back(name);
  return names;
}
}  // namespace mayahost
