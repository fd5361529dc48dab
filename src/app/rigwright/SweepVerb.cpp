// sweep; sweep open, collect, work.
#include <QLockFile>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/SweepFarm.h"
#include "app/rigwright/SweepWorkers.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "app/session/takes/RigSettings.h"
#include "app/sweep/SweepFolder.h"
#include "app/sweep/SweepPick.h"
#include "app/sweep/SweepPlan.h"
#include "app/sweep/SweepRun.h"
#include "core/config/ConfigElement.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr long kMostRows = 1000000;

struct SweepOptions {
  std::string scene, profiles, inputs, seeds, range, rig, near, pick, folder;
  std::vector<std::string> vary;
  std::optional<double> jobs, chunk;
  bool scenes = false, plan = false, slurm = false;
};

void Require(const std::string& problem) {
  if (!problem.empty()) throw Failure("", problem);
}

std::vector<std::string> ValuesFrom(const std::string& text, const std::string& option) {
  std::string why;
  std::vector<std::string> values = SweepValues(text, why);
  if (values.empty()) throw Failure(option, why, "give a,b,c or from:to:count");
  return values;
}

SweepAxis ParameterAxis(SceneJob& job, const std::string& text) {
  std::string values;
  const SceneJob::Parameter found = job.FindAssigned(text, values);
  SweepAxis axis;
  axis.rig = found.rig.GetInstanceName();
  axis.element = found.element.GetId();
  axis.name = axis.rig + ":" + found.element.GetLabel();
  axis.values = ValuesFrom(values, "--vary " + axis.name);
  return axis;
}

SweepAxis ProfileAxis(SceneJob& job, const std::string& text) {
  SweepAxis axis{SweepAxis::Kind::kProfile, "", "", -1, {}};
  std::string names = text;
  const auto rigs = job.RigNames();
  if (rigs.size() == 1 && text.compare(0, rigs[0].size() + 1, rigs[0] + ":") != 0) {
    axis.rig = rigs[0];
  } else {
    if (text.find(':') == std::string::npos)
      throw Failure("--profiles", "there are several rigs", "write RIG:A,B; " + Joined(rigs));
    axis.rig = job.RigOf(text, names).GetInstanceName();
  }
  axis.name = axis.rig + " profile";
  axis.values = ValuesFrom(names, "--profiles");
  return axis;
}

SweepAxis InputsAxis(const std::string& text) {
  SweepAxis axis{SweepAxis::Kind::kInputs, "inputs", "", -1, ValuesFrom(text, "--inputs")};
  for (std::string& path : axis.values) path = util::absolutePath(path);
  return axis;
}

/// "1:20" is each whole number from 1 to 20.
SweepAxis SeedAxis(const std::string& text) {
  SweepAxis axis{SweepAxis::Kind::kSeed, "seed", "", -1, {}};
  const std::size_t colon = text.find(':');
  std::int64_t from = 0, to = 0;
  if (colon == std::string::npos || text.find(':', colon + 1) != std::string::npos) {
    axis.values = ValuesFrom(text, "--seeds");
  } else if (!util::parseNumber(text.substr(0, colon), from) ||
             !util::parseNumber(text.substr(colon + 1), to) || to < from ||
             to - from >= kMostRows) {
    throw Failure("--seeds", "\"" + text + "\" is no stretch of whole numbers", "give 1:20");
  }
  for (std::int64_t seed = from; axis.values.size() < static_cast<std::size_t>(kMostRows) &&
                                 seed <= to && colon != std::string::npos;
       ++seed)
    axis.values.push_back(std::to_string(seed));
  return axis;
}

