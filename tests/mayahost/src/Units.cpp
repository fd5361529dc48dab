// Times, lengths, angles and the time line.
#include <maya/MAnimControl.h>

#include <cmath>

#include "Notify.h"
#include "State.h"

using mayahost::TheScene;

namespace {
// Ticks of a unit, a whole number of 1/141120000 s for all that are used for frames.
double TicksOfUnit(MTime::Unit unit) {
  static const double kRates[] = {0,  1.0 / 3600, 1.0 / 60, 1,   1000, 15,  24,  25,  30,  48,  50,  60,  2,   3,   4,   5,   6,    8,    10,   12,   16,   20,
                                  40, 75,         80,       100, 120,  125, 150, 200, 240, 250, 300, 375, 400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000, 24};
  const double all = MTime::ticksPerSecond();
  switch (unit) {
    case MTime::k23_976FPS:
      return all * 1001 / 24000;
    case MTime::k29_97FPS:
    case MTime::k29_97DF:
      return all * 1001 / 30000;
    case MTime::k47_952FPS:
      return all * 1001 / 48000;
    case MTime::k59_94FPS:
      return all * 1001 / 60000;
    case MTime::k44100FPS:
      return all / 44100;
    case MTime::k48000FPS:
      return all / 48000;
    default:
      return unit > MTime::kInvalid && unit <= MTime::kUserDef ? all / kRates[unit] : 0;
  }
}
const double kCentimetres[] = {0, 2.54, 30.48, 91.44, 160934.4, 0.1, 1, 100000, 100};
const double kInRadians[] = {0, 1, M_PI / 180, M_PI / 10800, M_PI / 648000};
MTime g_contextTime;
bool g_otherTime = false, g_playing = false, g_autoKey = false;
}  // namespace

namespace mayahost {
long long TicksOf(const MTime& time) { return std::llround(time.value() * TicksOfUnit(time.unit())); }
MTime TimeOf(long long ticks) { return {static_cast<double>(ticks) / TicksOfUnit(TheScene().timeUnit), TheScene().timeUnit}; }
double Seconds(long long ticks) { return static_cast<double>(ticks) / MTime::ticksPerSecond(); }
double EvaluationSeconds() { return g_otherTime ? g_contextTime.as(MTime::kSeconds) : Seconds(TheScene().now); }
void SetNow(long long ticks) {
  TheScene().now = ticks;
  for (const auto& [serial, node] : TheScene().nodes)
    if (node->user && !node->clean.empty() && IsTimeDependent(*node)) node->clean.clear();
  NotifyTime();
}
}  // namespace mayahost

OPENMAYA_MAJOR_NAMESPACE_OPEN
double MTime::as(Unit unit) const {
  if (mayahost::Pretends(mayahost::Wrong::kTimeUnit)) return fValue * 1.001 * TicksOfUnit(fUnit) / TicksOfUnit(unit);
  return unit == fUnit ? fValue : fValue * TicksOfUnit(fUnit) / TicksOfUnit(unit);
}
bool MTime::operator==(const MTime& o) const { return mayahost::TicksOf(*this) == mayahost::TicksOf(o); }
bool MTime::operator<(const MTime& o) const { return mayahost::TicksOf(*this) < mayahost::TicksOf(o); }
MTime::Unit MTime::uiUnit() { return TheScene().timeUnit; }
MStatus MTime::setUIUnit(Unit unit) {
  if (unit <= kInvalid || unit >= kLast) return MS::kInvalidParameter;
  if (TheScene().timeUnit != unit) TheScene().timeUnit = unit, mayahost::NotifyEvent("timeUnitChanged");
  return MS::kSuccess;
}
MTime::MTick MTime::ticksPerSecond() { return 141120000; }
double MDistance::as(Unit unit) const { return unit == fUnit ? fValue : fValue * kCentimetres[fUnit] / kCentimetres[unit]; }
MDistance::Unit MDistance::uiUnit() { return TheScene().lengthUnit; }
MStatus MDistance::setUIUnit(Unit unit) {
  if (unit <= kInvalid || unit >= kLast) return MS::kInvalidParameter;
  return TheScene().lengthUnit = unit, mayahost::NotifyEvent("linearUnitChanged"), MS::kSuccess;
}
double MAngle::as(Unit unit) const { return unit == fUnit ? fValue : fValue * (kInRadians[fUnit] / kInRadians[unit]); }
MAngle::Unit MAngle::uiUnit() { return TheScene().angleUnit; }
MStatus MAngle::setUIUnit(Unit unit) {
  return unit <= kInvalid || unit >= kLast ? MS::kInvalidParameter : (TheScene().angleUnit = unit, mayahost::NotifyEvent("angularUnitChanged"), MS::kSuccess);
}

namespace {
MDGContext g_normal;
}
MDGContext& MDGContext::fsNormal = g_normal;
MStatus MDGContext::getTime(MTime& time) const { return time = fNormal ? mayahost::TimeOf(TheScene().now) : fTime, MS::kSuccess; }
MDGContext MDGContext::current(MStatus* status) {
  mayahost::Ok(status);
  return g_otherTime ? MDGContext(g_contextTime) : MDGContext();
}
MDGContext MDGContext::makeCurrent(MStatus* status) const {
  const MDGContext before = current(status);
  g_otherTime = !fNormal, g_contextTime = fTime;
  return before;
}
bool MDGContext::isCurrent() const { return fNormal ? !g_otherTime : g_otherTime && g_contextTime == fTime; }

