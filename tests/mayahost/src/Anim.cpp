// Function sets of animation curves; changes that are undone together.
#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MDagModifier.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MIntArray.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "Fn.h"
#include "Modifier.h"
#include "Notify.h"
#include "mayahost/Host.h"

namespace mayahost {
/// Curves as they were before their first change; once that is undone, as they were after the last.
struct CurveChangeState {
  std::vector<std::pair<NodePtr, Curve>> others;
  std::set<const Node*> known;
  bool undone = false;
};
namespace {
int runs = 0, failing = 0;
bool Fails() { return ++runs == failing; }
}  // namespace
int FailModifier(int number) { return failing = number, std::exchange(runs, 0); }
ModifierState::ModifierState() = default;
void ModifierState::Add(std::function<bool()> op) { pending.push_back(std::move(op)); }
bool ModifierState::Do() {
  if (Fails()) return false;
  if (undone) return journal.Redo(), undone = false, pending.empty() || Do();
  const Recording recording(&journal);
  const auto ops = std::move(pending);
  pending.clear();
  bool all = true;
  for (const auto& op : ops) all &= op();
  return all;
}
bool ModifierState::Undo() {
  if (Fails()) return false;
  if (!undone) journal.Undo();
  return undone = true;
}
}  // namespace mayahost

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN

MDGModifier::MDGModifier() : fState(new ModifierState) {}
MDGModifier::~MDGModifier() = default;
MStatus MDGModifier::doIt() { return St(fState->Do()); }
MStatus MDGModifier::undoIt() { return St(fState->Undo()); }
namespace {
MObject Later(ModifierState& state, const NodeType* type, MObject parent, MStatus* status) {
  const bool can = type && (parent.isNull() || (parent.hasFn(MFn::kDagNode) && type->IsA("dagNode")));
  Ok(status, can);
  if (!can) return {};
  const NodePtr above = NodeOf(parent);
  const bool shape = type->IsA("shape") && !above;
  const NodePtr node = MakeNode(shape ? FindType("transform") : type, shape ? type->name + "1" : "");
  const NodePtr below = shape ? MakeNode(type, type->name + "Shape1") : nullptr;
  if (node->curve) node->curve->weighted = true;
  state.Add([=] { return AddNode(node, above.get()), below ? AddNode(below, node.get()) : void(), true; });
  return Obj(node);
}
}  // namespace
MObject MDGModifier::createNode(const MTypeId& id, MStatus* status) { return createNode(FindType(id.id()) ? FindType(id.id())->name.c_str() : "", status); }
MObject MDGModifier::createNode(const MString& name, MStatus* status) {
  const NodeType* type = FindType(name.asChar());
  return Later(*fState, type && !type->IsA("dagNode") ? type : nullptr, MObject(), status);
}
MObject MDagModifier::createNode(const MTypeId& id, MObject parent, MStatus* status) {
  return createNode(FindType(id.id()) ? FindType(id.id())->name.c_str() : "", parent, status);
}
MObject MDagModifier::createNode(const MString& name, MObject parent, MStatus* status) {
  const NodeType* type = FindType(name.asChar());
  return Later(*fState, type && type->IsA("dagNode") ? type : nullptr, parent, status);
}
MStatus MDGModifier::deleteNode(const MObject& object) { return deleteNode(object, true); }
MStatus MDGModifier::deleteNode(const MObject& object, bool) {
  const NodePtr node = NodeOf(object);
  if (node) fState->Add([=] { return DeleteNode(node); });
  return St(node != nullptr);
}
MStatus MDGModifier::renameNode(const MObject& object, const MString& name) {
  const NodePtr node = NodeOf(object);
  if (node) fState->Add([=] { return !Rename(node, name.asChar()).empty(); });
  return St(node && name.length());
}
MStatus MDGModifier::connect(const MPlug& from, const MPlug& to) {
  if (from.isNull() || to.isNull()) return MS::kInvalidParameter;
  fState->Add([=] { return Connect(from.Ref(), to.Ref()); });
  return MS::kSuccess;
}
MStatus MDGModifier::connect(const MObject& a, const MObject& b, const MObject& c, const MObject& d) { return connect(MPlug(a, b), MPlug(c, d)); }
MStatus MDGModifier::disconnect(const MPlug& from, const MPlug& to) {
  if (from.isNull() || to.isNull()) return MS::kInvalidParameter;
  fState->Add([=] { return Disconnect(from.Ref(), to.Ref()); });
  return MS::kSuccess;
}
MStatus MDGModifier::disconnect(const MObject& a, const MObject& b, const MObject& c, const MObject& d) { return disconnect(MPlug(a, b), MPlug(c, d)); }
MStatus MDGModifier::addAttribute(const MObject& object, const MObject& attribute) {
  const NodePtr node = NodeOf(object);
  const auto attr = As<Attr>(attribute);
  if (node && attr) fState->Add([=] { return AddAttr(node, attr); });
  return St(node && attr);
}
MStatus MDGModifier::removeAttribute(const MObject& object, const MObject& attribute) {
  const NodePtr node = NodeOf(object);
  const auto attr = As<Attr>(attribute);
  if (node && attr) fState->Add([=] { return RemoveAttr(node, attr); });
  return St(node && attr);
}
MStatus MDGModifier::setNodeLockState(const MObject& object, bool locked) {
  const NodePtr node = NodeOf(object);
  if (node) fState->Add([=] { return MFnDependencyNode(object).setLocked(locked) == MS::kSuccess; });
  return St(node != nullptr);
}
#define NEW_VALUE(method, Type)                                               \
  MStatus MDGModifier::method(const MPlug& plug, Type value) {                \
    fState->Add([=] { return MPlug(plug).setValue(value) == MS::kSuccess; }); \
    return St(!plug.isNull());                                                \
  }
