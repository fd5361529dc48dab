// Nodes of plug-ins and the values that they compute with.
#include <maya/MPxNode.h>

#include "Command.h"
#include "Fn.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MObject MPxNode::message = Obj(FindType("dependNode")->byName.at("message"));
MObject MPxNode::isHistoricallyInteresting = Obj(FindType("dependNode")->byName.at("isHistoricallyInteresting"));
MObject MPxNode::caching = Obj(FindType("dependNode")->byName.at("caching"));
MObject MPxNode::state = Obj(FindType("dependNode")->byName.at("nodeState"));
MStatus MPxNode::compute(const MPlug&, MDataBlock&) { return MS::kUnknownParameter; }
MStatus MPxNode::setDependentsDirty(const MPlug&, MPlugArray&) { return MS::kSuccess; }
MStatus MPxNode::connectionMade(const MPlug&, const MPlug&, bool) { return MS::kUnknownParameter; }
MStatus MPxNode::connectionBroken(const MPlug&, const MPlug&, bool) { return MS::kUnknownParameter; }
MObject MPxNode::thisMObject() const { return MObject(thing.lock()); }
MTypeId MPxNode::typeId() const { return NodeOf(thisMObject()) ? NodeOf(thisMObject())->info->id : 0; }
MString MPxNode::typeName() const { return NodeOf(thisMObject()) ? NodeOf(thisMObject())->info->name.c_str() : ""; }
MString MPxNode::name() const { return NodeOf(thisMObject()) ? NodeOf(thisMObject())->name.c_str() : ""; }
MDataBlock MPxNode::forceCache(MDGContext&) {
  MDataBlock block;
  block.node = NodeOf(thisMObject()).get();
  return block;
}
MStatus MPxNode::addAttribute(const MObject& attribute) {
  const auto attr = As<Attr>(attribute);
  NodeType* type = Initializing();
  if (!attr || !type || type->byName.count(attr->name) || type->byName.count(attr->brief)) return MS::kFailure;
  if (!attr->parent) type->attrs.push_back(attr);
  return IndexAttr(*type, attr), MS::kSuccess;
}
MStatus MPxNode::attributeAffects(const MObject& when, const MObject& affected) {
  const auto a = As<Attr>(when), b = As<Attr>(affected);
  if (!a || !b) return MS::kFailure;
  a->affects.push_back(b.get()), b->computed = true;
  for (const AttrPtr& child : b->children) a->affects.push_back(child.get());
  for (const AttrPtr& child : a->children) child->affects.push_back(b.get());
  return MS::kSuccess;
}

