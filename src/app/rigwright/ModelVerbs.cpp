// import; model make, info, add.
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "app/session/models/ModelFile.h"
#include "app/session/models/RiggedModel.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Vector = util::Vector3<double>;
using Json = nlohmann::ordered_json;

/// In place of a scene's path: an empty one.
constexpr const char* kNewScene = "new";

std::string NumberText(double value) {
  return util::shortText(std::round(value * 1e4) / 1e4 + 0.0);
}

std::string SizeText(const Vector& size) {
  return NumberText(size.x) + " x " + NumberText(size.y) + " x " + NumberText(size.z) + " m";
}

std::unique_ptr<SceneJob> OpenOrNew(Program& program, const std::string& path) {
  return path == kNewScene ? std::make_unique<SceneJob>(program)
                           : std::make_unique<SceneJob>(program, path);
}

// --- import ---

struct ImportVerbOptions {
  std::string scene, model, up, under, output;
  std::optional<double> unit;
};

void TellUnits(Program& program, const ModelFacts& facts, double unit, UpAxis up, bool unitGiven,
               bool upGiven) {
  Output& out = program.GetOutput();
  Json& object = out.GetObject();
  const Vector told =
      up == UpAxis::kZ ? Vector(facts.size.x, facts.size.z, facts.size.y) : facts.size;
  object["format"] = facts.format;
  object["unitMeters"] = unit;
  object["up"] = up == UpAxis::kZ ? "z" : "y";
  object["size"] = {told.x * unit, told.y * unit, told.z * unit};
  const auto source = [](bool given, bool isTold) {
    return given ? "as you say" : isTold ? "as the file tells" : "guessed, the file does not tell";
  };
  out.Note(facts.format + ": a unit is " + util::shortText(unit) + " m (" +
           source(unitGiven, facts.unitMeters.told) + "), " + (up == UpAxis::kZ ? "Z" : "Y") +
           " is up (" + source(upGiven, facts.up.told) + "); " + SizeText(told * unit));
  if (!unitGiven && !facts.unitMeters.told && unit != 1.0)
    out.Warn("the file does not tell its unit: " + util::shortText(unit) +
             " m is taken, since it would be " + SizeText(told) +
             " large in metres (--scale gives another)");
}

void RunImport(Program& program, const ImportVerbOptions& options) {
  ModelFile file;
  bool cancelled = false;
  {
    const ProgressBar bar(program.GetOutput(), "import");
    const Problem problem = file.Read(options.model, bar.GetMonitor(), cancelled);
    CheckInterrupt();
    if (problem) throw Failure(problem.what, problem.why, problem.hint);
  }
  const auto job = OpenOrNew(program, options.scene);
  ImportOptions wanted;
  wanted.unitMeters = options.unit;
  if (!options.up.empty()) wanted.up = options.up == "z" ? UpAxis::kZ : UpAxis::kY;
  wanted.under = options.under;
  const ModelFacts& facts = file.GetFacts();
  const ImportResult result = file.AddTo(job->GetSession(), wanted, Monitor({}, &InterruptFlag()));
  CheckInterrupt();
  if (result.problem) throw Failure(result.problem, job->GetScene());
  TellUnits(program, facts, wanted.unitMeters.value_or(facts.unitMeters.value),
            wanted.up.value_or(facts.up.value), wanted.unitMeters.has_value(),
            wanted.up.has_value());
  for (const std::string& text : facts.odd) program.GetOutput().Warn(options.model + ": " + text);
  for (const std::string& text : result.warnings)
    program.GetOutput().Warn(options.model + ": " + text);
  job->Save(options.output);
  program.GetOutput().GetObject()["nodes"] = result.nodes;
  for (const std::string& name : result.nodes) program.GetOutput().Line(name);
}

void AddImport(Program& program) {
  auto o = std::make_shared<ImportVerbOptions>();
  CLI::App& verb = program.AddVerb(
      "import",
      "Bring a model into a scene; prints its topmost nodes\n"
      "Reads .obj, .fbx, .dae, .stl, .3ds, .glb and .gltf: tree, meshes, materials, "
      "textures,\n"
      "cameras and the nodes' keys. Unit and up are the file's; what it does not tell is guessed,\n"
      "which is said.",
      "rigwright import yard.glb car.fbx --scale 0.01 --up z -o yard.glb",
      [o](Program& p) { RunImport(p, *o); });
  AddScene(verb, o->scene)->description("Scene to read (.glb or .gltf), or new for an empty one");
  verb.add_option("MODEL", o->model, "File of the model")
      ->required()
      ->type_name("")
      ->check(CheckNotEmpty);
  AddNumber(verb, "--scale", o->unit, "Metres of one unit of the file",
            [](double value) { return MustBeFrom(value, 1e-6, 1e6); });
  verb.add_option("--up", o->up, "Axis of the file that points up")
      ->type_name("y|z")
      ->check(CLI::IsMember({"y", "z"}));
  verb.add_option("--under", o->under, "Node that the model comes below")
      ->type_name("NODE")
      ->check(CheckNotEmpty);
  AddSceneOutput(verb, o->output);
}

// --- model ---

struct ModelOptions {
  std::string scene, model, title, text, picture, ground, output;
  std::vector<std::string> rigs, nodes;
  std::optional<Vector> translate;
};

void RunMake(Program& program, const ModelOptions& options) {
  SceneJob job(program, options.scene);
  ModelCard card{options.title, options.text, {}};
  std::string error;
  if (!options.picture.empty() && !util::readFile(options.picture, card.picture, &error))
    throw Failure("", error);
  for (const std::string& rig : options.rigs) job.FindRow(rig);
  for (const std::string& node : options.nodes) job.FindNode(node);
  std::vector<std::string> warnings;
  CheckInterrupt();
  const Problem problem = MakeRiggedModel(job.GetSession(), {options.rigs, options.nodes}, card,
                                          options.output, warnings);
  if (problem) throw Failure(problem, job.GetScene());
  for (const std::string& text : warnings) program.GetOutput().Warn(text);
  program.GetOutput().GetObject()["output"] = options.output;
  program.GetOutput().Note("model: written to " + options.output);
}

