// fit: a four-wheeler takes the size and place of a user's car, and carries it from then on.
#include <array>
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/ModelChecks.h"
#include "core/ConfigElement.h"
#include "core/Instance.h"
#include "core/Tool.h"
#include "plugins/release/4wheelerextended/CarFrame.h"
#include "plugins/release/4wheelerextended/CarSettings.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using Json = nlohmann::ordered_json;
using rws::adaptor::headless::compose;
using rws::adaptor::headless::decompose;
using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using rws::adaptor::headless::Trs;
using rws::addon::CarFrame;
using rws::addon::FourWheels;
using rws::addon::WheelMeasure;
using rws::core::Instance;

constexpr const char* kKind = "4WheelerExt";
constexpr const char* kSuffixes[] = {"_FL", "_FR", "_BL", "_BR"};
/// Part of its size by which a pose that is kept may differ.
constexpr double kKept = 1e-6;
/// Lean of a wheel's axis against the car's (degrees): it wobbles as it spins, and beyond the
/// second it was not modelled straight.
constexpr double kWobble = 0.1;
constexpr double kMostLean = 5.0;
constexpr double kDegrees = 57.29577951308232;

struct FitOptions {
  std::string scene, rig, body, wheels, output;
};

/// What the user has named, and what it measures.
struct Model {
  SceneNode* body = nullptr;
  std::array<SceneNode*, 4> wheels{};
  std::array<SceneNode*, 4> hubs{};  ///< between a wheel and the rig's; null where none is needed
  FourWheels sizes;
  CarFrame frame;

  std::array<SceneNode*, 5> all() const {
    return {body, wheels[0], wheels[1], wheels[2], wheels[3]};
  }
};

/// "FL,FR,BL,BR" cut at its commas.
std::vector<std::string> fourNames(const std::string& text) {
  std::vector<std::string> names(1);
  for (const char c : text) {
    if (c == ',')
      names.emplace_back();
    else
      names.back() += c;
  }
  return names;
}

std::string checkWheels(const std::string& text) {
  const std::vector<std::string> names = fourNames(text);
  bool good = names.size() == 4;
  for (const std::string& name : names) good = good && !name.empty();
  return good ? std::string() : "\"" + text + "\" is not four names as FL,FR,BL,BR";
}

// --- what can be fitted ---

double largestDifference(const Matrix& a, const Matrix& b, double length) {
  double most = (a.translation() - b.translation()).length() / length;
  for (int i = 0; i < 3; ++i)
    most = std::max(most, (a.axisRow(i) - b.axisRow(i)).length() / a.axisRow(i).length());
  return most;
}

void checkNode(const SceneNode& node, Instance& rig, double time) {
  const std::string& name = node.name();
  if (!node.tag().empty())
    throw Failure(name, "it is a node of a rig", "name a node of your own model");
  for (rws::core::CoreNode* core : rig.GetNodes()) {
    const SceneNode* own = static_cast<HeadlessNode*>(core)->GetSceneNode();
    const std::string kind = rig.GetInstanceName();
    if (node.isUnder(*own))
      throw Failure(name, "it hangs on " + own->name() + ", a node of " + kind,
                    "put it under the world first: rigwright parent SCENE " + name + " / -o OUT");
    if (own->isUnder(node))
      throw Failure(
          name, "it carries " + own->name() + ", a node of " + kind,
          "put that under the world first: rigwright parent SCENE " + own->name() + " / -o OUT");
  }
  if (node.hasKeys())
    throw Failure(name, "it has keys of its own, which would move it away from the rig",
                  "remove its animation first");
  const Matrix world = node.worldMatrix(time);
  const double volume = world.axisRow(0).cross(world.axisRow(1)).dot(world.axisRow(2));
  if (volume < 0.0)
    throw Failure(name, "its scale is mirrored (a negative factor)",
                  "freeze its scale, or that of the node above it, in the program that it is from");
  if (!std::isnormal(volume))
    throw Failure(name, "it has a scale of 0", "give it a scale that keeps its mesh");
  if (largestDifference(world, compose(decompose(world)), 1.0) > kKept)
    throw Failure(name, "it is sheared by an uneven scale of a node above it, which no pose holds",
                  "freeze that scale in the program that the model is from");
}

