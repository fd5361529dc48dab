// export.
#include <algorithm>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

#include "adaptor/headless/GltfReader.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/CleanScene.h"
#include "app/session/DeliveryFile.h"
#include "app/session/SavingNote.h"
#include "app/session/anyhost/FrameTimes.h"
#include "app/session/anyhost/RunRigs.h"
#include "unidevice/software/CsvReader.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::adaptor::headless::Scene;
using rws::adaptor::headless::SceneNode;
using rws::adaptor::headless::Trs;
using Matrix = util::Matrix<double>;

struct ExportOptions {
  std::string scene, range, output;
  std::vector<std::string> nodes, keep;
  bool clean = false;
};

// --- poses as CSV ---

/// World poses of all nodes at one time after another.
class WorldPoses {
 public:
  explicit WorldPoses(const rws::adaptor::headless::Scene& scene) : m_nodes(scene.nodes()) {
    std::map<const SceneNode*, int> places;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const auto parent = places.find(m_nodes[i]->parent());
      m_parents.push_back(parent == places.end() ? -1 : parent->second);
      places[m_nodes[i]] = static_cast<int>(i);
    }
    m_world.resize(m_nodes.size());
  }

  void evaluate(double time) {
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
      const Matrix local = m_nodes[i]->localMatrix(time);
      m_world[i] =
          m_parents[i] < 0 ? local : m_world[static_cast<std::size_t>(m_parents[i])] * local;
    }
  }

  const std::vector<SceneNode*>& nodes() const { return m_nodes; }
  const Matrix& world(std::size_t i) const { return m_world[i]; }

 private:
  std::vector<SceneNode*> m_nodes;
  std::vector<int> m_parents;  ///< place of each node's parent, -1 for the world
  std::vector<Matrix> m_world;
};

std::string poseRow(double time, const std::string& name, const Matrix& world) {
  const Trs pose = rws::adaptor::headless::decompose(world);
  const double numbers[] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::string row = util::exactText(time) + "," + name;
  for (const double number : numbers) row += "," + util::exactText(number);
  return row + "\n";
}

long writePoses(SceneJob& job, const ExportOptions& options, const TimeSpan& span) {
  WorldPoses poses(job.scene());
  std::vector<std::pair<std::size_t, std::string>> wanted;  // place and the name as a CSV field
  std::set<const SceneNode*> named;
  for (const std::string& name : options.nodes) named.insert(&job.node(name));
  for (std::size_t i = 0; i < poses.nodes().size(); ++i)
    if (named.empty() || named.count(poses.nodes()[i]))
      wanted.emplace_back(i, unidevice::csvField(poses.nodes()[i]->name()));

  const FrameTimes frames(span.from, span.to, job.scene().frameDuration());
  ProgressBar bar(job.program().output(), "export", frames.count());
  util::AtomicFile file(options.output);
  file.write("time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz\n");
  for (long i = 0; i < frames.count(); ++i) {
    checkInterrupt();
    const double time = frames.time(frames.first + i);
    poses.evaluate(time);
    std::string rows;
    for (const auto& [place, name] : wanted) rows += poseRow(time, name, poses.world(place));
    if (!file.write(rows)) failWriting(file.error());
    bar.set(i);
  }
  checkInterrupt();
  if (!file.commit()) failWriting(file.error());
  return frames.count();
}

// --- clean ---

/// The range, or without one all that is keyed and played.
TimeSpan bakedSpan(const Scene& scene, const std::string& range) {
  TimeSpan span = spanOf(scene, range);
  double from = 0.0;
  double to = 0.0;
  if (range.empty() && scene.keyRange(from, to)) {
    span.from = std::min(span.from, from);
    span.to = std::max(span.to, to);
  }
  return span;
}

/// The nodes that `--keep` names; a name that ends in * stands for all that begin so.
std::set<std::string> keptNodes(const Scene& scene, const ExportOptions& options) {
  std::set<std::string> keep;
  for (const std::string& name : options.keep) {
    const bool all = !name.empty() && name.back() == '*';
    const std::string start = all ? name.substr(0, name.size() - 1) : name;
    bool found = false;
    std::vector<std::string> known;
    for (const SceneNode* node : scene.nodes()) {
      known.push_back(node->name());
      if (all ? node->name().compare(0, start.size(), start) != 0 : node->name() != name) continue;
      keep.insert(node->name());
      found = true;
    }
    if (!found)
      throw Failure(options.scene, "there is no node \"" + name + "\"",
                    hintFor(start, known, "nodes"));
  }
  return keep;
}

