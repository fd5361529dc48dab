// Nodes of plug-ins and the values that they compute with.
#include <maya/MFnDependencyNode.h>
#include <maya/MPxNode.h>

#include <algorithm>

#include "Command.h"
#include "Fn.h"
#include "Handles.h"

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
MStatus MPxNode::legalConnection(const MPlug&, const MPlug&, bool, bool&) const { return MS::kUnknownParameter; }
MStatus MPxNode::shouldSave(const MPlug&, bool&) { return MS::kUnknownParameter; }
bool MPxNode::existWithoutInConnections(MStatus* status) const { return Ok(status), fAloneIn; }
bool MPxNode::existWithoutOutConnections(MStatus* status) const { return Ok(status), fAloneOut; }
bool MPxNode::doNotWrite(MStatus* status) const { return !MFnDependencyNode(thisMObject()).canBeWritten(status); }
MStatus MPxNode::setDoNotWrite(bool flag) { return MFnDependencyNode(thisMObject()).setDoNotWrite(flag); }
MStatus MPxNode::inheritAttributesFrom(const MString& name) {
  NodeType* type = Initializing();
  const NodeType* from = FindType(name.asChar());
  if (!type || !from) return MS::kFailure;
  for (; from; from = from->base)
    for (const AttrPtr& attr : from->attrs)
      if (!type->byName.count(attr->name)) type->attrs.push_back(attr), IndexAttr(*type, attr);
  return MS::kSuccess;
}
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

