// Plugs as function sets hand them out.
#include <maya/MDataHandle.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MStringArray.h>

#include <cmath>

#include "Fn.h"
#include "Notify.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MPlug::MPlug(const MObject& node, const MObject& attribute) {
  const NodePtr n = NodeOf(node);
  const auto attr = As<Attr>(attribute);
  if (n && attr && FindAttr(*n, attr->name) == attr) fNode = n, fAttribute = attr;
}
MPlug::MPlug(const PlugRef& ref) {
  if (ref.node) fNode = ref.node->Ptr(), fAttribute = ref.attr->shared_from_this(), fIndices = ref.idx;
}
PlugRef MPlug::Ref() const { return {static_cast<Node*>(fNode.get()), static_cast<Attr*>(fAttribute.get()), fIndices}; }
namespace {
/// How many indices a plug of the attribute has when it is one value.
std::size_t Depth(const Attr* attr) { return attr ? Depth(attr->parent) + attr->Is(kIsArray) : 0; }
bool IsWholeArray(const PlugRef& p) { return p.attr->Is(kIsArray) && p.idx.size() < Depth(p.attr); }
}  // namespace
MString MPlug::name(MStatus* status) const {
  Ok(status, fNode != nullptr);
  return fNode ? (NodeName(Ref().node->Ptr()) + "." + PlugName(Ref(), true)).c_str() : "";
}
MString MPlug::partialName(bool node, bool, bool, bool useAlias, bool full, bool longNames, MStatus* status) const {
  Ok(status, fNode != nullptr);
  if (!fNode) return "";
  const std::string alias = useAlias ? AliasOf(Ref()) : "";
  if (!alias.empty()) return ((node ? NodeName(Ref().node->Ptr()) + "." : "") + alias).c_str();
  const std::string text = PlugName(Ref(), longNames, full);
  return ((node ? NodeName(Ref().node->Ptr()) + "." : "") + text).c_str();
}
bool MPlug::isNull(MStatus* status) const { return Ok(status), !fNode; }
MObject MPlug::node(MStatus* status) const { return Ok(status, fNode != nullptr), Obj(fNode); }
MObject MPlug::attribute(MStatus* status) const { return Ok(status, fNode != nullptr), Obj(fAttribute); }
bool MPlug::isCompound(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && Ref().attr->IsCompound(); }
bool MPlug::isArray(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && IsWholeArray(Ref()); }
bool MPlug::isElement(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && Ref().attr->Is(kIsArray) && !IsWholeArray(Ref()); }
bool MPlug::isChild(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && Ref().attr->parent; }
bool MPlug::isConnected(MStatus* status) const { return isSource(status) || isDestination(status); }
bool MPlug::isSource(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && !OutputsOf(Ref()).empty(); }
bool MPlug::isDestination(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && InputOf(Ref()); }
bool MPlug::isLocked(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && IsLocked(Ref()); }
bool MPlug::isKeyable(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && (PlugFlags(Ref()) & mayahost::kKeyable); }
bool MPlug::isChannelBoxFlagSet(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && (PlugFlags(Ref()) & mayahost::kChannelBox); }
namespace {
MStatus SetFlag(const PlugRef& plug, AttrFlag flag, bool on) { return plug.node ? (SetPlugFlag(plug, flag, on), MS::kSuccess) : MS::kFailure; }
}  // namespace
MStatus MPlug::setLocked(bool on) { return SetFlag(Ref(), kLockedPlug, on); }
MStatus MPlug::setKeyable(bool on) { return SetFlag(Ref(), mayahost::kKeyable, on); }
MStatus MPlug::setChannelBox(bool on) { return SetFlag(Ref(), mayahost::kChannelBox, on); }
bool MPlug::isDynamic(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && Ref().attr->Is(kDynamicAttr); }
MPlug::FreeToChangeState MPlug::isFreeToChange(bool checkParents, bool checkChildren, MStatus* status) const {
  Ok(status, fNode != nullptr);
  if (!fNode || IsLocked(Ref()) || InputOf(Ref())) return kNotFreeToChange;
  if (checkParents && isChild() && parent().isDestination()) return kNotFreeToChange;
  for (unsigned int i = 0; checkChildren && i < numChildren(); ++i)
    if (child(i).isLocked() || child(i).isDestination()) return kChildrenNotFreeToChange;
  return kFreeToChange;
}
bool MPlug::isFromReferencedFile(MStatus* status) const { return Ok(status, fNode != nullptr), fNode && Ref().node->reference; }
bool MPlug::isNetworked(MStatus* status) const { return Ok(status, fNode != nullptr), false; }
bool MPlug::isProcedural(MStatus* status) const { return Ok(status, fNode != nullptr), false; }
bool MPlug::isDefaultValue(bool, MStatus* status) const {
  Ok(status, fNode != nullptr);
  for (unsigned int i = 0; i < numChildren(); ++i)
    if (!child(i).isDefaultValue()) return false;
  if (!fNode || isCompound() || isArray()) return fNode != nullptr;
  const Value v = Get(Ref());
  return v.number == Ref().attr->fallback && v.data == Ref().attr->fallbackData;
}
unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) const {
  Ok(status, isArray());
  indices.clear();
  for (const int i : isArray() ? Indices(Ref()) : std::vector<int>()) indices.append(i);
  return indices.length();
}
unsigned int MPlug::numConnectedElements(MStatus* status) const {
  unsigned int count = 0;
  for (unsigned int i = 0; i < numElements(status); ++i) count += elementByPhysicalIndex(i).isConnected();
  return count;
}
unsigned int MPlug::numConnectedChildren(MStatus* status) const {
  unsigned int count = 0;
  for (unsigned int i = 0; i < numChildren(status); ++i) count += child(i).isConnected();
  return count;
}
MPlug MPlug::connectionByPhysicalIndex(unsigned int index, MStatus* status) const {
  for (unsigned int i = 0; i < numElements(); ++i)
    if (elementByPhysicalIndex(i).isConnected() && index-- == 0) return elementByPhysicalIndex(i, status);
  return Ok(status, false), MPlug();
}
MStatus MPlug::setNumElements(unsigned int count) {
  if (!isArray()) return MS::kFailure;
  for (unsigned int i = 0; i < count; ++i) {
    const PlugRef one = elementByLogicalIndex(i).Ref();
    if (one.attr->children.empty() && !one.node->values.count(one.Key())) Put(one, Kept(one), false);
  }
  return MS::kSuccess;
}
MStatus MPlug::setAttribute(const MObject& attribute) {
  const MPlug other(Obj(fNode), attribute);
  return other.isNull() ? MS::kFailure : (*this = other, MS::kSuccess);
}
MDataHandle MPlug::asMDataHandle(MStatus* status) const { return Ok(status, fNode != nullptr), MDataHandle(*this); }
MStatus MPlug::setMDataHandle(const MDataHandle& handle) {
  const MPlug& from = handle.Plug();
  if (!fNode || from.isNull() || from.numChildren() != numChildren()) return MS::kFailure;
  bool all = true;
  for (unsigned int i = 0; i < numChildren(); ++i) all &= child(i).setMDataHandle(handle.Plug().isNull() ? handle : MDataHandle(from.child(i)));
  return St(numChildren() ? all : Put(Ref(), Get(from.Ref())));
}
unsigned int MPlug::numElements(MStatus* status) const {
  Ok(status, isArray());
  return isArray() ? static_cast<unsigned int>(Indices(Ref()).size()) : 0;
}
unsigned int MPlug::evaluateNumElements(MStatus* status) {
  // A computation that fills the array runs when any of its elements is asked for.
  if (isArray() && Ref().attr->computed && Ref().attr->children.empty()) Get(elementByLogicalIndex(0).Ref());
  return numElements(status);
}
unsigned int MPlug::numChildren(MStatus* status) const {
  Ok(status, isCompound());
  return fNode ? static_cast<unsigned int>(Ref().attr->children.size()) : 0;
}
unsigned int MPlug::logicalIndex(MStatus* status) const { return Ok(status, isElement()), isElement() ? static_cast<unsigned int>(fIndices.back()) : 0; }
MStatus MPlug::selectAncestorLogicalIndex(unsigned int index, const MObject&) {
  if (!fNode || Depth(Ref().attr) == 0) return MS::kFailure;
  return fIndices.resize(Depth(Ref().attr)), fIndices[0] = static_cast<int>(index), MS::kSuccess;
}
MPlug MPlug::child(unsigned int i, MStatus* status) const {
  const bool has = fNode && i < Ref().attr->children.size();
  return Ok(status, has), has ? MPlug(ChildOf(Ref(), i)) : MPlug();
}
MPlug MPlug::child(const MObject& attribute, MStatus* status) const {
  for (unsigned int i = 0; i < numChildren(); ++i)
    if (Obj(Ref().attr->children[i]) == attribute) return child(i, status);
  return Ok(status, false), MPlug();
}
MPlug MPlug::parent(MStatus* status) const {
  Ok(status, isChild());
  if (!isChild()) return {};
  PlugRef up{Ref().node, Ref().attr->parent, fIndices};
  up.idx.resize(std::min(up.idx.size(), Depth(up.attr)));
  return MPlug(up);
}
MPlug MPlug::array(MStatus* status) const {
  Ok(status, isElement());
  MPlug whole = isElement() ? *this : MPlug();
  if (whole.fNode) whole.fIndices.pop_back();
  return whole;
}
MPlug MPlug::elementByLogicalIndex(unsigned int i, MStatus* status) const {
  Ok(status, isArray());
  MPlug one = isArray() ? *this : MPlug();
  if (one.fNode) one.fIndices.push_back(static_cast<int>(i));
  return one;
}
MPlug MPlug::elementByPhysicalIndex(unsigned int i, MStatus* status) const {
  const auto all = isArray() ? Indices(Ref()) : std::vector<int>();
  Ok(status, i < all.size());
  return i < all.size() ? elementByLogicalIndex(static_cast<unsigned int>(all[i])) : MPlug();
}
bool MPlug::connectedTo(MPlugArray& plugs, bool asDst, bool asSrc, MStatus* status) const {
  plugs.clear();
  Ok(status, fNode != nullptr);
  if (!fNode) return false;
  if (const PlugRef* in = InputOf(Ref()); asDst && in) plugs.append(MPlug(*in));
  if (asSrc)
    for (const PlugRef& out : OutputsOf(Ref())) plugs.append(MPlug(out));
  return plugs.length() > 0;
}
MPlug MPlug::source(MStatus* status) const {
  Ok(status, fNode != nullptr);
  const PlugRef* in = fNode ? InputOf(Ref()) : nullptr;
  return in ? MPlug(*in) : MPlug();
}
bool MPlug::destinations(MPlugArray& plugs, MStatus* status) const { return connectedTo(plugs, false, true, status); }