/// Works on the file alone: no rig is built, so none has a say in what is delivered.
void runClean(Program& program, const ExportOptions& options) {
  Output& out = program.output();
  auto read = rws::adaptor::headless::GltfReader::read(options.scene, {program.options().clip});
  if (!read) throw Failure("", read.error);
  for (const std::string& text : read.warnings) out.warn(text);
  Scene& scene = *read.scene;
  const std::set<std::string> keep = keptNodes(scene, options);
  const TimeSpan span = bakedSpan(scene, options.range);
  const FrameTimes frames(span.from, span.to, scene.frameDuration());
  CleanResult cleaned;
  {
    ProgressBar bar(out, "export", frames.count());
    cleaned = cleanScene(scene, keep, span.from, span.to, bar);
  }
  checkInterrupt();
  for (const std::string& text : cleaned.warnings) out.warn(text);
  std::vector<std::string> lost;
  {
    const SavingNote note(out, options.output);
    const std::string error = writeDelivery(scene, options.output, lost);
    if (!error.empty()) failWriting(error);
  }
  for (const std::string& text : lost) out.warn(text);
  out.object()["baked"] = cleaned.baked;
  out.object()["output"] = options.output;
  out.note("export: " + std::to_string(cleaned.baked) + (cleaned.baked == 1 ? " node" : " nodes") +
           " baked, written to " + options.output);
}

void runExport(Program& program, const ExportOptions& options) {
  const std::string ending = endingOf(options.output);
  if (options.clean && ending != ".glb" && ending != ".gltf")
    throw WrongUsage("--clean writes a scene, and " + options.output +
                     " does not end in .glb or .gltf");
  if (!options.clean && !ending.empty() && ending != ".csv" && ending != ".txt")
    throw WrongUsage("export writes poses as CSV, and " + options.output +
                     " does not end in .csv; with --clean it writes a scene for delivery, .glb or "
                     ".gltf, which other programs read");
  if (options.clean) return runClean(program, options);
  SceneJob job(program, options.scene);
  const TimeSpan span = spanOf(job.scene(), options.range);
  const long frames = writePoses(job, options, span);
  program.output().object()["frames"] = frames;
  program.output().object()["output"] = options.output;
  program.output().note("export: " + std::to_string(frames) + " frames, written to " +
                        options.output);
}

}  // namespace

void addExportVerb(Program& program) {
  auto o = std::make_shared<ExportOptions>();
  CLI::App& verb = program.addVerb(
      "export",
      "Write world poses as CSV, one row per frame and node; or with --clean a scene for delivery\n"
      "Columns: time,node,tx,ty,tz,qx,qy,qz,qw,sx,sy,sz (s, m, unit quaternion, factors).\n"
      "--clean keeps your own nodes, with the motion that rigs gave them baked as keys per frame.",
      "rigwright export out.glb -o poses.csv\n"
      "  rigwright export out.glb --clean --keep Cam_FollowCam -o delivery.glb\n"
      "  rigwright export shots.glb --clean --keep \"Gun_bullet_*\" -o delivery.glb",
      [o](Program& p) { runExport(p, *o); });
  program.markReadOnly(verb);
  addScene(verb, o->scene);
  addRange(verb, o->range, "Seconds from and to (default: the playback range)");
  CLI::Option* nodes = addList(verb, "--node", o->nodes, "Only this node; may be repeated");
  nodes->type_name("NODE");
  CLI::Option* clean = verb.add_flag("--clean", o->clean, "Write a scene without rigs");
  clean->excludes(nodes);
  addList(verb, "--keep", o->keep,
          "With --clean: keep this node of a rig, such as its camera, or with a * at the end all "
          "whose names begin so; may be repeated")
      ->type_name("NODE")
      ->needs(clean);
  addOutput(verb, o->output, "File to write: .csv, or with --clean .glb or .gltf");
}

}  // namespace orv::app
