// What the desktop program does with kept takes, and takes between marks.
#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Punch.h"
#include "app/session/takes/KeptTakes.h"
#include "app/session/takes/SceneTake.h"
#include "app/studio/Studio.h"
#include "app/studio/script/ScriptLine.h"
#include "app/studio/timeline/CurveStrip.h"
#include "app/studio/timeline/Player.h"
#include "app/studio/timeline/Timeline.h"
#include "app/studio/windows/FollowWindow.h"
#include "app/studio/windows/ProgressWindow.h"
#include "app/studio/windows/PunchWindow.h"
#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CInterface.h"
#include "core/windows/ControlWords.h"
#include "gui/Texts.h"
#include "util/AtomicFile.h"
#include "util/MessageNode.h"
#include "util/NumberText.h"

namespace orv::app {

using gui::Translate;

/// Who asks for another scene ends the take, and has none to wait for then.
class Studio::TakeWatch : public util::MessageNode {
 public:
  explicit TakeWatch(Studio& studio) : util::MessageNode("TakeWatch"), m_studio(studio) {
    connect(&studio.m_document.GetCore());
  }
  ~TakeWatch() override { disconnect(&m_studio.m_document.GetCore()); }
  void onMessage(util::Message& message, bool) override {
    const auto* run = rws::core::NewsIn<rws::core::RunStateChanged>(message);
    if (run && run->state == rws::core::RunState::kIdle && m_studio.m_take)
      m_studio.m_take->Settle();
  }

 private:
  Studio& m_studio;
};

namespace {

std::string TakeFilter() {
  return Translate("Takes (*.takes)");
}

}  // namespace

// --- kept takes ---

void Studio::UseTake(int number) {
  if (m_working > 0 || IsLocked(Translate("That"))) return;
  const std::string title = Translate("Use take %1", {std::to_string(number)});
  UseResult used;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, title,
                            Translate("Simulating take %1...", {std::to_string(number)}));
    used = m_document.GetSession().GetTakes().Use(number, progress.MakeMonitor());
  }
  if (used.cancelled) return;
  if (!used.problem.empty()) return Show(title, Problem{"", used.problem, "", {}});
  if (!used.isSame)
    Tell(
        Translate("Take %1 was simulated, but its poses are not those of back then: the ground, "
                  "another node or the program has changed.",
                  {std::to_string(number)}));
}

void Studio::RemoveTake(int number) {
  const std::string title = Translate("Delete take %1", {std::to_string(number)});
  if (m_working > 0 || IsLocked(Translate("That"))) return;
  if (Ask(title,
          Translate("Delete take %1 for good? Undo does not bring it back.",
                    {std::to_string(number)}),
          rws::kButtonsYesNo | rws::kIconQuestion) != rws::kAnswerYes)
    return;
  const std::string problem = m_document.GetSession().GetTakes().Delete(number);
  if (!problem.empty()) return Show(title, Problem{"", problem, "", {}});
  m_document.NoteEdit();
}

void Studio::ExportTake(int number) {
  const std::string title = Translate("Export take %1", {std::to_string(number)});
  const KeptTakes& takes = m_document.GetSession().GetTakes();
  if (!takes.Find(number)) return;
  const std::string path = m_windows.ChooseFileToSave(title, TakeFilter(), "takes",
                                                      "take" + std::to_string(number), ".takes");
  if (path.empty() || !takes.Find(number)) return;
  std::string problem;
  if (!util::writeFile(path, takes.Export(number), &problem))
    return Show(title, Problem{"", problem, "", {}});
  TellDone(Translate("%1 was written.", {path}), {});
}

void Studio::ImportTakes() {
  const std::string title = Translate("Import takes");
  const std::string path = m_windows.ChooseFile(title, TakeFilter(), "takes");
  if (path.empty() || IsLocked(Translate("That"))) return;
  std::string bytes, problem;
  std::vector<int> numbers;
  if (util::readFile(path, bytes, &problem))
    problem = m_document.GetSession().GetTakes().Import(bytes, numbers);
  if (!problem.empty()) return Show(title, Problem{path, problem, "", {}});
  m_document.NoteEdit();
  TellDone(Translate(numbers.size() == 1 ? "One take was imported." : "%1 takes were imported.",
                     {std::to_string(numbers.size())}),
           {});
}

