// The plugs of a node that keys are set on.
#pragma once

#include <maya/MAnimCurveChange.h>
#include <maya/MDGModifier.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <array>
#include <string>
#include <vector>

namespace orv::rws::adaptor::maya {

/// Translation, rotation, scale.
inline constexpr std::array<const char*, 9> kPoseChannels = {"tx", "ty", "tz", "rx", "ry",
                                                             "rz", "sx", "sy", "sz"};

MPlug FindPlug(const MObject& node, const char* name);
std::array<MPlug, 9> PosePlugs(const MObject& transform);
/// The curve over time that alone drives the plug; null without one.
MObject CurveOf(const MPlug& plug);
/// Something drives the plug, be it through the compound that it is part of.
bool IsDriven(const MPlug& plug);
bool IsLockedPlug(const MPlug& plug);
/// Why the plug can't take keys, as words behind its name; empty where it can.
std::string WhyNoKeysOn(const MPlug& plug);
/// As the scene has it at `time` (s), in the host's internal units.
double ValueAt(const MPlug& plug, double time);
double CurveValueAt(const MObject& curve, double time);
/// Sets the value of a plug that nothing drives and nobody has locked.
void PutValue(MPlug plug, double value);

/// The plug's curve, which `modifier` makes where there is none; run it before the curve is used.
MObject CurveFor(const MPlug& plug, MDGModifier& modifier);
/// Sets a key with straight tangents. `change` may be null.
void PutKey(const MObject& curve, double time, double value, MAnimCurveChange* change);
/// Keys from `from` (s) on give way to these; those before stay.
void ReplaceKeys(const MObject& curve, double from, const std::vector<double>& times,
                 const std::vector<double>& values, MAnimCurveChange* change);

}  // namespace orv::rws::adaptor::maya
