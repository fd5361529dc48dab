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
Vector placeOn(const Instance& rig, const std::string& kind, const Vector& foot, double scale) {
  if (const std::optional<Vector> place = standingPlace(rig, foot, scale)) return *place;
  throw Failure("--stand", "a " + kind + " doesn't stand on the ground by itself",
                "give the place of its first node by --translate");
}

void runAdd(Program& program, const AddOptions& options) {
  SceneJob job(program, options.scene);
  job.tool(options.kind);
  std::string wrong;
  if (!options.name.empty() && !rws::core::IsNameAllowed(options.name, wrong))
    throw Failure("--name", wrong);
  if (!options.name.empty() && job.core().FindInstance(options.name)) {
    throw Failure("--name " + options.name, "a rig of this name is in the scene",
                  "choose another name");
  }
  // Told once: with the scene's first rig.
  if (job.rigNames().empty())
    for (const Problem& odd : oddScene(job.scene(), job.scene().rangeStart()))
      program.output().warn(options.scene + ": " + textOf(odd, job.scene()));
  Instance* rig = job.core().CreateToolFromFactory(options.kind, options.name);
  if (!rig) throw Failure("kind " + options.kind, "the rig could not be created");
  if (!options.profile.empty()) {
    const auto& profiles = rig->GetTool()->GetConfigProfiles();
    if (!profiles.Find(options.profile)) {
      throw Failure("--profile " + options.profile, "there is no such profile",
                    hintFor(options.profile, profiles.GetNames(), "profiles"));
    }
    job.loadProfile(*rig, options.profile);
  }
  const double scale = options.scale.value_or(1.0);
  std::optional<Vector> place = options.translate;
  if (options.stand) place = placeOn(*rig, options.kind, *options.stand, scale);
  if (place || options.scale) placeRig(*rig, place, scale);
  job.save(options.output);
  program.output().object()["rig"] = rig->GetInstanceName();
  program.output().line(rig->GetInstanceName());
}

void addAdd(Program& program) {
  auto o = std::make_shared<AddOptions>();
  CLI::App& verb = program.addVerb(
      "add", "Create a rig in a scene; prints the rig's name",
      "rigwright add shaky.glb MotionFilterCam --name Cam --profile \"Loose FollowCam\" "
      "-o cam.glb",
      [o](Program& p) { runAdd(p, *o); });
  addScene(verb, o->scene);
  verb.add_option("KIND", o->kind, "Kind of the rig (see rigwright tools)")
      ->required()
      ->type_name("");
  verb.add_option("--name", o->name, "Name of the rig (default: the kind and a number)")
      ->type_name("NAME")
      ->check(checkNotEmpty);
  CLI::Option* translate =
      addVector(verb, "--translate", o->translate, "Where the rig's first node stands (m)");
  addVector(verb, "--stand", o->stand, "Point of the ground that the rig stands on (m)")
      ->excludes(translate);
  addNumber(verb, "--scale", o->scale, "Size of the rig (default 1)",
            [](double value) { return mustBeFrom(value, 1e-6, 1e6); });
  verb.add_option("--profile", o->profile, "Config profile to begin with")
      ->type_name("NAME")
      ->check(checkNotEmpty);
  addSceneOutput(verb, o->output);
}

struct RigOptions {
  std::string scene, rig, other, output;
};

void runRemove(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  job.core().Delete(&job.row(options.rig), true);
  job.save(options.output);
  program.output().object()["removed"] = options.rig;
  program.output().note("removed " + options.rig);
}

/// Saves the scene and tells the name that came of it.
void finish(SceneJob& job, const RigOptions& options, const std::string& name) {
  job.save(options.output);
  job.program().output().object()["rig"] = name;
  job.program().output().line(name);
}

void runRename(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  const std::string problem = job.core().Rename(&job.row(options.rig), options.other);
  if (!problem.empty()) throw Failure("rename to " + options.other, problem);
  finish(job, options, options.other);
}

void runClone(Program& program, const RigOptions& options) {
  SceneJob job(program, options.scene);
  job.row(options.rig);
  std::string problem;
  const std::string name = job.core().CloneTool(options.rig, problem);
  if (name.empty()) throw Failure("clone of " + options.rig, problem);
  finish(job, options, name);
}

/// A verb on one rig; `other` is what else it is told, a name, and may be empty.
void addRigVerb(Program& program, const std::string& name, const std::string& description,
                const std::string& example, void (*run)(Program&, const RigOptions&),
                const std::string& other = {}) {
  auto o = std::make_shared<RigOptions>();
  CLI::App& verb =
      program.addVerb(name, description, example, [o, run](Program& p) { run(p, *o); });
  addScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig")->required()->type_name("");
  if (!other.empty()) verb.add_option("NEW", o->other, other)->required()->type_name("");
  addSceneOutput(verb, o->output);
}

}  // namespace

void addRigVerbs(Program& program) {
  addAdd(program);
  addRigVerb(program, "remove",
             "Remove a rig and its nodes; your own nodes under them stay where they are",
             "rigwright remove cam.glb Cam -o plain.glb", runRemove);
  addRigVerb(program, "rename", "Give a rig and its nodes another name",
             "rigwright rename cam.glb Cam HeroCam -o hero.glb", runRename, "The new name");
  addRigVerb(program, "clone",
             "Copy a rig with parameters, inputs, tracks and nodes; prints the copy's name",
             "rigwright clone cam.glb Cam -o two.glb", runClone);
}

}  // namespace orv::app
