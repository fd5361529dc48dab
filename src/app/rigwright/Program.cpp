#include "app/rigwright/Program.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <utility>

#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Texts.h"
#include "app/session/anyhost/Names.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUsage = 2, kInterrupted = 130 };

constexpr double kMostSeconds = 1e9;    ///< times on the command line are nearer to 0
constexpr double kMostInVector = 1e12;  ///< m, degrees or factors; beyond it matrices lose digits

constexpr const char* kAbout =
    "Rigs for animators: attach a rig to a scene, perform it, and get keys.\n"
    "A verb that changes a scene writes -o OUT and leaves its input alone; OUT may be the input.";

constexpr const char* kExample =
    "Example:\n"
    "  rigwright add shot.glb MotionFilterCam -o shot2.glb\n"
    "  rigwright VERB --help shows what a verb takes, with an example.\n"
    "Exit status: 0 done, 1 the job failed, 2 wrong usage, 130 interrupted.";

constexpr const char* kEverywhere =
    "\nEvery verb also takes --json, --quiet, --yes, --clip and --data-root: see rigwright --help";

}  // namespace

Program::Program() : m_app(kAbout, "rigwright") {
  m_app.set_version_flag("--version", std::string("rigwright ") + RIGWRIGHT_VERSION,
                         "Print the version and end");
  m_app.set_help_flag("-h,--help", "Print this help and end");
  m_app.footer(kExample);
  m_app.require_subcommand(1);
  m_app.get_formatter()->column_width(34);
  m_app.get_formatter()->label("SUBCOMMAND", "VERB");
  m_app
      .add_option("--data-root", m_options.dataRoot,
                  "Folder of profiles, preferences and the log (default: RIGWRIGHT_DATA_ROOT, "
                  "else the user's documents)")
      ->type_name("DIR");
  m_app
      .add_option("--clip", m_options.clip,
                  "Animation clip of the scene to work on, by name or number (default: the first)")
      ->type_name("CLIP");
  m_app.add_flag("-q,--quiet", m_output.quiet, "No narration and no progress on stderr");
  m_app.add_flag("--json", m_output.json, "The result is one JSON object on stdout");
  m_app.add_flag("-y,--yes", m_options.yes, "Answer yes to questions");
}

CLI::App& Program::AddVerb(const std::string& name, const std::string& description,
                           const std::string& example, std::function<void(Program&)> run) {
  return AddVerb(m_app, name, description, example, std::move(run));
}

CLI::App& Program::AddVerb(CLI::App& parent, const std::string& name,
                           const std::string& description, const std::string& example,
                           std::function<void(Program&)> run) {
  const std::size_t lineEnd = description.find('\n');
  const std::string more =
      lineEnd == std::string::npos ? std::string() : description.substr(lineEnd + 1) + "\n\n";
  CLI::App& verb = *parent.add_subcommand(name, description.substr(0, lineEnd));
  verb.fallthrough();
  verb.group("Verbs");
  verb.footer(more + "Example:\n  " + example + kEverywhere);
  m_runs[&verb] = std::move(run);
  return verb;
}

CLI::App& Program::AddGroup(const std::string& name, const std::string& description,
                            const std::string& example) {
  CLI::App& group = *m_app.add_subcommand(name, description);
  group.fallthrough();
  group.require_subcommand(1);
  group.group("Verbs");
  group.footer("Example:\n  " + example + kEverywhere);
  return group;
}

int Program::TellWrongUsage(const std::string& why) {
  const CLI::App* verb = ChosenVerb();
  const std::string help = verb ? verb->get_display_name() + " --help" : "--help";
  m_output.Error("wrong usage: " + why + " (see rigwright " +
                 (verb && verb->get_parent() != &m_app
                      ? verb->get_parent()->get_display_name() + " "
                      : std::string()) +
                 help + ")");
  return kWrongUsage;
}

std::string Program::UnknownVerb() const {
  const CLI::App* group = &m_app;
  if (!m_app.get_subcommands().empty()) group = m_app.get_subcommands().front();
  if (m_runs.count(group) || !group->get_subcommands().empty()) return {};
  std::vector<std::string> rest = group->remaining();
  if (rest.empty()) rest = m_app.remaining();
  if (rest.empty()) return "no verb was given";
  if (rest.front().rfind('-', 0) == 0) return {};
  std::vector<std::string> known;
  for (const CLI::App* verb : group->get_subcommands([](const CLI::App*) { return true; }))
    known.push_back(verb->get_name());
  return "unknown verb " + rest.front() + ", " + HintFor(rest.front(), known, "verbs", 20);
}

bool Program::Parse(int argc, char** argv, int& status) {
  try {
    m_app.parse(argc, argv);
    return true;
  } catch (const CLI::Success& success) {
    status = m_app.exit(success);
  } catch (const CLI::ParseError& error) {
    const std::string verb = UnknownVerb();
    std::string why = verb.empty() ? error.what() : verb;
    while (!why.empty() && (why.back() == ' ' || why.back() == '.')) why.pop_back();
    status = TellWrongUsage(why);
  }
  return false;
}

CLI::App* Program::ChosenVerb() {
  CLI::App* verb = &m_app;
  while (!verb->get_subcommands().empty()) verb = verb->get_subcommands().front();
  return verb == &m_app ? nullptr : verb;
}