std::vector<SweepAxis> AxesOf(SceneJob& job, const SweepOptions& o) {
  std::vector<SweepAxis> axes;
  if (!o.profiles.empty()) axes.push_back(ProfileAxis(job, o.profiles));
  if (!o.inputs.empty()) axes.push_back(InputsAxis(o.inputs));
  if (!o.seeds.empty()) axes.push_back(SeedAxis(o.seeds));
  for (const std::string& text : o.vary) axes.push_back(ParameterAxis(job, text));
  if (axes.empty())
    throw WrongUsage("nothing is varied: give --vary, --profiles, --inputs or --seeds");
  for (std::size_t i = 0; i < axes.size(); ++i)
    for (std::size_t k = 0; k < i; ++k)
      if (axes[k].name == axes[i].name && axes[k].element == axes[i].element)
        throw Failure(axes[i].name, "is varied twice", "give all its values at once");
  return axes;
}

std::string MeasuredRig(SceneJob& job, const SweepOptions& o, const std::vector<SweepAxis>& axes) {
  if (!o.rig.empty()) return job.FindRig(o.rig).GetInstanceName();
  for (const SweepAxis& axis : axes)
    if (!axis.rig.empty()) return axis.rig;
  return job.RigNames().front();
}

/// All rows would stand where they begin, most likely.
void WarnOfRest(Program& program, SceneJob& job) {
  for (rws::core::Instance* rig : job.GetCore().List(true))
    if (!InputsOf(*rig, -kForever).empty()) return;
  for (const auto* node : job.GetScene().GetNodes())
    if (node->HasKeys() && node->GetTag().empty()) return;
  program.GetOutput().Warn(
      "sweep: nothing has been recorded of any input: the controls are at rest in all rows "
      "(perform a take first, or give --inputs)");
}

SweepPlan PlanOf(Program& program, const SweepOptions& o) {
  SceneJob job(program, o.scene);
  RequireRigs(job);
  if (o.inputs.empty()) WarnOfRest(program, job);
  SweepPlan plan;
  plan.span = SpanOf(job.GetScene(), o.range);
  plan.scene = util::absolutePath(o.scene);
  plan.clip = program.GetOptions().clip;
  plan.dataRoot = util::absolutePath(rws::core::DataRoot::Get());
  plan.near = o.near.empty() ? "" : job.FindNode(o.near).GetName();
  plan.axes = AxesOf(job, o);
  if (plan.RowCount() > kMostRows)
    throw Failure("sweep", "there would be more than " + util::counted(kMostRows, "row"),
                  "vary less");
  // A value that can't be had is told before the first row is simulated.
  for (const SweepAxis& axis : plan.axes)
    for (const std::string& value : axis.values) {
      const std::string wrong = ApplySweepValue(job.GetSession(), axis, value);
      if (!wrong.empty())
        throw Failure("", wrong,
                      value.find(':') != std::string::npos ? "give a,b,c or from:to:count" : "");
    }
  plan.rig = MeasuredRig(job, o, plan.axes);
  plan.pick = o.pick;
  plan.scenes = o.scenes;
  SweepPick pick;
  const std::string wrong = o.pick.empty() ? "" : pick.Parse(o.pick);
  if (!wrong.empty()) throw Failure("--pick", wrong);
  if (plan.near.empty() && pick.Asks(kSweepNear))
    throw Failure("--pick", "there is nothing to be near to", "give --near NODE");
  std::string why;
  plan.content = plan.ReadContent(why);
  if (plan.content.empty()) throw Failure("", why);
  return plan;
}

/// While it lives no other program on this machine works on the sweep.
std::unique_ptr<QLockFile> LockSweep(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure(folder, "cannot be created: " + error.message());
  auto lock =
      std::make_unique<QLockFile>(QString::fromStdString(folder + "/" + SweepFolder::kLockName));
  if (!lock->tryLock(0))
    throw Failure(folder, "another program works on this sweep", "wait until it has ended");
  return lock;
}

std::string CountText(std::size_t count, std::size_t total) {
  return std::to_string(count) + " of " + util::counted(total, "row");
}