NEW_VALUE(newPlugValue, const MObject&)
NEW_VALUE(newPlugValueBool, bool)
NEW_VALUE(newPlugValueDouble, double)
NEW_VALUE(newPlugValueFloat, float)
NEW_VALUE(newPlugValueInt, int)
NEW_VALUE(newPlugValueShort, short)
NEW_VALUE(newPlugValueString, const MString&)
NEW_VALUE(newPlugValueChar, char)
NEW_VALUE(newPlugValueInt64, MInt64)
NEW_VALUE(newPlugValueMAngle, const MAngle&)
NEW_VALUE(newPlugValueMDistance, const MDistance&)
NEW_VALUE(newPlugValueMTime, const MTime&)
MStatus MDGModifier::commandToExecute(const MString& command) {
  fState->Add([=] { return RunInModifier(command.asChar()); });
  return MS::kSuccess;
}
MStatus MDagModifier::reparentNode(const MObject& object, MObject parent) {
  const NodePtr node = NodeOf(object), above = parent.isNull() ? TheScene().world : NodeOf(parent);
  if (!node || !above || !node->IsDag()) return MS::kInvalidParameter;
  fState->Add([=] { return Reparent(node, node->parents.empty() ? nullptr : node->parents[0], above.get()); });
  return MS::kSuccess;
}