namespace {
void PutPlain(const PlugRef& plug, double number, const DataPtr& data = nullptr) {
  Put(plug, {number, data}, false);
  plug.node->clean.insert(plug.Key());
}
/// Single values of a plug, in order.
void Leaves(const MPlug& plug, std::vector<PlugRef>& leaves) {
  if (plug.isNull() || plug.isArray()) return;
  if (!plug.isCompound()) leaves.push_back(plug.Ref());
  for (unsigned i = 0; i < plug.numChildren(); ++i) Leaves(plug.child(i), leaves);
}
/// An element is there once one of its values is.
void Touch(const MPlug& plug) {
  std::vector<PlugRef> leaves;
  Leaves(plug, leaves);
  for (const PlugRef& leaf : leaves)
    if (!leaf.node->values.count(leaf.Key())) leaf.node->values[leaf.Key()] = Kept(leaf);
}
}  // namespace
OPENMAYA_MAJOR_NAMESPACE_CLOSE
namespace mayahost {
/// What a handle was asked as, which is what is written by reference when the last copy of the handle goes.
struct HandleState {
  HandleState(const MPlug& p, bool o) : plug(p), output(o) {}
  HandleState(const HandleState&) = delete;
  ~HandleState() { Flush(); }
  void Flush() {
    if (const auto put = std::exchange(store, nullptr); put && output) put();
  }
  Value One() const { return plug.isNull() || plug.isCompound() || plug.isArray() ? Value() : output ? Kept(plug.Ref()) : Get(plug.Ref()); }
  std::vector<double> Numbers() const {
    std::vector<PlugRef> leaves;
    std::vector<double> numbers;
    Leaves(plug, leaves);
    for (const PlugRef& leaf : leaves) numbers.push_back((output ? Kept(leaf) : Get(leaf)).number);
    return numbers;
  }
  void Put(const std::vector<double>& numbers) const {
    std::vector<PlugRef> leaves;
    Leaves(plug, leaves);
    for (std::size_t i = 0; i < std::min(leaves.size(), numbers.size()); ++i) PutPlain(leaves[i], numbers[i]);
  }
  template <class T>
  T* As(std::size_t count) {
    Flush();
    std::vector<double> numbers = Numbers();
    numbers.resize(count);
    T* made = new (place) T[count];
    for (std::size_t i = 0; i < count; ++i) made[i] = std::is_same_v<T, bool> ? numbers[i] != 0 : static_cast<T>(numbers[i]);
    // What was only looked at isn't written over what another handle has set.
    store = [this, made, count, was = std::vector<T>(made, made + count)] {
      if (!std::equal(was.begin(), was.end(), made)) Put(std::vector<double>(made, made + count));
    };
    return made;
  }
  MPlug plug;
  bool output;
  std::function<void()> store;
  alignas(double) unsigned char place[4 * sizeof(double)];
  MVector vector;
  MFloatVector floatVector;
  MMatrix matrix;
  MFloatMatrix floatMatrix;
  MString text;
};
namespace {
HandlesKept* g_kept = nullptr;
}
HandlesKept::HandlesKept() : m_before(std::exchange(g_kept, this)) {}
HandlesKept::~HandlesKept() {
  for (const auto& state : states) state->Flush();
  g_kept = m_before;
}
}  // namespace mayahost
OPENMAYA_MAJOR_NAMESPACE_OPEN
MDataHandle::MDataHandle(const MPlug& plug, bool output) : fState(plug.isNull() ? nullptr : new HandleState(plug, output)) {
  if (fState && g_kept) g_kept->states.push_back(fState);
}
const MPlug& MDataHandle::Plug() const {
  static const MPlug none;
  return fState ? fState->plug : none;
}
MObject MDataHandle::attribute() const { return Plug().attribute(); }
bool MDataHandle::isNumeric() const { return fState && !Plug().Ref().attr->IsData(); }
MFnData::Type MDataHandle::type() const {
  return !fState ? MFnData::kInvalid : isNumeric() ? MFnData::kNumeric : static_cast<MFnData::Type>(Plug().Ref().attr->subtype);
}
MFnNumericData::Type MDataHandle::numericType() const {
  return isNumeric() && Plug().attribute().hasFn(MFn::kNumericAttribute) ? static_cast<MFnNumericData::Type>(Plug().Ref().attr->subtype)
                                                                         : MFnNumericData::kInvalid;
}
namespace {
HandleState& Asked(const std::shared_ptr<HandleState>& state) {
  static HandleState none(MPlug(), false);
  return state ? *state : none;
}
}  // namespace
bool& MDataHandle::asBool() const { return *Asked(fState).As<bool>(1); }
char& MDataHandle::asChar() const { return *Asked(fState).As<char>(1); }
unsigned char& MDataHandle::asUChar() const { return *Asked(fState).As<unsigned char>(1); }
short& MDataHandle::asShort() const { return *Asked(fState).As<short>(1); }
int& MDataHandle::asInt() const { return *Asked(fState).As<int>(1); }
MInt64& MDataHandle::asInt64() const { return *Asked(fState).As<MInt64>(1); }
float& MDataHandle::asFloat() const { return *Asked(fState).As<float>(1); }
double& MDataHandle::asDouble() const { return *Asked(fState).As<double>(1); }
template <class T, std::size_t N>
T (&MDataHandle::Tuple() const)
[N] {
  return *reinterpret_cast<T(*)[N]>(Asked(fState).As<T>(N));
}
short2& MDataHandle::asShort2() const { return Tuple<short, 2>(); }
short3& MDataHandle::asShort3() const { return Tuple<short, 3>(); }
int2& MDataHandle::asInt2() const { return Tuple<int, 2>(); }
int3& MDataHandle::asInt3() const { return Tuple<int, 3>(); }
float2& MDataHandle::asFloat2() const { return Tuple<float, 2>(); }
float3& MDataHandle::asFloat3() const { return Tuple<float, 3>(); }
double2& MDataHandle::asDouble2() const { return Tuple<double, 2>(); }
double3& MDataHandle::asDouble3() const { return Tuple<double, 3>(); }
double4& MDataHandle::asDouble4() const { return Tuple<double, 4>(); }
namespace {
/// A member of the state that stands for the value: set from it, and written by `put`.
template <class T, class Put>
T& Kind(HandleState& state, T& member, const T& value, Put put) {
  state.Flush();
  member = value;
  state.store = [&member, put, value] {
    if (!(member == value)) put(member);
  };
  return member;
}
MMatrix MatrixIn(const Value& v) { return v.data ? v.data->matrix : MMatrix(); }
DataPtr DataOf(const MMatrix& m) {
  const auto data = std::make_shared<Data>(MFn::kMatrixData);
  return data->matrix = m, data;
}
}  // namespace
MVector& MDataHandle::asVector() const {
  HandleState& s = Asked(fState);
  s.Flush();
  const MVector now(*reinterpret_cast<double(*)[3]>(s.As<double>(3)));
  return Kind(s, s.vector, now, [&s](const MVector& v) { s.Put({v.x, v.y, v.z}); });
}
MFloatVector& MDataHandle::asFloatVector() const {
  HandleState& s = Asked(fState);
  const MVector now = asVector();
  return Kind(s, s.floatVector, MFloatVector(now), [&s](const MFloatVector& v) { s.Put({v.x, v.y, v.z}); });
}
MMatrix& MDataHandle::asMatrix() const {
  HandleState& s = Asked(fState);
  s.Flush();
  return Kind(s, s.matrix, MatrixIn(s.One()), [&s](const MMatrix& m) { PutPlain(s.plug.Ref(), 0, DataOf(m)); });
}
MFloatMatrix& MDataHandle::asFloatMatrix() const {
  HandleState& s = Asked(fState);
  s.Flush();
  return Kind(s, s.floatMatrix, MFloatMatrix(MatrixIn(s.One()).matrix), [&s](const MFloatMatrix& m) { PutPlain(s.plug.Ref(), 0, DataOf(MMatrix(m.matrix))); });
}
MString& MDataHandle::asString() const {
  HandleState& s = Asked(fState);
  s.Flush();
  const Value v = s.One();
  return Kind(s, s.text, MString(v.data ? v.data->text.c_str() : ""), [plug = s.plug](const MString& t) { MDataHandle(plug, true).set(t); });
}
MDistance MDataHandle::asDistance() const { return MDistance(Asked(fState).One().number); }
MAngle MDataHandle::asAngle() const { return MAngle(Asked(fState).One().number); }
MTime MDataHandle::asTime() const { return MTime(MTime(Asked(fState).One().number, MTime::kSeconds).as(MTime::uiUnit()), MTime::uiUnit()); }
MObject MDataHandle::data() const { return Obj(Asked(fState).One().data); }
void MDataHandle::Put(const std::vector<double>& numbers) {
  if (fState) fState->store = nullptr, fState->Put(numbers);
}
void MDataHandle::set(double v) { Put({v}); }
void MDataHandle::set(bool v) { Put({double(v)}); }
void MDataHandle::set(char v) { Put({double(v)}); }
void MDataHandle::set(short v) { Put({double(v)}); }
void MDataHandle::set(int v) { Put({double(v)}); }
void MDataHandle::set(MInt64 v) { Put({double(v)}); }
void MDataHandle::set(float v) { Put({double(v)}); }
void MDataHandle::set(const MString& text) {
  const auto data = std::make_shared<Data>(MFn::kStringData);
  data->text = text.asChar();
  set(Obj(data));
}
void MDataHandle::set(const MMatrix& m) { set(Obj(DataOf(m))); }
void MDataHandle::set(const MTime& v) { set(v.as(MTime::kSeconds)); }
void MDataHandle::set(const MAngle& v) { set(v.asRadians()); }
void MDataHandle::set(const MDistance& v) { set(v.asCentimeters()); }
MStatus MDataHandle::set(const MObject& object) {
  const auto data = As<Data>(object);
  if (!data || !fState || !Plug().Ref().attr->IsData()) return MS::kFailure;
  return fState->store = nullptr, PutPlain(Plug().Ref(), 0, data), MS::kSuccess;
}
MDataHandle MDataHandle::child(const MPlug& plug) { return MDataHandle(plug, fState && fState->output); }
MDataHandle MDataHandle::child(const MObject& attribute) { return child(Plug().child(attribute)); }
MStatus MDataHandle::copy(const MDataHandle& from) {
  std::vector<PlugRef> source, leaves;
  Leaves(from.Plug(), source), Leaves(Plug(), leaves);
  if (leaves.empty() || leaves.size() != source.size()) return MS::kFailure;
  from.fState->Flush();
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    const Value v = Get(source[i]);
    PutPlain(leaves[i], v.number, v.data);
  }
  return MS::kSuccess;
}
void MDataHandle::setClean() {
  std::vector<PlugRef> leaves;
  Leaves(Plug(), leaves);
  for (const PlugRef& leaf : leaves) leaf.node->clean.insert(leaf.Key());
}

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
MArrayDataHandle MDataBlock::outputArrayValue(const MPlug& plug, MStatus* s) { return Ok(s, plug.isArray()), MArrayDataHandle(plug, true); }
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
  Touch(fPlug.elementByLogicalIndex(index));
  return jumpToElement(index);
}
MStatus MArrayDataHandle::jumpToArrayElement(unsigned int position) { return fAt = position, St(position < elementCount()); }
MDataHandle MArrayDataHandle::inputValue(MStatus* s) { return Ok(s, fAt < elementCount()), MDataHandle(fPlug.elementByPhysicalIndex(fAt)); }
MDataHandle MArrayDataHandle::outputValue(MStatus* s) { return Ok(s, fAt < elementCount()), MDataHandle(fPlug.elementByPhysicalIndex(fAt), true); }
MStatus MArrayDataHandle::setClean() {
  if (fPlug.isNull()) return MS::kFailure;
  return fPlug.Ref().node->clean.insert(fPlug.Ref().Key()), MS::kSuccess;
}
MStatus MArrayDataHandle::setAllClean() {
  for (unsigned i = 0; i < elementCount(); ++i) MDataHandle(fPlug.elementByPhysicalIndex(i), true).setClean();
  return setClean();
}
MArrayDataHandle::MArrayDataHandle(const MDataHandle& handle, MStatus* s) : fPlug(handle.Plug()), fOutput(true) { Ok(s, fPlug.isArray()); }
MArrayDataBuilder MArrayDataHandle::builder(MStatus* s) { return Ok(s, fPlug.isArray()), MArrayDataBuilder(fPlug); }
MStatus MArrayDataHandle::set(const MArrayDataBuilder& builder) {
  if (!(builder.plug == fPlug) || fPlug.isNull()) return MS::kFailure;
  for (const int i : Indices(fPlug.Ref())) {
    std::vector<PlugRef> leaves;
    Leaves(fPlug.elementByLogicalIndex(unsigned(i)), leaves);
    for (const PlugRef& leaf : leaves)
      if (!builder.elements.count(i)) leaf.node->values.erase(leaf.Key());
  }
  return fAt = 0, MS::kSuccess;
}
MArrayDataBuilder::MArrayDataBuilder(MDataBlock* block, const MObject& attribute, unsigned int, MStatus* s)
    : plug(Of(block ? block->node : nullptr, attribute, s)) {}
MArrayDataBuilder::MArrayDataBuilder(const MPlug& p) : plug(p) {
  if (!p.isNull())
    for (const int i : Indices(p.Ref())) elements.insert(i);
}
MDataHandle MArrayDataBuilder::addElement(unsigned int i, MStatus* s) {
  Ok(s, plug.isArray());
  if (!plug.isArray()) return {};
  elements.insert(static_cast<int>(i));
  Touch(plug.elementByLogicalIndex(i));
  return MDataHandle(plug.elementByLogicalIndex(i), true);
}
MDataHandle MArrayDataBuilder::addLast(MStatus* s) { return addElement(elements.empty() ? 0 : unsigned(*elements.rbegin() + 1), s); }
MArrayDataHandle MArrayDataBuilder::addElementArray(unsigned int i, MStatus* s) { return MArrayDataHandle(addElement(i), s); }
MArrayDataHandle MArrayDataBuilder::addLastArray(MStatus* s) { return MArrayDataHandle(addLast(), s); }
MStatus MArrayDataBuilder::removeElement(unsigned int i) { return St(elements.erase(static_cast<int>(i)) > 0); }
unsigned int MArrayDataBuilder::elementCount(MStatus* s) const { return Ok(s), static_cast<unsigned int>(elements.size()); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