/// "3, 7 to 12".
std::string NumbersText(const std::vector<long>& numbers) {
  std::vector<std::string> parts;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t end = i;
    while (end + 1 < numbers.size() && numbers[end + 1] == numbers[end] + 1) ++end;
    parts.push_back(std::to_string(numbers[i]) +
                    (end > i ? " to " + std::to_string(numbers[end]) : ""));
    i = end + 1;
  }
  return Joined(parts);
}

/// Table, pictures and the verb's result. Fails when rows are missing.
void FinishSweep(Program& program, const SweepFolder& folder, const std::string& retry) {
  const SweepPlan& plan = folder.GetPlan();
  std::vector<SweepRow> rows;
  std::vector<long> missing;
  for (long number = 1; number <= plan.RowCount(); ++number) {
    if (auto row = folder.Read(number))
      rows.push_back(std::move(*row));
    else
      missing.push_back(number);
  }
  if (!missing.empty())
    throw Failure(
        folder.GetPath(),
        (missing.size() == 1 ? "a row is missing: " : "rows are missing: ") + NumbersText(missing),
        retry);
  Require(folder.Finish(rows));
  const auto failed = std::count_if(rows.begin(), rows.end(),
                                    [](const SweepRow& row) { return !row.error.empty(); });
  std::vector<long> picked;
  for (const SweepRow& row : rows)
    if (row.picked) picked.push_back(row.number);
  Output& out = program.GetOutput();
  if (failed > 0)
    out.Warn(CountText(static_cast<std::size_t>(failed), rows.size()) +
             " failed: the last column of sweep.csv tells why");
  auto& object = out.GetObject();
  object["rows"] = rows.size();
  object["failed"] = failed;
  object["picked"] = picked;
  object["output"] = folder.GetPath();
  if (!plan.pick.empty()) out.Line("picked: " + (picked.empty() ? "none" : NumbersText(picked)));
  out.Note("sweep: " + util::counted(rows.size(), "row") + ", written to " + folder.GetPath() +
           " (sweep.csv, paths.png, contact.png)");
}

std::vector<std::string> WorkerArguments(const SweepFolder& folder) {
  return {"--quiet", "--data-root", folder.GetPlan().dataRoot, "sweep", "work", folder.GetPath()};
}

void RunLocally(Program& program, const SweepFolder& folder, int jobs) {
  const std::vector<long> missing = folder.Missing();
  const auto total = static_cast<std::size_t>(folder.GetPlan().RowCount());
  const std::size_t before = total - missing.size();
  if (before > 0) program.GetOutput().Note("sweep: " + CountText(before, total) + " done before");
  std::string problems;
  {
    const ProgressBar bar(program.GetOutput(), "sweep");
    SweepWorkers workers(WorkerArguments(folder), jobs);
    problems = workers.Run(missing, [&](long done) {
      bar.GetMonitor().Tell(done, static_cast<long>(missing.size()));
    });
  }
  if (IsInterrupted())
    throw Interrupted("interrupted: " + CountText(total - folder.Missing().size(), total) +
                      " done; the same command goes on");
  if (!problems.empty()) throw Failure("sweep", problems, "the same command tries them again");
}

void RunSweep(Program& program, const SweepOptions& o) {
  if (o.scene.empty()) throw WrongUsage("SCENE is required");
  if (o.folder.empty() && !o.plan) throw WrongUsage("-o is required");
  const SweepPlan plan = PlanOf(program, o);
  program.GetOutput().Note("sweep: " + util::counted(plan.RowCount(), "row") + ", rig " + plan.rig);
  if (o.plan) {
    program.GetOutput().GetObject()["rows"] = plan.RowCount();
    program.GetOutput().Line(util::counted(plan.RowCount(), "row"));
    return;
  }
  SweepFolder folder(util::absolutePath(o.folder));
  const auto lock = LockSweep(folder.GetPath());
  Require(folder.Begin(plan));
  if (o.slurm) {
    SubmitToFarm(program, folder, folder.Missing(), static_cast<int>(o.chunk.value_or(10.0)));
    return;
  }
  RunLocally(program, folder,
             static_cast<int>(o.jobs.value_or(std::max(1, QThread::idealThreadCount()))));
  FinishSweep(program, folder, "the same command simulates them");
}