void RunInfo(Program& program, const ModelOptions& options) {
  const RiggedModelInfo info = ReadRiggedModel(options.model);
  if (info.problem) throw Failure(info.problem.what, info.problem.why, info.problem.hint);
  const Vector size = info.high - info.low;
  Output& out = program.GetOutput();
  Json& object = out.GetObject();
  object["title"] = info.card.title;
  object["text"] = info.card.text;
  object["pictureBytes"] = info.card.picture.size();
  object["nodes"] = info.nodes;
  object["take"] = info.hasTake;
  object["size"] = {size.x, size.y, size.z};
  object["rigs"] = Json::array();
  out.Line(info.card.title);
  if (!info.card.text.empty()) out.Line(info.card.text);
  out.Line(util::counted(info.nodes, "node") + ", " + SizeText(size) +
           (info.hasTake ? ", with a take" : ""));
  Table table;
  table.Add({"rig", "kind"});
  for (const RiggedModelInfo::Rig& rig : info.rigs) {
    object["rigs"].push_back({{"name", rig.name}, {"kind", rig.kind}});
    table.Add({rig.name, rig.kind});
  }
  for (const std::string& line : table.Lines()) out.Line(line);
}

void RunModelList(Program& program) {
  Output& out = program.GetOutput();
  out.GetObject()["models"] = Json::array();
  Table table;
  table.Add({"model", "title"});
  for (const std::string& path : ShippedModels()) {
    const std::string title = ReadRiggedModel(path).card.title;
    out.GetObject()["models"].push_back({{"path", path}, {"title", title}});
    table.Add({path, title});
  }
  for (const std::string& line : table.Lines()) out.Line(line);
}

void RunAddModel(Program& program, const ModelOptions& options) {
  const auto job = OpenOrNew(program, options.scene);
  if (!options.ground.empty()) job->FindNode(options.ground);
  const AddedModel added = AddRiggedModel(job->GetSession(), options.model,
                                          {options.translate.value_or(Vector()), options.ground});
  if (added.problem) throw Failure(added.problem, job->GetScene());
  for (const std::string& text : added.warnings) program.GetOutput().Warn(text);
  job->Save(options.output);
  program.GetOutput().GetObject()["rigs"] = added.rigs;
  program.GetOutput().GetObject()["nodes"] = added.nodes;
  for (const std::string& rig : added.rigs) program.GetOutput().Line(rig);
}

CLI::Option* AddModel(CLI::App& verb, std::string& path) {
  return verb.add_option("MODEL", path, "Pre-rigged model (.prm, or as model list tells)")
      ->required()
      ->type_name("")
      ->check(CheckNotEmpty);
}

void AddMake(Program& program, CLI::App& group) {
  auto o = std::make_shared<ModelOptions>();
  CLI::App& verb = program.AddVerb(
      group, "make", "Write rigs and nodes, with all that stands below them, as a pre-rigged model",
      "rigwright model make drive.glb --rig Car --node Trailer --title \"Car and trailer\" "
      "-o car.prm",
      [o](Program& p) { RunMake(p, *o); });
  AddScene(verb, o->scene);
  AddList(verb, "--rig", o->rigs, "Rig that it has; may be repeated")->type_name("RIG");
  AddList(verb, "--node", o->nodes, "Node that it has; may be repeated")->type_name("NODE");
  verb.add_option("--title", o->title, "Its name for people")
      ->required()
      ->type_name("TITLE")
      ->check(CheckNotEmpty);
  verb.add_option("--text", o->text, "What it is and how to drive it")->type_name("TEXT");
  verb.add_option("--picture", o->picture, "What it looks like (.png or .jpg)")
      ->type_name("FILE")
      ->check(CheckNotEmpty);
  AddOutput(verb, o->output, "Model to write (.prm)")->type_name("OUT");
}

void AddGroup(Program& program) {
  CLI::App& group = program.AddGroup("model", "Pre-rigged models: make, list, info, add",
                                     "rigwright model add yard.glb car.prm -o yard.glb");
  AddMake(program, group);
  program.MarkReadOnly(program.AddVerb(group, "list", "List the models that come with the program",
                                       "rigwright model list", RunModelList));
  auto o = std::make_shared<ModelOptions>();
  CLI::App& info =
      program.AddVerb(group, "info", "Tell what a pre-rigged model is",
                      "rigwright model info car.prm", [o](Program& p) { RunInfo(p, *o); });
  AddModel(info, o->model);
  program.MarkReadOnly(info);

  auto a = std::make_shared<ModelOptions>();
  CLI::App& add = program.AddVerb(
      group, "add", "Add the rigs and nodes of a pre-rigged model to a scene; prints its rigs",
      "rigwright model add yard.glb car.prm --translate 0,0,-4 --ground Terrain -o yard.glb",
      [a](Program& p) { RunAddModel(p, *a); });
  AddScene(add, a->scene)->description("Scene to read (.glb or .gltf), or new for an empty one");
  AddModel(add, a->model);
  AddVector(add, "--translate", a->translate, "By how much all of it is moved (m)");
  add.add_option("--ground", a->ground, "Node that its rigs take as their ground")
      ->type_name("NODE")
      ->check(CheckNotEmpty);
  AddSceneOutput(add, a->output);
}

}  // namespace

void AddModelVerbs(Program& program) {
  AddImport(program);
  AddGroup(program);
}

}  // namespace orv::app