MDataHandle::MDataHandle(const MPlug& plug, bool output) : fPlug(plug), fOutput(output) {}
void MDataHandle::Load() const {
  if (fNumber || fPlug.isNull()) return;
  auto* self = const_cast<MDataHandle*>(this);
  self->fNumber = std::make_shared<Number>();
  if (fPlug.isCompound()) {
    for (unsigned i = 0; i < 3 && i < fPlug.numChildren(); ++i) self->fNumber->v[i] = (fOutput ? Kept(fPlug.child(i).Ref()) : Get(fPlug.child(i).Ref())).number;
    return;
  }
  const Value value = fOutput ? Kept(fPlug.Ref()) : Get(fPlug.Ref());
  self->fNumber->d = value.number;
  self->fString = std::make_shared<MString>(value.data ? value.data->text.c_str() : "");
  self->fMatrix = std::make_shared<MMatrix>(value.data ? value.data->matrix : MMatrix());
}
namespace {
void PutPlain(const PlugRef& plug, double number, const DataPtr& data = nullptr) {
  Put(plug, {number, data}, false);
  plug.node->clean.insert(plug.Key());
}
/// The number as it is kept, seen as another type.
template <class T, class N>
T& Seen(N& number, T N::*which) {
  const double v = number.d;
  return number.*which = static_cast<T>(v);
}
}  // namespace
bool MDataHandle::isNumeric() const { return !fPlug.isNull() && !fPlug.Ref().attr->IsData(); }
MFnData::Type MDataHandle::type() const {
  return fPlug.isNull() ? MFnData::kInvalid : isNumeric() ? MFnData::kNumeric : static_cast<MFnData::Type>(fPlug.Ref().attr->subtype);
}
MFnNumericData::Type MDataHandle::numericType() const {
  return isNumeric() ? static_cast<MFnNumericData::Type>(fPlug.Ref().attr->subtype) : MFnNumericData::kInvalid;
}
bool& MDataHandle::asBool() { return Load(), fAs = 'b', fNumber->b = fNumber->d != 0; }
short& MDataHandle::asShort() { return Load(), fAs = 's', Seen(*fNumber, &Number::s); }
int& MDataHandle::asInt() { return Load(), fAs = 'i', Seen(*fNumber, &Number::i); }
float& MDataHandle::asFloat() { return Load(), fAs = 'f', Seen(*fNumber, &Number::f); }
double& MDataHandle::asDouble() { return Load(), fAs = 'd', fNumber->d; }
double3& MDataHandle::asDouble3() { return Load(), fAs = 'v', fNumber->v; }
MVector MDataHandle::asVector() const { return Load(), MVector(fNumber->v[0], fNumber->v[1], fNumber->v[2]); }
MDistance MDataHandle::asDistance() const { return Load(), MDistance(fNumber->d); }
MAngle MDataHandle::asAngle() const { return Load(), MAngle(fNumber->d); }
MTime MDataHandle::asTime() const { return Load(), MTime(MTime(fNumber->d, MTime::kSeconds).as(MTime::uiUnit()), MTime::uiUnit()); }
MString& MDataHandle::asString() { return Load(), fAs = 't', *fString; }
MMatrix& MDataHandle::asMatrix() { return Load(), fAs = 'm', *fMatrix; }
MObject MDataHandle::data() { return fPlug.isNull() ? MObject() : Obj(Get(fPlug.Ref()).data); }
void MDataHandle::set(double v) { fPlug.isNull() ? void() : PutPlain(fPlug.Ref(), v), fNumber.reset(), fAs = 0; }
void MDataHandle::set(bool v) { set(double(v)); }
void MDataHandle::set(short v) { set(double(v)); }
void MDataHandle::set(int v) { set(double(v)); }
void MDataHandle::set(float v) { set(double(v)); }
void MDataHandle::set(double x, double y, double z) {
  const double v[3] = {x, y, z};
  for (unsigned i = 0; i < 3 && i < fPlug.numChildren(); ++i) PutPlain(fPlug.child(i).Ref(), v[i]);
  fNumber.reset();
}
void MDataHandle::set(const MString& text) {
  const auto data = std::make_shared<Data>(MFn::kStringData);
  data->text = text.asChar();
  PutPlain(fPlug.Ref(), 0, data), fNumber.reset();
}
void MDataHandle::set(const MMatrix& m) {
  const auto data = std::make_shared<Data>(MFn::kMatrixData);
  data->matrix = m;
  PutPlain(fPlug.Ref(), 0, data), fNumber.reset();
}
void MDataHandle::set(const MTime& v) { set(v.as(MTime::kSeconds)); }
void MDataHandle::set(const MAngle& v) { set(v.asRadians()); }
void MDataHandle::set(const MDistance& v) { set(v.asCentimeters()); }
MStatus MDataHandle::set(const MObject& object) {
  const auto data = As<Data>(object);
  if (!data || fPlug.isNull()) return MS::kFailure;
  return PutPlain(fPlug.Ref(), 0, data), fNumber.reset(), MS::kSuccess;
}
MDataHandle MDataHandle::child(const MObject& attribute) { return MDataHandle(fPlug.child(attribute)); }
MStatus MDataHandle::copy(const MDataHandle& from) {
  if (fPlug.isNull() || from.fPlug.isNull()) return MS::kFailure;
  const Value v = Get(from.fPlug.Ref());
  return PutPlain(fPlug.Ref(), v.number, v.data), MS::kSuccess;
}
void MDataHandle::Store() {
  if (!fOutput || !fAs || !fNumber || fNumber.use_count() > 1) return;
  const char as = std::exchange(fAs, 0);
  const Number n = *fNumber;
  if (as == 't')
    set(MString(*fString));
  else if (as == 'm')
    set(MMatrix(*fMatrix));
  else if (as == 'v')
    set(n.v[0], n.v[1], n.v[2]);
  else
    set(as == 'b' ? n.b : as == 's' ? n.s : as == 'i' ? n.i : as == 'f' ? double(n.f) : n.d);
}
void MDataHandle::setClean() { fPlug.isNull() ? void() : void(fPlug.Ref().node->clean.insert(fPlug.Ref().Key())); }

