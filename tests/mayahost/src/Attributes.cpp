// Function sets of attributes and data.
#include <maya/MFnCompoundAttribute.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnGenericAttribute.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixArrayData.h>
#include <maya/MFnMatrixAttribute.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnNurbsCurveData.h>
#include <maya/MFnNurbsSurfaceData.h>
#include <maya/MFnPointArrayData.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MFnVectorArrayData.h>

#include <algorithm>
#include <type_traits>

#include "Fn.h"
#include "State.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

FN_SET(MFnAttribute, MFn::kAttribute)
FN_SET(MFnTypedAttribute, MFn::kTypedAttribute)
FN_SET(MFnNumericAttribute, MFn::kNumericAttribute)
FN_SET(MFnUnitAttribute, MFn::kUnitAttribute)
FN_SET(MFnEnumAttribute, MFn::kEnumAttribute)
FN_SET(MFnMatrixAttribute, MFn::kMatrixAttribute)
FN_SET(MFnMessageAttribute, MFn::kMessageAttribute)
FN_SET(MFnCompoundAttribute, MFn::kCompoundAttribute)
FN_SET(MFnGenericAttribute, MFn::kGenericAttribute)

#define FLAG(getter, setter, flag)                                                                       \
  bool MFnAttribute::getter(MStatus* status) const {                                                     \
    const auto attr = As<Attr>(fObject);                                                                 \
    Ok(status, attr != nullptr);                                                                         \
    return attr && attr->Is(mayahost::flag);                                                             \
  }                                                                                                      \
  MStatus MFnAttribute::setter(bool on) {                                                                \
    const auto attr = As<Attr>(fObject);                                                                 \
    if (attr) attr->flags = on ? attr->flags | mayahost::flag : attr->flags & ~unsigned(mayahost::flag); \
    return St(attr != nullptr);                                                                          \
  }
