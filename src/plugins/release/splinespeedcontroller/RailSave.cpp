// The rail's save data.
#include <algorithm>
#include <set>
#include <utility>

#include "plugins/release/splinespeedcontroller/RailActions.h"
#include "plugins/release/splinespeedcontroller/splinespeedcontroller_CCameraRailObject.h"

namespace orv::rws::addon {

using util::DataChunk;

namespace {

const char kChunkName[] = "CameraRailplugin";
const char kCarriageChunk[] = "carriage";
const char kWaypoints[] = "waypoints";
const char kCurveInformation[] = "ccurveinformation";
const char kCurveData[] = "ccurvedata";

constexpr double kHuge = 1e18;

/// A point as three numbers.
struct Point {
  double x, y, z;
};

/// Reads as many numbers as `count` tells; false when the field holds another number of them.
template <class T>
bool ReadArray(const DataChunk& chunk, const char* key, std::vector<T>& values, std::size_t count) {
  values.resize(count);
  return count == 0 ? chunk.getBytes(key).empty()
                    : chunk.getBytes(key, values.data(), count * sizeof(T));
}

}  // namespace

// --- writing ---

DataChunk CCameraRailObject::SaveCarriage() {
  const CarriageMemory& m = m_carriage.memory;
  const auto nameOf = [&](int index) {
    const auto i = static_cast<std::size_t>(index);
    return index >= 0 && i < m_rail.waypoints.size() ? m_rail.waypoints[i]->GetName()
                                                     : std::string();
  };
  DataChunk chunk(kCarriageChunk);
  AddHistory(chunk, "currentSpeed", m.currentSpeed);
  AddHistory(chunk, "dCurrentCarriageSpeed_Avar", m.dCurrentCarriageSpeed_Avar);
  AddHistory(chunk, "speedMem", m.speedMem);
  AddHistory(chunk, "qTransMem", m.qTransMem);
  AddHistory(chunk, "onSplinePosition", m.onSplinePosition);
  AddHistory(chunk, "framesAtWaypoint", m.framesAtWaypoint);
  AddHistory(chunk, "stopped", m.stopped);
  chunk.addValue("initialized", m.initialized);
  chunk.addValue("directionForward", m.directionForward);
  chunk.addValue("stopTime", m.stopTime);
  chunk.addValue("delay", m.delay);
  chunk.addText("currentWaypoint", nameOf(m.current));
  chunk.addText("nextWaypoint", nameOf(m.next));
  SaveParameters(chunk, ParametersOf(m_rail.settings), RailSettings::kSavedCarriage);
  return chunk;
}

DataChunk CCameraRailObject::SaveWaypoints() const {
  DataChunk all(kWaypoints);
  int index = 0;
  for (const auto& waypoint : m_rail.waypoints) {
    WaypointValues& values = waypoint->values;
    DataChunk chunk(waypoint->GetName());
    chunk.addText("name", waypoint->GetName());
    chunk.addText("baseName", "Waypoint");
    chunk.addText("target", waypoint->GetName() + "_lookAtTarget");
    chunk.addValue("currentIndex", index++);
    chunk.addValue("onSplinePosition", values.onSplinePosition);
    chunk.addValue("initTime", values.initTime);
    SaveParameters(chunk, ParametersOf(values.settings));
    all.addChunk(std::move(chunk));
  }
  return all;
}

int CCameraRailObject::Store() {
  DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  SaveParameters(chunk, ParametersOf(m_rail.settings));
  chunk.addValue("selectedWaypoint", m_selected);
  chunk.addChunk(SaveCarriage());
  chunk.addChunk(SaveWaypoints());
  const CCurveInformation& information = m_rail.curveInformation;
  DataChunk flags(kCurveInformation);
  flags.addValue("closed", information.closed);
  flags.addValue("endstraight", information.endstraight);
  flags.addValue("curveInitialized", information.curveInitialized);
  chunk.addChunk(std::move(flags));
  DataChunk data(kCurveData);
  std::vector<Point> points;
  for (const Vector& point : information.curve.Points())
    points.push_back({point.x, point.y, point.z});
  data.addValue("count", static_cast<int>(points.size()));
  data.addValue("closed", information.curve.IsClosed());
  data.addValue("endstraight", information.curve.IsEndStraight());
  data.addBytes("points", points.data(), points.size() * sizeof(Point));
  const auto& in = information.curve.TensionsIn();
  const auto& out = information.curve.TensionsOut();
  data.addBytes("tensionIn", in.data(), in.size() * sizeof(double));
  data.addBytes("tensionOut", out.data(), out.size() * sizeof(double));
  chunk.addChunk(std::move(data));
  return StoreSaveChunk(*m_pInterface, chunk);
}

// --- reading ---

bool CCameraRailObject::LoadWaypoints(const DataChunk& chunk, WaypointState& state) {
  std::set<std::string> names;
  for (const DataChunk& one : chunk.children) {
    std::string name;
    if (!one.getText("name", name) || name.empty() || !names.insert(name).second) return false;
    WaypointValues values;
    SaveReader reader(one);
    reader.Read("onSplinePosition", values.onSplinePosition, 0.0, 1.0);
    reader.Read("initTime", values.initTime, -kHuge, kHuge);
    LoadParameters(reader, ParametersOf(values.settings));
    if (!reader.IsGood()) return false;
    state.waypoints.push_back(
        std::make_shared<CWaypointNode>(*this, name, m_rail.referenceFrame, m_rail.panel));
    state.values.push_back(values);
  }
  return true;
}

bool CCameraRailObject::LoadCurve(const DataChunk& information, const DataChunk& data) {
  bool closed = m_rail.curveInformation.closed;
  bool endstraight = m_rail.curveInformation.endstraight;
  bool initialized = false, curveClosed = false, curveStraight = false;
  SaveReader reader(information);
  reader.Read("closed", closed);
  reader.Read("endstraight", endstraight);
  reader.Read("curveInitialized", initialized);
  SaveReader dataReader(data);
  dataReader.Read("closed", curveClosed);
  dataReader.Read("endstraight", curveStraight);
  int count = 0;
  dataReader.ReadStruct("count", count);
  const bool possible = count >= 0 && static_cast<std::size_t>(count) * sizeof(Point) ==
                                          data.getBytes("points").size();
  if (!reader.IsGood() || !dataReader.IsGood() || !possible) return false;
  std::vector<Point> points;
  std::vector<double> in, out;
  const auto n = static_cast<std::size_t>(count);
  if (!ReadArray(data, "points", points, n) || !ReadArray(data, "tensionIn", in, n) ||
      !ReadArray(data, "tensionOut", out, n))
    return false;
  CCurve curve;
  curve.SetClosed(curveClosed);
  curve.SetEndStraight(curveStraight);
  for (std::size_t i = 0; i < n; ++i) {
    const Vector point(points[i].x, points[i].y, points[i].z);
    if (!IsFinite(point) || !IsFinite(in[i]) || !IsFinite(out[i])) return false;
    curve.AddPoint(point, in[i], out[i]);
  }
  m_rail.curveInformation.closed = closed;
  m_rail.curveInformation.endstraight = endstraight;
  m_rail.curveInformation.curveInitialized = initialized;
  m_rail.curveInformation.curve = curve;
  return true;
}

SaveState CCameraRailObject::LoadBlob() {
  DataChunk chunk;
  const SaveState found = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (found != SaveState::kGood) return found;
  RailSettings settings = m_rail.settings;
  WaypointState state;
  SaveReader reader(chunk);
  const std::vector<Parameter> parameters = ParametersOf(settings);
  const bool isUnit = LoadParameters(reader, parameters);
  reader.ReadStruct("selectedWaypoint", state.selected);
  const DataChunk& carriage = chunk.getChunk(kCarriageChunk);
  SaveReader in(carriage);
  CarriageMemory m;
  in.ReadHistory("currentSpeed", m.currentSpeed);
  in.ReadHistory("dCurrentCarriageSpeed_Avar", m.dCurrentCarriageSpeed_Avar);
  in.ReadHistory("speedMem", m.speedMem);
  in.ReadHistory("qTransMem", m.qTransMem);
  in.ReadHistory("onSplinePosition", m.onSplinePosition);
  in.ReadHistory("framesAtWaypoint", m.framesAtWaypoint);
  in.ReadHistory("stopped", m.stopped);
  in.Read("initialized", m.initialized);
  in.Read("directionForward", m.directionForward);
  in.Read("stopTime", m.stopTime, -kHuge, kHuge);
  in.Read("delay", m.delay, -1.0, kHuge);
  LoadParameters(in, parameters, RailSettings::kSavedCarriage);
  if (!reader.IsGood() || !in.IsGood() || !isUnit ||
      !LoadWaypoints(chunk.getChunk(kWaypoints), state) ||
      !LoadCurve(chunk.getChunk(kCurveInformation), chunk.getChunk(kCurveData)))
    return SaveState::kDamaged;
  const auto indexOf = [&](const char* key) {
    std::string name;
    carriage.getText(key, name);
    for (std::size_t i = 0; i < state.waypoints.size(); ++i)
      if (state.waypoints[i]->GetName() == name) return static_cast<int>(i);
    return -1;
  };
  state.current = indexOf("currentWaypoint");
  state.next = indexOf("nextWaypoint");
  m_rail.settings = settings;
  m_carriage.memory = m;
  m_rail.curveInformation.mesh.Find();
  SetWaypointState(state);
  return found;
}

}  // namespace orv::rws::addon
