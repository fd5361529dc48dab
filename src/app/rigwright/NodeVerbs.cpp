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
void TellGrounds(Output& out, const std::vector<std::pair<Instance*, GroundReport>>& changes) {
  nlohmann::ordered_json& told = out.GetObject()["grounds"] = nlohmann::ordered_json::array();
  for (const auto& [rig, ground] : changes) {
    out.Note(rig->GetInstanceName() + ": " + GroundText(ground));
    told.push_back(GroundJson(ground));
    told.back()["rig"] = rig->GetInstanceName();
  }
}

void RunParent(Program& program, const NodeOptions& options) {
  SceneJob job(program, options.scene);
  SceneNode& child = job.FindNode(options.node);
  const bool toWorld = options.parent == "/";
  SceneNode* parent = toWorld ? nullptr : &job.FindNode(options.parent);
  const std::string what = options.node + " under " + options.parent;
  if (parent && parent->IsUnder(child)) {
    throw Failure(what,
                  parent == &child ? "a node can't be its own parent"
                                   : options.parent + " is below " + options.node,
                  "move " + options.parent + " elsewhere first");
  }
  const GroundWatch grounds(job.GetCore());
  auto& adaptor = job.GetAdaptor();
  auto* moved = adaptor.FindSceneNode(child.GetName());
  adaptor.BeginUndoBlock("Parent");
  const bool done =
      moved && moved->SetParent(parent ? adaptor.FindSceneNode(parent->GetName()) : nullptr);
  adaptor.EndUndoBlock();
  if (!done) {
    throw Failure(what, "the world pose can't be kept there", "a parent may not have a scale of 0");
  }
  job.Save(options.output);
  program.GetOutput().GetObject()["node"] = child.GetName();
  program.GetOutput().GetObject()["parent"] = toWorld ? "/" : parent->GetName();
  program.GetOutput().Note(child.GetName() + " is under " +
                           (toWorld ? "the world" : parent->GetName()));
  TellGrounds(program.GetOutput(), grounds.Changes(child.GetName()));
}

// --- place ---

void RunPlace(Program& program, const NodeOptions& options) {
  SceneJob job(program, options.scene);
  HeadlessNode& node = job.FindHostNode(options.node);
  const double time = options.time.value_or(job.GetScene().GetRangeStart());
  PlacedPose wanted{options.translate, {}, options.scale};
  if (options.rotate) wanted.rotation = RotationFromDegrees(*options.rotate);
  if (!options.at.empty()) wanted = PoseOver(node, job.FindHostNode(options.at), time);
  const PlacingResult placed = PlaceNode(node, wanted, time);
  for (const std::string& name : placed.keyed)
    program.GetOutput().Warn(options.node + " has " + name + " keys: the pose became a key at " +
                             util::shortText(time) + " s, its other keys stay");
  if (!placed.error.empty()) throw Failure(options.node, placed.error, "its animation is too long");
  job.Save(options.output);
  program.GetOutput().GetObject()["node"] = options.node;
  program.GetOutput().Note("placed " + options.node);
}

}  // namespace

void AddNodeVerbs(Program& program) {
  auto o = std::make_shared<NodeOptions>();
  CLI::App& parent =
      program.AddVerb("parent", "Put a node under another one, keeping its world pose",
                      "rigwright parent cam.glb Cam_AttachedCam Carrier -o cam.glb",
                      [o](Program& p) { RunParent(p, *o); });
  AddScene(parent, o->scene);
  parent.add_option("CHILD", o->node, "Node to move")->required()->type_name("");
  parent.add_option("PARENT", o->parent, "Its new parent; / is the world")
      ->required()
      ->type_name("");
  AddSceneOutput(parent, o->output);

  auto q = std::make_shared<NodeOptions>();
  CLI::App& place = program.AddVerb(
      "place",
      "Set the pose of a node relative to its parent; what is not given stays\n"
      "Rotations are in degrees: about X first, then Y, then Z, each about the parent's axis.\n"
      "A property that has keys gets a key at --time instead.",
      "rigwright place cam.glb Cam_AttachedCam --translate 0,1.6,4 --rotate -10,0,0 -o cam.glb",
      [q](Program& p) { RunPlace(p, *q); });
  AddScene(place, q->scene);
  place.add_option("NODE", q->node, "Node to place")->required()->type_name("");
  CLI::Option* translate = AddVector(place, "--translate", q->translate, "Position (m)");
  CLI::Option* rotate = AddVector(place, "--rotate", q->rotate, "Rotation (degrees, XYZ order)");
  CLI::Option* scale = AddVector(place, "--scale", q->scale, "Scale (factors)");
  CLI::Option* at = place.add_option("--at", q->at,
                                     "Stand where this node is, turned as it is (keeps its scale)");
  at->type_name("NODE")
      ->check(CheckNotEmpty)
      ->excludes(translate)
      ->excludes(rotate)
      ->excludes(scale);
  AddNumber(
      place, "--time", q->time,
      "Time of the key where a property has keys, and of --at (s; default: start of the range)",
      MustBeTime);
  AddSceneOutput(place, q->output);
  place.callback([translate, rotate, scale, at] {
    if (translate->count() + rotate->count() + scale->count() + at->count() == 0)
      throw CLI::RequiredError("--translate, --rotate, --scale or --at");
  });
}

}  // namespace orv::app
