// takes.
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Verbs.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/TakePaths.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct TakesOptions {
  std::string scene, action, output;
  std::vector<std::string> words;
};

std::string MarkOf(const KeptTakes& takes, const KeptTake& take) {
  if (takes.GetCurrent() == take.number) return "in use";
  return take.undone ? "undone" : take.retried ? "retried" : "";
}

std::vector<std::string> RigsOf(const KeptTake& take) {
  std::vector<std::string> rigs;
  for (const KeptRig& rig : take.rigs) rigs.push_back(rig.name);
  return rigs;
}

std::string OriginOf(const KeptTakes& takes, const KeptTake& take) {
  std::vector<std::string> numbers;
  for (const int number : takes.GetPredecessors(take)) numbers.push_back(std::to_string(number));
  return numbers.empty() ? "" : "goes on from " + Joined(numbers);
}

nlohmann::ordered_json JsonOf(const KeptTakes& takes, const KeptTake& take) {
  return {{"number", take.number},
          {"name", take.name},
          {"note", take.note},
          {"stars", take.stars},
          {"when", take.when},
          {"rate", take.rate},
          {"range", {take.range.from, take.range.to}},
          {"predecessor", takes.GetPredecessor(take)},
          {"predecessors", takes.GetPredecessors(take)},
          {"mark", MarkOf(takes, take)},
          {"rigs", RigsOf(take)},
          {"version", take.version},
          {"hash", take.hash}};
}

void ListTakes(Output& out, const KeptTakes& takes) {
  out.GetObject()["takes"] = nlohmann::ordered_json::array();
  for (const KeptTake& take : takes.GetTakes()) {
    out.GetObject()["takes"].push_back(JsonOf(takes, take));
    std::string line = std::to_string(take.number) + "  " + RangeText(take.range) + "  " +
                       take.when + "  " + std::string(static_cast<std::size_t>(take.stars), '*');
    for (const std::string& text :
         {Joined(RigsOf(take)), MarkOf(takes, take), take.name, take.note, OriginOf(takes, take)})
      if (!text.empty()) line += "  " + text;
    out.Line(line);
  }
  if (takes.GetTakes().empty()) out.Line("no takes are kept");
}

/// What an action wants to be told.
struct TakesAction {
  const char* name;
  std::size_t words;
  const char* usage;
};
constexpr TakesAction kTakesActions[] = {
    {"list", 0, "list"},        {"use", 1, "use N"},         {"path", 1, "path N"},
    {"name", 2, "name N TEXT"}, {"star", 2, "star N STARS"}, {"note", 2, "note N TEXT"},
    {"delete", 1, "delete N"},  {"export", 1, "export N"},   {"import", 1, "import FILE"}};

const TakesAction& ActionOf(const std::string& action) {
  for (const TakesAction& each : kTakesActions)
    if (action == each.name) return each;
  throw WrongUsage(
      "there is no \"" + action +
      "\" of takes: write list, use, path, name, star, note, delete, export or import");
}

int NumberOf(const TakesOptions& o, const KeptTakes& takes) {
  int number = 0;
  if (!util::parseNumber(o.words[0], number))
    throw WrongUsage("\"" + o.words[0] + "\" is no number of a take");
  if (!takes.Find(number))
    throw Failure(o.scene, "there is no take " + o.words[0],
                  takes.GetTakes().empty() ? "no takes are kept in it"
                                           : "rigwright takes " + o.scene + " list tells them");
  return number;
}

void UseTake(SceneJob& job, KeptTakes& takes, int number) {
  UseResult result;
  {
    const ProgressBar bar(job.GetProgram().GetOutput(), "takes");
    result = takes.Use(number, bar.GetMonitor());
  }
  CheckInterrupt();
  if (!result.problem.empty()) throw Failure("take " + std::to_string(number), result.problem);
  job.GetProgram().GetOutput().GetObject()["same"] = result.isSame;
  job.GetProgram().GetOutput().GetObject()["rigs"] = result.rigs;
  if (!result.isSame)
    job.GetProgram().GetOutput().Warn(
        "take " + std::to_string(number) +
        ": its poses are not those that were performed: the ground, another node or the program "
        "has changed since");
}

