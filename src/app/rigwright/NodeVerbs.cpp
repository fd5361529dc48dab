// parent, place.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/GroundJson.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/NodePlacing.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::GroundReport;
using rws::adaptor::headless::HeadlessNode;
using rws::adaptor::headless::SceneNode;
using rws::core::Instance;
using Vector = util::Vector3<double>;

struct NodeOptions {
  std::string scene, node, parent, at, output;
  std::optional<Vector> translate, rotate, scale;
  std::optional<double> time;
};

// --- parent ---

/// What rigs meet now that met something else before.
void tellGrounds(Output& out, const std::vector<std::pair<Instance*, GroundReport>>& changes) {
  nlohmann::ordered_json& told = out.object()["grounds"] = nlohmann::ordered_json::array();
  for (const auto& [rig, ground] : changes) {
    out.note(rig->GetInstanceName() + ": " + groundText(ground));
    told.push_back(groundJson(ground));
    told.back()["rig"] = rig->GetInstanceName();
  }
}

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
  const GroundWatch grounds(job.core());
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
  tellGrounds(program.output(), grounds.changes(child.name()));
}

// --- place ---

void runPlace(Program& program, const NodeOptions& options) {
  SceneJob job(program, options.scene);
  HeadlessNode& node = job.hostNode(options.node);
  const double time = options.time.value_or(job.scene().rangeStart());
  PlacedPose wanted{options.translate, {}, options.scale};
  if (options.rotate) wanted.rotation = rotationFromDegrees(*options.rotate);
  if (!options.at.empty()) wanted = poseOver(node, job.hostNode(options.at), time);
  const PlacingResult placed = placeNode(node, wanted, time);
  for (const std::string& name : placed.keyed)
    program.output().warn(options.node + " has " + name + " keys: the pose became a key at " +
                          util::shortText(time) + " s, its other keys stay");
  if (!placed.error.empty()) throw Failure(options.node, placed.error, "its animation is too long");
  job.save(options.output);
  program.output().object()["node"] = options.node;
  program.output().note("placed " + options.node);
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