FLAG(isReadable, setReadable, kReadable)
FLAG(isWritable, setWritable, kWritable)
FLAG(isConnectable, setConnectable, kConnectable)
FLAG(isStorable, setStorable, kStorable)
FLAG(isCached, setCached, kCached)
FLAG(isArray, setArray, kIsArray)
FLAG(isKeyable, setKeyable, kKeyable)
FLAG(isHidden, setHidden, kHidden)
FLAG(isChannelBoxFlagSet, setChannelBox, kChannelBox)
FLAG(isUsedAsColor, setUsedAsColor, kUsedAsColor)
FLAG(isWorldSpace, setWorldSpace, kWorldSpaceAttr)
FLAG(usesArrayDataBuilder, setUsesArrayDataBuilder, kBuilder)
FLAG(internal, setInternal, kInternal)
FLAG(isRenderSource, setRenderSource, kRender)
FLAG(affectsAppearance, setAffectsAppearance, kAppearance)
FLAG(isAffectsWorldSpace, setAffectsWorldSpace, kAffectsWorld)
FLAG(isUsedAsFilename, setUsedAsFilename, kFileName)
FLAG(isIndeterminant, setIndeterminant, kIndeterminant)
namespace {
std::shared_ptr<Attr> Asked(const MObject& object, MStatus* status) {
  const auto attr = As<Attr>(object);
  return Ok(status, attr != nullptr), attr;
}
}  // namespace
bool MFnAttribute::indexMatters(MStatus* status) const { return Asked(fObject, status) && !As<Attr>(fObject)->Is(kIndexIgnored); }
MStatus MFnAttribute::setIndexMatters(bool on) {
  const auto attr = As<Attr>(fObject);
  if (attr) attr->flags = on ? attr->flags & ~unsigned(kIndexIgnored) : attr->flags | kIndexIgnored;
  return St(attr != nullptr);
}
bool MFnAttribute::isExtension(MStatus* status) const { return Asked(fObject, status), false; }
MString MFnAttribute::niceNameOverride(MStatus* status) const { return Asked(fObject, status) ? As<Attr>(fObject)->nice.c_str() : ""; }
MStatus MFnAttribute::setNiceNameOverride(const MString& name) {
  return As<Attr>(fObject) ? (As<Attr>(fObject)->nice = name.asChar(), MS::kSuccess) : MS::kFailure;
}
MStatus MFnAttribute::addToCategory(const MString& name) {
  return As<Attr>(fObject) ? (As<Attr>(fObject)->categories.insert(name.asChar()), MS::kSuccess) : MS::kFailure;
}
bool MFnAttribute::hasCategory(const MString& name, MStatus* status) const {
  return Asked(fObject, status) && As<Attr>(fObject)->categories.count(name.asChar());
}
bool MFnAttribute::acceptsAttribute(const MObject& other, MStatus* status) const {
  const auto attr = Asked(fObject, status), from = As<Attr>(other);
  return attr && from && attr->IsData() == from->IsData() && attr->children.size() == from->children.size() &&
         (!attr->IsData() || attr->subtype == from->subtype || attr->accepted.count(from->subtype));
}
bool MFnAttribute::accepts(MFnData::Type type, MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr && (attr->accepted.count(type) || (attr->IsData() ? attr->subtype == type : type == MFnData::kNumeric));
}
bool MFnAttribute::accepts(MFnNumericData::Type type, MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr && (attr->accepted.count(-type) || (!attr->IsData() && PartsOf(type).first == std::max(1, int(attr->children.size()))));
}
bool MFnAttribute::isDynamic(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->Is(kDynamicAttr); }
MFnAttribute::DisconnectBehavior MFnAttribute::disconnectBehavior(MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr ? static_cast<DisconnectBehavior>(attr->disconnect) : kNothing;
}
MStatus MFnAttribute::setDisconnectBehavior(DisconnectBehavior how) {
  return Asked(fObject, nullptr) ? (As<Attr>(fObject)->disconnect = how, MS::kSuccess) : MS::kFailure;
}
MString MFnAttribute::name(MStatus* status) const { return Asked(fObject, status) ? As<Attr>(fObject)->name.c_str() : ""; }
MString MFnAttribute::shortName(MStatus* status) const { return Asked(fObject, status) ? As<Attr>(fObject)->brief.c_str() : ""; }
MObject MFnAttribute::parent(MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr && attr->parent ? Obj(attr->parent->shared_from_this()) : MObject();
}
namespace {
MObject New(MFn::Type type, const MString& name, const MString& brief, int subtype, double fallback, MStatus* status) {
  const bool good = name.length() > 0 && LegalName(name.asChar()) == name.asChar();
  Ok(status, good);
  if (!good) return {};
  const AttrPtr attr = MakeAttr(type, name.asChar(), brief.asChar(), subtype);
  attr->fallback = fallback;
  return Obj(attr);
}
void Children(const MObject& parent, int subtype, const char* ends, const MString& name, const MString& brief, MFn::Type type = MFn::kNumericAttribute) {
  for (const char* c = ends; *c; ++c)
    AddChildAttr(*As<Attr>(parent), MakeAttr(type, std::string(name.asChar()) + *c, std::string(brief.asChar()) + *c, subtype));
}
}  // namespace
MObject MFnTypedAttribute::create(const MString& name, const MString& brief, const MTypeId&, const MObject& value, MStatus* status) {
  return create(name, brief, MFnData::kPlugin, value, status);
}
MObject MFnTypedAttribute::create(const MString& name, const MString& brief, MFnData::Type type, const MObject& value, MStatus* status) {
  fObject = New(MFn::kTypedAttribute, name, brief, type, 0, status);
  if (const auto attr = As<Attr>(fObject)) attr->fallbackData = As<Data>(value);
  return fObject;
}
MFnData::Type MFnTypedAttribute::attrType(MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr ? static_cast<MFnData::Type>(attr->subtype) : MFnData::kInvalid;
}
MStatus MFnTypedAttribute::getDefault(MObject& value) const {
  const auto attr = As<Attr>(fObject);
  return attr ? (value = Obj(attr->fallbackData), MS::kSuccess) : MS::kFailure;
}
MStatus MFnTypedAttribute::setDefault(const MObject& value) {
  const auto attr = As<Attr>(fObject);
  return attr ? (attr->fallbackData = As<Data>(value), MS::kSuccess) : MS::kFailure;
}
MObject MFnNumericAttribute::create(const MString& name, const MString& brief, MFnNumericData::Type type, double value, MStatus* status) {
  fObject = New(NumericAttr(type), name, brief, type, value, status);
  const auto [count, part] = PartsOf(type);
  if (!fObject.isNull() && count > 1) {
    Children(fObject, part, std::string("0123").substr(0, std::size_t(count)).c_str(), name, brief);
    for (const AttrPtr& child : As<Attr>(fObject)->children) child->fallback = value;
  }
  return fObject;
}
MObject MFnNumericAttribute::createAddr(const MString& name, const MString& brief, MStatus* status) {
  return create(name, brief, MFnNumericData::kAddr, 0, status);
}
MObject MFnNumericAttribute::create(const MString& name, const MString& brief, const MObject& a, const MObject& b, const MObject& c, MStatus* status) {
  const auto first = As<Attr>(a);
  if (!first) return Ok(status, false), fObject = MObject();
  using D = MFnNumericData;
  const int count = 1 + !b.isNull() + !c.isNull();
  // Of angles, lengths and other numbers that are no singles, the whole is of doubles.
  int type = count == 3 ? D::k3Double : count == 2 ? D::k2Double : first->subtype;
  for (const int one : {D::k2Short, D::k3Short, D::k2Int, D::k3Int, D::k2Float, D::k3Float})
    if (first->type == MFn::kNumericAttribute && PartsOf(one) == std::pair(count, first->subtype)) type = one;
  fObject = New(NumericAttr(type), name, brief, type, 0, status);
  for (const MObject* child : {&a, &b, &c})
    if (!fObject.isNull() && As<Attr>(*child)) AddChildAttr(*As<Attr>(fObject), As<Attr>(*child));
  return fObject;
}
MObject MFnNumericAttribute::createColor(const MString& name, const MString& brief, MStatus* status) {
  fObject = New(MFn::kAttribute3Float, name, brief, MFnNumericData::k3Float, 0, status);
  if (!fObject.isNull()) Children(fObject, MFnNumericData::kFloat, "RGB", name, brief), setUsedAsColor(true);
  return fObject;
}
MObject MFnNumericAttribute::createPoint(const MString& name, const MString& brief, MStatus* status) {
  fObject = New(MFn::kAttribute3Float, name, brief, MFnNumericData::k3Float, 0, status);
  if (!fObject.isNull()) Children(fObject, MFnNumericData::kFloat, "XYZ", name, brief);
  return fObject;
}
MFnNumericData::Type MFnNumericAttribute::unitType(MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr ? static_cast<MFnNumericData::Type>(attr->subtype) : MFnNumericData::kInvalid;
}
MObject MFnNumericAttribute::child(unsigned int i, MStatus* status) const {
  const auto attr = As<Attr>(fObject);
  const bool has = attr && i < attr->children.size();
  return Ok(status, has), has ? Obj(attr->children[i]) : MObject();
}
namespace {
MStatus Default(const MObject& object, double value) {
  const auto attr = As<Attr>(object);
  return attr ? (attr->fallback = value, MS::kSuccess) : MS::kFailure;
}
MStatus Bound(const MObject& object, std::optional<double> Attr::*which, double value) {
  const auto attr = As<Attr>(object);
  return attr ? ((*attr).*which = value, MS::kSuccess) : MS::kFailure;
}
MStatus Bounds(const MObject& object, const std::optional<double> Attr::*which, double& value) {
  const auto attr = As<Attr>(object);
  return attr && ((*attr).*which) ? (value = *((*attr).*which), MS::kSuccess) : MS::kFailure;
}
}  // namespace
MStatus MFnNumericAttribute::setDefault(double value) { return Default(fObject, value); }
MStatus MFnNumericAttribute::Each(int what, const std::vector<double>& values) {
  const auto attr = As<Attr>(fObject);
  if (!attr || attr->children.size() != values.size()) return MS::kFailure;
  for (std::size_t i = 0; i < values.size(); ++i) {
    Attr& child = *attr->children[i];
    what == 0 ? void(child.fallback = values[i]) : void((what == 1 ? child.min : child.max) = values[i]);
  }
  return MS::kSuccess;
}
namespace {
template <class N>
MStatus DefaultOf(const MObject& object, N& value) {
  const auto attr = As<Attr>(object);
  return attr ? (value = static_cast<N>(attr->fallback), MS::kSuccess) : MS::kFailure;
}
template <class N>
MStatus DefaultsOf(const MObject& object, N& a, N& b, N& c) {
  const auto attr = As<Attr>(object);
  if (!attr || attr->children.size() != 3) return MS::kFailure;
  return a = N(attr->children[0]->fallback), b = N(attr->children[1]->fallback), c = N(attr->children[2]->fallback), MS::kSuccess;
}
}  // namespace
MStatus MFnNumericAttribute::getDefault(double& value) const { return DefaultOf(fObject, value); }
MStatus MFnNumericAttribute::getDefault(float& value) const { return DefaultOf(fObject, value); }
MStatus MFnNumericAttribute::getDefault(int& value) const { return DefaultOf(fObject, value); }
MStatus MFnNumericAttribute::getDefault(short& value) const { return DefaultOf(fObject, value); }
MStatus MFnNumericAttribute::getDefault(bool& value) const { return DefaultOf(fObject, value); }
MStatus MFnNumericAttribute::getDefault(double& a, double& b, double& c) const { return DefaultsOf(fObject, a, b, c); }
MStatus MFnNumericAttribute::getDefault(float& a, float& b, float& c) const { return DefaultsOf(fObject, a, b, c); }
MStatus MFnNumericAttribute::setSoftMin(double value) { return Bound(fObject, &Attr::softMin, value); }
MStatus MFnNumericAttribute::setSoftMax(double value) { return Bound(fObject, &Attr::softMax, value); }
bool MFnNumericAttribute::hasSoftMin(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->softMin; }
bool MFnNumericAttribute::hasSoftMax(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->softMax; }
MStatus MFnNumericAttribute::getSoftMin(double& value) const { return Bounds(fObject, &Attr::softMin, value); }
MStatus MFnNumericAttribute::getSoftMax(double& value) const { return Bounds(fObject, &Attr::softMax, value); }
MStatus MFnNumericAttribute::setMin(double value) { return Bound(fObject, &Attr::min, value); }
MStatus MFnNumericAttribute::setMax(double value) { return Bound(fObject, &Attr::max, value); }
bool MFnNumericAttribute::hasMin(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->min; }
bool MFnNumericAttribute::hasMax(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->max; }
MStatus MFnNumericAttribute::getMin(double& value) const { return Bounds(fObject, &Attr::min, value); }
MStatus MFnNumericAttribute::getMax(double& value) const { return Bounds(fObject, &Attr::max, value); }
MObject MFnUnitAttribute::create(const MString& name, const MString& brief, Type type, double value, MStatus* status) {
  return fObject = New(MFn::kUnitAttribute, name, brief, type, value, status);
}
MObject MFnUnitAttribute::create(const MString& name, const MString& brief, const MTime& value, MStatus* status) {
  return create(name, brief, kTime, value.as(MTime::kSeconds), status);
}
MObject MFnUnitAttribute::create(const MString& name, const MString& brief, const MAngle& value, MStatus* status) {
  return create(name, brief, kAngle, value.asRadians(), status);
}
MObject MFnUnitAttribute::create(const MString& name, const MString& brief, const MDistance& value, MStatus* status) {
  return create(name, brief, kDistance, value.asCentimeters(), status);
}
MFnUnitAttribute::Type MFnUnitAttribute::unitType(MStatus* status) const {
  const auto attr = Asked(fObject, status);
  return attr ? static_cast<Type>(attr->subtype) : kInvalid;
}
MStatus MFnUnitAttribute::setDefault(double value) { return Default(fObject, value); }
MStatus MFnUnitAttribute::setDefault(const MTime& value) { return Default(fObject, value.as(MTime::kSeconds)); }
MStatus MFnUnitAttribute::setDefault(const MAngle& value) { return Default(fObject, value.asRadians()); }
MStatus MFnUnitAttribute::setDefault(const MDistance& value) { return Default(fObject, value.asCentimeters()); }
MStatus MFnUnitAttribute::getDefault(double& value) const { return DefaultOf(fObject, value); }
namespace {
template <class Unit>
MStatus UnitDefault(const MObject& object, Unit& value, const Unit& made) {
  return As<Attr>(object) ? (value = made, MS::kSuccess) : MS::kFailure;
}
double Fallback(const MObject& object) { return As<Attr>(object) ? As<Attr>(object)->fallback : 0; }
}  // namespace
MStatus MFnUnitAttribute::getDefault(MTime& v) const { return UnitDefault(fObject, v, MTime(Fallback(fObject), MTime::kSeconds)); }
MStatus MFnUnitAttribute::getDefault(MAngle& v) const { return UnitDefault(fObject, v, MAngle(Fallback(fObject))); }
MStatus MFnUnitAttribute::getDefault(MDistance& v) const { return UnitDefault(fObject, v, MDistance(Fallback(fObject))); }
MStatus MFnUnitAttribute::setSoftMin(double value) { return Bound(fObject, &Attr::softMin, value); }
MStatus MFnUnitAttribute::setSoftMax(double value) { return Bound(fObject, &Attr::softMax, value); }
bool MFnUnitAttribute::hasMin(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->min; }
bool MFnUnitAttribute::hasMax(MStatus* status) const { return Asked(fObject, status) && As<Attr>(fObject)->max; }
MStatus MFnUnitAttribute::getMin(double& value) const { return Bounds(fObject, &Attr::min, value); }
MStatus MFnUnitAttribute::getMax(double& value) const { return Bounds(fObject, &Attr::max, value); }
MStatus MFnUnitAttribute::setMin(double value) { return Bound(fObject, &Attr::min, value); }
MStatus MFnUnitAttribute::setMax(double value) { return Bound(fObject, &Attr::max, value); }
MObject MFnEnumAttribute::create(const MString& name, const MString& brief, short value, MStatus* status) {
  return fObject = New(MFn::kEnumAttribute, name, brief, 0, value, status);
}
MStatus MFnEnumAttribute::addField(const MString& name, short i) {
  return As<Attr>(fObject) ? (As<Attr>(fObject)->fields[i] = name.asChar(), MS::kSuccess) : MS::kFailure;
}
MString MFnEnumAttribute::fieldName(short i, MStatus* status) const {
  const auto attr = As<Attr>(fObject);
  const bool has = attr && attr->fields.count(i);
  return Ok(status, has), has ? attr->fields.at(i).c_str() : "";
}
short MFnEnumAttribute::fieldIndex(const MString& name, MStatus* status) const {
  const auto attr = Asked(fObject, status);
  for (const auto& [i, field] : attr ? attr->fields : std::map<short, std::string>())
    if (field == name.asChar()) return i;
  return Ok(status, false), -1;
}
MStatus MFnEnumAttribute::getMin(short& v) const {
  const auto attr = As<Attr>(fObject);
  return attr && !attr->fields.empty() ? (v = attr->fields.begin()->first, MS::kSuccess) : MS::kFailure;
}
MStatus MFnEnumAttribute::getMax(short& v) const {
  const auto attr = As<Attr>(fObject);
  return attr && !attr->fields.empty() ? (v = attr->fields.rbegin()->first, MS::kSuccess) : MS::kFailure;
}
MStatus MFnEnumAttribute::setDefault(short value) { return Default(fObject, value); }
MStatus MFnEnumAttribute::setDefault(const MString& field) {
  MStatus status;
  const short i = fieldIndex(field, &status);
  return status == MS::kSuccess ? setDefault(i) : status;
}
MStatus MFnEnumAttribute::getDefault(short& value) const { return DefaultOf(fObject, value); }
short MFnEnumAttribute::defaultValue(MStatus* status) const { return Asked(fObject, status), static_cast<short>(Fallback(fObject)); }
MObject MFnMatrixAttribute::create(const MString& name, const MString& brief, Type, MStatus* status) { return create(name, brief, MMatrix(), status); }
MObject MFnMatrixAttribute::create(const MString& name, const MString& brief, const MMatrix& value, MStatus* status) {
  fObject = New(MFn::kMatrixAttribute, name, brief, MFnData::kMatrix, 0, status);
  if (const auto attr = As<Attr>(fObject)) attr->fallbackData = std::make_shared<Data>(MFn::kMatrixData), attr->fallbackData->matrix = value;
  return fObject;
}
MStatus MFnMatrixAttribute::getDefault(MMatrix& value) const {
  const auto attr = As<Attr>(fObject);
  return attr && attr->fallbackData ? (value = attr->fallbackData->matrix, MS::kSuccess) : MS::kFailure;
}
MStatus MFnMatrixAttribute::setDefault(const MMatrix& value) {
  const auto attr = As<Attr>(fObject);
  return attr && attr->fallbackData ? (attr->fallbackData->matrix = value, MS::kSuccess) : MS::kFailure;
}
MObject MFnGenericAttribute::create(const MString& name, const MString& brief, MStatus* status) {
  return fObject = New(MFn::kGenericAttribute, name, brief, MFnData::kAny, 0, status);
}
namespace {
MStatus Accept(const MObject& object, int kind, bool yes) {
  const auto attr = As<Attr>(object);
  if (!attr) return MS::kFailure;
  return yes ? void(attr->accepted.insert(kind)) : void(attr->accepted.erase(kind)), MS::kSuccess;
}
}  // namespace
MStatus MFnGenericAttribute::addAccept(MFnData::Type type) { return Accept(fObject, type, true); }
MStatus MFnGenericAttribute::addAccept(MFnNumericData::Type type) { return Accept(fObject, -type, true); }
MStatus MFnGenericAttribute::removeAccept(MFnData::Type type) { return Accept(fObject, type, false); }
MStatus MFnGenericAttribute::removeAccept(MFnNumericData::Type type) { return Accept(fObject, -type, false); }
MObject MFnMessageAttribute::create(const MString& name, const MString& brief, MStatus* status) {
  return fObject = New(MFn::kMessageAttribute, name, brief, 0, 0, status);
}
MObject MFnCompoundAttribute::create(const MString& name, const MString& brief, MStatus* status) {
  return fObject = New(MFn::kCompoundAttribute, name, brief, 0, 0, status);
}
MStatus MFnCompoundAttribute::addChild(const MObject& child) {
  const auto attr = As<Attr>(fObject), below = As<Attr>(child);
  return attr && below ? (AddChildAttr(*attr, below), MS::kSuccess) : MS::kFailure;
}
MStatus MFnCompoundAttribute::removeChild(const MObject& child) {
  const auto attr = As<Attr>(fObject), below = As<Attr>(child);
  if (!attr || !below || below->parent != attr.get()) return MS::kFailure;
  attr->children.erase(std::find(attr->children.begin(), attr->children.end(), below));
  return below->parent = nullptr, MS::kSuccess;
}
unsigned int MFnCompoundAttribute::numChildren(MStatus* status) const {
  return Asked(fObject, status) ? static_cast<unsigned int>(As<Attr>(fObject)->children.size()) : 0;
}
MObject MFnCompoundAttribute::child(unsigned int i, MStatus* status) const {
  const bool has = i < numChildren();
  return Ok(status, has), has ? Obj(As<Attr>(fObject)->children[i]) : MObject();
}

