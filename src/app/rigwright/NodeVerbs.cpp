// parent, place.
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/GroundText.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::Channel;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::SceneNode;
using rws::adaptor::headless::Trs;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

struct NodeOptions {
  std::string scene, node, parent, at, output;
  std::optional<Vector> translate, rotate, scale;
  std::optional<double> time;
};

// --- parent ---

void runParent(Program& program, const NodeOptions& options) {
  SceneJob job(program, options.scene);
  SceneNode& child = job.node(options.node);
  const bool toWorld = options.parent == "/";
  SceneNode* parent = toWorld ? nullptr : &job.node(options.parent);
  const std::string what = options.node + " under " + options.parent;
  if (parent && parent->isUnder(child)) {
    throw Failure(what,
                  parent == &child ? "a node can't be its own parent"
                                   : options.parent + " is below " + options.node,
                  "move " + options.parent + " elsewhere first");
  }
  const GroundWatch grounds(job);
  auto& adaptor = job.adaptor();
  auto* moved = adaptor.FindSceneNode(child.name());
  adaptor.BeginUndoBlock("Parent");
  const bool done =
      moved && moved->SetParent(parent ? adaptor.FindSceneNode(parent->name()) : nullptr);
  adaptor.EndUndoBlock();
  if (!done) {
    throw Failure(what, "the world pose can't be kept there", "a parent may not have a scale of 0");
  }
  job.save(options.output);
  program.output().object()["node"] = child.name();
  program.output().object()["parent"] = toWorld ? "/" : parent->name();
  program.output().note(child.name() + " is under " + (toWorld ? "the world" : parent->name()));
  grounds.tellChanges(child.name());
}

// --- place ---

constexpr double kRadians = 0.017453292519943295;

/// About X first, then about Y, then about Z, each about the parent's own axis.
Quat fromDegrees(const Vector& degrees) {
  const Vector half = degrees * (kRadians / 2.0);
  const Quat x{std::sin(half.x), 0.0, 0.0, std::cos(half.x)};
  const Quat y{0.0, std::sin(half.y), 0.0, std::cos(half.y)};
  const Quat z{0.0, 0.0, std::sin(half.z), std::cos(half.z)};
  return (x * y * z).normalized();  // of two quaternions the first acts first
}

/// Sets one property: its static value, or where it has keys a key at `time`.
void placeProperty(SceneJob& job, SceneNode& node, ChannelPath path, const Trs& wanted,
                   double time) {
  const char* name = path == ChannelPath::kTranslation ? "translation"
                     : path == ChannelPath::kRotation  ? "rotation"
                                                       : "scale";
  const Channel* keyed = node.channel(path);
  if (!keyed) {
    Trs pose = node.pose();
    if (path == ChannelPath::kTranslation) pose.translation = wanted.translation;
    if (path == ChannelPath::kRotation) pose.rotation = wanted.rotation;
    if (path == ChannelPath::kScale) pose.scale = wanted.scale;
    node.setPose(pose);
    return;
  }
  Channel changed = *keyed;
  const Quat& q = wanted.rotation;
  const double rotation[] = {q.x, q.y, q.z, q.w};
  const Vector& v = path == ChannelPath::kTranslation ? wanted.translation : wanted.scale;
  const double vector[] = {v.x, v.y, v.z};
  const bool set = changed.setKey(time, path == ChannelPath::kRotation ? rotation : vector,
                                  job.scene().frameDuration());
  if (!set) throw Failure(node.name(), "the key could not be set", "its animation is too long");
  node.setChannel(std::move(changed));
  job.program().output().warn(node.name() + " has " + name + " keys: the pose became a key at " +
                              util::shortText(time) + " s, its other keys stay");
}

/// The local pose by which `node` stands where `other` is at `time` (s).
Trs poseOver(const SceneNode& node, const SceneNode& other, double time) {
  util::Matrix<double> local = other.worldMatrix(time);
  if (node.parent()) local = node.parent()->worldMatrix(time).affineInverse() * local;
  return rws::adaptor::headless::decompose(local);
}

void runPlace(Program& program, const NodeOptions& options) {
  SceneJob job(program, options.scene);
  SceneNode& node = job.node(options.node);
  const double time = options.time.value_or(job.scene().rangeStart());
  Trs wanted;
  wanted.translation = options.translate.value_or(wanted.translation);
  wanted.scale = options.scale.value_or(wanted.scale);
  if (options.rotate) wanted.rotation = fromDegrees(*options.rotate);
  const bool at = !options.at.empty();
  if (at) wanted = poseOver(node, job.node(options.at), time);
  if (at || options.translate) placeProperty(job, node, ChannelPath::kTranslation, wanted, time);
  if (at || options.rotate) placeProperty(job, node, ChannelPath::kRotation, wanted, time);
  if (options.scale) placeProperty(job, node, ChannelPath::kScale, wanted, time);
  job.save(options.output);
  program.output().object()["node"] = node.name();
  program.output().note("placed " + node.name());
}

}  // namespace

void addNodeVerbs(Program& program) {
  auto o = std::make_shared<NodeOptions>();
  CLI::App& parent =
      program.addVerb("parent", "Put a node under another one, keeping its world pose",
                      "rigwright parent cam.glb Cam_AttachedCam Carrier -o cam.glb",
                      [o](Program& p) { runParent(p, *o); });
  addScene(parent, o->scene);
  parent.add_option("CHILD", o->node, "Node to move")->required()->type_name("");
  parent.add_option("PARENT", o->parent, "Its new parent; / is the world")
      ->required()
      ->type_name("");
  addSceneOutput(parent, o->output);

  auto q = std::make_shared<NodeOptions>();
  CLI::App& place = program.addVerb(
      "place",
      "Set the pose of a node relative to its parent; what is not given stays\n"
      "Rotations are in degrees: about X first, then Y, then Z, each about the parent's axis.\n"
      "A property that has keys gets a key at --time instead.",
      "rigwright place cam.glb Cam_AttachedCam --translate 0,1.6,4 --rotate -10,0,0 -o cam.glb",
      [q](Program& p) { runPlace(p, *q); });
  addScene(place, q->scene);
  place.add_option("NODE", q->node, "Node to place")->required()->type_name("");
  CLI::Option* translate = addVector(place, "--translate", q->translate, "Position (m)");
  CLI::Option* rotate = addVector(place, "--rotate", q->rotate, "Rotation (degrees, XYZ order)");
  CLI::Option* scale = addVector(place, "--scale", q->scale, "Scale (factors)");
  CLI::Option* at = place.add_option("--at", q->at,
                                     "Stand where this node is, turned as it is (keeps its scale)");
  at->type_name("NODE")
      ->check(checkNotEmpty)
      ->excludes(translate)
      ->excludes(rotate)
      ->excludes(scale);
  addNumber(
      place, "--time", q->time,
      "Time of the key where a property has keys, and of --at (s; default: start of the range)",
      mustBeTime);
  addSceneOutput(place, q->output);
  place.callback([translate, rotate, scale, at] {
    if (translate->count() + rotate->count() + scale->count() + at->count() == 0)
      throw CLI::RequiredError("--translate, --rotate, --scale or --at");
  });
}

}  // namespace orv::app
