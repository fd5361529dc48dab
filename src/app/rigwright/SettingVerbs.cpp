// set, press.
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "core/CoreImplementation.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace {

struct SetOptions {
  std::string scene, button, output;
  std::vector<std::string> assignments;
};

/// Tells what came of each assignment, as clamping or a choice's number may change it.
void runSet(Program& program, const SetOptions& options) {
  SceneJob job(program, options.scene);
  for (const std::string& assignment : options.assignments) {
    const auto [rig, element] = job.setParameter(assignment);
    const std::string name = rig.GetInstanceName();
    program.output().line(name + ":" + element.label() + " = " + element.valueText());
    program.output().object()["set"].push_back({{"rig", name},
                                                {"id", element.id()},
                                                {"label", element.label()},
                                                {"value", valueOf(element)}});
  }
  job.save(options.output);
}

void runPress(Program& program, const SetOptions& options) {
  SceneJob job(program, options.scene);
  std::string label;
  rws::core::Instance& rig = job.rigOf(options.button, label);
  const rws::core::ConfigElement& button = job.element(rig, label, true);
  if (!job.core().PressButton(rig, button.id()))
    throw Failure(options.button, "the button could not be pressed");
  job.save(options.output);
  program.output().object()["pressed"] = rig.GetInstanceName() + ":" + button.label();
  program.output().note("pressed " + button.label() + " of " + rig.GetInstanceName());
}

}  // namespace

void addSettingVerbs(Program& program) {
  auto o = std::make_shared<SetOptions>();
  CLI::App& set = program.addVerb(
      "set",
      "Set parameters of rigs, as an edit by hand does; prints the values that were taken\n"
      "A value outside its range is clamped to it, which is told on stderr.",
      "rigwright set cam.glb \"Cam:Translation Response Factor=50\" \"Cam:#5=20\" -o cam.glb",
      [o](Program& p) { runSet(p, *o); });
  addScene(set, o->scene);
  set.add_option("ASSIGNMENT", o->assignments,
                 "RIG:LABEL=VALUE, or RIG:#ID=VALUE when a label stands for several")
      ->required()
      ->type_name("")
      ->check(checkAssignment);
  addSceneOutput(set, o->output);

  auto b = std::make_shared<SetOptions>();
  CLI::App& press = program.addVerb("press", "Press a button of a rig",
                                    "rigwright press cam.glb Cam:Re-Initialize -o cam.glb",
                                    [b](Program& p) { runPress(p, *b); });
  addScene(press, b->scene);
  press.add_option("BUTTON", b->button, "RIG:LABEL or RIG:#ID")
      ->required()
      ->type_name("")
      ->check(checkRigPart);
  addSceneOutput(press, b->output);
}

}  // namespace orv::app
