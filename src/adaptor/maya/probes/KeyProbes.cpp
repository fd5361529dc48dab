// Time, units, keys.
#include <maya/MAngle.h>
#include <maya/MAnimControl.h>
#include <maya/MAnimCurveChange.h>
#include <maya/MAnimUtil.h>
#include <maya/MDGContext.h>
#include <maya/MDGContextGuard.h>
#include <maya/MDGMessage.h>
#include <maya/MDGModifier.h>
#include <maya/MDistance.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnMatrixData.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MTime.h>
#include <maya/MTimeArray.h>

#include "adaptor/maya/probes/Probe.h"
#include "adaptor/maya/probes/ProbeScene.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr auto kFromDocs = ProbeSource::kDocumented;
constexpr auto kAssumed = ProbeSource::kBelief;

MTime Seconds(double seconds) {
  return MTime(seconds, MTime::kSeconds);
}

/// A node whose X goes from 0 to 10 between 0 and 1 s, in straight lines.
MObject Animated(const char* name, MObject& curve) {
  const MObject node = ProbeTransform(name);
  MPlug plug = ProbePlug(node, "translateX");
  MFnAnimCurve fn;
  curve = fn.create(plug, MFnAnimCurve::kAnimCurveTL);
  fn.addKey(Seconds(0.0), 0.0, MFnAnimCurve::kTangentLinear, MFnAnimCurve::kTangentLinear);
  fn.addKey(Seconds(1.0), 10.0, MFnAnimCurve::kTangentLinear, MFnAnimCurve::kTangentLinear);
  return node;
}

void Centimetres(ProbeRun& run) {
  run.Check(MDistance::internalUnit() == MDistance::kCentimeters, "the unit inside is another");
  run.Near(MDistance(1.0, MDistance::kMeters).as(MDistance::internalUnit()), 100.0, 1e-12,
           "a metre");
}

void PlugsInside(ProbeRun& run) {
  const MDistance::Unit before = MDistance::uiUnit();
  MDistance::setUIUnit(MDistance::kMeters);
  const MObject node = ProbeTransform("probeUnits");
  ProbePlug(node, "translateX").setDouble(100.0);
  run.Near(MFnTransform(node).transformation().asMatrix()(3, 0), 100.0, 1e-9,
           "a plug's 100 where the user works in metres");
  MDistance::setUIUnit(before);
}

void FilmByDefault(ProbeRun& run) {
  const MTime::Unit before = MTime::uiUnit();
  MTime::setUIUnit(MTime::kPALFrame);
  run.Near(MTime(24.0).as(MTime::kSeconds), 1.0, 1e-12, "MTime(24) in seconds");
  MTime::setUIUnit(before);
}

void UnitNumbers(ProbeRun& run) {
  const struct {
    int unit;
    double fps;
  } rows[] = {{1, 1.0 / 3600.0}, {3, 1.0},   {4, 1000.0}, {5, 15.0},   {6, 24.0},
              {7, 25.0},         {8, 30.0},  {9, 48.0},   {10, 50.0},  {11, 60.0},
              {12, 2.0},         {21, 20.0}, {26, 120.0}, {42, 6000.0}};
  for (const auto& row : rows)
    run.Near(Seconds(3600.0).as(static_cast<MTime::Unit>(row.unit)) / 3600.0, row.fps,
             1e-9 * row.fps, "the rate of unit " + std::to_string(row.unit));
}

void PlaybackRange(ProbeRun& run) {
  MAnimControl::setAnimationEndTime(Seconds(20.0));
  MAnimControl::setMinTime(Seconds(1.0));
  MAnimControl::setMaxTime(Seconds(5.0));
  run.Near(MAnimControl::minTime().as(MTime::kSeconds), 1.0, 1e-9, "the range's start");
  run.Near(MAnimControl::maxTime().as(MTime::kSeconds), 5.0, 1e-9, "the range's end");
}

void CurrentTime(ProbeRun& run) {
  MObject curve;
  const MObject node = Animated("probePlayed", curve);
  MAnimControl::setCurrentTime(Seconds(0.5));
  run.Near(MAnimControl::currentTime().as(MTime::kSeconds), 0.5, 1e-9, "the time that was set");
  run.Near(ProbePlug(node, "translateX").asDouble(), 5.0, 1e-6, "an animated plug at that time");
}