// --- a take between marks ---

void Studio::MarkBegin() {
  const double now = m_document.GetAdaptor().GetCurrentTime();
  const double end = m_timeline->GetMarks().second;
  double from = 0.0, to = 0.0;
  m_document.GetAdaptor().GetTimeRange(from, to);
  m_timeline->SetMarks(now, end > now ? end : std::max(to, now));
}

void Studio::MarkEnd() {
  const double now = m_document.GetAdaptor().GetCurrentTime();
  const double begin = m_timeline->GetMarks().first;
  double from = 0.0, to = 0.0;
  m_document.GetAdaptor().GetTimeRange(from, to);
  m_timeline->SetMarks(m_timeline->HasMarks() && begin < now ? begin : std::min(from, now), now);
}

void Studio::RecordMarks() {
  if (!m_timeline->HasMarks())
    return Tell(
        Translate("Mark a part of the time line first: by Shift+F7 and F7 at its begin and "
                  "end, or by dragging with Ctrl held."));
  auto& core = m_document.GetCore();
  if (const util::Sentence why = core.WhyNoTake()) return Tell(Translate(why.text));
  const auto [from, to] = m_timeline->GetMarks();
  PunchWindow::Choice choice = PunchWindow::Read(m_windows.GetSettings());
  PunchWindow window(m_windows, {from, to});
  if (!window.Run(choice) || core.WhyNoTake()) return;
  PunchWindow::Keep(m_windows.GetSettings(), choice);
  Tell(BeginMarkedTake(choice.preRoll, choice.blend, choice.goOn));
}

std::string Studio::BeginMarkedTake(double preRoll, double blend, bool goOn) {
  if (!m_timeline->HasMarks()) return Translate("Mark a part of the time line first.");
  if (const util::Sentence why = m_document.GetCore().WhyNoTake()) return Translate(why.text);
  const auto [from, to] = m_timeline->GetMarks();
  TakeWish wish;
  wish.from = from;
  wish.seconds = to - from;
  wish.preRoll = preRoll;
  wish.goOn = goOn;
  wish.blend = blend;
  if (!m_watch) m_watch = std::make_unique<TakeWatch>(*this);
  m_take = std::make_unique<SceneTake>(m_document.GetSession());
  m_take->Begin(wish, m_takeMonitor, [] {});
  return {};
}

// --- a line, driven once more ---

namespace {

std::string ReportOf(const FollowResult& result) {
  const auto text = [](double value, int decimals = 2) {
    return QLocale().toString(value, 'f', decimals).toStdString();
  };
  const LineDistances& off = result.off;
  std::string report =
      Translate("%1 follows the line of %2 m, from %3 to %4 s.",
                {result.driver, text(off.length), text(result.span.from), text(result.span.to)});
  report += "\n" +
            Translate(
                "Off the line: %1 m on average, %2 m at most, at %3 s; in 95 of 100 "
                "frames within %4 m.",
                {text(off.mean, 3), text(off.largest, 3), text(off.largestTime), text(off.p95, 3)});
  if (off.delay)
    report +=
        "\n" + Translate(*off.delay < 0.0 ? "At the end: %1 s early." : "At the end: %1 s late.",
                         {text(std::abs(*off.delay))});
  report += "\n" + Translate("Its speed differs by %1 m/s at most, at %2 s.",
                             {text(off.speed), text(off.speedTime)});
  if (off.left)
    report +=
        "\n" + Translate("At %1 s it has left the line for good: it is farther off than %2 m.",
                         {text(*off.left), text(off.margin)});
  return report;
}

}  // namespace