/// World corners of the triangles of a node and of all below it, without the other nodes of the
/// model: wheels often hang on the body.
void addCorners(const SceneNode& node, const Model& model, double time, std::vector<Vector>& out) {
  if (const util::CMesh* mesh = node.mesh()) {
    const Matrix world = node.worldMatrix(time);
    std::vector<bool> used(mesh->vertices.size());
    for (const std::int32_t corner : mesh->faces) used[static_cast<std::size_t>(corner)] = true;
    for (std::size_t i = 0; i < used.size(); ++i)
      if (used[i]) out.push_back(world.transformPoint(mesh->vertices[i]));
  }
  for (const auto& child : node.children()) {
    bool named = false;
    for (const SceneNode* other : model.all()) named = named || other == child.get();
    if (!named) addCorners(*child, model, time, out);
  }
}

std::vector<Vector> cornersOf(const SceneNode& node, const Model& model, double time) {
  std::vector<Vector> corners;
  addCorners(node, model, time, corners);
  if (corners.empty())
    throw Failure(node.name(), "neither it nor a node below it has a mesh",
                  "name the node that holds the mesh");
  return corners;
}

double leanOf(const WheelMeasure& wheel, const CarFrame& frame) {
  return std::atan2(wheel.axis.cross(frame.right).length(), std::abs(wheel.axis.dot(frame.right))) *
         kDegrees;
}

void measure(Program& program, Model& model, double time) {
  cornersOf(*model.body, model, time);
  for (std::size_t i = 0; i < 4; ++i) {
    const std::string wrong =
        measureWheel(cornersOf(*model.wheels[i], model, time), model.sizes[i]);
    if (!wrong.empty()) throw Failure(model.wheels[i]->name(), wrong);
  }
  const std::string wrong = findCarFrame(model.sizes, model.frame);
  if (!wrong.empty()) throw Failure("--wheels", wrong);
  for (std::size_t i = 0; i < 4; ++i) {
    const std::string& name = model.wheels[i]->name();
    const double lean = leanOf(model.sizes[i], model.frame);
    const std::string told = "its axis leans " + util::shortText(std::round(lean * 100.0) / 100.0) +
                             " degrees against the car's";
    if (lean > kMostLean)
      throw Failure(name, told, "turn the wheel straight first; the rig steers it");
    if (lean > kWobble) program.output().warn(name + ": " + told + ", so it wobbles as it spins");
  }
}

// --- fitting ---

/// The rig's nodes at the start of the scene.
class CarRig {
 public:
  CarRig(SceneJob& job, Instance& rig)
      : m_rig(rig),
        m_time(job.adaptor().GetCurrentTime()),
        m_radiusMultiplier(job.element(rig, "Wheel Radius Multiplier", false).number()) {}

  void place(const CarFrame& frame, const FourWheels& wheels) {
    placeBody(frame);
    placeGroundHelpers(frame);
    for (std::size_t i = 0; i < 4; ++i) placeWheel(frame, wheels[i], i);
    // The rig itself stands its wheels at their relocators, unless it remembers a take.
    m_rig.Update(m_time);
    for (std::size_t i = 0; i < 4; ++i) {
      const double radius = wheels[i].radius;
      const Matrix wanted = frame.at(wheels[i].centre, {wheels[i].width, radius, radius});
      checkPlaced("WheelMesh" + std::string(kSuffixes[i]), wanted, radius);
    }
  }

  /// The rig's own car would be seen through the model. Hiding its nodes would hide what hangs on
  /// them, so they lose their meshes.
  void takeDisplayAway() {
    for (const char* name : {"CarBodyMesh", "SteeringWheelMesh"}) loseMesh(name);
    for (const char* suffix : kSuffixes) loseMesh(std::string("WheelMesh") + suffix);
  }

  SceneNode& node(const std::string& name) { return *find(name)->GetSceneNode(); }

 private:
  /// Null when the user has removed it; the body and the wheels are always there.
  HeadlessNode* find(const std::string& name) {
    return dynamic_cast<HeadlessNode*>(m_rig.FindNode(name));
  }

  void loseMesh(const std::string& name) {
    if (HeadlessNode* found = find(name)) found->GetSceneNode()->setMesh(nullptr);
  }

  void checkPlaced(const std::string& name, const Matrix& wanted, double length) {
    HeadlessNode& placed = *find(name);
    if (largestDifference(wanted, placed.GetWorldPose(m_time), length) <= kKept) return;
    throw Failure(placed.GetSceneName(), "it can't be placed on the model",
                  "fit a rig that was just added");
  }

