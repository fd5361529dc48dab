#include "adaptor/maya/Channels.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnUnitAttribute.h>
#include <maya/MTimeArray.h>

#include "adaptor/maya/HostTime.h"

namespace orv::rws::adaptor::maya {

namespace {

/// The node type of the curve that a plug takes.
const char* CurveTypeFor(const MPlug& plug) {
  const MObject attribute = plug.attribute();
  if (!attribute.hasFn(MFn::kUnitAttribute)) return "animCurveTU";
  const MFnUnitAttribute::Type unit = MFnUnitAttribute(attribute).unitType();
  if (unit == MFnUnitAttribute::kDistance) return "animCurveTL";
  return unit == MFnUnitAttribute::kAngle ? "animCurveTA" : "animCurveTU";
}

}  // namespace

MPlug FindPlug(const MObject& node, const char* name) {
  return MFnDependencyNode(node).findPlug(name, true);
}

std::array<MPlug, 9> PosePlugs(const MObject& transform) {
  const MFnDependencyNode node(transform);
  std::array<MPlug, 9> plugs;
  for (std::size_t i = 0; i < plugs.size(); ++i) plugs[i] = node.findPlug(kPoseChannels[i], true);
  return plugs;
}

MObject CurveOf(const MPlug& plug) {
  const MPlug source = plug.source();
  if (source.isNull()) return MObject::kNullObj;
  const MObject node = source.node();
  if (!node.hasFn(MFn::kAnimCurve) || !MFnAnimCurve(node).isTimeInput()) return MObject::kNullObj;
  return node;
}

bool IsDriven(const MPlug& plug) {
  return plug.isDestination() || (plug.isChild() && plug.parent().isDestination());
}

bool IsLockedPlug(const MPlug& plug) {
  return plug.isLocked() || (plug.isChild() && plug.parent().isLocked());
}

std::string WhyNoKeysOn(const MPlug& plug) {
  if (IsLockedPlug(plug)) return "is locked";
  if (!IsDriven(plug)) return {};
  const MObject curve = CurveOf(plug);
  if (curve.isNull()) return "is driven by a constraint, a layer or another node";
  return MFnDependencyNode(curve).isFromReferencedFile() ? "has keys of a referenced file"
                                                         : std::string();
}

double CurveValueAt(const MObject& curve, double time) {
  double value = 0.0;
  MFnAnimCurve(curve).evaluate(ToHostTime(time), value);
  return value;
}

double ValueAt(const MPlug& plug, double time) {
  if (!IsDriven(plug)) return plug.asDouble();
  const MObject curve = CurveOf(plug);
  if (!curve.isNull()) return CurveValueAt(curve, time);
  return ReadAt(time, [&plug] { return plug.asDouble(); });
}

void PutValue(MPlug plug, double value) {
  if (!IsDriven(plug) && !IsLockedPlug(plug)) plug.setValue(value);
}

MObject CurveFor(const MPlug& plug, MDGModifier& modifier) {
  MObject curve = CurveOf(plug);
  if (!curve.isNull()) return curve;
  curve = modifier.createNode(CurveTypeFor(plug));
  const std::string name = std::string(MFnDependencyNode(plug.node()).name().asUTF8()) + "_" +
                           plug.partialName(false, false, false, false, false, true).asUTF8();
  modifier.renameNode(curve, name.c_str());
  modifier.connect(FindPlug(curve, "output"), plug);
  return curve;
}

void PutKey(const MObject& curve, double time, double value, MAnimCurveChange* change) {
  constexpr auto kStraight = MFnAnimCurve::kTangentLinear;
  MFnAnimCurve keys(curve);
  const MTime at = ToHostTime(time);
  unsigned index = 0;
  if (!keys.find(at, index)) {
    keys.addKey(at, value, kStraight, kStraight, change);
    return;
  }
  keys.setValue(index, value, change);
  keys.setInTangentType(index, kStraight, change);
  keys.setOutTangentType(index, kStraight, change);
}

void ReplaceKeys(const MObject& curve, double from, const std::vector<double>& times,
                 const std::vector<double>& values, MAnimCurveChange* change) {
  constexpr auto kStraight = MFnAnimCurve::kTangentLinear;
  MFnAnimCurve keys(curve);
  const MTime first = ToHostTime(from);
  for (unsigned i = keys.numKeys(); i > 0 && !(keys.time(i - 1) < first); --i)
    keys.remove(i - 1, change);
  MTimeArray hostTimes;
  MDoubleArray hostValues;
  hostTimes.setLength(static_cast<unsigned>(times.size()));
  hostValues.setLength(static_cast<unsigned>(values.size()));
  for (unsigned i = 0; i < hostTimes.length(); ++i) {
    hostTimes[i] = ToHostTime(times[i]);
    hostValues[i] = values[i];
  }
  keys.addKeys(&hostTimes, &hostValues, kStraight, kStraight, true, change);
}

}  // namespace orv::rws::adaptor::maya
