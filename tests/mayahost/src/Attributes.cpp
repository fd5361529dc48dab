// Function sets of attributes and data.
#include <maya/MFnCompoundAttribute.h>
#include <maya/MFnDoubleArrayData.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnIntArrayData.h>
#include <maya/MFnMatrixAttribute.h>
#include <maya/MFnMatrixData.h>
#include <maya/MFnMeshData.h>
#include <maya/MFnMessageAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MFnUnitAttribute.h>

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
namespace {
std::shared_ptr<Attr> Asked(const MObject& object, MStatus* status) {
  const auto attr = As<Attr>(object);
  return Ok(status, attr != nullptr), attr;
}
}  // namespace
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
  using D = MFnNumericData;
  const bool three = type == D::k3Short || type == D::k3Int || type == D::k3Float || type == D::k3Double, two = type == D::k2Float || type == D::k2Double;
  const MFn::Type fn = type == D::k3Float ? MFn::kAttribute3Float : three ? MFn::kAttribute3Double : two ? MFn::kAttribute2Double : MFn::kNumericAttribute;
  fObject = New(fn, name, brief, type, value, status);
  const int part = type == D::k3Float || type == D::k2Float ? D::kFloat : type == D::k3Int ? D::kInt : type == D::k3Short ? D::kShort : D::kDouble;
  if (!fObject.isNull() && (three || two)) Children(fObject, part, three ? "012" : "01", name, brief);
  return fObject;
}
MObject MFnNumericAttribute::create(const MString& name, const MString& brief, const MObject& a, const MObject& b, const MObject& c, MStatus* status) {
  fObject = New(c.isNull() ? MFn::kAttribute2Double : MFn::kAttribute3Double, name, brief, c.isNull() ? MFnNumericData::k2Double : MFnNumericData::k3Double, 0,
                status);
  for (const MObject* child : {&a, &b, &c})
    if (!fObject.isNull() && !child->isNull()) AddChildAttr(*As<Attr>(fObject), As<Attr>(*child));
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
MStatus MFnNumericAttribute::setDefault(double a, double b, double c) {
  const auto attr = As<Attr>(fObject);
  if (!attr || attr->children.size() != 3) return MS::kFailure;
  return attr->children[0]->fallback = a, attr->children[1]->fallback = b, attr->children[2]->fallback = c, MS::kSuccess;
}
MStatus MFnNumericAttribute::getDefault(double& value) const { return As<Attr>(fObject) ? (value = As<Attr>(fObject)->fallback, MS::kSuccess) : MS::kFailure; }
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
MObject MFnMatrixAttribute::create(const MString& name, const MString& brief, Type, MStatus* status) { return create(name, brief, MMatrix(), status); }
MObject MFnMatrixAttribute::create(const MString& name, const MString& brief, const MMatrix& value, MStatus* status) {
  fObject = New(MFn::kMatrixAttribute, name, brief, MFnData::kMatrix, 0, status);
  if (const auto attr = As<Attr>(fObject)) attr->fallbackData = std::make_shared<Data>(MFn::kMatrixData), attr->fallbackData->matrix = value;
  return fObject;
}
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
FN_SET(MFnStringArrayData, MFn::kStringArrayData)
FN_SET(MFnDoubleArrayData, MFn::kDoubleArrayData)
FN_SET(MFnIntArrayData, MFn::kIntArrayData)
FN_SET(MFnMeshData, MFn::kMeshData)
#define CREATE(Class, kType, Argument)                            \
  MObject Class::create(const Argument& value, MStatus* status) { \
    fObject = Obj(std::make_shared<Data>(kType));                 \
    const MStatus s = set(value);                                 \
    if (status) *status = s;                                      \
    return fObject;                                               \
  }
CREATE(MFnStringData, MFn::kStringData, MString)
CREATE(MFnMatrixData, MFn::kMatrixData, MMatrix)
CREATE(MFnStringArrayData, MFn::kStringArrayData, MStringArray)
CREATE(MFnDoubleArrayData, MFn::kDoubleArrayData, MDoubleArray)
CREATE(MFnIntArrayData, MFn::kIntArrayData, MIntArray)
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
MStringArray MFnStringArrayData::array(MStatus* status) const {
  MStringArray made;
  if (const auto data = AskedData(fObject, status); data && !Pretends(Wrong::kStringArrays))
    for (const std::string& text : data->texts) made.append(text.c_str());
  return made;
}
MStatus MFnStringArrayData::set(const MStringArray& array) {
  const auto data = As<Data>(fObject);
  if (!data) return MS::kFailure;
  data->texts.clear();
  for (const MString& text : array) data->texts.emplace_back(text.asChar());
  return MS::kSuccess;
}
namespace {
template <class Array, class T>
Array Numbers(const MObject& object, MStatus* status) {
  Array made;
  if (const auto data = AskedData(object, status))
    for (const double v : data->numbers) made.append(static_cast<T>(v));
  return made;
}
template <class Array>
MStatus SetNumbers(const MObject& object, const Array& array) {
  const auto data = As<Data>(object);
  return data ? (data->numbers.assign(array.begin(), array.end()), MS::kSuccess) : MS::kFailure;
}
}  // namespace
MDoubleArray MFnDoubleArrayData::array(MStatus* status) const { return Numbers<MDoubleArray, double>(fObject, status); }
MStatus MFnDoubleArrayData::set(const MDoubleArray& array) { return SetNumbers(fObject, array); }
MIntArray MFnIntArrayData::array(MStatus* status) const { return Numbers<MIntArray, int>(fObject, status); }
MStatus MFnIntArrayData::set(const MIntArray& array) { return SetNumbers(fObject, array); }
MObject MFnMeshData::create(MStatus* status) {
  const auto data = std::make_shared<Data>(MFn::kMeshData);
  data->shape = std::make_shared<Shape>();
  return Ok(status), fObject = Obj(data);
}
MObject MFnNumericData::create(Type type, MStatus* status) {
  const auto data = std::make_shared<Data>(type == k3Float ? MFn::kData3Float : MFn::kData3Double);
  data->numbers.resize(3);
  return Ok(status, type == k3Float || type == k3Double), fObject = Obj(data);
}
MFnNumericData::Type MFnNumericData::numericType(MStatus* status) const {
  return AskedData(fObject, status) ? fObject.apiType() == MFn::kData3Float ? k3Float : k3Double : kInvalid;
}
MStatus MFnNumericData::getData(double& a, double& b, double& c) const {
  const auto data = As<Data>(fObject);
  return data && data->numbers.size() == 3 ? (a = data->numbers[0], b = data->numbers[1], c = data->numbers[2], MS::kSuccess) : MS::kFailure;
}
MStatus MFnNumericData::setData(double a, double b, double c) {
  return As<Data>(fObject) ? (As<Data>(fObject)->numbers = {a, b, c}, MS::kSuccess) : MS::kFailure;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