MAnimCurveChange::MAnimCurveChange(MStatus* status) : state(new CurveChangeState) { Ok(status); }
MAnimCurveChange::~MAnimCurveChange() = default;
namespace {
MStatus Swap(CurveChangeState& state, bool undone) {
  if (state.undone == undone) return MS::kSuccess;
  state.undone = undone;
  for (auto& [node, other] : state.others) {
    std::swap(*node->curve, other);
    Dirty(NumberOf(node, "output"));
  }
  return MS::kSuccess;
}
/// Changes a curve's keys by `change`, which is noted in what records it.
template <class F>
MStatus Edit(const MObject& object, MAnimCurveChange* record, F change) {
  const NodePtr node = NodeOf(object);
  if (!node || !node->curve || node->reference) return MS::kFailure;
  if (record && record->state->known.insert(node.get()).second) record->state->others.emplace_back(node, *node->curve);
  const bool done = change(*node->curve);
  TheScene().modified = true;
  NotifyCurve(node);
  Dirty(NumberOf(node, "output"));
  return St(done);
}
const Curve* CurveOf(const MObject& object, MStatus* status) {
  const NodePtr node = NodeOf(object);
  Ok(status, node && node->curve);
  return node ? node->curve.get() : nullptr;
}
const Key* KeyOf(const MObject& object, unsigned int i, MStatus* status) {
  const Curve* curve = CurveOf(object, status);
  const bool has = curve && i < curve->keys.size();
  return Ok(status, has), has ? &curve->keys[i] : nullptr;
}
int TypeOf(MFnAnimCurve::TangentType type, bool in = true) {
  return type != MFnAnimCurve::kTangentGlobal ? type : in ? MAnimControl::globalInTangentType() : MAnimControl::globalOutTangentType();
}
std::size_t PutKey(Curve& curve, long long ticks, double value, int in, int out) {
  const auto at = std::lower_bound(curve.keys.begin(), curve.keys.end(), ticks, [](const Key& k, long long t) { return k.ticks < t; });
  const auto i = static_cast<std::size_t>(at - curve.keys.begin());
  Key key;
  key.ticks = ticks, key.value = value, key.type[0] = static_cast<short>(in), key.type[1] = static_cast<short>(out);
  if (at != curve.keys.end() && at->ticks == ticks)
    *at = key;
  else
    curve.keys.insert(at, key);
  return i;
}
void Around(Curve& curve, std::size_t i) { SetTangents(curve, i ? i - 1 : 0, i + 2); }
MObject NewCurve(const PlugRef* plug, int type, MDGModifier* modifier, MStatus* status) {
  static const char* const kNames[] = {"animCurveTA", "animCurveTL", "animCurveTT", "animCurveTU", "animCurveUA", "animCurveUL", "animCurveUT", "animCurveUU"};
  const bool can = type >= 0 && type < 8 && !(plug && (!plug->node || InputOf(*plug) || IsLocked(*plug)));
  Ok(status, can);
  if (!can) return {};
  std::string name;
  if (plug) name = Short(plug->node->name) + "_" + plug->attr->name;
  const NodePtr node = MakeNode(FindType(kNames[type]), name);
  node->curve->weighted = MAnimControl::weightedTangents();
  const auto put = [=, p = plug ? *plug : PlugRef{}] { return AddNode(node, nullptr), !p.node || Connect(NumberOf(node, "output"), p); };
  if (modifier) {
    // As with the host's own modifiers: the curve is there at once, and what made it can be taken back.
    AddToModifier(*modifier, put);
    modifier->doIt();
  } else {
    put();
  }
  return Obj(node);
}
int Timed(const PlugRef& plug) { return plug.attr->type != MFn::kUnitAttribute ? 3 : plug.attr->subtype - 1; }
}  // namespace
MStatus MAnimCurveChange::undoIt() { return Swap(*state, true); }
MStatus MAnimCurveChange::redoIt() { return Swap(*state, false); }

