// add, remove, rename, clone.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/ModelChecks.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/RigPlacing.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/NameRules.h"
#include "core/tools/Tool.h"

namespace orv::app {

namespace {

using Vector = util::Vector3<double>;
using rws::core::Instance;

struct AddOptions {
  std::string scene, kind, name, profile, output;
  std::optional<Vector> translate, stand;
  std::optional<double> scale;
};

/// Where the rig's first node is when the rig stands on `foot`.
Vector PlaceOn(const Instance& rig, const std::string& kind, const Vector& foot, double scale) {
  if (const std::optional<Vector> place = StandingPlace(rig, foot, scale)) return *place;
  throw Failure("--stand", "a " + kind + " doesn't stand on the ground by itself",
                "give the place of its first node by --translate");
}

void RunAdd(Program& program, const AddOptions& options) {
  SceneJob job(program, options.scene);
  const std::string feature = job.FindTool(options.kind).GetLicenceName();
  const std::string refused = job.GetCore().GetLicensing().WhyNot(feature);
  if (!refused.empty()) throw Failure("kind " + options.kind, refused);
  std::string wrong;
  if (!options.name.empty() && !rws::core::IsNameAllowed(options.name, wrong))
    throw Failure("--name", wrong);
  if (!options.name.empty() && job.GetCore().FindInstance(options.name)) {
    throw Failure("--name " + options.name, "a rig of this name is in the scene",
                  "choose another name");
  }
  // Told once: with the scene's first rig.
  if (job.RigNames().empty())
    for (const Problem& odd : OddScene(job.GetScene(), job.GetScene().GetRangeStart()))
      program.GetOutput().Warn(options.scene + ": " + TextOf(odd, job.GetScene()));
  Instance* rig = job.GetCore().CreateToolFromFactory(options.kind, options.name);
  if (!rig) throw Failure("kind " + options.kind, "the rig could not be created");
  if (!options.profile.empty()) {
    const auto& profiles = rig->GetTool()->GetConfigProfiles();
    if (!profiles.Find(options.profile)) {
      throw Failure("--profile " + options.profile, "there is no such profile",
                    HintFor(options.profile, profiles.GetNames(), "profiles"));
    }
    job.LoadProfile(*rig, options.profile);
  }
  const double scale = options.scale.value_or(1.0);
  std::optional<Vector> place = options.translate;
  if (options.stand) place = PlaceOn(*rig, options.kind, *options.stand, scale);
  if (place || options.scale) PlaceRig(*rig, place, scale);
  job.Save(options.output);
  program.GetOutput().GetObject()["rig"] = rig->GetInstanceName();
  program.GetOutput().Line(rig->GetInstanceName());
}

void AddAdd(Program& program) {
  auto o = std::make_shared<AddOptions>();
  CLI::App& verb = program.AddVerb(
      "add", "Create a rig in a scene; prints the rig's name",
      "rigwright add shaky.glb MotionFilterCam --name Cam --profile \"Loose FollowCam\" "
      "-o cam.glb",
      [o](Program& p) { RunAdd(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("KIND", o->kind, "Kind of the rig (see rigwright tools)")
      ->required()
      ->type_name("");
  verb.add_option("--name", o->name, "Name of the rig (default: the kind and a number)")
      ->type_name("NAME")
      ->check(CheckNotEmpty);
  CLI::Option* translate =
      AddVector(verb, "--translate", o->translate, "Where the rig's first node stands (m)");
  AddVector(verb, "--stand", o->stand, "Point of the ground that the rig stands on (m)")
      ->excludes(translate);
  AddNumber(verb, "--scale", o->scale, "Size of the rig (default 1)",
            [](double value) { return MustBeFrom(value, 1e-6, 1e6); });
  verb.add_option("--profile", o->profile, "Config profile to begin with")
      ->type_name("NAME")
      ->check(CheckNotEmpty);
  AddSceneOutput(verb, o->output);
}

struct RigOptions {
  std::string scene, rig, other, output;
};

void RunRemove(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  job.GetCore().Delete(&job.FindRow(options.rig), true);
  job.Save(options.output);
  program.GetOutput().GetObject()["removed"] = options.rig;
  program.GetOutput().Note("removed " + options.rig);
}

/// Saves the scene and tells the name that came of it.
void Finish(SceneJob& job, const RigOptions& options, const std::string& name) {
  job.Save(options.output);
  job.GetProgram().GetOutput().GetObject()["rig"] = name;
  job.GetProgram().GetOutput().Line(name);
}

void RunRename(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  const std::string problem = job.GetCore().Rename(&job.FindRow(options.rig), options.other);
  if (!problem.empty()) throw Failure("rename to " + options.other, problem);
  Finish(job, options, options.other);
}

void RunClone(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  job.FindRow(options.rig);
  std::string problem;
  const std::string name = job.GetCore().CloneTool(options.rig, problem);
  if (name.empty()) throw Failure("clone of " + options.rig, problem);
  Finish(job, options, name);
}

/// A verb on one rig; `other` is what else it is told, a name, and may be empty.
void AddRigVerb(Program& program, const std::string& name, const std::string& description,
                const std::string& example, void (*run)(Program&, const RigOptions&),
                const std::string& other = {}) {
  auto o = std::make_shared<RigOptions>();
  CLI::App& verb =
      program.AddVerb(name, description, example, [o, run](Program& p) { run(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig")->required()->type_name("");
  if (!other.empty()) verb.add_option("NEW", o->other, other)->required()->type_name("");
  AddSceneOutput(verb, o->output);
}

}  // namespace

void AddRigVerbs(Program& program) {
  AddAdd(program);
  AddRigVerb(program, "remove",
             "Remove a rig and its nodes; your own nodes under them stay where they are",
             "rigwright remove cam.glb Cam -o plain.glb", RunRemove);
  AddRigVerb(program, "rename", "Give a rig and its nodes another name",
             "rigwright rename cam.glb Cam HeroCam -o hero.glb", RunRename, "The new name");
  AddRigVerb(program, "clone",
             "Copy a rig with parameters, inputs, tracks and nodes; prints the copy's name",
             "rigwright clone cam.glb Cam -o two.glb", RunClone);
}

}  // namespace orv::app