FN_SET(MFnData, MFn::kData)
FN_SET(MFnNumericData, MFn::kNumericData)
FN_SET(MFnStringData, MFn::kStringData)
FN_SET(MFnMatrixData, MFn::kMatrixData)
FN_SET(MFnMeshData, MFn::kMeshData)
FN_SET(MFnNurbsCurveData, MFn::kNurbsCurveData)
FN_SET(MFnNurbsSurfaceData, MFn::kNurbsSurfaceData)
#define CREATE(Class, kType, Argument)                            \
  MObject Class::create(const Argument& value, MStatus* status) { \
    fObject = Obj(std::make_shared<Data>(kType));                 \
    const MStatus s = set(value);                                 \
    if (status) *status = s;                                      \
    return fObject;                                               \
  }
CREATE(MFnStringData, MFn::kStringData, MString)
CREATE(MFnMatrixData, MFn::kMatrixData, MMatrix)
namespace {
std::shared_ptr<Data> AskedData(const MObject& object, MStatus* status) {
  const auto data = As<Data>(object);
  return Ok(status, data != nullptr), data;
}
}  // namespace
MString MFnStringData::string(MStatus* status) const { return AskedData(fObject, status) ? As<Data>(fObject)->text.c_str() : ""; }
MStatus MFnStringData::set(const MString& text) { return As<Data>(fObject) ? (As<Data>(fObject)->text = text.asChar(), MS::kSuccess) : MS::kFailure; }
MMatrix MFnMatrixData::matrix(MStatus* status) const { return AskedData(fObject, status) ? As<Data>(fObject)->matrix : MMatrix(); }
MStatus MFnMatrixData::set(const MMatrix& m) { return As<Data>(fObject) ? (As<Data>(fObject)->matrix = m, MS::kSuccess) : MS::kFailure; }
namespace {
void Unpack(const Data& data, MStringArray& to) {
  for (const std::string& text : data.texts)
    if (!Pretends(Wrong::kStringArrays)) to.append(text.c_str());
}
void Pack(Data& data, const MStringArray& from) {
  data.texts.clear();
  for (const MString& text : from) data.texts.emplace_back(text.asChar());
}
/// Numbers of a value in its array.
template <class T>
constexpr std::size_t kWide = sizeof(T) / sizeof(double);
template <class Array>
void Unpack(const Data& data, Array& to) {
  using T = std::decay_t<decltype(to[0])>;
  if constexpr (std::is_arithmetic_v<T>) {
    for (const double v : data.numbers) to.append(static_cast<T>(v));
  } else {
    to.setLength(static_cast<unsigned>(data.numbers.size() / kWide<T>));
    for (std::size_t i = 0; i < data.numbers.size(); ++i) reinterpret_cast<double*>(&to[unsigned(i / kWide<T>)])[i % kWide<T>] = data.numbers[i];
  }
}
template <class Array>
void Pack(Data& data, const Array& from) {
  using T = std::decay_t<decltype(from[0])>;
  data.numbers.clear();
  for (const T& one : from) {
    if constexpr (std::is_arithmetic_v<T>)
      data.numbers.push_back(static_cast<double>(one));
    else
      data.numbers.insert(data.numbers.end(), reinterpret_cast<const double*>(&one), reinterpret_cast<const double*>(&one) + kWide<T>);
  }
}
}  // namespace
#define ARRAY_DATA(Class, kType, Array, Item)                                   \
  FN_SET(Class, kType)                                                          \
  CREATE(Class, kType, Array)                                                   \
  Array Class::array(MStatus* status) const {                                   \
    Array made;                                                                 \
    if (const auto data = AskedData(fObject, status)) Unpack(*data, made);      \
    return made;                                                                \
  }                                                                             \
  MStatus Class::set(const Array& from) {                                       \
    const auto data = As<Data>(fObject);                                        \
    return data ? (Pack(*data, from), MS::kSuccess) : MS::kFailure;             \
  }                                                                             \
  MStatus Class::set(const Item& item, unsigned int i) {                        \
    Array all = array();                                                        \
    return all.set(item, i) == MS::kSuccess ? set(all) : MStatus(MS::kFailure); \
  }
