#include "app/session/anyhost/CarFit.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "app/session/anyhost/ModelUnits.h"
#include "app/session/anyhost/NodePoses.h"
#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceHost.h"
#include "core/interface/CSnapshot_Mesh.h"
#include "core/tools/Tool.h"
#include "plugins/release/4wheelerextended/CarSettings.h"
#include "util/Angles.h"
#include "util/NumberText.h"
#include "util/Quat.h"

namespace orv::app {

using rws::addon::CarFrame;
using rws::addon::FourWheels;
using rws::addon::WheelMeasure;
using rws::core::CoreNode;
using rws::core::Instance;
using rws::core::NodeHandle;
using rws::core::ParentOf;
using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;

namespace {

constexpr const char* kSuffixes[] = {"_FL", "_FR", "_BL", "_BR"};
/// Part of its size by which a pose that is kept may differ.
constexpr double kKept = 1e-6;
/// Lean of a wheel's axis against the car's (degrees): it wobbles as it spins, and beyond the
/// second it was not modelled straight.
constexpr double kWobble = 0.1;
constexpr double kMostLean = 5.0;

std::array<CoreNode*, 5> AllOf(const CarModel& model) {
  return {model.body, model.wheels[0], model.wheels[1], model.wheels[2], model.wheels[3]};
}

// --- what can be fitted ---

double LargestDifference(const Matrix& a, const Matrix& b, double length) {
  double most = (a.translation() - b.translation()).length() / length;
  for (int i = 0; i < 3; ++i)
    most = std::max(most, (a.axisRow(i) - b.axisRow(i)).length() / a.axisRow(i).length());
  return most;
}

/// Whether no translation, rotation and scale make this pose, whose axes have a length.
bool IsSheared(const Matrix& pose) {
  Matrix held = util::Quat<double>::fromMatrix(pose).toMatrix();
  const Vector lengths = pose.rowLengths();
  for (int i = 0; i < 3; ++i) held.setAxisRow(i, held.axisRow(i) * lengths[i]);
  held.setTranslation(pose.translation());
  return LargestDifference(pose, held, 1.0) > kKept;
}

/// Whether the model's node and the rig's hang on each other.
Problem CheckPlaces(CoreNode& node, Instance& rig) {
  const std::string name = node.GetSceneName(), kind = rig.GetInstanceName();
  const auto inWorld = [](const std::string& who) {
    return Remedy{Remedy::Kind::kHangInWorld, who, 1.0};
  };
  for (CoreNode* own : rig.GetNodes()) {
    const std::string ownName = own->GetSceneName();
    if (IsUnder(node, *own))
      return {name, "it hangs on " + ownName + ", a node of " + kind,
              "put it under the world first", inWorld(name)};
    if (IsUnder(*own, node))
      return {name, "it carries " + ownName + ", a node of " + kind,
              "put that under the world first", inWorld(ownName)};
  }
  return {};
}

Problem CheckNode(CoreNode& node, Instance& rig, double time) {
  const std::string name = node.GetSceneName();
  if (!node.GetTag().empty())
    return {name, "it is a node of a rig", "name a node of your own model", {}};
  if (Problem problem = CheckPlaces(node, rig)) return problem;
  if (node.HasKeys())
    return {name,
            "it has keys of its own, which would move it away from the rig",
            "remove its animation first",
            {}};
  const Matrix world = WorldPose(node, time);
  const double volume = world.axisRow(0).cross(world.axisRow(1)).dot(world.axisRow(2));
  if (volume < 0.0)
    return {name,
            "its scale is mirrored (a negative factor)",
            "freeze its scale, or that of the node above it, in the program that it is from",
            {}};
  if (!std::isnormal(volume))
    return {name, "it has a scale of 0", "give it a scale that keeps its mesh", {}};
  if (IsSheared(world))
    return {name,
            "it is sheared by an uneven scale of a node above it, which no pose holds",
            "freeze that scale in the program that the model is from",
            {}};
  return {};
}

/// World corners of the triangles of a node and of all below it, without the other nodes of the
/// model: wheels often hang on the body.
void AddCorners(CoreNode& node, const CarModel& model, double time, std::vector<Vector>& out) {
  if (rws::CSnapshot_Mesh* const snapshot = node.GetSnapshotMesh(time)) {
    const util::CMesh mesh = snapshot->GetMesh();
    node.ReleaseSnapshot(snapshot);
    const Matrix world = WorldPose(node, time);
    std::vector<bool> used(mesh.vertices.size());
    for (const std::int32_t corner : mesh.faces) used[static_cast<std::size_t>(corner)] = true;
    for (std::size_t i = 0; i < used.size(); ++i)
      if (used[i]) out.push_back(world.transformPoint(mesh.vertices[i]));
  }
  for (int i = 0; i < node.GetChildCount(); ++i) {
    const NodeHandle child = rws::core::ChildOf(node, i);
    bool named = false;
    for (CoreNode* other : AllOf(model)) named = named || child->IsSame(other);
    if (!named) AddCorners(*child, model, time, out);
  }
}

Problem FindCorners(CoreNode& node, const CarModel& model, double time,
                    std::vector<Vector>& corners) {
  corners.clear();
  AddCorners(node, model, time, corners);
  if (!corners.empty()) return {};
  return {node.GetSceneName(),
          "neither it nor a node below it has a mesh",
          "name the node that holds the mesh",
          {}};
}

double LeanOf(const WheelMeasure& wheel, const CarFrame& frame) {
  return std::atan2(wheel.axis.cross(frame.right).length(), std::abs(wheel.axis.dot(frame.right))) *
         util::kDegreesPerRadian;
}

Problem Measure(const CarModel& model, double time, CarFit& fit) {
  std::vector<Vector> corners;
  if (Problem problem = FindCorners(*model.body, model, time, corners)) return problem;
  for (std::size_t i = 0; i < 4; ++i) {
    if (Problem problem = FindCorners(*model.wheels[i], model, time, corners)) return problem;
    const std::string wrong = MeasureWheel(corners, fit.wheels[i]);
    if (!wrong.empty()) return {model.wheels[i]->GetSceneName(), wrong, {}, {}};
  }
  const std::string wrong = FindCarFrame(fit.wheels, fit.frame);
  if (!wrong.empty()) return {"", wrong, {}, {}};
  for (std::size_t i = 0; i < 4; ++i) {
    const std::string name = model.wheels[i]->GetSceneName();
    const double lean = fit.leans[i] = LeanOf(fit.wheels[i], fit.frame);
    const std::string told = "its axis leans " + util::shortText(std::round(lean * 100.0) / 100.0) +
                             " degrees against the car's";
    if (lean > kMostLean)
      return {name, told, "turn the wheel straight first; the rig steers it", {}};
    if (lean > kWobble) fit.odd.push_back({name, told + ", so it wobbles as it spins", {}, {}});
  }
  return {};
}

// --- fitting ---

/// The rig's nodes at the host's time.
class CarRig {
 public:
  explicit CarRig(Instance& rig)
      : m_rig(rig),
        m_adaptor(*rig.GetHost().GetAdaptor()),
        m_time(m_adaptor.GetCurrentTime()),
        m_radiusMultiplier(
            rig.GetConfig().FindAll("Wheel Radius Multiplier").front()->GetNumber()) {}

