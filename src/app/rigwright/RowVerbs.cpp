// order, check, group.
#include <memory>
#include <nlohmann/json.hpp>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"

namespace orv::app {

namespace {

using rws::core::InstanceReference;

struct RowOptions {
  std::string scene, group, other, output;
  std::vector<std::string> rows;
  bool off = false;
};
using Options = std::shared_ptr<RowOptions>;

/// The row of a rig or a group.
InstanceReference& RowOf(SceneJob& job, const std::string& name) {
  if (InstanceReference* found = job.GetCore().FindRow(name)) return *found;
  std::vector<std::string> known;
  for (const InstanceReference* row : job.GetCore().GetRows()) known.push_back(row->GetLabel());
  throw Failure(job.GetPath(), "there is no rig or group \"" + name + "\"",
                HintFor(name, known, "rigs and groups"));
}

InstanceReference& GroupOf(SceneJob& job, const std::string& name) {
  std::vector<std::string> known;
  for (InstanceReference* row : job.GetCore().GetRows()) {
    if (!row->IsGroup()) continue;
    if (row->GetLabel() == name) return *row;
    known.push_back(row->GetLabel());
  }
  throw Failure(
      job.GetPath(), "there is no group \"" + name + "\"",
      known.empty() ? "make one with rigwright group create" : HintFor(name, known, "groups"));
}

void Refuse(const std::string& what, const std::string& problem) {
  if (!problem.empty()) throw Failure(what, problem);
}

/// Saves the scene and tells the rigs in the order in which they are stepped.
void Finish(SceneJob& job, const RowOptions& options) {
  job.Save(options.output);
  Output& out = job.GetProgram().GetOutput();
  out.GetObject()["rigs"] = job.RigNames();
  out.Line(Joined(job.RigNames(), "\n"));
}

void RunOrder(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  InstanceReference& moved = RowOf(job, options.group);
  InstanceReference* before = options.off ? nullptr : &RowOf(job, options.other);
  if (before == &moved) throw Failure("--before " + options.other, "it can't stand before itself");
  Refuse("--before " + options.other, job.GetCore().MoveBefore(&moved, before));
  Finish(job, options);
}

void RunCheck(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  for (const std::string& name : options.rows)
    job.GetCore().SetChecked(&RowOf(job, name), !options.off);
  job.Save(options.output);
  std::vector<std::string> stepped;
  for (const rws::core::Instance* rig : job.GetCore().List(true))
    stepped.push_back(rig->GetInstanceName());
  program.GetOutput().GetObject()["takePart"] = stepped;
  program.GetOutput().Line(Joined(stepped, "\n"));
}

void MoveInto(SceneJob& job, const std::vector<std::string>& names, InstanceReference* group) {
  for (const std::string& name : names)
    Refuse(name, job.GetCore().MoveInto(&RowOf(job, name), group));
}

void RunCreate(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  std::string problem;
  InstanceReference* group = job.GetCore().CreateGroup(options.group, problem);
  Refuse("group " + options.group, problem);
  MoveInto(job, options.rows, group);
  Finish(job, options);
}

void RunRename(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  Refuse("rename to " + options.other,
         job.GetCore().Rename(&GroupOf(job, options.group), options.other));
  job.Save(options.output);
  program.GetOutput().GetObject()["group"] = options.other;
  program.GetOutput().Line(options.other);
}

void RunMove(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  MoveInto(job, options.rows, options.off ? nullptr : &GroupOf(job, options.group));
  Finish(job, options);
}

void RunDelete(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  job.GetCore().DeleteGroup(&GroupOf(job, options.group));
  Finish(job, options);
}

CLI::App& AddRowVerb(Program& program, CLI::App* parent, const std::string& name,
                     const std::string& description, const std::string& example,
                     void (*run)(Program&, const RowOptions&), const Options& o) {
  const auto runIt = [o, run](Program& p) { run(p, *o); };
  CLI::App& verb = parent ? program.AddVerb(*parent, name, description, example, runIt)
                          : program.AddVerb(name, description, example, runIt);
  AddScene(verb, o->scene);
  return verb;
}

/// One of two options must be given.
void AddChoice(CLI::App& verb, CLI::Option* named, CLI::Option* flag, const std::string& both) {
  named->excludes(flag);
  verb.callback([named, flag, both] {
    if (named->count() == 0 && flag->count() == 0) throw CLI::RequiredError(both);
  });
}

CLI::Option* AddPlace(CLI::App& verb, const std::string& name, std::string& value,
                      const std::string& description) {
  return verb.add_option(name, value, description)->required()->type_name("");
}

CLI::Option* AddRows(CLI::App& verb, const Options& o) {
  return verb.add_option("ROW", o->rows, "Names of rigs or groups")->type_name("");
}

void AddOrder(Program& program) {
  auto o = std::make_shared<RowOptions>();
  CLI::App& verb =
      AddRowVerb(program, nullptr, "order",
                 "Change the order in which rigs are stepped (a camera after what it follows)",
                 "rigwright order two.glb Cam_01 --before Cam -o two.glb", RunOrder, o);
  AddPlace(verb, "ROW", o->group, "Name of the rig or group");
  CLI::Option* before =
      verb.add_option("--before", o->other, "The rig or group that it comes before, in its group");
  AddChoice(verb, before->type_name("ROW"),
            verb.add_flag("--last", o->off, "It comes last, in its own group"),
            "--before ROW or --last");
  AddSceneOutput(verb, o->output);
}

void AddCheck(Program& program) {
  auto o = std::make_shared<RowOptions>();
  CLI::App& verb =
      AddRowVerb(program, nullptr, "check",
                 "Let rigs or groups take part in takes; prints the rigs that do\n"
                 "A rig takes part when it is checked and all groups are that it stands in.",
                 "rigwright check two.glb Cam_01 --off -o two.glb", RunCheck, o);
  AddRows(verb, o)->required();
  verb.add_flag("--off", o->off, "Leave them out of takes and resimulations");
  AddSceneOutput(verb, o->output);
}

void AddGroups(Program& program) {
  CLI::App& group =
      program.AddGroup("group", "Groups of rigs, to check and order together",
                       "rigwright group create two.glb Cameras Cam Cam_01 -o two.glb");
  auto o = std::make_shared<RowOptions>();
  CLI::App& create = AddRowVerb(
      program, &group, "create", "Make a group at the end of the list and move rows into it",
      "rigwright group create two.glb Cameras Cam Cam_01 -o two.glb", RunCreate, o);
  AddPlace(create, "GROUP", o->group, "Name of the new group");
  AddRows(create, o);
  AddSceneOutput(create, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& rename =
      AddRowVerb(program, &group, "rename", "Give a group another name",
                 "rigwright group rename two.glb Cameras Views -o two.glb", RunRename, o);
  AddPlace(rename, "GROUP", o->group, "Name of the group");
  AddPlace(rename, "NEW", o->other, "The new name");
  AddSceneOutput(rename, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& move =
      AddRowVerb(program, &group, "move", "Move rigs or groups into a group, or out of all",
                 "rigwright group move two.glb Cam_01 --out -o two.glb", RunMove, o);
  AddRows(move, o)->required();
  CLI::Option* into = move.add_option("--into", o->group, "The group whose last they become");
  AddChoice(move, into->type_name("GROUP"),
            move.add_flag("--out", o->off, "They come behind the group that they stand in"),
            "--into GROUP or --out");
  AddSceneOutput(move, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& remove =
      AddRowVerb(program, &group, "delete", "Delete a group; what stands in it takes its place",
                 "rigwright group delete two.glb Cameras -o two.glb", RunDelete, o);
  AddPlace(remove, "GROUP", o->group, "Name of the group");
  AddSceneOutput(remove, o->output);
}

}  // namespace

void AddRowVerbs(Program& program) {
  AddOrder(program);
  AddCheck(program);
  AddGroups(program);
}

}  // namespace orv::app