FN_SET(MFnAnimCurve, MFn::kAnimCurve)
MFnAnimCurve::MFnAnimCurve(const MPlug& plug, MStatus* status) {
  const MPlug from = plug.isNull() ? MPlug() : plug.source();
  const MStatus s = Take(from.node());
  if (status) *status = s;
}
MObject MFnAnimCurve::create(const MObject& node, const MObject& attribute, MDGModifier* modifier, MStatus* status) {
  MPlug plug(node, attribute);
  return create(plug, modifier, status);
}
MObject MFnAnimCurve::create(const MObject& node, const MObject& attribute, AnimCurveType type, MDGModifier* modifier, MStatus* status) {
  MPlug plug(node, attribute);
  return create(plug, type, modifier, status);
}
MObject MFnAnimCurve::create(MPlug& plug, MDGModifier* modifier, MStatus* status) {
  return create(plug, plug.isNull() ? kAnimCurveUnknown : static_cast<AnimCurveType>(Timed(plug.Ref())), modifier, status);
}
MObject MFnAnimCurve::create(MPlug& plug, AnimCurveType type, MDGModifier* modifier, MStatus* status) {
  const PlugRef ref = plug.Ref();
  return fObject = NewCurve(&ref, type, modifier, status);
}
MObject MFnAnimCurve::create(AnimCurveType type, MDGModifier* modifier, MStatus* status) { return fObject = NewCurve(nullptr, type, modifier, status); }
MFnAnimCurve::AnimCurveType MFnAnimCurve::animCurveType(MStatus* status) const {
  return CurveOf(fObject, status) ? static_cast<AnimCurveType>(fObject.apiType() - MFn::kAnimCurveTimeToAngular) : kAnimCurveUnknown;
}
bool MFnAnimCurve::isTimeInput(MStatus* status) const { return animCurveType(status) < kAnimCurveUA; }
bool MFnAnimCurve::isUnitlessInput(MStatus* status) const { return !isTimeInput(status); }
unsigned int MFnAnimCurve::numKeys(MStatus* status) const {
  return CurveOf(fObject, status) ? static_cast<unsigned int>(NodeOf(fObject)->curve->keys.size()) : 0;
}
MStatus MFnAnimCurve::evaluate(const MTime& time, double& value) const {
  MStatus status;
  return value = evaluate(time, &status), status;
}
double MFnAnimCurve::evaluate(const MTime& time, MStatus* status) const {
  const Curve* curve = CurveOf(fObject, status);
  return curve ? Evaluate(*curve, time.as(MTime::kSeconds)) : 0;
}
MTime MFnAnimCurve::time(unsigned int i, MStatus* status) const {
  const Key* key = KeyOf(fObject, i, status);
  return key ? TimeOf(key->ticks) : MTime();
}
double MFnAnimCurve::value(unsigned int i, MStatus* status) const {
  const Key* key = KeyOf(fObject, i, status);
  return key ? key->value : 0;
}
MStatus MFnAnimCurve::setTime(unsigned int i, const MTime& time, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) {
    const long long t = TicksOf(time);
    const bool fits = i < c.keys.size() && (i == 0 || c.keys[i - 1].ticks < t) && (i + 1 >= c.keys.size() || c.keys[i + 1].ticks > t);
    if (fits) c.keys[i].ticks = t, Around(c, i);
    return fits;
  });
}
MStatus MFnAnimCurve::setValue(unsigned int i, double value, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].value = value, Around(c, i), true); });
}
bool MFnAnimCurve::find(const MTime& time, unsigned int& index, MStatus* status) const {
  const Curve* curve = CurveOf(fObject, status);
  if (!curve) return false;
  const auto at = std::lower_bound(curve->keys.begin(), curve->keys.end(), TicksOf(time), [](const Key& k, long long t) { return k.ticks < t; });
  index = static_cast<unsigned int>(at - curve->keys.begin());
  return at != curve->keys.end() && at->ticks == TicksOf(time);
}
unsigned int MFnAnimCurve::findClosest(const MTime& time, MStatus* status) const {
  const Curve* curve = CurveOf(fObject, status);
  unsigned int best = 0;
  for (unsigned int i = 0; curve && i < curve->keys.size(); ++i)
    if (std::llabs(curve->keys[i].ticks - TicksOf(time)) < std::llabs(curve->keys[best].ticks - TicksOf(time))) best = i;
  return best;
}
unsigned int MFnAnimCurve::addKey(const MTime& time, double value, TangentType in, TangentType out, MAnimCurveChange* change, MStatus* status) {
  std::size_t place = 0;
  const MStatus s =
      Edit(fObject, change, [&](Curve& c) { return place = PutKey(c, TicksOf(time), value, TypeOf(in), TypeOf(out, false)), Around(c, place), true; });
  return status ? void(*status = s) : void(), static_cast<unsigned int>(place);
}
MStatus MFnAnimCurve::addKeyframe(const MTime& time, double value, MAnimCurveChange* change) {
  return addKeyframe(time, value, kTangentGlobal, kTangentGlobal, change);
}
MStatus MFnAnimCurve::addKeyframe(const MTime& time, double value, TangentType in, TangentType out, MAnimCurveChange* change) {
  MStatus status;
  return addKey(time, value, in, out, change, &status), status;
}
MStatus MFnAnimCurve::addKeys(const MTimeArray* times, const MDoubleArray* values, TangentType in, TangentType out, bool keep, MAnimCurveChange* change) {
  if (!times || !values || times->length() != values->length()) return MS::kInvalidParameter;
  return Edit(fObject, change, [&](Curve& c) {
    if (!keep) c.keys.clear();
    for (unsigned int i = 0; i < times->length(); ++i) PutKey(c, TicksOf((*times)[i]), (*values)[i], TypeOf(in), TypeOf(out, false));
    return SetTangents(c, 0, c.keys.size()), true;
  });
}
MStatus MFnAnimCurve::remove(unsigned int i, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys.erase(c.keys.begin() + i), Around(c, i), true); });
}
MFnAnimCurve::TangentType MFnAnimCurve::inTangentType(unsigned int i, MStatus* status) const {
  const Key* key = KeyOf(fObject, i, status);
  return key ? static_cast<TangentType>(key->type[0]) : kTangentGlobal;
}
MFnAnimCurve::TangentType MFnAnimCurve::outTangentType(unsigned int i, MStatus* status) const {
  const Key* key = KeyOf(fObject, i, status);
  return key ? static_cast<TangentType>(key->type[1]) : kTangentGlobal;
}
MStatus MFnAnimCurve::setInTangentType(unsigned int i, TangentType type, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].type[0] = TypeOf(type), Around(c, i), true); });
}
MStatus MFnAnimCurve::setOutTangentType(unsigned int i, TangentType type, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].type[1] = TypeOf(type, false), Around(c, i), true); });
}
MStatus MFnAnimCurve::getTangent(unsigned int i, TangentValue& x, TangentValue& y, bool in) const {
  const Key* key = KeyOf(fObject, i, nullptr);
  return key ? (x = key->x[!in], y = key->y[!in], MS::kSuccess) : MS::kFailure;
}
MStatus MFnAnimCurve::getTangent(unsigned int i, float& x, float& y, bool in) const {
  TangentValue a = 0, b = 0;
  const MStatus s = getTangent(i, a, b, in);
  return x = static_cast<float>(a), y = static_cast<float>(b), s;
}
MStatus MFnAnimCurve::getTangent(unsigned int i, MAngle& angle, double& weight, bool in) const {
  const Key* key = KeyOf(fObject, i, nullptr);
  return key ? (angle = MAngle(std::atan2(key->y[!in], key->x[!in])), weight = std::hypot(key->x[!in], key->y[!in]), MS::kSuccess) : MS::kFailure;
}
MStatus MFnAnimCurve::setTangent(unsigned int i, TangentValue x, TangentValue y, bool in, MAnimCurveChange* change, bool) {
  return Edit(fObject, change, [&](Curve& c) {
    if (i >= c.keys.size()) return false;
    Key& key = c.keys[i];
    key.type[!in] = kTangentFixed, key.x[!in] = x, key.y[!in] = y;
    if (key.tied) key.type[in] = kTangentFixed, key.x[in] = std::max(key.x[in], 1e-6), key.y[in] = x != 0 ? double(y) / x * key.x[in] : 0;
    return true;
  });
}
MStatus MFnAnimCurve::setTangent(unsigned int i, const MAngle& angle, double weight, bool in, MAnimCurveChange* change, bool) {
  return setTangent(i, weight * std::cos(angle.asRadians()), weight * std::sin(angle.asRadians()), in, change);
}
MStatus MFnAnimCurve::setAngle(unsigned int i, const MAngle& angle, bool in, MAnimCurveChange* change) {
  MAngle before;
  double weight = 0;
  const MStatus s = getTangent(i, before, weight, in);
  return s == MS::kSuccess ? setTangent(i, angle, weight, in, change) : s;
}
MStatus MFnAnimCurve::setWeight(unsigned int i, double weight, bool in, MAnimCurveChange* change) {
  MAngle angle;
  double before = 0;
  const MStatus s = getTangent(i, angle, before, in);
  return s == MS::kSuccess ? setTangent(i, angle, weight, in, change) : s;
}
MStatus MFnAnimCurve::setTangentTypes(const MIntArray& indices, TangentType in, TangentType out, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) {
    for (const int i : indices) {
      if (i < 0 || i >= int(c.keys.size())) return false;
      c.keys[std::size_t(i)].type[0] = short(TypeOf(in)), c.keys[std::size_t(i)].type[1] = short(TypeOf(out, false));
    }
    return SetTangents(c, 0, c.keys.size()), true;
  });
}
bool MFnAnimCurve::isStatic(MStatus* status) const {
  const Curve* curve = CurveOf(fObject, status);
  return curve && std::all_of(curve->keys.begin(), curve->keys.end(), [&](const Key& k) {
           return k.value == curve->keys[0].value && (k.y[0] == 0 || &k == &curve->keys.front()) && (k.y[1] == 0 || &k == &curve->keys.back());
         });
}
MFnAnimCurve::AnimCurveType MFnAnimCurve::timedAnimCurveTypeForPlug(const MPlug& plug, MStatus* status) const {
  const bool can = !plug.isNull() && !plug.isCompound() && !plug.isArray() && !plug.Ref().attr->IsData();
  return Ok(status, can), can ? static_cast<AnimCurveType>(Timed(plug.Ref())) : kAnimCurveUnknown;
}
MFnAnimCurve::AnimCurveType MFnAnimCurve::unitlessAnimCurveTypeForPlug(const MPlug& plug, MStatus* status) const {
  const AnimCurveType timed = timedAnimCurveTypeForPlug(plug, status);
  return timed == kAnimCurveUnknown ? timed : static_cast<AnimCurveType>(timed + 4);
}
namespace {
/// Curves of plain inputs keep them as seconds.
MTime Plain(double input) { return MTime(input, MTime::kSeconds); }
}  // namespace
MStatus MFnAnimCurve::evaluate(double input, double& value) const { return isUnitlessInput() ? evaluate(Plain(input), value) : MStatus(MS::kFailure); }
double MFnAnimCurve::unitlessInput(unsigned int i, MStatus* status) const {
  const Key* key = KeyOf(fObject, i, status);
  Ok(status, key && isUnitlessInput());
  return key && isUnitlessInput() ? Seconds(key->ticks) : 0;
}
MStatus MFnAnimCurve::setUnitlessInput(unsigned int i, double input, MAnimCurveChange* change) {
  return isUnitlessInput() ? setTime(i, Plain(input), change) : MStatus(MS::kFailure);
}
bool MFnAnimCurve::find(double input, unsigned int& i, MStatus* status) const { return find(Plain(input), i, status); }
unsigned int MFnAnimCurve::findClosest(double input, MStatus* status) const { return findClosest(Plain(input), status); }
unsigned int MFnAnimCurve::addKey(double input, double value, TangentType in, TangentType out, MAnimCurveChange* change, MStatus* status) {
  Ok(status, isUnitlessInput());
  return isUnitlessInput() ? addKey(Plain(input), value, in, out, change, status) : 0;
}
bool MFnAnimCurve::weightsLocked(unsigned int i, MStatus* status) const { return KeyOf(fObject, i, status) && KeyOf(fObject, i, status)->weightTied; }
MStatus MFnAnimCurve::setWeightsLocked(unsigned int i, bool on, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].weightTied = on, true); });
}
bool MFnAnimCurve::isBreakdown(unsigned int i, MStatus* status) const { return KeyOf(fObject, i, status) && KeyOf(fObject, i, status)->breakdown; }
MStatus MFnAnimCurve::setIsBreakdown(unsigned int i, bool on, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].breakdown = on, true); });
}
bool MFnAnimCurve::isWeighted(MStatus* status) const { return CurveOf(fObject, status) && NodeOf(fObject)->curve->weighted; }
MStatus MFnAnimCurve::setIsWeighted(bool on, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return c.weighted = on, true; });
}
bool MFnAnimCurve::tangentsLocked(unsigned int i, MStatus* status) const { return KeyOf(fObject, i, status) && KeyOf(fObject, i, status)->tied; }
MStatus MFnAnimCurve::setTangentsLocked(unsigned int i, bool on, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return i < c.keys.size() && (c.keys[i].tied = on, true); });
}
MFnAnimCurve::InfinityType MFnAnimCurve::preInfinityType(MStatus* s) const {
  return CurveOf(fObject, s) ? static_cast<InfinityType>(NodeOf(fObject)->curve->pre) : kConstant;
}
MFnAnimCurve::InfinityType MFnAnimCurve::postInfinityType(MStatus* s) const {
  return CurveOf(fObject, s) ? static_cast<InfinityType>(NodeOf(fObject)->curve->post) : kConstant;
}
MStatus MFnAnimCurve::setPreInfinityType(InfinityType type, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return c.pre = type, true; });
}
MStatus MFnAnimCurve::setPostInfinityType(InfinityType type, MAnimCurveChange* change) {
  return Edit(fObject, change, [&](Curve& c) { return c.post = type, true; });
}