namespace {
bool Reads(const MPlug& plug, const MDGContext& context, Value& value) {
  if (plug.isNull() || plug.isCompound() || plug.isArray()) return false;
  if (context.isNormal()) return value = Get(plug.Ref()), true;
  const MDGContext before = context.makeCurrent();
  value = Get(plug.Ref());
  before.makeCurrent();
  return true;
}
bool IsText(const MPlug& plug) { return plug.Ref().attr->type == MFn::kTypedAttribute; }
template <class T>
MStatus Number(const MPlug& plug, T& value, const MDGContext& context) {
  Value v;
  if (!Reads(plug, context, v) || plug.Ref().attr->IsData()) return MS::kFailure;
  if constexpr (std::is_same_v<T, bool>) return value = v.number != 0, MS::kSuccess;
  return value = static_cast<T>(std::is_integral_v<T> ? std::nearbyint(v.number) : v.number), MS::kSuccess;
}
MStatus Write(const MPlug& plug, const Value& value, bool data) {
  if (plug.isNull() || plug.isCompound() || plug.isArray() || plug.Ref().attr->IsData() != data) return MS::kFailure;
  return St(Put(plug.Ref(), value));
}
DataPtr Compound(const PlugRef& plug) {
  const auto data = std::make_shared<Data>(NumericData(plug.attr->subtype));
  for (std::size_t i = 0; i < plug.attr->children.size(); ++i) data->numbers.push_back(Get(ChildOf(plug, i)).number);
  return data;
}
template <class T>
T Told(const MPlug& plug, MDGContext& context, MStatus* status) {
  T value{};
  const MStatus s = plug.getValue(value, context);
  return status ? void(*status = s) : void(), value;
}
template <class T>
T Told(const MPlug& plug, MStatus* status) {
  return Told<T>(plug, MDGContext::fsNormal, status);
}
}  // namespace
MStatus MPlug::getValue(double& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(float& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(bool& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(int& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(short& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(char& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(MInt64& v, MDGContext& c) const { return Number(*this, v, c); }
MStatus MPlug::getValue(MString& text, MDGContext& context) const {
  Value v;
  if (!Reads(*this, context, v) || !IsText(*this)) return MS::kFailure;
  return text = v.data ? v.data->text.c_str() : "", MS::kSuccess;
}
MStatus MPlug::getValue(MObject& object, MDGContext& context) const {
  Value v;
  if (fNode && isCompound()) return object = Obj(Compound(Ref())), MS::kSuccess;
  if (!Reads(*this, context, v) || !v.data) return object = MObject(), MS::kFailure;
  return object = Obj(v.data), MS::kSuccess;
}
MStatus MPlug::getValue(MTime& time, MDGContext& context) const {
  double seconds = 0;
  const MStatus s = getValue(seconds, context);
  return time = MTime(MTime(seconds, MTime::kSeconds).as(MTime::uiUnit()), MTime::uiUnit()), s;
}
MStatus MPlug::getValue(MAngle& angle, MDGContext& context) const {
  double v = 0;
  const MStatus s = getValue(v, context);
  return angle = MAngle(v), s;
}
MStatus MPlug::getValue(MDistance& distance, MDGContext& context) const {
  double v = 0;
  const MStatus s = getValue(v, context);
  return distance = MDistance(v), s;
}
double MPlug::asDouble(MStatus* s) const { return Told<double>(*this, s); }
double MPlug::asDouble(MDGContext& c, MStatus* s) const { return Told<double>(*this, c, s); }
float MPlug::asFloat(MStatus* s) const { return Told<float>(*this, s); }
float MPlug::asFloat(MDGContext& c, MStatus* s) const { return Told<float>(*this, c, s); }
bool MPlug::asBool(MStatus* s) const { return Told<bool>(*this, s); }
bool MPlug::asBool(MDGContext& c, MStatus* s) const { return Told<bool>(*this, c, s); }
char MPlug::asChar(MStatus* s) const { return Told<char>(*this, s); }
int MPlug::asInt(MDGContext& c, MStatus* s) const { return Told<int>(*this, c, s); }
MInt64 MPlug::asInt64(MStatus* s) const { return Told<MInt64>(*this, s); }
MString MPlug::asString(MDGContext& c, MStatus* s) const { return Told<MString>(*this, c, s); }
int MPlug::asInt(MStatus* s) const { return Told<int>(*this, s); }
short MPlug::asShort(MStatus* s) const { return Told<short>(*this, s); }
MString MPlug::asString(MStatus* s) const { return Told<MString>(*this, s); }
MObject MPlug::asMObject(MStatus* s) const { return Told<MObject>(*this, s); }
MObject MPlug::asMObject(MDGContext& c, MStatus* s) const { return Told<MObject>(*this, c, s); }
MTime MPlug::asMTime(MStatus* s) const { return Told<MTime>(*this, s); }
MAngle MPlug::asMAngle(MStatus* s) const { return Told<MAngle>(*this, s); }
MDistance MPlug::asMDistance(MStatus* s) const { return Told<MDistance>(*this, s); }
MStatus MPlug::setValue(double v) { return Write(*this, {v, nullptr}, false); }
MStatus MPlug::setValue(float v) { return Write(*this, {v, nullptr}, false); }
MStatus MPlug::setValue(int v) { return Write(*this, {double(v), nullptr}, false); }
MStatus MPlug::setValue(short v) { return Write(*this, {double(v), nullptr}, false); }
MStatus MPlug::setValue(bool v) { return Write(*this, {double(v), nullptr}, false); }
MStatus MPlug::setValue(const char* v) { return setValue(MString(v)); }
MStatus MPlug::setValue(const MString& text) {
  const auto data = std::make_shared<Data>(MFn::kStringData);
  data->text = text.asChar();
  return fNode && Ref().attr->subtype == MFnData::kString ? Write(*this, {0, data}, true) : MStatus(MS::kFailure);
}
MStatus MPlug::setValue(const MObject& object) {
  const auto data = As<Data>(object);
  if (!fNode || !data) return MS::kFailure;
  if (!isCompound()) return Write(*this, {0, data}, true);
  for (std::size_t i = 0; i < std::min(data->numbers.size(), Ref().attr->children.size()); ++i)
    if (!Put(ChildOf(Ref(), i), {data->numbers[i], nullptr})) return MS::kFailure;
  return MS::kSuccess;
}
MStatus MPlug::setValue(MObject& object) { return setValue(static_cast<const MObject&>(object)); }
MStatus MPlug::setValue(const MTime& v) { return setValue(v.as(MTime::kSeconds)); }
MStatus MPlug::setValue(const MAngle& v) { return setValue(v.asRadians()); }
MStatus MPlug::setValue(const MDistance& v) { return setValue(v.asCentimeters()); }
bool MPlug::operator==(const MPlug& o) const { return fNode == o.fNode && fAttribute == o.fAttribute && fIndices == o.fIndices; }
bool MPlug::operator==(const MObject& attribute) const { return fAttribute == attribute.thing; }

OPENMAYA_MAJOR_NAMESPACE_CLOSE