void StraightLines(ProbeRun& run) {
  MObject curve;
  Animated("probeStraight", curve);
  MFnAnimCurve fn(curve);
  run.Near(fn.evaluate(Seconds(0.25)), 2.5, 1e-6, "a quarter of a straight line");
  run.Check(!fn.isWeighted(), "a new curve is weighted");
}

void OtherTimes(ProbeRun& run) {
  MObject curve;
  const MObject node = Animated("probeElsewhere", curve);
  MAnimControl::setCurrentTime(Seconds(0.0));
  double there = 0.0;
  {
    const MDGContext context(Seconds(0.8));
    const MDGContextGuard guard(context);
    there = ProbePlug(node, "translateX").asDouble();
  }
  run.Near(there, 8.0, 1e-6, "a plug in the context of another time");
  run.Near(MAnimControl::currentTime().as(MTime::kSeconds), 0.0, 1e-9, "the time behind it");
}

void ChangesOfKeys(ProbeRun& run) {
  MObject curve;
  Animated("probeRekeyed", curve);
  MFnAnimCurve fn(curve);
  MAnimCurveChange change;
  fn.addKey(Seconds(0.5), 100.0, MFnAnimCurve::kTangentLinear, MFnAnimCurve::kTangentLinear,
            &change);
  run.Check(fn.numKeys() == 3, "a key was not added");
  change.undoIt();
  run.Check(fn.numKeys() == 2, "undoIt of the change leaves the key");
  change.redoIt();
  run.Check(fn.numKeys() == 3, "redoIt does not bring it back");
}

void CurvesOfPlugs(ProbeRun& run) {
  MObject curve;
  const MObject node = Animated("probeFound", curve);
  MObjectArray found;
  run.Check(MAnimUtil::findAnimation(ProbePlug(node, "translateX"), found) && found.length() == 1 &&
                found[0] == curve,
            "findAnimation does not find a plug's curve");
  MPlugArray sources;
  run.Check(ProbePlug(node, "translateX").connectedTo(sources, true, false) &&
                sources.length() == 1 && sources[0].node() == curve,
            "a curve is not connected to its plug");
}

void Reconnected(ProbeRun& run) {
  MObject curve;
  const MObject node = Animated("probeReconnected", curve);
  MPlug plug = ProbePlug(node, "translateX");
  MPlugArray sources;
  plug.connectedTo(sources, true, false);
  if (!run.Check(sources.length() == 1, "the plug has no source")) return;
  MDGModifier modifier;
  modifier.disconnect(sources[0], plug);
  modifier.doIt();
  plug.setDouble(77.0);
  run.Near(plug.asDouble(), 77.0, 1e-9, "a disconnected plug");
  modifier.undoIt();
  MAnimControl::setCurrentTime(Seconds(1.0));
  run.Near(plug.asDouble(), 10.0, 1e-6, "a reconnected plug");
  run.Check(MFnAnimCurve(curve).numKeys() == 2, "its curve lost keys");
}

void ManyKeys(ProbeRun& run) {
  MObject curve;
  Animated("probeMany", curve);
  MFnAnimCurve fn(curve);
  MTimeArray times;
  MDoubleArray values;
  for (int i = 0; i < 3; ++i) {
    times.append(Seconds(0.5 + i));
    values.append(i);
  }
  MAnimCurveChange change;
  fn.addKeys(&times, &values, MFnAnimCurve::kTangentLinear, MFnAnimCurve::kTangentLinear, true,
             &change);
  run.Check(fn.numKeys() == 5, "keys that were there are gone, or new ones missing");
  change.undoIt();
  run.Check(fn.numKeys() == 2, "undoIt leaves some");
}

void CurvesByModifier(ProbeRun& run) {
  const MObject node = ProbeTransform("probeDriven");
  MDGModifier modifier;
  const MObject curve = modifier.createNode("animCurveTL");
  modifier.connect(ProbePlug(curve, "output"), ProbePlug(node, "translateY"));
  run.Check(modifier.doIt() == MStatus::kSuccess, "doIt fails");
  MFnAnimCurve fn(curve);
  fn.setIsWeighted(false);
  run.Check(!fn.isWeighted(), "it can't be made unweighted");
  fn.addKey(Seconds(0.0), 3.0);
  run.Near(ProbePlug(node, "translateY").asDouble(), 3.0, 1e-9, "a plug that such a curve drives");
  modifier.undoIt();
  run.Check(!ProbePlug(node, "translateY").isDestination(), "undoIt leaves the connection");
}