namespace {
void Animated(const NodePtr& node, bool up, MPlugArray& plugs) {
  if (!node) return;
  for (const auto& [key, from] : node->inputs)
    if (from.node->curve) plugs.append(MPlug(PlugRef{node.get(), key.first, key.second}));
  if (up && node->IsDag() && !node->parents.empty() && node->parents[0] != TheScene().world.get()) Animated(node->parents[0]->Ptr(), true, plugs);
}
}  // namespace
bool MAnimUtil::isAnimated(const MObject& node, bool up, MStatus* status) {
  MPlugArray plugs;
  return findAnimatedPlugs(node, plugs, up, status);
}
bool MAnimUtil::isAnimated(const MDagPath& path, bool up, MStatus* status) { return isAnimated(path.node(), up, status); }
bool MAnimUtil::isAnimated(const MPlug& plug, bool, MStatus* status) {
  MObjectArray curves;
  return findAnimation(plug, curves, status);
}
bool MAnimUtil::findAnimatedPlugs(const MObject& node, MPlugArray& plugs, bool up, MStatus* status) {
  plugs.clear();
  Animated(Need(node, status), up, plugs);
  return plugs.length() > 0;
}
bool MAnimUtil::findAnimatedPlugs(const MDagPath& path, MPlugArray& plugs, bool up, MStatus* status) {
  return findAnimatedPlugs(path.node(), plugs, up, status);
}
bool MAnimUtil::findAnimatedPlugs(const MSelectionList& list, MPlugArray& plugs, bool up, MStatus* status) {
  Ok(status);
  plugs.clear();
  for (const auto& item : list.items) Animated(NodeOf(item.node), up, plugs);
  return plugs.length() > 0;
}
bool MAnimUtil::findAnimatablePlugs(const MSelectionList& list, MPlugArray& plugs, MStatus* status) {
  Ok(status);
  plugs.clear();
  for (const auto& item : list.items)
    if (const NodePtr node = NodeOf(item.node))
      for (const AttrPtr& attr : AllAttrs(*node)) {
        const MPlug plug(PlugRef{node.get(), attr.get(), {}});
        if (plug.isKeyable() && !plug.isCompound() && !plug.isArray() && !attr->IsData() && !plug.isLocked()) plugs.append(plug);
      }
  return plugs.length() > 0;
}
bool MAnimUtil::findAnimation(const MPlug& plug, MObjectArray& curves, MStatus* status) {
  curves.clear();
  Ok(status, !plug.isNull());
  if (plug.isNull()) return false;
  const MObject from = plug.source().node();
  if (from.hasFn(MFn::kAnimCurve)) curves.append(from);
  return curves.length() > 0;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
