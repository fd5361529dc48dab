// export.
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/RunOptions.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/CleanScene.h"
#include "app/session/DeliveryFile.h"
#include "app/session/PosesFile.h"
#include "app/session/SavingNote.h"
#include "app/session/SceneRange.h"
#include "app/session/anyhost/Names.h"
#include "app/session/delivery/AnimatedFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::adaptor::Trs;
using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;

struct ExportOptions {
  std::string scene, range, output;
  std::string up;  ///< "y" or "z"; empty: not said
  std::vector<std::string> nodes, keep;
  bool clean = false;
};

// --- poses as CSV ---

std::vector<const SceneNode*> NodesOf(SceneJob& job, const ExportOptions& options) {
  std::vector<const SceneNode*> nodes;
  for (const std::string& name : options.nodes) nodes.push_back(&job.FindNode(name));
  return nodes;
}

long WritePoses(SceneJob& job, const ExportOptions& options, const TimeSpan& span) {
  const std::vector<const SceneNode*> only = NodesOf(job, options);
  const ProgressBar bar(job.GetProgram().GetOutput(), "export");
  const PosesResult written =
      WritePoses(job.GetScene(), only, span, options.output, bar.GetMonitor());
  CheckInterrupt();
  if (!written.error.empty()) FailWriting(written.error);
  return written.frames;
}

// --- animation for other hosts ---

long WriteAnimation(SceneJob& job, const ExportOptions& options, const TimeSpan& span) {
  using rws::adaptor::UpAxis;
  Output& out = job.GetProgram().GetOutput();
  const std::vector<const SceneNode*> only = NodesOf(job, options);
  AnimatedResult written;
  {
    const ProgressBar bar(out, "export");
    written = WriteAnimated(job.GetScene(), only, span, options.up == "z" ? UpAxis::kZ : UpAxis::kY,
                            options.output, bar.GetMonitor());
  }
  CheckInterrupt();
  if (!written.error.empty()) FailWriting(written.error);
  for (const std::string& warning : written.warnings) out.Warn(warning);
  out.GetObject()["nodes"] = written.nodes;
  return written.frames;
}

// --- clean ---

/// The nodes that `--keep` names.
std::set<std::string> KeptNodes(const Scene& scene, const ExportOptions& options) {
  std::set<std::string> keep;
  for (const std::string& pattern : options.keep) {
    const std::set<std::string> named = NodesNamed(scene, pattern);
    keep.insert(named.begin(), named.end());
    if (!named.empty()) continue;
    std::vector<std::string> known;
    for (const SceneNode* node : scene.GetNodes()) known.push_back(node->GetName());
    std::string start = pattern;
    if (!start.empty() && start.back() == '*') start.pop_back();
    throw Failure(options.scene, "there is no node \"" + pattern + "\"",
                  HintFor(start, known, "nodes"));
  }
  return keep;
}

/// Works on the file alone: no rig is built, so none has a say in what is delivered.
void RunClean(Program& program, const ExportOptions& options) {
  Output& out = program.GetOutput();
  const auto warn = [&out](const std::vector<std::string>& texts) {
    for (const std::string& text : texts) out.Warn(text);
  };
  auto read = rws::adaptor::headless::GltfReader::Read(options.scene, {program.GetOptions().clip});
  if (!read) throw Failure("", read.error);
  warn(read.warnings);
  Scene& scene = *read.scene;
  const std::set<std::string> keep = KeptNodes(scene, options);
  TimeSpan span = SpanOf(scene, options.range);
  if (options.range.empty()) span = KeyedRange(scene);
  CleanResult cleaned;
  {
    const ProgressBar bar(out, "export");
    cleaned = CleanScene(scene, keep, span, bar.GetMonitor());
  }
  CheckInterrupt();
  warn(cleaned.warnings);
  std::vector<std::string> lost;
  {
    const SavingNote note(MakeSavingNote(out, options.output));
    const std::string error = WriteDelivery(scene, options.output, lost);
    if (!error.empty()) FailWriting(error);
  }
  warn(lost);
  out.GetObject()["baked"] = cleaned.baked;
  out.GetObject()["output"] = options.output;
  out.Note("export: " + util::counted(cleaned.baked, "node") + " baked, written to " +
           options.output);
}

void RunExport(Program& program, const ExportOptions& options) {
  const std::string ending = EndingOf(options.output);
  if (options.clean && ending != ".glb" && ending != ".gltf")
    throw WrongUsage("--clean writes a scene, and " + options.output +
                     " does not end in .glb or .gltf");
  const bool isAnimated = IsAnimatedFile(options.output);
  if (!options.clean && !isAnimated && !ending.empty() && ending != ".csv" && ending != ".txt")
    throw WrongUsage("export writes poses as CSV or animation for other programs, and " +
                     options.output +
                     " ends in none of .csv, .anim, .ma and .usda; with --clean it writes a scene "
                     "for delivery, .glb or .gltf, which other programs read");
  if (!isAnimated && !options.up.empty())
    throw WrongUsage("--up is for .anim, .ma and .usda; what else is exported has Y up");
  if (options.clean) return RunClean(program, options);
  SceneJob job(program, options.scene);
  const TimeSpan span = SpanOf(job.GetScene(), options.range);
  const long frames =
      isAnimated ? WriteAnimation(job, options, span) : WritePoses(job, options, span);
  program.GetOutput().GetObject()["frames"] = frames;
  program.GetOutput().GetObject()["output"] = options.output;
  program.GetOutput().Note("export: " + util::counted(frames, "frame") + ", written to " +
                           options.output);
}

}  // namespace

void AddExportVerb(Program& program) {
  auto o = std::make_shared<ExportOptions>();
  CLI::App& verb = program.AddVerb(
      "export",
      "Write world poses as CSV, one row per frame and node; animation for Maya or USD; or with "
      "--clean a scene for delivery\n"
      "Columns: time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz (s, m, unit quaternion, factors).\n"
      ".anim (curves to paste), .ma and .usda hold the tree of nodes with a key per frame; a node\n"
      "whose parent is not exported carries its world pose.\n"
      "--clean keeps your own nodes, with the motion that rigs gave them baked as keys per frame.",
      "rigwright export out.glb -o poses.csv\n"
      "  rigwright export out.glb --node Cam_FollowCam -o camera.ma\n"
      "  rigwright export out.glb --up z -o shot.usda\n"
      "  rigwright export out.glb --clean --keep Cam_FollowCam -o delivery.glb\n"
      "  rigwright export shots.glb --clean --keep \"Gun_bullet_*\" -o delivery.glb",
      [o](Program& p) { RunExport(p, *o); });
  program.MarkReadOnly(verb);
  AddScene(verb, o->scene);
  AddRange(verb, o->range, "Seconds from and to (default: the playback range)");
  CLI::Option* nodes = AddList(verb, "--node", o->nodes, "Only this node; may be repeated");
  nodes->type_name("NODE");
  CLI::Option* clean = verb.add_flag("--clean", o->clean, "Write a scene without rigs");
  clean->excludes(nodes);
  AddList(verb, "--keep", o->keep,
          "With --clean: keep this node of a rig, such as its camera, or with a * at the end all "
          "whose names begin so; may be repeated")
      ->type_name("NODE")
      ->needs(clean);
  verb.add_option("--up", o->up, "Up axis of the .anim, .ma or .usda (default: y)")
      ->check(CLI::IsMember({"y", "z"}))
      ->type_name("AXIS");
  AddOutput(verb, o->output,
            "File to write: .csv, .anim, .ma or .usda, or with --clean .glb or .gltf");
}

}  // namespace orv::app
