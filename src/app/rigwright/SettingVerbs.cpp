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
void RunSet(Program& program, const SetOptions& options) {
  SceneJob job(program, options.scene);
  for (const std::string& assignment : options.assignments) {
    const auto [rig, element] = job.SetParameter(assignment);
    const std::string name = rig.GetInstanceName();
    program.GetOutput().Line(name + ":" + element.GetLabel() + " = " + element.GetValueText());
    program.GetOutput().GetObject()["set"].push_back({{"rig", name},
                                                      {"id", element.GetId()},
                                                      {"label", element.GetLabel()},
                                                      {"value", ValueOf(element)}});
  }
  job.Save(options.output);
}

void RunPress(Program& program, const SetOptions& options) {
  SceneJob job(program, options.scene);
  std::string label;
  rws::core::Instance& rig = job.RigOf(options.button, label);
  const rws::core::ConfigElement& button = job.FindElement(rig, label, true);
  if (!job.GetCore().PressButton(rig, button.GetId()))
    throw Failure(options.button, "the button could not be pressed");
  job.Save(options.output);
  program.GetOutput().GetObject()["pressed"] = rig.GetInstanceName() + ":" + button.GetLabel();
  program.GetOutput().Note("pressed " + button.GetLabel() + " of " + rig.GetInstanceName());
}

}  // namespace

void AddSettingVerbs(Program& program) {
  auto o = std::make_shared<SetOptions>();
  CLI::App& set = program.AddVerb(
      "set",
      "Set parameters of rigs, as an edit by hand does; prints the values that were taken\n"
      "A value outside its range is clamped to it, which is told on stderr.",
      "rigwright set cam.glb \"Cam:Translation Response Factor=50\" \"Cam:#5=20\" -o cam.glb",
      [o](Program& p) { RunSet(p, *o); });
  AddScene(set, o->scene);
  set.add_option("ASSIGNMENT", o->assignments,
                 "RIG:LABEL=VALUE, or RIG:#ID=VALUE when a label stands for several")
      ->required()
      ->type_name("")
      ->check(CheckAssignment);
  AddSceneOutput(set, o->output);

  auto b = std::make_shared<SetOptions>();
  CLI::App& press = program.AddVerb("press", "Press a button of a rig",
                                    "rigwright press cam.glb Cam:Re-Initialize -o cam.glb",
                                    [b](Program& p) { RunPress(p, *b); });
  AddScene(press, b->scene);
  press.add_option("BUTTON", b->button, "RIG:LABEL or RIG:#ID")
      ->required()
      ->type_name("")
      ->check(CheckRigPart);
  AddSceneOutput(press, b->output);
}

}  // namespace orv::app