namespace {
MPlug Of(Node* node, const MObject& attribute, MStatus* status) {
  const MPlug plug = node ? MPlug(Obj(node->Ptr()), attribute) : MPlug();
  return Ok(status, !plug.isNull()), plug;
}
}  // namespace
MDataHandle MDataBlock::inputValue(const MPlug& plug, MStatus* s) { return Ok(s, !plug.isNull()), MDataHandle(plug); }
MDataHandle MDataBlock::inputValue(const MObject& attribute, MStatus* s) { return MDataHandle(Of(node, attribute, s)); }
MDataHandle MDataBlock::outputValue(const MPlug& plug, MStatus* s) { return Ok(s, !plug.isNull()), MDataHandle(plug, true); }
MDataHandle MDataBlock::outputValue(const MObject& attribute, MStatus* s) { return MDataHandle(Of(node, attribute, s), true); }
MArrayDataHandle MDataBlock::inputArrayValue(const MPlug& plug, MStatus* s) { return Ok(s, plug.isArray()), MArrayDataHandle(plug); }
MArrayDataHandle MDataBlock::inputArrayValue(const MObject& attribute, MStatus* s) { return MArrayDataHandle(Of(node, attribute, s)); }
MArrayDataHandle MDataBlock::outputArrayValue(const MObject& attribute, MStatus* s) { return MArrayDataHandle(Of(node, attribute, s), true); }
MStatus MDataBlock::setClean(const MPlug& plug) {
  if (plug.isNull()) return MS::kFailure;
  for (unsigned i = 0; i < plug.numChildren(); ++i) setClean(plug.child(i));
  return plug.Ref().node->clean.insert(plug.Ref().Key()), MS::kSuccess;
}
MStatus MDataBlock::setClean(const MObject& attribute) { return setClean(Of(node, attribute, nullptr)); }
bool MDataBlock::isClean(const MPlug& plug) { return !plug.isNull() && (!plug.Ref().attr->computed || plug.Ref().node->clean.count(plug.Ref().Key())); }
MDGContext MDataBlock::context() const { return MDGContext::current(); }
unsigned int MArrayDataHandle::elementCount(MStatus* s) { return fPlug.numElements(s); }
unsigned int MArrayDataHandle::elementIndex(MStatus* s) { return fPlug.elementByPhysicalIndex(fAt).logicalIndex(s); }
MStatus MArrayDataHandle::next() { return ++fAt < elementCount() ? MS::kSuccess : MS::kFailure; }
MStatus MArrayDataHandle::jumpToElement(unsigned int index) {
  for (fAt = 0; fAt < elementCount(); ++fAt)
    if (elementIndex() == index) return MS::kSuccess;
  if (!fOutput) return MS::kFailure;
  PutPlain(fPlug.elementByLogicalIndex(index).Ref(), 0);
  return jumpToElement(index);
}
MStatus MArrayDataHandle::jumpToArrayElement(unsigned int position) { return fAt = position, St(position < elementCount()); }
MDataHandle MArrayDataHandle::inputValue(MStatus* s) { return Ok(s, fAt < elementCount()), MDataHandle(fPlug.elementByPhysicalIndex(fAt)); }
MDataHandle MArrayDataHandle::outputValue(MStatus* s) { return Ok(s, fAt < elementCount()), MDataHandle(fPlug.elementByPhysicalIndex(fAt), true); }
MStatus MArrayDataHandle::setClean() { return St(!fPlug.isNull()); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
