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

XMLFileManager& ManagerOf(Instance& rig, bool inputs) {
  rws::core::Tool& tool = *rig.GetTool();
  if (inputs) return tool.GetInputProfiles();
  return tool.GetConfigProfiles();
}

std::string KindOf(const ProfileOptions& o) {
  return o.inputs ? "input profile " : "profile ";
}

void RequireProfile(const XMLFileManager& profiles, const ProfileOptions& o) {
  if (!profiles.Find(o.name)) {
    throw Failure(KindOf(o) + o.name, "there is no such profile",
                  HintFor(o.name, profiles.GetNames(), "profiles"));
  }
}

/// Runs a request, once more with `confirmed` when it asks and --yes answers.
void Request(Program& program, const std::string& what, const std::string& done,
             const std::function<ProfileResult(bool confirmed)>& run) {
  CheckInterrupt();
  ProfileResult result = run(false);
  if (result.answer == ProfileResult::Answer::kAsk) {
    if (!program.GetOptions().yes) throw Failure(what, result.message, "--yes answers yes");
    result = run(true);
  }
  if (!result.Done()) {
    CheckInterrupt();
    throw Failure(what, result.message);
  }
  program.GetOutput().GetObject()["profiles"] = result.names;
  if (!result.message.empty()) program.GetOutput().Note(result.message);
  program.GetOutput().Note(done + " " + (result.names.empty() ? what : Joined(result.names)));
}

void RunList(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.FindRig(o.rig);
  const XMLFileManager& profiles = ManagerOf(rig, o.inputs);
  auto list = nlohmann::ordered_json::array();
  Table table;
  for (const std::string& name : profiles.GetNames()) {
    const bool current = !o.inputs && name == rig.GetCurrentProfile();
    list.push_back({{"name", name}, {"readOnly", profiles.IsReadOnly(name)}, {"current", current}});
    table.Add({current ? "*" : " ", name, profiles.IsReadOnly(name) ? "read-only" : ""});
  }
  program.GetOutput().GetObject()["profiles"] = list;
  for (const std::string& line : table.Lines()) program.GetOutput().Line(line);
}

void RunApply(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.FindRig(o.rig);
  RequireProfile(ManagerOf(rig, o.inputs), o);
  if (o.inputs) {
    const std::string problem = job.GetCore().LoadInputProfile(rig, o.name);
    if (!problem.empty()) throw Failure(KindOf(o) + o.name, problem);
  } else {
    job.LoadProfile(rig, o.name);
  }
  job.Save(o.output);
  program.GetOutput().GetObject()["profile"] = o.name;
  program.GetOutput().Note("applied " + o.name + " to " + o.rig);
}

void RunSave(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.FindRig(o.rig);
  rws::core::Tool& tool = *rig.GetTool();
  Request(program, KindOf(o) + o.name, "saved", [&](bool confirmed) {
    return o.inputs ? tool.GetInputProfiles().Save(o.name, rig.GetProperties(), confirmed)
                    : tool.GetConfigProfiles().Save(o.name, rig.GetConfig(), confirmed);
  });
}

void RunImport(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  Instance& rig = job.FindRig(o.rig);
  rws::core::Tool& tool = *rig.GetTool();
  Request(program, o.name, "imported", [&](bool confirmed) {
    ProfileResult result =
        o.inputs ? tool.GetInputProfiles().Import(o.name, confirmed)
                 : tool.GetConfigProfiles().Import(o.name, rig.GetConfig(), confirmed);
    std::string bytes, unreadable;
    if (!result.Done() && !util::readFile(o.name, bytes, &unreadable))
      result.message += " " + unreadable;
    return result;
  });
}

void RunExport(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  const XMLFileManager& profiles = ManagerOf(job.FindRig(o.rig), o.inputs);
  RequireProfile(profiles, o);
  Request(program, KindOf(o) + o.name, "exported",
          [&](bool) { return profiles.Export(o.name, o.output); });
  program.GetOutput().GetObject()["output"] = o.output;
}