  Problem Place(const CarFrame& frame, const FourWheels& wheels);
  /// Hiding the rig's nodes would hide what hangs on them, so they lose their meshes.
  void TakeDisplayAway();
  Problem Carry(const CarModel& model, CarFit& fit);

 private:
  /// Null when the user has removed it; the body and the wheels are always there.
  CoreNode* Find(const std::string& name) { return static_cast<CoreNode*>(m_rig.FindNode(name)); }
  Matrix PoseOf(CoreNode& node) { return WorldPose(node, m_time); }

  Problem CheckPlaced(const std::string& name, const Matrix& wanted, double length);
  Problem PlaceBody(const CarFrame& frame);
  void PlaceGroundHelpers(const CarFrame& frame);
  Problem PlaceWheel(const CarFrame& frame, const WheelMeasure& wheel, std::size_t index);
  void LoseMesh(const std::string& name);
  bool Hang(CoreNode& child, CoreNode& parent);
  Problem CarryWheel(CoreNode& wheel, CoreNode& wheelMesh, CoreNode*& hub);

  Instance& m_rig;
  rws::AdaptorInterface& m_adaptor;
  double m_time;  ///< s
  double m_radiusMultiplier;
};

Problem CarRig::Place(const CarFrame& frame, const FourWheels& wheels) {
  if (Problem problem = PlaceBody(frame)) return problem;
  PlaceGroundHelpers(frame);
  for (std::size_t i = 0; i < 4; ++i)
    if (Problem problem = PlaceWheel(frame, wheels[i], i)) return problem;
  // The rig itself stands its wheels at their relocators, unless it remembers a take.
  m_rig.Update(m_time);
  for (std::size_t i = 0; i < 4; ++i) {
    const double radius = wheels[i].radius;
    const Matrix wanted = frame.At(wheels[i].centre, {wheels[i].width, radius, radius});
    if (Problem problem = CheckPlaced(std::string("WheelMesh") + kSuffixes[i], wanted, radius))
      return problem;
  }
  return {};
}

Problem CarRig::CheckPlaced(const std::string& name, const Matrix& wanted, double length) {
  CoreNode& placed = *Find(name);
  if (LargestDifference(wanted, PoseOf(placed), length) <= kKept) return {};
  return {placed.GetSceneName(),
          "it can't be placed on the model",
          "fit a rig that was just added",
          {}};
}

/// The body with all that hangs on it; nodes of the rig in the world come along.
Problem CarRig::PlaceBody(const CarFrame& frame) {
  CoreNode& body = *Find("CarBodyMesh");
  const double scale = frame.wheelbase;
  const Matrix wanted = frame.At(frame.origin, {scale, scale, scale});
  const Matrix change = wanted * PoseOf(body).affineInverse();
  for (CoreNode* own : m_rig.GetNodes()) {
    // What the animator has hung on his own nodes, such as the gravity on the ground, stays.
    if (!own->IsSame(&body) && !ParentOf(*own)) SetWorldPose(*own, m_time, change * PoseOf(*own));
  }
  SetWorldPose(body, m_time, wanted);
  return CheckPlaced("CarBodyMesh", wanted, scale);
}

/// What shows the base stands on the ground, which is as far below the body as the wheels say.
void CarRig::PlaceGroundHelpers(const CarFrame& frame) {
  for (const char* name : {"TurnBaseMesh", "CarBodyBaseMesh", "GravityDirectionMesh"}) {
    CoreNode* const own = Find(name);
    if (!own) continue;
    const NodeHandle parent = ParentOf(*own);
    if (!parent || !parent->IsSame(Find("CarBodyMesh"))) continue;
    Matrix pose = PoseOf(*own);
    const double height = (pose.translation() - frame.origin).dot(frame.up) + frame.restHeight;
    pose.setTranslation(pose.translation() - frame.up * height);
    SetWorldPose(*own, m_time, pose);
  }
}

Problem CarRig::PlaceWheel(const CarFrame& frame, const WheelMeasure& wheel, std::size_t index) {
  const double radius = wheel.radius / m_radiusMultiplier;
  const Vector scale(wheel.width / rws::addon::car::kWheelWidth, radius, radius);
  const std::string name = std::string("WheelRelocatorMesh") + kSuffixes[index];
  const Matrix wanted = frame.At(wheel.centre, scale);
  SetWorldPose(*Find(name), m_time, wanted);
  return CheckPlaced(name, wanted, radius);
}

void CarRig::LoseMesh(const std::string& name) {
  if (CoreNode* const found = Find(name)) m_adaptor.TakeMeshAway(found);
}

void CarRig::TakeDisplayAway() {
  for (const char* name : {"CarBodyMesh", "SteeringWheelMesh"}) LoseMesh(name);
  for (const char* suffix : kSuffixes) LoseMesh(std::string("WheelMesh") + suffix);
}

/// Puts `child` under `parent`. False, with nothing done, when its world pose would not stay.
bool CarRig::Hang(CoreNode& child, CoreNode& parent) {
  if (IsSheared(PoseOf(parent).affineInverse() * PoseOf(child))) return false;
  return child.SetParent(&parent);
}

/// A rig's wheel is as wide and high as the wheel, and such a scale shears what hangs on it turned.
/// A hub that undoes the scale comes between then.
Problem CarRig::CarryWheel(CoreNode& wheel, CoreNode& wheelMesh, CoreNode*& hub) {
  if (Hang(wheel, wheelMesh)) return {};
  hub = m_adaptor.CreateHub(wheel.GetSceneName() + "_Hub", &wheelMesh);
  if (hub && Hang(wheel, *hub)) return {};
  return {wheel.GetSceneName(),
          "its world pose can't be kept under " + wheelMesh.GetSceneName(),
          "freeze its scale in the program that the model is from",
          {}};
}

Problem CarRig::Carry(const CarModel& model, CarFit& fit) {
  for (std::size_t i = 0; i < 4; ++i) {
    CoreNode& mesh = *Find(std::string("WheelMesh") + kSuffixes[i]);
    if (Problem problem = CarryWheel(*model.wheels[i], mesh, fit.hubs[i])) return problem;
  }
  if (Hang(*model.body, *Find("CarBodyMesh"))) return {};
  return {model.body->GetSceneName(),
          "its world pose can't be kept under the rig's body",
          "freeze its scale in the program that the model is from",
          {}};
}

/// Measures, and leaves the scene alone.
Problem Check(Instance& rig, const CarModel& model, CarFit& result) {
  if (Problem problem = CheckFittedRig(rig)) return problem;
  const double time = rig.GetHost().GetAdaptor()->GetCurrentTime();
  for (CoreNode* node : AllOf(model))
    if (Problem problem = CheckNode(*node, rig, time)) return problem;
  if (Problem problem = Measure(model, time, result)) return problem;
  for (Problem& odd : OddCar(result.frame, *model.body)) result.odd.push_back(std::move(odd));
  return {};
}

Problem Fit(Instance& rig, const CarModel& model, CarFit& result) {
  CarRig car(rig);
  if (Problem problem = car.Place(result.frame, result.wheels)) return problem;
  if (Problem problem = car.Carry(model, result)) return problem;
  car.TakeDisplayAway();
  return {};
}

}  // namespace

Problem CheckFittedRig(Instance& rig) {
  const std::string name = rig.GetInstanceName();
  const std::string kind = rig.GetTool()->GetDisplayId();
  if (kind != kFittedKind)
    return {name,
            "it is a " + kind + "; only a " + std::string(kFittedKind) + " can be fitted",
            {},
            {Remedy::Kind::kAddRig, kFittedKind, 1.0}};
  if (rig.GetHost().IsRecording()) return {name, "a take runs", "fit it afterwards", {}};
  for (CoreNode* node : rig.GetNodes())
    if (node->HasKeys())
      return {name,
              "it has the keys of a take, which another size would not fit",
              "remove the rig, add it anew and fit that, then resimulate",
              {}};
  return {};
}

CarFit FitCar(Instance& rig, const CarModel& model) {
  CarFit result;
  result.problem = Check(rig, model, result);
  if (result.problem) return result;
  UndoBlock block(*rig.GetHost().GetAdaptor(), "Fit #" + rig.GetInstanceName());
  result.problem = Fit(rig, model, result);
  if (result.problem)
    result.hubs = {};
  else
    block.Keep();
  return result;
}

}  // namespace orv::app