void Studio::FollowLine() {
  const std::string title = Translate("Follow a rig's line");
  auto& core = m_document.GetCore();
  if (FollowWindow::GetRigs(core).empty())
    return Tell(Translate("No rig here follows a line by itself: add a 4WheelerExt and drive it."));
  FollowWish wish;
  FollowWindow window(m_windows);
  if (!window.Run(wish) || IsLocked(Translate("That"))) return;
  FollowResult result;
  {
    const Working working(*this);
    ProgressWindow progress(m_windows, title, Translate("Following the line of %1...", {wish.rig}));
    result = FollowPath(m_document.GetSession(), wish, progress.MakeMonitor());
  }
  if (result.cancelled) return;
  if (result.problem)
    return Show(title, Problem{wish.rig,
                               rws::core::windows::Shown(result.problem),
                               rws::core::windows::Shown(result.hint),
                               {}});
  if (const auto* row = core.Find(result.driver)) core.SetSelection({row->GetId()});
  Ask(title, ReportOf(result), rws::kButtonsOk | rws::kIconNone);
}

// --- the script ---

nlohmann::json Studio::ScriptTakes(const ScriptLine& line) {
  using Json = nlohmann::json;
  const auto error = [](const std::string& text) { return Json{{"error", text}}; };
  auto& core = m_document.GetCore();
  const auto number = [&line](const std::string& key, double byDefault) {
    util::parseNumber(line.Value(key), byDefault);
    return byDefault;
  };
  if (m_document.IsRunning() && line.verb != "curves") return error(WhyLocked());
  if (line.verb == "curves") return CurvesReply(line);
  if (line.verb == "arm") {
    const std::string problem = ArmInputs(core, line.words);
    // Once more by the core, which tells the windows.
    for (rws::core::Instance* rig : core.List(false)) {
      std::vector<bool> armed;
      for (int i = 0; i < rig->GetProperties().count(); ++i) armed.push_back(!rig->IsPlayed(i));
      core.ArmInputs(*rig, armed);
    }
    return problem.empty() ? Json::object() : error(problem);
  }
  if (line.verb == "marks") {
    double from = 0.0, to = 0.0;
    if (line.words.size() != 2 || !util::parseNumber(line.words[0], from) ||
        !util::parseNumber(line.words[1], to) || to <= from)
      return error("marks FROM TO, in seconds");
    m_timeline->SetMarks(core.SnapToFrame(from), core.SnapToFrame(to));
    return Json::object();
  }
  if (line.verb == "punch") {
    const std::string problem =
        BeginMarkedTake(number("preroll", 0.0), number("blend", 0.0), line.Value("drop") != "yes");
    return problem.empty() ? Json::object() : error(problem);
  }
  const KeptTakes& takes = m_document.GetSession().GetTakes();
  if (line.Word() == "use" && line.words.size() == 2) {
    double wanted = 0.0;
    util::parseNumber(line.words[1], wanted);
    if (!takes.Find(static_cast<int>(wanted))) return error("there is no take " + line.words[1]);
    UseTake(static_cast<int>(wanted));
  }
  Json all = Json::array();
  for (const KeptTake& take : takes.GetTakes())
    if (take.number > 0)
      all.push_back({{"number", take.number},
                     {"name", take.name},
                     {"stars", take.stars},
                     {"note", take.note},
                     {"current", takes.GetCurrent() == take.number},
                     {"retried", take.retried},
                     {"undone", take.undone}});
  return {{"takes", all}};
}

/// Sets what is told, and answers what is shown.
nlohmann::json Studio::CurvesReply(const ScriptLine& line) {
  using Json = nlohmann::json;
  if (line.Word() == "on" || line.Word() == "off") m_curves->SetVisible(line.Word() == "on");
  for (const auto& [name, tool] : {std::pair{"points", CurveStrip::Tool::kPoints},
                                   {"draw", CurveStrip::Tool::kDraw},
                                   {"smooth", CurveStrip::Tool::kSmooth}})
    if (line.Value("tool") == name) m_curves->SetTool(tool);
  Json reply{{"shown", m_curves->IsVisible()}, {"inputs", Json::array()}};
  for (const CurveStrip::Input& input : m_curves->GetInputs())
    reply["inputs"].push_back({{"name", input.name}, {"shown", input.isShown}});
  const QStringList at = QString::fromStdString(line.Value("at")).split(',');
  if (at.size() == 2) {
    const QPoint place = m_curves->GetPlace(at[0].toDouble(), at[1].toDouble());
    reply["x"] = place.x();
    reply["y"] = place.y();
  }
  return reply;
}

}  // namespace orv::app