// --- work ---

/// Simulates the rows whose numbers come on stdin, a line each.
void RunWork(const std::string& path) {
  SweepFolder folder(path);
  Require(folder.Open());
  Require(folder.CheckContent());
  const SweepPlan& plan = folder.GetPlan();
  SceneSession session;
  for (std::string line; std::getline(std::cin, line);) {
    std::int64_t number = 0;
    if (!util::parseNumber(line, number) || number < 1 || number > plan.RowCount())
      throw Failure(path, "\"" + line + "\" is no row of this sweep");
    const SweepRow row = RunSweepRow(session, plan, number, Monitor({}, &InterruptFlag()));
    CheckInterrupt();
    if (plan.scenes && row.picked) Require(session.Save(folder.ScenePath(number)));
    Require(folder.Write(row));
    std::printf("done %lld\n", static_cast<long long>(number));
    std::fflush(stdout);
  }
}

// --- open, collect ---

struct OpenOptions {
  std::string folder, row, output;
};

void RunOpen(Program& program, const OpenOptions& o) {
  SweepFolder folder(o.folder);
  Require(folder.Open());
  Require(folder.CheckContent());
  std::int64_t number = 0;
  if (!util::parseNumber(o.row, number) || number < 1 || number > folder.GetPlan().RowCount())
    throw Failure("row " + o.row, "there is no such row",
                  "they go from 1 to " + std::to_string(folder.GetPlan().RowCount()));
  SceneSession session;
  SweepRow row;
  {
    const ProgressBar bar(program.GetOutput(), "sweep open");
    row = RunSweepRow(session, folder.GetPlan(), number, bar.GetMonitor());
  }
  CheckInterrupt();
  if (!row.error.empty()) throw Failure("row " + o.row, row.error);
  const std::string error = session.Save(o.output);
  if (!error.empty()) FailWriting(error);
  std::vector<std::string> values;
  for (std::size_t i = 0; i < folder.GetPlan().axes.size(); ++i)
    values.push_back(folder.GetPlan().axes[i].name + "=" + folder.GetPlan().ValuesOf(number)[i]);
  program.GetOutput().GetObject()["values"] = values;
  program.GetOutput().GetObject()["output"] = o.output;
  program.GetOutput().Note("sweep: row " + o.row + ", " + Joined(values) + ", written to " +
                           o.output);
}

struct CollectOptions {
  std::string folder;
  bool retry = false;
  std::optional<double> chunk;
};

void RunCollect(Program& program, const CollectOptions& o) {
  SweepFolder folder(util::absolutePath(o.folder));
  Require(folder.Open());
  const auto lock = LockSweep(folder.GetPath());
  if (o.retry) {
    Require(folder.CheckContent());
    const auto missing = folder.Missing();
    if (!missing.empty()) {
      SubmitToFarm(program, folder, missing, static_cast<int>(o.chunk.value_or(10.0)));
      return;
    }
  }
  FinishSweep(program, folder,
              "the same sweep command simulates what is missing, and sweep collect --retry has a "
              "farm do it");
}

CLI::Option* AddFolder(CLI::App& verb, std::string& folder) {
  return verb.add_option("DIR", folder, "Folder of the sweep")
      ->required()
      ->type_name("")
      ->check(CheckNotEmpty);
}

void AddChunk(CLI::App& verb, std::optional<double>& chunk) {
  AddNumber(verb, "--chunk", chunk, "Rows of one task of the farm (default: 10)",
            [](double value) { return MustBeFrom(value, 1.0, 100000.0); });
}

