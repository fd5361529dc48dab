// What hangs below a transform: lens, mesh, curve, colour.
#include <cmath>

#include "adaptor/maya/CMayaNode.h"
#include "adaptor/maya/Channels.h"
#include "adaptor/maya/HelperShader.h"
#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/PlugChange.h"
#include "adaptor/maya/ShapeReading.h"
#include "adaptor/maya/TakeChannels.h"
#include "util/Angles.h"

#include <maya/MFnDagNode.h>

namespace orv::rws::adaptor::maya {

namespace {

constexpr double kMillimetresAnInch = 25.4;
constexpr double kCentimetresAMetre = 100.0;
constexpr Colour kNoColour = {0.5f, 0.5f, 0.5f};

const char* PlugNameOf(LensValue which) {
  return which == LensValue::kFieldOfView ? "focalLength" : "focusDistance";
}

/// Half the film's height (mm) at `time`.
double HalfFilm(const MObject& camera, double time) {
  return 0.5 * kMillimetresAnInch * ValueAt(FindPlug(camera, "verticalFilmAperture"), time);
}

}  // namespace

// --- the lens ---

bool CMayaNode::HasLens() const {
  return FindShape(GetPath(), MFn::kCamera).isValid();
}

double CMayaNode::ReadLens(LensValue which, double time) const {
  const MObject camera = FindShape(GetPath(), MFn::kCamera).node();
  const TakePlugs* const shown =
      m_take ? m_take->lens[static_cast<std::size_t>(which)].get() : nullptr;
  const double value =
      shown ? shown->Read(0, time) : ValueAt(FindPlug(camera, PlugNameOf(which)), time);
  if (which == LensValue::kFocusDistance) return value / kCentimetresAMetre;
  return 2.0 * std::atan(HalfFilm(camera, time) / value) * 180.0 / util::kPi;
}

double CMayaNode::ToLensPlug(LensValue which, double time, double value) const {
  if (which == LensValue::kFocusDistance) return value * kCentimetresAMetre;
  const MObject camera = FindShape(GetPath(), MFn::kCamera).node();
  return HalfFilm(camera, time) / std::tan(value * util::kPi / 360.0);
}

void CMayaNode::WriteLens(LensValue which, double time, double value) {
  if (which == LensValue::kFieldOfView && !(value > 0.0 && value < 180.0)) return;
  const MPlug plug = FindPlug(FindShape(GetPath(), MFn::kCamera).node(), PlugNameOf(which));
  const double number = ToLensPlug(which, time, value);
  const MObject curve = CurveOf(plug);
  PlugChange* const change = ChangeOf(m_lensChange);
  if (curve.isNull())
    PutValue(plug, number);
  else if (WhyNoKeysOn(plug).empty())
    PutKey(curve, time, number, change ? change->GetKeys() : nullptr);
}

void CMayaNode::ShowTakeLens() {
  for (const LensValue which : {LensValue::kFieldOfView, LensValue::kFocusDistance}) {
    const auto& samples = GetRecorded(which).samples;
    if (samples.empty()) continue;
    EnterTake();
    std::unique_ptr<TakePlugs>& shown = m_take->lens[static_cast<std::size_t>(which)];
    const MObject camera = FindShape(GetPath(), MFn::kCamera).node();
    if (!shown)
      shown = std::make_unique<TakePlugs>(std::vector<MPlug>{FindPlug(camera, PlugNameOf(which))});
    shown->Show({ToLensPlug(which, samples.back().time, samples.back().value)});
  }
}

void CMayaNode::WriteLensKeys(LensValue which, double from, const util::AVar_Linear<double>& take) {
  const MPlug plug = FindPlug(FindShape(GetPath(), MFn::kCamera).node(), PlugNameOf(which));
  const std::string problem = WhyNoKeysOn(plug);
  if (!problem.empty()) {
    Adaptor().NoteProblem("node " + GetSceneName() + ": its lens could not be keyed, since its " +
                          PlugNameOf(which) + " " + problem);
    return;
  }
  std::vector<double> times, values;
  bool varies = !CurveOf(plug).isNull();
  for (const auto& sample : take.samples) {
    times.push_back(sample.time);
    values.push_back(ToLensPlug(which, sample.time, sample.value));
    varies = varies || std::abs(values.back() - plug.asDouble()) > 1e-9 * std::abs(values.back());
  }
  if (!varies) return;
  PlugChange* const change = ChangeOf(m_lensChange);
  const MObject curve = MakeCurves(&plug, 1, change).front();
  if (!curve.isNull())
    ReplaceKeys(curve, from, times, values, change ? change->GetKeys() : nullptr);
}

Exchange CMayaNode::SaveLens() {
  const MObject camera = FindShape(GetPath(), MFn::kCamera).node();
  const MPlug plugs[] = {FindPlug(camera, PlugNameOf(LensValue::kFieldOfView)),
                         FindPlug(camera, PlugNameOf(LensValue::kFocusDistance))};
  auto change = std::make_shared<PlugChange>(plugs, 2, m_adaptor.GetUndo().openId());
  m_lensChange = change;
  return [this, change] {
    if (Exists()) change->Exchange();
  };
}

// --- curve and mesh ---

std::shared_ptr<const Curve> CMayaNode::CurveAt(double time) const {
  const int take = Adaptor().GetTakeSerial();
  if (m_curveRead.Holds(take, time)) return m_curve;
  const MDagPath shape = FindShape(GetPath(), MFn::kNurbsCurve);
  if (!shape.isValid()) return nullptr;
  m_curveRead.Begin(take, shape.node());
  m_curve = Adaptor().ReadDriven(m_curveRead.GetDrive(), time,
                                 [&] { return ReadCurve(GeometryOf(shape.node()), m_curve); });
  m_curveRead.Note(time);
  return m_curve;
}

bool CMayaNode::HasMesh() const {
  if (m_meshRead.IsOf(Adaptor().GetTakeSerial())) return m_mesh != nullptr;
  const MDagPath path = GetPath();
  return FindShape(path, MFn::kMesh).isValid() || FindShape(path, MFn::kNurbsSurface).isValid();
}

std::shared_ptr<const util::CMesh> CMayaNode::SharedMesh() const {
  return MeshAt(m_adaptor.GetCurrentTime());
}

std::shared_ptr<const util::CMesh> CMayaNode::MeshAt(double time) const {
  const int take = Adaptor().GetTakeSerial();
  if (m_meshRead.Holds(take, time)) return m_mesh;
  const MDagPath path = GetPath();
  const MDagPath mesh = FindShape(path, MFn::kMesh);
  const MDagPath surface = mesh.isValid() ? mesh : FindShape(path, MFn::kNurbsSurface);
  if (!surface.isValid()) return nullptr;
  m_meshRead.Begin(take, surface.node());
  m_mesh = Adaptor().ReadDriven(m_meshRead.GetDrive(), time, [&] {
    const MObject geometry = GeometryOf(surface.node());
    return mesh.isValid() ? ReadMesh(geometry, m_mesh) : ReadSurface(geometry, m_mesh);
  });
  m_meshRead.Note(time);
  return m_mesh;
}

void CMayaNode::PutMesh(std::shared_ptr<const util::CMesh> mesh) {
  MDagPath shape = FindShape(GetPath(), MFn::kMesh, true);
  if (!mesh) {
    // Out of sight, and no mesh to rigs, while what hangs on the node stays seen.
    if (shape.isValid()) MFnDagNode(shape).setIntermediateObject(true);
    m_mesh = nullptr;
    m_meshRead.Forget();
    return;
  }
  if (shape.isValid()) {
    // A host that takes no mesh without faces shows none then.
    const bool filled = FillMesh(*mesh, shape);
    MFnDagNode(shape).setIntermediateObject(!filled && mesh->faces.empty());
  } else {
    const MObject made = MakeMesh(*mesh, GetObject());
    MDagPath::getAPathTo(made, shape);
    ShadePlainly(shape);
  }
  m_mesh = std::move(mesh);
  m_meshRead.Begin(Adaptor().GetTakeSerial(), shape.node());
  m_meshRead.Note(m_adaptor.GetCurrentTime());
}

// --- colour ---

Colour CMayaNode::ReadColour() const {
  const MDagPath shape = FindShape(GetPath(), MFn::kMesh);
  const MObject lambert = shape.isValid() ? LambertOf(shape) : MObject();
  return lambert.isNull() ? kNoColour : ReadLambert(lambert);
}

void CMayaNode::PutColour(const Colour& colour) {
  const MDagPath shape = FindShape(GetPath(), MFn::kMesh);
  if (!shape.isValid()) return;
  if (!IsOwnShader(LambertOf(shape))) {
    Exchange made = MakeOwnShader(shape, GetSceneName());
    if (!made) return;
    m_adaptor.PushExchange("CCreateShaderObj", std::move(made));
  }
  PutLambert(LambertOf(shape), colour);
}

}  // namespace orv::rws::adaptor::maya