MTime MAnimControl::currentTime() { return mayahost::TimeOf(TheScene().now); }
MStatus MAnimControl::setCurrentTime(const MTime& time) { return mayahost::SetNow(mayahost::TicksOf(time)), MS::kSuccess; }
MTime MAnimControl::minTime() { return mayahost::TimeOf(TheScene().minTime); }
MTime MAnimControl::maxTime() { return mayahost::TimeOf(TheScene().maxTime); }
MTime MAnimControl::animationStartTime() { return mayahost::TimeOf(TheScene().startTime); }
MTime MAnimControl::animationEndTime() { return mayahost::TimeOf(TheScene().endTime); }
namespace {
// The one range lies within the other; the one that is set moves the other.
MStatus SetRange(long long& value, const MTime& time, bool low, long long& pushed, long long& other) {
  value = mayahost::TicksOf(time);
  if (low ? pushed > value && &pushed == &TheScene().startTime : pushed < value && &pushed == &TheScene().endTime) pushed = value;
  if (low ? pushed < value && &pushed == &TheScene().minTime : pushed > value && &pushed == &TheScene().maxTime) pushed = value;
  if (low ? other < value : other > value) other = value;
  mayahost::NotifyEvent("playbackRangeChanged");
  return MS::kSuccess;
}
}  // namespace
MStatus MAnimControl::setMinTime(MTime t) { return SetRange(TheScene().minTime, t, true, TheScene().startTime, TheScene().maxTime); }
MStatus MAnimControl::setMaxTime(MTime t) { return SetRange(TheScene().maxTime, t, false, TheScene().endTime, TheScene().minTime); }
MStatus MAnimControl::setMinMaxTime(MTime min, MTime max) { return max < min ? MStatus(MS::kInvalidParameter) : (setMinTime(min), setMaxTime(max)); }
MStatus MAnimControl::setAnimationStartTime(MTime t) { return SetRange(TheScene().startTime, t, true, TheScene().minTime, TheScene().endTime); }
MStatus MAnimControl::setAnimationEndTime(MTime t) { return SetRange(TheScene().endTime, t, false, TheScene().maxTime, TheScene().startTime); }
MStatus MAnimControl::setAnimationStartEndTime(MTime a, MTime b) { return setAnimationStartTime(a), setAnimationEndTime(b); }
bool MAnimControl::isPlaying() { return g_playing; }
MStatus MAnimControl::playForward() { return g_playing ? void() : (g_playing = true, mayahost::NotifyCondition("playingBack", true)), MS::kSuccess; }
MStatus MAnimControl::stop() { return g_playing ? (g_playing = false, mayahost::NotifyCondition("playingBack", false)) : void(), MS::kSuccess; }
namespace {
struct Playing {
  double speed = 1, by = 1;
  MAnimControl::PlaybackMode mode = MAnimControl::kPlaybackLoop;
  MAnimControl::PlaybackViewMode view = MAnimControl::kPlaybackViewActive;
  MFnAnimCurve::TangentType in = MFnAnimCurve::kTangentAuto, out = MFnAnimCurve::kTangentAuto;
  bool weighted = false;
} g_prefs;
}  // namespace
bool MAnimControl::isScrubbing() { return false; }
double MAnimControl::playbackSpeed() { return g_prefs.speed; }
MStatus MAnimControl::setPlaybackSpeed(double speed) { return g_prefs.speed = speed, MS::kSuccess; }
double MAnimControl::playbackBy() { return g_prefs.by; }
MStatus MAnimControl::setPlaybackBy(double by) { return g_prefs.by = by, MS::kSuccess; }
MAnimControl::PlaybackMode MAnimControl::playbackMode() { return g_prefs.mode; }
MStatus MAnimControl::setPlaybackMode(PlaybackMode mode) { return g_prefs.mode = mode, MS::kSuccess; }
MAnimControl::PlaybackViewMode MAnimControl::viewMode() { return g_prefs.view; }
MStatus MAnimControl::setViewMode(PlaybackViewMode mode) { return g_prefs.view = mode, MS::kSuccess; }
MFnAnimCurve::TangentType MAnimControl::globalInTangentType(MStatus* s) { return mayahost::Ok(s), g_prefs.in; }
MStatus MAnimControl::setGlobalInTangentType(const MFnAnimCurve::TangentType& type) { return g_prefs.in = type, MS::kSuccess; }
MFnAnimCurve::TangentType MAnimControl::globalOutTangentType(MStatus* s) { return mayahost::Ok(s), g_prefs.out; }
MStatus MAnimControl::setGlobalOutTangentType(const MFnAnimCurve::TangentType& type) { return g_prefs.out = type, MS::kSuccess; }
bool MAnimControl::weightedTangents(MStatus* s) { return mayahost::Ok(s), g_prefs.weighted; }
MStatus MAnimControl::setWeightedTangents(bool weighted) { return g_prefs.weighted = weighted, MS::kSuccess; }
bool MAnimControl::autoKeyMode() { return g_autoKey; }
MStatus MAnimControl::setAutoKeyMode(bool on) { return g_autoKey = on, MS::kSuccess; }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