void AddSubverbs(Program& program, CLI::App& sweep) {
  auto open = std::make_shared<OpenOptions>();
  CLI::App& openVerb = program.AddVerb(sweep, "open", "Simulate one row again and write its scene",
                                       "rigwright sweep open runs 17 -o best.glb",
                                       [open](Program& p) { RunOpen(p, *open); });
  AddFolder(openVerb, open->folder);
  openVerb.add_option("ROW", open->row, "Number of the row")->required()->type_name("");
  AddSceneOutput(openVerb, open->output);

  auto collect = std::make_shared<CollectOptions>();
  CLI::App& collectVerb = program.AddVerb(
      sweep, "collect", "Write table and pictures of the rows that a farm has simulated",
      "rigwright sweep collect runs", [collect](Program& p) { RunCollect(p, *collect); });
  AddFolder(collectVerb, collect->folder);
  collectVerb.add_flag("--retry", collect->retry, "Send what is missing to the farm again");
  AddChunk(collectVerb, collect->chunk);
  program.MarkDrawing(collectVerb);

  auto work = std::make_shared<std::string>();
  CLI::App& workVerb =
      program.AddVerb(sweep, "work", "Simulate the rows whose numbers come on stdin, a line each",
                      "seq 1 10 | rigwright sweep work runs", [work](Program&) { RunWork(*work); });
  program.MarkReadOnly(workVerb);
  AddFolder(workVerb, *work);
}

}  // namespace

void AddSweepVerbs(Program& program) {
  auto o = std::make_shared<SweepOptions>();
  CLI::App& verb = program.AddVerb(
      "sweep",
      "Simulate many variants of a scene: a table of measures, and pictures of all paths\n"
      "All values of what is varied are combined. What is there already is kept: the same command\n"
      "goes on where it was ended.",
      "rigwright sweep drive.glb --vary \"Car:Mass Multiplier=1:4:7\" -o runs",
      [o](Program& p) { RunSweep(p, *o); });
  program.MarkDrawing(verb);
  verb.add_option("SCENE", o->scene, "Scene to read (.glb or .gltf)")
      ->type_name("")
      ->check(CheckNotEmpty);
  AddList(verb, "--vary", o->vary,
          "Values of a parameter: a,b,c, or from:to:count; may be repeated")
      ->type_name("RIG:LABEL=VALUES")
      ->check(CheckAssignment);
  verb.add_option("--profiles", o->profiles, "Config profiles of a rig")->type_name("[RIG:]A,B");
  verb.add_option("--inputs", o->inputs, "Input files (CSV), each in place of recorded tracks")
      ->type_name("A.csv,B.csv");
  verb.add_option("--seeds", o->seeds, "Random seeds of all rigs that have one, from a to b")
      ->type_name("a:b");
  AddRange(verb, o->range, "Seconds from and to (default: the playback range)");
  verb.add_option("--rig", o->rig, "Rig that is measured (default: the first that is varied)")
      ->type_name("RIG");
  verb.add_option("--near", o->near, "Measure the least distance to this node")->type_name("NODE");
  verb.add_option("--pick", o->pick,
                  "Mark rows such as lean<8,length>=100; measures: length, speed, air, lean, near, "
                  "slip, slipped")
      ->type_name("CONDITIONS");
  verb.add_flag("--scenes", o->scenes, "Write a scene for each row that is picked");
  AddNumber(verb, "--jobs", o->jobs, "Rows at a time (default: one a processor)",
            [](double value) { return MustBeFrom(value, 1.0, 1024.0); });
  verb.add_flag("--plan", o->plan, "Only tell how many rows there would be");
  verb.add_flag("--slurm", o->slurm, "Send the rows to a farm that runs Slurm");
  AddChunk(verb, o->chunk);
  verb.add_option("-o,--output", o->folder, "Folder to write")
      ->type_name("DIR")
      ->check(CheckNotEmpty);
  AddSubverbs(program, verb);
}

}  // namespace orv::app