void RunRename(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  XMLFileManager& profiles = ManagerOf(job.FindRig(o.rig), o.inputs);
  RequireProfile(profiles, o);
  Request(program, KindOf(o) + o.name, "renamed to",
          [&](bool) { return profiles.Rename(o.name, o.other); });
}

void RunDelete(Program& program, const ProfileOptions& o) {
  SceneJob job(program, o.scene);
  XMLFileManager& profiles = ManagerOf(job.FindRig(o.rig), o.inputs);
  RequireProfile(profiles, o);
  Request(program, KindOf(o) + o.name, "deleted",
          [&](bool confirmed) { return profiles.Delete(o.name, confirmed); });
}

/// A verb below `profile`; `run` gets the options. The caller adds what is special.
CLI::App& AddProfileVerb(Program& program, CLI::App& group, const std::string& name,
                         const std::string& description, const std::string& example,
                         void (*run)(Program&, const ProfileOptions&),
                         const std::shared_ptr<ProfileOptions>& o) {
  CLI::App& verb =
      program.AddVerb(group, name, description, example, [run, o](Program& p) { run(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig")->required()->type_name("");
  verb.add_flag("--inputs", o->inputs, "Input profiles (mappings) instead of config profiles");
  return verb;
}

void AddName(CLI::App& verb, const std::string& option, std::string& name,
             const std::string& description) {
  verb.add_option(option, name, description)->required()->type_name("");
}

}  // namespace

void AddProfileVerbs(Program& program) {
  CLI::App& group = program.AddGroup(
      "profile",
      "Named settings of a kind of rig: config profiles, and with --inputs input profiles",
      "rigwright profile list cam.glb Cam");
  const auto make = [] { return std::make_shared<ProfileOptions>(); };
  auto o = make();
  program.MarkReadOnly(AddProfileVerb(program, group, "list",
                                      "List the profiles; * marks the one that the rig has loaded",
                                      "rigwright profile list cam.glb Cam", RunList, o));
  o = make();
  CLI::App& apply = AddProfileVerb(
      program, group, "apply", "Load a profile into a rig",
      "rigwright profile apply cam.glb Cam \"Strong FollowCam\" -o cam.glb", RunApply, o);
  AddName(apply, "NAME", o->name, "Name of the profile");
  AddSceneOutput(apply, o->output);
  o = make();
  AddName(AddProfileVerb(program, group, "save",
                         "Save a rig's settings as a profile of your own (in the data root)",
                         "rigwright profile save cam.glb Cam Calm", RunSave, o),
          "NAME", o->name, "Name of the profile");
  o = make();
  AddName(AddProfileVerb(program, group, "import", "Take profiles over from a file",
                         "rigwright profile import cam.glb Cam calm.ocp", RunImport, o),
          "FILE", o->name, "Profile file to read");
  o = make();
  CLI::App& out =
      AddProfileVerb(program, group, "export", "Write a profile to a file",
                     "rigwright profile export cam.glb Cam Calm -o calm.ocp", RunExport, o);
  AddName(out, "NAME", o->name, "Name of the profile");
  AddOutput(out, o->output, "File to write");
  program.MarkReadOnly(out);
  o = make();
  CLI::App& rename =
      AddProfileVerb(program, group, "rename", "Rename a profile of your own",
                     "rigwright profile rename cam.glb Cam Calm Calmer", RunRename, o);
  AddName(rename, "NAME", o->name, "Name of the profile");
  AddName(rename, "NEW", o->other, "The new name");
  o = make();
  AddName(
      AddProfileVerb(program, group, "delete", "Delete a profile of your own (asks, so pass --yes)",
                     "rigwright --yes profile delete cam.glb Cam Calmer", RunDelete, o),
      "NAME", o->name, "Name of the profile");
}

}  // namespace orv::app