/// As the take goes when it is used; nothing is written.
void TellPaths(SceneJob& job, KeptTakes& takes, int number) {
  UseTake(job, takes, number);
  Output& out = job.GetProgram().GetOutput();
  out.GetObject()["paths"] = nlohmann::ordered_json::array();
  for (const TakePath& path : PathsOf(*takes.Find(number), job.GetCore(), job.GetScene())) {
    out.GetObject()["paths"].push_back({{"rig", path.rig}, {"places", path.places}});
    for (const auto& [x, z] : path.places)
      out.Line(path.rig + "  " + util::shortText(x) + "  " + util::shortText(z));
  }
}

void ChangeTakes(SceneJob& job, const TakesOptions& o) {
  KeptTakes& takes = job.GetSession().GetTakes();
  if (o.action == "import") {
    std::string bytes, problem;
    if (!util::readFile(o.words[0], bytes, &problem)) throw Failure("", problem);
    std::vector<int> numbers;
    problem = takes.Import(bytes, numbers);
    if (!problem.empty())
      throw Failure(o.words[0], problem,
                    "give a file that takes SCENE export N -o FILE has written");
    job.GetProgram().GetOutput().GetObject()["numbers"] = numbers;
    return;
  }
  const int number = NumberOf(o, takes);
  if (o.action == "use") UseTake(job, takes, number);
  if (o.action == "name") takes.SetName(number, o.words[1]);
  if (o.action == "note") takes.SetNote(number, o.words[1]);
  int stars = 0;
  if (o.action == "star") {
    if (!util::parseNumber(o.words[1], stars) || stars < 0 || stars > 5)
      throw WrongUsage("stars are a whole number from 0 to 5");
    takes.SetStars(number, stars);
  }
  if (o.action != "delete") return;
  const std::string problem = takes.Delete(number);
  if (!problem.empty()) throw Failure("take " + o.words[0], problem, "delete that one first");
}

void RunTakes(Program& program, const TakesOptions& o) {
  const TakesAction& action = ActionOf(o.action);
  if (o.words.size() != action.words)
    throw WrongUsage("write takes SCENE " + std::string(action.usage) +
                     (action.words == 2 ? ", a TEXT of several words in quotes" : ""));
  const bool writes = o.action != "list" && o.action != "path";
  if (writes && o.output.empty()) throw WrongUsage("takes " + o.action + " needs -o");
  if (!writes && !o.output.empty()) throw WrongUsage("takes " + o.action + " writes no -o");
  if (writes && o.action != "export") {
    const std::string wrong = CheckSceneEnding(o.output);
    if (!wrong.empty()) throw WrongUsage("-o: " + wrong);
  }
  if (o.action == "export" && CheckSceneEnding(o.output).empty())
    throw WrongUsage("-o: " + o.output + " would be no scene; give a file such as one.takes");
  SceneJob job(program, o.scene);
  KeptTakes& takes = job.GetSession().GetTakes();
  if (o.action == "list") return ListTakes(program.GetOutput(), takes);
  if (o.action == "path") return TellPaths(job, takes, NumberOf(o, takes));
  if (o.action == "export") {
    std::string problem;
    if (!util::writeFile(o.output, takes.Export(NumberOf(o, takes)), &problem))
      throw Failure("", problem);
    program.GetOutput().GetObject()["output"] = o.output;
    program.GetOutput().Note("takes: written to " + o.output);
    return;
  }
  ChangeTakes(job, o);
  job.Save(o.output);
  program.GetOutput().Note("takes: written to " + o.output);
}

}  // namespace

void AddTakesVerb(Program& program) {
  auto o = std::make_shared<TakesOptions>();
  CLI::App& verb = program.AddVerb(
      "takes",
      "List the takes that are kept with a scene, and use them again\n"
      "list. use N: put inputs, parameters and start back and simulate. path N: where its rigs "
      "go,\n"
      "x and z. name N TEXT. star N STARS. note N TEXT. delete N. export N, with the takes that it "
      "went on from. import FILE.",
      "rigwright takes take.glb use 2 -o second.glb", [o](Program& p) { RunTakes(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("ACTION", o->action,
                  "list, use, path, name, star, note, delete, export or import")
      ->required()
      ->type_name("");
  verb.add_option("WORD", o->words, "Number of the take, and what it gets; or a file")
      ->type_name("")
      ->expected(-1);
  verb.add_option("-o,--output", o->output, "Scene (.glb or .gltf), or file of exported takes")
      ->type_name("FILE");
}

}  // namespace orv::app
