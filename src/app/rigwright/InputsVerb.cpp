// inputs.
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"

namespace orv::app {

namespace {

struct InputsOptions {
  std::string scene, rig, output;
};

void RunInputs(Program& program, const InputsOptions& options) {
  SceneJob job(program, options.scene);
  const unidevice::RecordedInput recorded = RecordedInputs(RigsNamed(job, options.rig));
  if (recorded.columns.empty()) {
    throw Failure(options.scene + (options.rig.empty() ? "" : ": " + options.rig),
                  "there are no recorded inputs", "record some with rigwright take");
  }
  CheckInterrupt();
  std::string error;
  if (!recorded.save(options.output, error)) FailWriting(error);
  std::vector<std::string> names;
  for (const auto& column : recorded.columns) names.push_back(column.name);
  program.GetOutput().GetObject()["inputs"] = names;
  program.GetOutput().GetObject()["output"] = options.output;
  program.GetOutput().Note("inputs: " + Joined(names) + ", written to " + options.output);
}

}  // namespace

void AddInputsVerb(Program& program) {
  auto o = std::make_shared<InputsOptions>();
  CLI::App& verb = program.AddVerb(
      "inputs", "Write the recorded inputs as an input file (CSV), raw as the controls gave them",
      "rigwright inputs take.glb -o inputs.csv", [o](Program& p) { RunInputs(p, *o); });
  program.MarkReadOnly(verb);
  AddScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Only this rig's inputs")->type_name("");
  AddOutput(verb, o->output, "Input file to write")->type_name("FILE.csv");
}

}  // namespace orv::app