  /// The body with all that hangs on it; nodes of the rig in the world come along.
  void placeBody(const CarFrame& frame) {
    HeadlessNode& body = *find("CarBodyMesh");
    const double scale = frame.wheelbase;
    const Matrix wanted = frame.at(frame.origin, {scale, scale, scale});
    const Matrix change = wanted * body.GetWorldPose(m_time).affineInverse();
    for (rws::core::CoreNode* core : m_rig.GetNodes()) {
      auto* own = static_cast<HeadlessNode*>(core);
      // What the animator has hung on his own nodes, such as the gravity on the ground, stays.
      if (own != &body && !own->GetSceneNode()->parent())
        own->SetWorldPose(m_time, change * own->GetWorldPose(m_time), false);
    }
    body.SetWorldPose(m_time, wanted, false);
    checkPlaced("CarBodyMesh", wanted, scale);
  }

  /// What shows the base stands on the ground, which is as far below the body as the wheels say.
  void placeGroundHelpers(const CarFrame& frame) {
    for (const char* name : {"TurnBaseMesh", "CarBodyBaseMesh", "GravityDirectionMesh"}) {
      HeadlessNode* own = find(name);
      if (!own || own->GetSceneNode()->parent() != &node("CarBodyMesh")) continue;
      Matrix pose = own->GetWorldPose(m_time);
      const double height = (pose.translation() - frame.origin).dot(frame.up) + frame.restHeight;
      pose.setTranslation(pose.translation() - frame.up * height);
      own->SetWorldPose(m_time, pose, false);
    }
  }

  void placeWheel(const CarFrame& frame, const WheelMeasure& wheel, std::size_t index) {
    const double radius = wheel.radius / m_radiusMultiplier;
    const Vector scale(wheel.width / rws::addon::car::kWheelWidth, radius, radius);
    const std::string name = std::string("WheelRelocatorMesh") + kSuffixes[index];
    const Matrix wanted = frame.at(wheel.centre, scale);
    find(name)->SetWorldPose(m_time, wanted, false);
    checkPlaced(name, wanted, radius);
  }

  Instance& m_rig;
  double m_time;
  double m_radiusMultiplier;
};

/// Puts `child` under `parent`. False, with nothing done, when its world pose would not stay.
bool carry(SceneJob& job, SceneNode& child, SceneNode& parent) {
  const double time = job.adaptor().GetCurrentTime();
  const Matrix local = parent.worldMatrix(time).affineInverse() * child.worldMatrix(time);
  if (largestDifference(local, compose(decompose(local)), 1.0) > kKept) return false;
  return job.scene().reparent(child, &parent, time);
}

/// A rig's wheel is as wide and high as the wheel, and such a scale shears what hangs on it turned.
/// A hub that undoes the scale comes between then.
void carryWheel(SceneJob& job, Model& model, std::size_t index, SceneNode& wheelMesh) {
  SceneNode& wheel = *model.wheels[index];
  if (carry(job, wheel, wheelMesh)) return;
  SceneNode& hub = job.scene().addNode(wheel.name() + "_Hub", &wheelMesh);
  hub.setHub(true);
  const Vector scale = wheelMesh.worldMatrix(job.adaptor().GetCurrentTime()).rowLengths();
  hub.setPose({{}, {}, {1.0 / scale.x, 1.0 / scale.y, 1.0 / scale.z}});
  model.hubs[index] = &hub;
  if (!carry(job, wheel, hub))
    throw Failure(wheel.name(), "its world pose can't be kept under " + wheelMesh.name(),
                  "freeze its scale in the program that the model is from");
}

void carryModel(SceneJob& job, Model& model, CarRig& car) {
  for (std::size_t i = 0; i < 4; ++i)
    carryWheel(job, model, i, car.node(std::string("WheelMesh") + kSuffixes[i]));
  if (!carry(job, *model.body, car.node("CarBodyMesh")))
    throw Failure(model.body->name(), "its world pose can't be kept under the rig's body",
                  "freeze its scale in the program that the model is from");
}

// --- telling ---

Json toJson(const Vector& v) {
  return {v.x, v.y, v.z};
}