ARRAY_DATA(MFnStringArrayData, MFn::kStringArrayData, MStringArray, MString)
ARRAY_DATA(MFnDoubleArrayData, MFn::kDoubleArrayData, MDoubleArray, double)
ARRAY_DATA(MFnIntArrayData, MFn::kIntArrayData, MIntArray, int)
ARRAY_DATA(MFnPointArrayData, MFn::kPointArrayData, MPointArray, MPoint)
ARRAY_DATA(MFnVectorArrayData, MFn::kVectorArrayData, MVectorArray, MVector)
ARRAY_DATA(MFnMatrixArrayData, MFn::kMatrixArrayData, MMatrixArray, MMatrix)
namespace {
MObject NewShape(MFn::Type type, MStatus* status) {
  const auto data = std::make_shared<Data>(type);
  data->shape = std::make_shared<Shape>();
  return Ok(status), Obj(data);
}
}  // namespace
MObject MFnMeshData::create(MStatus* status) { return fObject = NewShape(MFn::kMeshData, status); }
MObject MFnNurbsCurveData::create(MStatus* status) { return fObject = NewShape(MFn::kNurbsCurveData, status); }
MObject MFnNurbsSurfaceData::create(MStatus* status) { return fObject = NewShape(MFn::kNurbsSurfaceData, status); }
MObject MFnNumericData::create(Type type, MStatus* status) {
  const auto [count, part] = PartsOf(type);
  Ok(status, count > 1);
  if (count < 2) return fObject = MObject();
  const auto data = std::make_shared<Data>(NumericData(type));
  data->numbers.resize(std::size_t(count));
  return fObject = Obj(data);
}
MFnNumericData::Type MFnNumericData::numericType(MStatus* status) const {
  if (AskedData(fObject, status))
    for (int type = kInvalid + 1; type < kLast; ++type)
      if (PartsOf(type).first > 1 && NumericData(type) == fObject.apiType()) return static_cast<Type>(type);
  return kInvalid;
}
std::vector<double> MFnNumericData::Numbers() const { return As<Data>(fObject) ? As<Data>(fObject)->numbers : std::vector<double>(); }
MStatus MFnNumericData::Set(const std::vector<double>& numbers) {
  const auto data = As<Data>(fObject);
  return data && data->numbers.size() == numbers.size() ? (data->numbers = numbers, MS::kSuccess) : MS::kFailure;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
