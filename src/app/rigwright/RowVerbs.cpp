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
InstanceReference& rowOf(SceneJob& job, const std::string& name) {
  if (InstanceReference* found = job.core().FindRow(name)) return *found;
  std::vector<std::string> known;
  for (const InstanceReference* row : job.core().GetRows()) known.push_back(row->GetLabel());
  throw Failure(job.path(), "there is no rig or group \"" + name + "\"",
                hintFor(name, known, "rigs and groups"));
}

InstanceReference& groupOf(SceneJob& job, const std::string& name) {
  std::vector<std::string> known;
  for (InstanceReference* row : job.core().GetRows()) {
    if (!row->IsGroup()) continue;
    if (row->GetLabel() == name) return *row;
    known.push_back(row->GetLabel());
  }
  throw Failure(
      job.path(), "there is no group \"" + name + "\"",
      known.empty() ? "make one with rigwright group create" : hintFor(name, known, "groups"));
}

void refuse(const std::string& what, const std::string& problem) {
  if (!problem.empty()) throw Failure(what, problem);
}

/// Saves the scene and tells the rigs in the order in which they are stepped.
void finish(SceneJob& job, const RowOptions& options) {
  job.save(options.output);
  Output& out = job.program().output();
  out.object()["rigs"] = job.rigNames();
  out.line(joined(job.rigNames(), "\n"));
}

void runOrder(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  InstanceReference& moved = rowOf(job, options.group);
  InstanceReference* before = options.off ? nullptr : &rowOf(job, options.other);
  if (before == &moved) throw Failure("--before " + options.other, "it can't stand before itself");
  refuse("--before " + options.other, job.core().MoveBefore(&moved, before));
  finish(job, options);
}

void runCheck(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  for (const std::string& name : options.rows)
    job.core().SetChecked(&rowOf(job, name), !options.off);
  job.save(options.output);
  std::vector<std::string> stepped;
  for (const rws::core::Instance* rig : job.core().List(true))
    stepped.push_back(rig->GetInstanceName());
  program.output().object()["takePart"] = stepped;
  program.output().line(joined(stepped, "\n"));
}

void moveInto(SceneJob& job, const std::vector<std::string>& names, InstanceReference* group) {
  for (const std::string& name : names) refuse(name, job.core().MoveInto(&rowOf(job, name), group));
}

void runCreate(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  std::string problem;
  InstanceReference* group = job.core().CreateGroup(options.group, problem);
  refuse("group " + options.group, problem);
  moveInto(job, options.rows, group);
  finish(job, options);
}

void runRename(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  refuse("rename to " + options.other,
         job.core().Rename(&groupOf(job, options.group), options.other));
  job.save(options.output);
  program.output().object()["group"] = options.other;
  program.output().line(options.other);
}

void runMove(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  moveInto(job, options.rows, options.off ? nullptr : &groupOf(job, options.group));
  finish(job, options);
}

void runDelete(Program& program, const RowOptions& options) {
  SceneJob job(program, options.scene);
  job.core().DeleteGroup(&groupOf(job, options.group));
  finish(job, options);
}

CLI::App& addRowVerb(Program& program, CLI::App* parent, const std::string& name,
                     const std::string& description, const std::string& example,
                     void (*run)(Program&, const RowOptions&), const Options& o) {
  const auto runIt = [o, run](Program& p) { run(p, *o); };
  CLI::App& verb = parent ? program.addVerb(*parent, name, description, example, runIt)
                          : program.addVerb(name, description, example, runIt);
  addScene(verb, o->scene);
  return verb;
}

/// One of two options must be given.
void addChoice(CLI::App& verb, CLI::Option* named, CLI::Option* flag, const std::string& both) {
  named->excludes(flag);
  verb.callback([named, flag, both] {
    if (named->count() == 0 && flag->count() == 0) throw CLI::RequiredError(both);
  });
}

CLI::Option* addPlace(CLI::App& verb, const std::string& name, std::string& value,
                      const std::string& description) {
  return verb.add_option(name, value, description)->required()->type_name("");
}

CLI::Option* addRows(CLI::App& verb, const Options& o) {
  return verb.add_option("ROW", o->rows, "Names of rigs or groups")->type_name("");
}

void addOrder(Program& program) {
  auto o = std::make_shared<RowOptions>();
  CLI::App& verb =
      addRowVerb(program, nullptr, "order",
                 "Change the order in which rigs are stepped (a camera after what it follows)",
                 "rigwright order two.glb Cam_01 --before Cam -o two.glb", runOrder, o);
  addPlace(verb, "ROW", o->group, "Name of the rig or group");
  CLI::Option* before =
      verb.add_option("--before", o->other, "The rig or group that it comes before, in its group");
  addChoice(verb, before->type_name("ROW"),
            verb.add_flag("--last", o->off, "It comes last, in its own group"),
            "--before ROW or --last");
  addSceneOutput(verb, o->output);
}

void addCheck(Program& program) {
  auto o = std::make_shared<RowOptions>();
  CLI::App& verb =
      addRowVerb(program, nullptr, "check",
                 "Let rigs or groups take part in takes; prints the rigs that do\n"
                 "A rig takes part when it is checked and all groups are that it stands in.",
                 "rigwright check two.glb Cam_01 --off -o two.glb", runCheck, o);
  addRows(verb, o)->required();
  verb.add_flag("--off", o->off, "Leave them out of takes and resimulations");
  addSceneOutput(verb, o->output);
}

void addGroups(Program& program) {
  CLI::App& group =
      program.addGroup("group", "Groups of rigs, to check and order together",
                       "rigwright group create two.glb Cameras Cam Cam_01 -o two.glb");
  auto o = std::make_shared<RowOptions>();
  CLI::App& create = addRowVerb(
      program, &group, "create", "Make a group at the end of the list and move rows into it",
      "rigwright group create two.glb Cameras Cam Cam_01 -o two.glb", runCreate, o);
  addPlace(create, "GROUP", o->group, "Name of the new group");
  addRows(create, o);
  addSceneOutput(create, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& rename =
      addRowVerb(program, &group, "rename", "Give a group another name",
                 "rigwright group rename two.glb Cameras Views -o two.glb", runRename, o);
  addPlace(rename, "GROUP", o->group, "Name of the group");
  addPlace(rename, "NEW", o->other, "The new name");
  addSceneOutput(rename, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& move =
      addRowVerb(program, &group, "move", "Move rigs or groups into a group, or out of all",
                 "rigwright group move two.glb Cam_01 --out -o two.glb", runMove, o);
  addRows(move, o)->required();
  CLI::Option* into = move.add_option("--into", o->group, "The group whose last they become");
  addChoice(move, into->type_name("GROUP"),
            move.add_flag("--out", o->off, "They come behind the group that they stand in"),
            "--into GROUP or --out");
  addSceneOutput(move, o->output);

  o = std::make_shared<RowOptions>();
  CLI::App& remove =
      addRowVerb(program, &group, "delete", "Delete a group; what stands in it takes its place",
                 "rigwright group delete two.glb Cameras -o two.glb", runDelete, o);
  addPlace(remove, "GROUP", o->group, "Name of the group");
  addSceneOutput(remove, o->output);
}

}  // namespace

void addRowVerbs(Program& program) {
  addOrder(program);
  addCheck(program);
  addGroups(program);
}

}  // namespace orv::app