int Program::Run(int argc, char** argv) {
  int status = kDone;
  if (!Parse(argc, argv, status)) return status;
  CatchInterrupts();
  return RunVerb();
}

void Program::OpenLog(const CLI::App& verb) {
  if (!m_options.dataRoot.empty()) rws::core::DataRoot::Set(m_options.dataRoot);
  rws::core::SetLogListener([this](rws::core::LogLevel level, const std::string& text) {
    if (level >= rws::core::LogLevel::kWarning) m_output.Warn(text);
  });
  // The folder comes into being when a user saves something of his own there.
  std::error_code ignored;
  const std::string root = rws::core::DataRoot::Get();
  if (m_readOnly.count(&verb) == 0 && std::filesystem::is_directory(root, ignored))
    rws::core::NewLog(root + "/core.log");
}

int Program::RunVerb() {
  try {
    const CLI::App* verb = ChosenVerb();
    // Qt gets arguments of its own: it would take what it knows out of the verb's.
    char name[] = "rigwright";
    int count = 1;
    char* arguments[] = {name, nullptr};
    std::unique_ptr<QCoreApplication> application;
    if (m_drawing.count(verb))
      application = std::make_unique<QGuiApplication>(count, arguments);
    else
      application = std::make_unique<QCoreApplication>(count, arguments);
    OpenLog(*verb);
    m_runs.at(verb)(*this);
    return m_output.Finish() ? m_status : kFailed;
  } catch (const WrongUsage& usage) {
    return TellWrongUsage(usage.what());
  } catch (const Interrupted& interrupted) {
    m_output.Error(interrupted.what());
    return kInterrupted;
  } catch (const Failure& failure) {
    m_output.Error(failure.what());
    return kFailed;
  }
}

CLI::Option* AddNumber(CLI::App& verb, const std::string& name, std::optional<double>& value,
                       const std::string& description, NumberCheck check) {
  const auto read = [&value, name, check](const std::string& text) {
    double number = 0.0;
    if (!util::parseNumber(text, number))
      throw CLI::ValidationError(name, "\"" + text + "\" is not a number");
    const std::string wrong = check ? check(number) : std::string();
    if (!wrong.empty()) throw CLI::ValidationError(name, text + " " + wrong);
    value = number;
  };
  return verb.add_option_function<std::string>(name, read, description)->type_name("NUMBER");
}

CLI::Option* AddVector(CLI::App& verb, const std::string& name,
                       std::optional<util::Vector3<double>>& value,
                       const std::string& description) {
  const auto read = [&value, name](const std::string& text) {
    util::Vector3<double> vector;
    if (!ParseVector(text, vector))
      throw CLI::ValidationError(name, "\"" + text + "\" is not three numbers such as 0,1.5,-2");
    if (std::max({std::abs(vector.x), std::abs(vector.y), std::abs(vector.z)}) > kMostInVector) {
      throw CLI::ValidationError(
          name, text + " goes beyond " + util::shortText(kMostInVector) + "; give smaller numbers");
    }
    value = vector;
  };
  return verb.add_option_function<std::string>(name, read, description)->type_name("x,y,z");
}

CLI::Option* AddScene(CLI::App& verb, std::string& path) {
  return verb.add_option("SCENE", path, "Scene to read (.glb or .gltf)")
      ->required()
      ->type_name("")
      ->check(CheckNotEmpty);
}

CLI::Option* AddOutput(CLI::App& verb, std::string& path, const std::string& description) {
  return verb.add_option("-o,--output", path, description)
      ->required()
      ->type_name("FILE")
      ->check(CheckNotEmpty);
}

std::string CheckSceneEnding(const std::string& path) {
  const std::string ending = EndingOf(path);
  // A name without an ending may be a device or a pipe; the writer decides.
  if (ending.empty() || ending == ".glb" || ending == ".gltf") return {};
  return path + " does not end in .glb or .gltf";
}

CLI::Option* AddSceneOutput(CLI::App& verb, std::string& path) {
  return AddOutput(verb, path, "Scene to write (.glb or .gltf)")
      ->type_name("OUT")
      ->check([](const std::string& text) { return CheckSceneEnding(text); });
}

CLI::Option* AddRange(CLI::App& verb, std::string& text, const std::string& description) {
  return verb.add_option("--range", text, description)
      ->type_name("a:b")
      ->check([](const std::string& given) {
        double from = 0.0;
        double to = 0.0;
        if (!ParseRange(given, from, to))
          return "\"" + given + "\" is no range of seconds such as 0:20, b not before a";
        const std::string wrong = MustBeTime(std::max(std::abs(from), std::abs(to)));
        return wrong.empty() ? wrong : given + " " + wrong;
      });
}

CLI::Option* AddList(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                     const std::string& description) {
  return verb.add_option(name, values, description)->type_size(1)->allow_extra_args(false);
}

std::string MustBePositive(double value) {
  return value > 0.0 ? std::string() : "must be above 0";
}

std::string MustBeFrom(double value, double least, double most) {
  if (value >= least && value <= most) return {};
  return "must be from " + util::shortText(least) + " to " + util::shortText(most);
}

std::string MustBeTime(double value) {
  if (std::abs(value) < kMostSeconds) return {};
  return "must be less than " + util::shortText(kMostSeconds) + " s away from 0";
}

std::string CheckNotEmpty(const std::string& text) {
  return text.empty() ? "the text is empty" : std::string();
}

}  // namespace orv::app
