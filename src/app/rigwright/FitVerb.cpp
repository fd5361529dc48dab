// fit: a four-wheeler takes the size and place of a user's car, and carries it from then on.
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>

#include "adaptor/headless/HeadlessNode.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/CarFit.h"
#include "core/instances/Instance.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Vector = util::Vector3<double>;
using Json = nlohmann::ordered_json;

constexpr const char* kWheels[] = {"FL", "FR", "BL", "BR"};

struct FitOptions {
  std::string scene, rig, body, wheels, output;
};

/// "FL,FR,BL,BR" cut at its commas.
std::vector<std::string> FourNames(const std::string& text) {
  std::vector<std::string> names(1);
  for (const char c : text) {
    if (c == ',')
      names.emplace_back();
    else
      names.back() += c;
  }
  return names;
}

std::string CheckWheels(const std::string& text) {
  const std::vector<std::string> names = FourNames(text);
  bool good = names.size() == 4;
  for (const std::string& name : names) good = good && !name.empty();
  return good ? std::string() : "\"" + text + "\" is not four names as FL,FR,BL,BR";
}

Json ToJson(const Vector& v) {
  return {v.x, v.y, v.z};
}

void Tell(Program& program, const std::string& rig, const CarModel& model, const CarFit& fit) {
  const rws::addon::CarFrame& frame = fit.frame;
  Json& object = program.GetOutput().GetObject();
  object["rig"] = rig;
  object["body"] = model.body->GetSceneName();
  object["wheelbase"] = frame.wheelbase;
  object["track"] = {{"front", frame.frontTrack}, {"back", frame.backTrack}};
  object["origin"] = ToJson(frame.origin);
  object["restHeight"] = frame.restHeight;
  object["axes"] = {
      {"right", ToJson(frame.right)}, {"up", ToJson(frame.up)}, {"back", ToJson(frame.back)}};
  const auto number = [](double value) {
    return util::shortText(std::round(value * 1e5) / 1e5 + 0.0);  // no -0
  };
  Table table;
  table.Add({"wheel", "node", "centre (m)", "radius (m)", "width (m)"});
  for (std::size_t i = 0; i < 4; ++i) {
    const rws::addon::WheelMeasure& wheel = fit.wheels[i];
    const std::string node = model.wheels[i]->GetSceneName();
    object["wheels"].push_back({{"wheel", kWheels[i]},
                                {"node", node},
                                {"centre", ToJson(wheel.centre)},
                                {"radius", wheel.radius},
                                {"width", wheel.width},
                                {"unevenness", wheel.unevenness},
                                {"lean", fit.leans[i]},
                                {"hub", fit.hubs[i] ? Json(fit.hubs[i]->GetSceneName()) : Json()}});
    const Vector& c = wheel.centre;
    table.Add({kWheels[i], node, number(c.x) + "," + number(c.y) + "," + number(c.z),
               number(wheel.radius), number(wheel.width)});
  }
  Output& out = program.GetOutput();
  for (const std::string& line : table.Lines()) out.Line(line);
  out.Line("wheelbase " + number(frame.wheelbase) + " m, track " + number(frame.frontTrack) +
           " m in front, " + number(frame.backTrack) + " m in the back");
  const Vector ahead = -frame.back;
  out.Line("heads for " + number(ahead.x) + "," + number(ahead.y) + "," + number(ahead.z) +
           "; the body's origin is " + number(frame.restHeight) + " m above the ground");
  out.Note(rig + " carries " + model.body->GetSceneName() + " and its wheels");
}

void RunFit(Program& program, const FitOptions& options) {
  std::vector<std::string> names = FourNames(options.wheels);
  names.push_back(options.body);
  for (std::size_t i = 0; i < names.size(); ++i)
    for (std::size_t k = i + 1; k < names.size(); ++k)
      if (names[i] == names[k]) throw WrongUsage("\"" + names[i] + "\" is named twice");

  SceneJob job(program, options.scene);
  rws::core::Instance& rig = job.FindRig(options.rig);
  const Problem unfit = CheckFittedRig(rig);
  if (unfit) throw Failure(unfit, job.GetScene());
  CarModel model;
  model.body = &job.FindHostNode(options.body);
  for (std::size_t i = 0; i < 4; ++i) model.wheels[i] = &job.FindHostNode(names[i]);
  CarFit fit = FitCar(rig, model);
  for (const Problem& odd : fit.odd) program.GetOutput().Warn(TextOf(odd, job.GetScene()));
  if (fit.problem && fit.problem.what.empty()) fit.problem.what = "--wheels";
  if (fit.problem) throw Failure(fit.problem, job.GetScene());
  job.Save(options.output);
  Tell(program, rig.GetInstanceName(), model, fit);
}

}  // namespace

void AddFitVerb(Program& program) {
  auto o = std::make_shared<FitOptions>();
  CLI::App& verb = program.AddVerb(
      "fit",
      "Fit a four-wheeler to your own car; prints what it measured\n"
      "Reads centre, radius and width of each wheel from the meshes at the start of the playback\n"
      "range, scales and places the rig, and puts your nodes under the rig's, where they stay in\n"
      "their place. Apply a profile first: it decides how much of a wheel the ground feels.",
      "rigwright fit yard.glb Car --body Body --wheels WheelFL,WheelFR,WheelBL,WheelBR "
      "-o fitted.glb",
      [o](Program& p) { RunFit(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("RIG", o->rig, "Name of the rig, a 4WheelerExt without a take")
      ->required()
      ->type_name("");
  verb.add_option("--body", o->body, "Node of your car's body")
      ->required()
      ->type_name("NODE")
      ->check(CheckNotEmpty);
  verb.add_option("--wheels", o->wheels, "Nodes of its wheels, as its driver sees them")
      ->required()
      ->type_name("FL,FR,BL,BR")
      ->check(CheckWheels);
  AddSceneOutput(verb, o->output);
}

}  // namespace orv::app