void tell(Program& program, Instance& rig, const Model& model) {
  const CarFrame& frame = model.frame;
  Json& object = program.output().object();
  object["rig"] = rig.GetInstanceName();
  object["body"] = model.body->name();
  object["wheelbase"] = frame.wheelbase;
  object["track"] = {{"front", frame.frontTrack}, {"back", frame.backTrack}};
  object["origin"] = toJson(frame.origin);
  object["restHeight"] = frame.restHeight;
  object["axes"] = {
      {"right", toJson(frame.right)}, {"up", toJson(frame.up)}, {"back", toJson(frame.back)}};
  const auto number = [](double value) {
    return util::shortText(std::round(value * 1e5) / 1e5 + 0.0);  // no -0
  };
  Table table;
  table.add({"wheel", "node", "centre (m)", "radius (m)", "width (m)"});
  for (std::size_t i = 0; i < 4; ++i) {
    const WheelMeasure& wheel = model.sizes[i];
    object["wheels"].push_back({{"wheel", kSuffixes[i] + 1},
                                {"node", model.wheels[i]->name()},
                                {"centre", toJson(wheel.centre)},
                                {"radius", wheel.radius},
                                {"width", wheel.width},
                                {"unevenness", wheel.unevenness},
                                {"lean", leanOf(wheel, frame)},
                                {"hub", model.hubs[i] ? Json(model.hubs[i]->name()) : Json()}});
    const Vector& c = wheel.centre;
    table.add({kSuffixes[i] + 1, model.wheels[i]->name(),
               number(c.x) + "," + number(c.y) + "," + number(c.z), number(wheel.radius),
               number(wheel.width)});
  }
  Output& out = program.output();
  for (const std::string& line : table.lines()) out.line(line);
  out.line("wheelbase " + number(frame.wheelbase) + " m, track " + number(frame.frontTrack) +
           " m in front, " + number(frame.backTrack) + " m in the back");
  const Vector ahead = -frame.back;
  out.line("heads for " + number(ahead.x) + "," + number(ahead.y) + "," + number(ahead.z) +
           "; the body's origin is " + number(frame.restHeight) + " m above the ground");
  out.note(rig.GetInstanceName() + " carries " + model.body->name() + " and its wheels");
}

// --- the verb ---

void checkRig(Instance& rig) {
  const std::string name = rig.GetInstanceName();
  const std::string kind = rig.GetTool()->GetDisplayId();
  if (kind != kKind)
    throw Failure(name, "it is a " + kind + "; only a " + std::string(kKind) + " can be fitted",
                  "rigwright add SCENE " + std::string(kKind) + " -o OUT");
  for (rws::core::CoreNode* core : rig.GetNodes())
    if (static_cast<HeadlessNode*>(core)->GetSceneNode()->hasKeys())
      throw Failure(name, "it has the keys of a take, which another size would not fit",
                    "remove the rig, add it anew and fit that, then resimulate");
}

void runFit(Program& program, const FitOptions& options) {
  std::vector<std::string> names = fourNames(options.wheels);
  names.push_back(options.body);
  for (std::size_t i = 0; i < names.size(); ++i)
    for (std::size_t k = i + 1; k < names.size(); ++k)
      if (names[i] == names[k]) throw WrongUsage("\"" + names[i] + "\" is named twice");

  SceneJob job(program, options.scene);
  Instance& rig = job.rig(options.rig);
  checkRig(rig);
  Model model;
  model.body = &job.node(options.body);
  for (std::size_t i = 0; i < 4; ++i) model.wheels[i] = &job.node(names[i]);
  const double time = job.adaptor().GetCurrentTime();
  for (SceneNode* node : model.all()) checkNode(*node, rig, time);
  measure(program, model, time);
  for (const std::string& odd : oddCar(model.frame, *model.body))
    program.output().warn(model.body->name() + ": " + odd);

  CarRig car(job, rig);
  car.place(model.frame, model.sizes);
  carryModel(job, model, car);
  car.takeDisplayAway();
  job.save(options.output);
  tell(program, rig, model);
}

}  // namespace

void addFitVerb(Program& program) {
  auto o = std::make_shared<FitOptions>();
  CLI::App& verb = program.addVerb(
      "fit",
      "Fit a four-wheeler to your own car; prints what it measured\n"
      "Reads centre, radius and width of each wheel from the meshes at the start of the playback\n"
      "range, scales and places the rig, and puts your nodes under the rig's, where they stay in\n"
      "their place. Apply a profile first: it decides how much of a wheel the ground feels.",
      "rigwright fit yard.glb Car --body Body --wheels WheelFL,WheelFR,WheelBL,WheelBR "
      "-o fitted.glb",
      [o](Program& p) { runFit(p, *o); });
  addScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig, a 4WheelerExt without a take")
      ->required()
      ->type_name("");
  verb.add_option("--body", o->body, "Node of your car's body")
      ->required()
      ->type_name("NODE")
      ->check(checkNotEmpty);
  verb.add_option("--wheels", o->wheels, "Nodes of its wheels, as its driver sees them")
      ->required()
      ->type_name("FL,FR,BL,BR")
      ->check(checkWheels);
  addSceneOutput(verb, o->output);
}

}  // namespace orv::app
