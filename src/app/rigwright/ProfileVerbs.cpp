// profile list, apply, save, import, export, rename, delete.
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/tools/Tool.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

using rws::core::Instance;
using rws::core::ProfileResult;
using rws::core::XMLFileManager;

struct ProfileOptions {
  std::string scene, rig, name, other, output;
  bool inputs = false;
};

XMLFileManager& managerOf(Instance& rig, bool inputs) {
  rws::core::Tool& tool = *rig.GetTool();
  if (inputs) return tool.GetInputProfiles();
  return tool.GetConfigProfiles();
}

std::string kindOf(const ProfileOptions& o) {
  return o.inputs ? "input profile " : "profile ";
}

void requireProfile(const XMLFileManager& profiles, const ProfileOptions& o) {
  if (!profiles.Find(o.name)) {
    throw Failure(kindOf(o) + o.name, "there is no such profile",
                  hintFor(o.name, profiles.GetNames(), "profiles"));
  }
}

/// Runs a request, once more with `confirmed` when it asks and --yes answers.
void request(Program& program, const std::string& what, const std::string& done,
             const std::function<ProfileResult(bool confirmed)>& run) {
  checkInterrupt();
  ProfileResult result = run(false);
  if (result.answer == ProfileResult::Answer::kAsk) {
    if (!program.options().yes) throw Failure(what, result.message, "--yes answers yes");
    result = run(true);
  }
  if (!result.done()) {
    checkInterrupt();
    throw Failure(what, result.message);
  }
  program.output().object()["profiles"] = result.names;
  if (!result.message.empty()) program.output().note(result.message);
  program.output().note(done + " " + (result.names.empty() ? what : joined(result.names)));
}

void runList(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.rig(o.rig);
  const XMLFileManager& profiles = managerOf(rig, o.inputs);
  auto list = nlohmann::ordered_json::array();
  Table table;
  for (const std::string& name : profiles.GetNames()) {
    const bool current = !o.inputs && name == rig.GetCurrentProfile();
    list.push_back({{"name", name}, {"readOnly", profiles.IsReadOnly(name)}, {"current", current}});
    table.add({current ? "*" : " ", name, profiles.IsReadOnly(name) ? "read-only" : ""});
  }
  program.output().object()["profiles"] = list;
  for (const std::string& line : table.lines()) program.output().line(line);
}

void runApply(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.rig(o.rig);
  requireProfile(managerOf(rig, o.inputs), o);
  if (o.inputs) {
    const std::string problem =
        rig.GetTool()->GetInputProfiles().Apply(o.name, rig.GetProperties());
    if (!problem.empty()) throw Failure(kindOf(o) + o.name, problem);
  } else {
    job.loadProfile(rig, o.name);
  }
  job.save(o.output);
  program.output().object()["profile"] = o.name;
  program.output().note("applied " + o.name + " to " + o.rig);
}

void runSave(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.rig(o.rig);
  rws::core::Tool& tool = *rig.GetTool();
  request(program, kindOf(o) + o.name, "saved", [&](bool confirmed) {
    return o.inputs ? tool.GetInputProfiles().Save(o.name, rig.GetProperties(), confirmed)
                    : tool.GetConfigProfiles().Save(o.name, rig.GetConfig(), confirmed);
  });
}

void runImport(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.rig(o.rig);
  rws::core::Tool& tool = *rig.GetTool();
  request(program, o.name, "imported", [&](bool confirmed) {
    ProfileResult result =
        o.inputs ? tool.GetInputProfiles().Import(o.name, confirmed)
                 : tool.GetConfigProfiles().Import(o.name, rig.GetConfig(), confirmed);
    std::string bytes, unreadable;
    if (!result.done() && !util::readFile(o.name, bytes, &unreadable))
      result.message += " " + unreadable;
    return result;
  });
}

void runExport(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  const XMLFileManager& profiles = managerOf(job.rig(o.rig), o.inputs);
  requireProfile(profiles, o);
  request(program, kindOf(o) + o.name, "exported",
          [&](bool) { return profiles.Export(o.name, o.output); });
  program.output().object()["output"] = o.output;
}

void runRename(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  XMLFileManager& profiles = managerOf(job.rig(o.rig), o.inputs);
  requireProfile(profiles, o);
  request(program, kindOf(o) + o.name, "renamed to",
          [&](bool) { return profiles.Rename(o.name, o.other); });
}

void runDelete(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  XMLFileManager& profiles = managerOf(job.rig(o.rig), o.inputs);
  requireProfile(profiles, o);
  request(program, kindOf(o) + o.name, "deleted",
          [&](bool confirmed) { return profiles.Delete(o.name, confirmed); });
}

/// A verb below `profile`; `run` gets the options. The caller adds what is special.
CLI::App& addProfileVerb(Program& program, CLI::App& group, const std::string& name,
                         const std::string& description, const std::string& example,
                         void (*run)(Program&, const ProfileOptions&),
                         const std::shared_ptr<ProfileOptions>& o) {
  CLI::App& verb =
      program.addVerb(group, name, description, example, [run, o](Program& p) { run(p, *o); });
  addScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig")->required()->type_name("");
  verb.add_flag("--inputs", o->inputs, "Input profiles (mappings) instead of config profiles");
  return verb;
}

void addName(CLI::App& verb, const std::string& option, std::string& name,
             const std::string& description) {
  verb.add_option(option, name, description)->required()->type_name("");
}

}  // namespace

void addProfileVerbs(Program& program) {
  CLI::App& group = program.addGroup(
      "profile",
      "Named settings of a kind of rig: config profiles, and with --inputs input profiles",
      "rigwright profile list cam.glb Cam");
  const auto make = [] { return std::make_shared<ProfileOptions>(); };
  auto o = make();
  program.markReadOnly(addProfileVerb(program, group, "list",
                                      "List the profiles; * marks the one that the rig has loaded",
                                      "rigwright profile list cam.glb Cam", runList, o));
  o = make();
  CLI::App& apply = addProfileVerb(
      program, group, "apply", "Load a profile into a rig",
      "rigwright profile apply cam.glb Cam \"Strong FollowCam\" -o cam.glb", runApply, o);
  addName(apply, "NAME", o->name, "Name of the profile");
  addSceneOutput(apply, o->output);
  o = make();
  addName(addProfileVerb(program, group, "save",
                         "Save a rig's settings as a profile of your own (in the data root)",
                         "rigwright profile save cam.glb Cam Calm", runSave, o),
          "NAME", o->name, "Name of the profile");
  o = make();
  addName(addProfileVerb(program, group, "import", "Take profiles over from a file",
                         "rigwright profile import cam.glb Cam calm.ocp", runImport, o),
          "FILE", o->name, "Profile file to read");
  o = make();
  CLI::App& out =
      addProfileVerb(program, group, "export", "Write a profile to a file",
                     "rigwright profile export cam.glb Cam Calm -o calm.ocp", runExport, o);
  addName(out, "NAME", o->name, "Name of the profile");
  addOutput(out, o->output, "File to write");
  program.markReadOnly(out);
  o = make();
  CLI::App& rename =
      addProfileVerb(program, group, "rename", "Rename a profile of your own",
                     "rigwright profile rename cam.glb Cam Calm Calmer", runRename, o);
  addName(rename, "NAME", o->name, "Name of the profile");
  addName(rename, "NEW", o->other, "The new name");
  o = make();
  addName(
      addProfileVerb(program, group, "delete", "Delete a profile of your own (asks, so pass --yes)",
                     "rigwright --yes profile delete cam.glb Cam Calmer", runDelete, o),
      "NAME", o->name, "Name of the profile");
}

}  // namespace orv::app