void TangentsCopied(ProbeRun& run) {
  MObject first, second;
  Animated("probeTangents", first);
  Animated("probeTangentsToo", second);
  MFnAnimCurve from(first), to(second);
  from.setTangentsLocked(0, false);
  from.setTangent(0, 1.0, 3.0, false);
  from.setPostInfinityType(MFnAnimCurve::kCycle);
  run.Check(from.outTangentType(0) == MFnAnimCurve::kTangentFixed, "one that is set is not fixed");
  MFnAnimCurve::TangentValue x = 0, y = 0;
  from.getTangent(0, x, y, false);
  to.setTangentsLocked(0, from.tangentsLocked(0));
  to.setTangent(0, x, y, false);
  to.setPreInfinityType(from.preInfinityType());
  to.setPostInfinityType(from.postInfinityType());
  run.Check(!to.tangentsLocked(0) && to.inTangentType(0) != MFnAnimCurve::kTangentFixed,
            "the other side goes with it though they are apart");
  run.Near(to.evaluate(Seconds(0.25)), from.evaluate(Seconds(0.25)), 1e-5, "a copy between keys");
  run.Near(to.evaluate(Seconds(9.25)), from.evaluate(Seconds(9.25)), 1e-5, "a copy behind them");
}

void MatricesElsewhere(ProbeRun& run) {
  MObject curve;
  const MObject node = Animated("probeMatrix", curve);
  MDGContext context(Seconds(0.5));
  MFnMatrixData data(ProbePlug(node, "matrix").asMObject(context));
  run.Near(data.matrix()(3, 0), 5.0, 1e-6, "a transform's matrix in the context of another time");
}

void CountTime(MTime&, void* clientData) {
  ++*static_cast<int*>(clientData);
}

void TimeCallback(ProbeRun& run) {
  int calls = 0;
  MStatus status;
  const MCallbackId id = MDGMessage::addTimeChangeCallback(CountTime, &calls, &status);
  if (!run.Check(status == MStatus::kSuccess, "it can't be added")) return;
  MAnimControl::setCurrentTime(Seconds(0.25));
  MAnimControl::setCurrentTime(Seconds(0.75));
  MMessage::removeCallback(id);
  run.Check(calls >= 2, "it is not called for each time that is set");
}

void AutoKeyOff(ProbeRun& run) {
  const bool before = MAnimControl::autoKeyMode();
  MAnimControl::setAutoKeyMode(false);
  run.Check(!MAnimControl::autoKeyMode(), "it stays on");
  MAnimControl::setAutoKeyMode(before);
}

}  // namespace

void AddKeyProbes(std::vector<Probe>& list) {
  const Probe probes[] = {
      {50, Feature::kTakes, kFromDocs, "the unit inside is the centimetre", Centimetres},
      {51, Feature::kTakes, kFromDocs, "plugs hold centimetres whatever the user's unit",
       PlugsInside},
      {52, Feature::kTakes, kFromDocs, "a time without unit is in frames of film", FilmByDefault},
      {53, Feature::kTakes, kFromDocs, "units of time have their numbers", UnitNumbers},
      {54, Feature::kTakes, kFromDocs, "the playback range can be set", PlaybackRange},
      {55, Feature::kTakes, kFromDocs, "the scene follows the time that is set", CurrentTime},
      {56, Feature::kTakes, kFromDocs, "linear tangents make straight lines", StraightLines},
      {57, Feature::kTakes, kFromDocs, "plugs can be read at other times", OtherTimes},
      {58, Feature::kUndo, kFromDocs, "a change of keys can be taken back", ChangesOfKeys},
      {59, Feature::kTakes, kFromDocs, "a plug's curve is found", CurvesOfPlugs},
      {60, Feature::kTakes, kAssumed, "a curve keeps its keys while it is disconnected",
       Reconnected},
      {61, Feature::kTakes, kFromDocs, "a callback tells every time that is set", TimeCallback},
      {63, Feature::kTakes, kFromDocs, "many keys are added at once, and taken back", ManyKeys},
      {64, Feature::kTakes, kFromDocs, "a modifier makes curves and connects them",
       CurvesByModifier},
      {66, Feature::kTools, kFromDocs, "tangents can be copied", TangentsCopied},
      {65, Feature::kTakes, kFromDocs, "matrices can be read at other times", MatricesElsewhere},
      {62, Feature::kTakes, kFromDocs, "automatic keys can be switched off", AutoKeyOff},
  };
  list.insert(list.end(), std::begin(probes), std::end(probes));
}

}  // namespace orv::rws::adaptor::maya
