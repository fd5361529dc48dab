#include "app/studio/script/ScriptDriver.h"

#include <unistd.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QPixmap>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <csignal>
#include <iostream>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/studio/script/Monkey.h"
#include "app/studio/script/ScriptDevice.h"
#include "app/studio/script/ScriptEvents.h"
#include "app/studio/script/ScriptHost.h"
#include "app/studio/script/ScriptLine.h"
#include "app/studio/script/ScriptTarget.h"
#include "app/studio/script/WidgetDump.h"
#include "app/studio/script/WindowShot.h"
#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "gui/Texts.h"
#include "unidevice/DriverManager.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr int kMaxWait = 600;    ///< s
constexpr int kLookPeriod = 20;  ///< ms
constexpr int kMostControls = 200;
constexpr int kQuietLooks = 3;  ///< rounds without anything running that count as idle

double NumberOr(const std::string& text, double byDefault) {
  double value = byDefault;
  util::parseNumber(text, value);
  return value;
}

}  // namespace

ScriptDriver::ScriptDriver(ScriptHost& host, unsigned seed) : m_host(host), m_seed(seed) {}

ScriptDriver::~ScriptDriver() {
  unidevice::DriverManager::instance().removeDriver(ScriptDevice::kDriver);
}

bool ScriptDriver::Start(const std::string& file, std::string& problem) {
  if (file == "-") {
    m_notifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { ReadInput(); });
    return true;
  }
  std::string bytes;
  if (!util::readFile(file, bytes, &problem)) return false;
  std::size_t from = 0;
  while (from < bytes.size()) {
    const std::size_t end = std::min(bytes.find('\n', from), bytes.size());
    m_lines.push_back(bytes.substr(from, end - from));
    from = end + 1;
  }
  m_ended = true;
  QTimer::singleShot(0, this, [this] { Next(); });
  return true;
}

void ScriptDriver::ReadInput() {
  char buffer[4096];
  const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
  if (count <= 0) {
    m_ended = true;
    m_notifier->setEnabled(false);
    if (!m_rest.empty()) m_lines.push_back(std::exchange(m_rest, {}));
  } else {
    m_rest.append(buffer, static_cast<std::size_t>(count));
    for (std::size_t end; (end = m_rest.find('\n')) != std::string::npos;) {
      m_lines.push_back(m_rest.substr(0, end));
      m_rest.erase(0, end + 1);
    }
  }
  Next();
}

void ScriptDriver::Next() {
  if (m_busy) return;
  if (m_lines.empty()) {
    if (m_ended) Finish();
    return;
  }
  const std::string text = m_lines.front();
  m_lines.pop_front();
  Run(text);
}

void ScriptDriver::Finish() {
  m_ended = false;
  m_host.ScriptQuit(m_failed ? 1 : 0);
}

void ScriptDriver::Run(const std::string& text) {
  ScriptLine line;
  std::string problem;
  m_busy = true;
  if (!ScriptLine::Parse(text, line, problem)) return Fail(problem);
  if (!line.verb.empty()) return Perform(line);
  m_busy = false;
  QTimer::singleShot(0, this, [this] { Next(); });
}

void ScriptDriver::Perform(const ScriptLine& line) {
  using Command = std::function<void()>;
  rws::core::CoreImplementation& core = m_host.ScriptedCore();
  const std::map<std::string, Command> commands{
      {"new", [&] { AnswerOr(m_host.ScriptNew()); }},
      {"open", [&] { AnswerOr(m_host.ScriptOpen(line.Word())); }},
      {"save", [&] { AnswerOr(m_host.ScriptSave(line.Word())); }},
      {"click", [&] { Pointer(line); }},
      {"wheel", [&] { Pointer(line); }},
      {"hover", [&] { Pointer(line); }},
      {"drag", [&] { Drag(line); }},
      {"drop", [&] { Drop(line); }},
      {"type", [&] { Type(line); }},
      {"key", [&] { Type(line); }},
      {"press", [&] { Type(line); }},
      {"release", [&] { Type(line); }},
      {"record", [&] { Record(); }},
      {"stop", [&] { Act([&core] { core.StopRecording(); }); }},
      {"device", [&] { Device(line); }},
      {"feed", [&] { Feed(line); }},
      {"move", [&] { Move(line); }},
      {"unplug", [&] { Device(line); }},
      {"dump", [&] { Dump(line); }},
      {"shot", [&] { Shot(line); }},
      {"preview", [&] { Preview(line); }},
      {"project", [&] { View(line); }},
      {"pick", [&] { View(line); }},
      {"view", [&] { View(line); }},
      {"curves", [&] { Takes(line); }},
      {"arm", [&] { Takes(line); }},
      {"takes", [&] { Takes(line); }},
      {"marks", [&] { Takes(line); }},
      {"punch", [&] { Takes(line); }},
      {"state", [&] { Answer(m_host.ScriptState()); }},
      {"wait", [&] { WaitIdle(line); }},
      {"wait-idle", [&] { WaitIdle(line); }},
      {"monkey", [&] { LetLoose(line); }},
      {"crash", [] { std::raise(SIGKILL); }},
      {"quit",
       [&] {
         Answer(Json::object());
         m_lines.clear();
         m_host.ScriptQuit(static_cast<int>(NumberOr(line.Word(), m_failed ? 1 : 0)));
       }},
  };
  const auto found = commands.find(line.verb);
  if (found != commands.end()) return found->second();
  std::string known;
  for (const auto& [name, command] : commands) known += (known.empty() ? "" : ", ") + name;
  Fail("there is no command \"" + line.verb + "\" (" + known + ")");
}

// --- answers ---

void ScriptDriver::Act(Action action) {
  QTimer::singleShot(0, this, std::move(action));
  // Behind the action, or within the event loop that it opens.
  QTimer::singleShot(1, this, [this] { Answer(Json::object()); });
}

void ScriptDriver::Answer(Json reply) {
  if (!reply.contains("ok")) reply["ok"] = true;
  std::cout << reply.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
  m_busy = false;
  QTimer::singleShot(0, this, [this] { Next(); });
}

void ScriptDriver::Fail(const std::string& why) {
  m_failed = true;
  Answer({{"ok", false}, {"error", why}});
}

void ScriptDriver::AnswerOr(const std::string& why) {
  if (why.empty())
    Answer(Json::object());
  else
    Fail(why);
}

void ScriptDriver::Takes(const ScriptLine& line) {
  Json reply = m_host.ScriptTakes(line);
  if (reply.contains("error")) return Fail(reply["error"]);
  Answer(std::move(reply));
}

void ScriptDriver::Record() {
  rws::core::CoreImplementation& core = m_host.ScriptedCore();
  if (const QWidget* modal = QApplication::activeModalWidget())
    return Fail("the window \"" + modal->windowTitle().toStdString() + "\" comes first");
  if (const util::Sentence why = core.WhyNoTake()) return Fail(gui::Translate(why.text));
  Act([&core] { core.StartRecording(); });
}

// --- hands ---

void ScriptDriver::Pointer(const ScriptLine& line) {
  const ScriptTarget target = FindTarget(line);
  if (!target.widget) return Fail(target.problem);
  const QPointer<QWidget> widget(target.widget);
  const QPoint point = target.point;
  const Qt::KeyboardModifiers modifiers = ModifiersOf(QString::fromStdString(line.Value("with")));
  if (line.verb == "wheel") {
    const int steps = static_cast<int>(NumberOr(line.Word(), 1.0));
    return Act([=] {
      if (widget) SendWheel(*widget, point, steps, modifiers);
    });
  }
  if (line.verb == "hover")
    return Act([=] {
      if (widget) SendHover(*widget, point, modifiers);
    });
  const std::string what = line.Word();
  const Qt::MouseButton button = what == "right"    ? Qt::RightButton
                                 : what == "middle" ? Qt::MiddleButton
                                                    : Qt::LeftButton;
  Act([=] {
    if (!widget) return;
    SendClick(*widget, point, button, modifiers, what == "double");
    if (button != Qt::RightButton || !widget) return;
    QContextMenuEvent menu(QContextMenuEvent::Mouse, point, widget->mapToGlobal(point));
    QApplication::sendEvent(widget, &menu);
  });
}

void ScriptDriver::Drag(const ScriptLine& line) {
  const ScriptTarget from = FindTarget(line);
  if (!from.widget) return Fail(from.problem);
  QPoint to = from.point;
  if (line.Has("by")) {
    const QStringList by = QString::fromStdString(line.Value("by")).split(',');
    if (by.size() != 2) return Fail("by=X,Y is wanted");
    to += {by[0].toInt(), by[1].toInt()};
  } else {
    ScriptLine goal = line;
    goal.values.erase("at");
    for (const char* key : {"id", "name", "row", "at"})
      if (line.Has(std::string("to-") + key))
        goal.values[key] = line.Value(std::string("to-") + key);
    const ScriptTarget target = FindTarget(goal);
    if (!target.widget) return Fail(target.problem);
    to = from.widget->mapFromGlobal(target.widget->mapToGlobal(target.point));
  }
  const int steps = std::max(1, static_cast<int>(NumberOr(line.Value("steps"), 10.0)));
  const Qt::KeyboardModifiers modifiers = ModifiersOf(QString::fromStdString(line.Value("with")));
  const QPointer<QWidget> widget(from.widget);
  Act([=, point = from.point] {
    if (widget) SendDrag(*widget, point, to, steps, modifiers);
  });
}

void ScriptDriver::Drop(const ScriptLine& line) {
  QWidget* window = WindowNamed(line.Value("win"));
  if (!window) return Fail("there is no such window");
  QStringList paths;
  for (const std::string& path : line.words) paths.append(QString::fromStdString(path));
  if (paths.isEmpty()) return Fail("a file's path is missing");
  if (!SendFiles(*window, paths)) return Fail("the window takes no files now");
  QTimer::singleShot(1, this, [this] { Answer(Json::object()); });
}

void ScriptDriver::Type(const ScriptLine& line) {
  const QString text = QString::fromStdString(line.Word());
  if (line.verb == "type") return Act([text] { SendText(text); });
  if (line.verb != "key") {
    const bool isDown = line.verb == "press";
    return SendModifier(text, isDown) ? Answer(Json::object())
                                      : Fail("Ctrl, Shift or Alt is wanted");
  }
  if (QKeySequence::fromString(text, QKeySequence::PortableText).isEmpty())
    return Fail("\"" + line.Word() + "\" is no key");
  Act([text] { SendKeys(text); });
}

// --- devices ---

void ScriptDriver::Device(const ScriptLine& line) {
  const std::string name = line.Word();
  if (name.empty()) return Fail("the device's name is missing");
  const auto found = m_devices.find(name);
  if (line.verb == "unplug") {
    if (found == m_devices.end()) return Fail("there is no device \"" + name + "\"");
    found->second->destroy();
    m_devices.erase(found);
    return Answer(Json::object());
  }
  if (found != m_devices.end()) return Fail("\"" + name + "\" is there already");
  ScriptDevice::Controls controls;
  const auto count = [&line](const char* what, int& number) {
    number = std::clamp(static_cast<int>(NumberOr(line.Value(what), number)), 0, kMostControls);
  };
  count("axes", controls.axes);
  count("buttons", controls.buttons);
  count("hats", controls.hats);
  m_devices[name] = ScriptDevice::Plug(name, controls);
  m_devices[name]->SetNoise(NumberOr(line.Value("noise"), 0.0));
  Answer(Json::object());
}

void ScriptDriver::Feed(const ScriptLine& line) {
  const std::string name =
      line.Has("device") || m_devices.empty() ? line.Value("device") : m_devices.begin()->first;
  const auto found = m_devices.find(name);
  if (found == m_devices.end()) return Fail("there is no device to feed (device NAME makes one)");
  // In a take by its frames, so that what is fed is what is recorded, whatever the machine does.
  auto* core = &m_host.ScriptedCore();
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  std::string problem;
  found->second->Feed(
      line.Word(),
      [core, clock] {
        return core->IsRecording() ? core->GetFrameTime() : clock->elapsed() / 1000.0;
      },
      problem);
  AnswerOr(problem);
}

void ScriptDriver::Move(const ScriptLine& line) {
  const auto found = m_devices.find(line.Word());
  if (found == m_devices.end()) return Fail("there is no device \"" + line.Word() + "\"");
  for (const auto& [control, value] : line.values)
    if (!found->second->Set(control, NumberOr(value, 0.0)))
      return Fail("it has no control \"" + control + "\"");
  Answer(Json::object());
}

// --- what is seen ---

void ScriptDriver::Dump(const ScriptLine& line) {
  Json windows = Json::array();
  for (QWidget* window : ShownWindows()) {
    const std::string name = window->objectName().toStdString();
    if (!line.Word().empty() && name != line.Word()) continue;
    windows.push_back({{"window", name},
                       {"title", window->windowTitle().toStdString()},
                       {"widgets", DumpWidgets(*window)}});
  }
  Answer({{"windows", std::move(windows)}});
}

void ScriptDriver::Shot(const ScriptLine& line) {
  QWidget* window = WindowNamed(line.Value("win"));
  if (!window) return Fail("there is no such window");
  if (line.Word().empty()) return Fail("the file's name is missing");
  if (!GrabWithPopups(*window).save(QString::fromStdString(line.Word()), "PNG"))
    return Fail(line.Word() + ": the picture can't be written");
  Answer({{"file", line.Word()}});
}

void ScriptDriver::Preview(const ScriptLine& line) {
  ScriptPreviewWish wish;
  wish.folder = line.Word();
  wish.camera = line.Value("camera");
  wish.signs = line.Value("grid") == "yes";
  wish.overlay = line.Value("overlay") == "yes";
  if (wish.folder.empty()) return Fail("the folder's name is missing");
  if (line.Has("size")) {
    const QStringList size = QString::fromStdString(line.Value("size")).split('x');
    wish.width = size.size() == 2 ? size[0].toInt() : 0;
    wish.height = size.size() == 2 ? size[1].toInt() : 0;
    if (wish.width < 1 || wish.height < 1) return Fail("size=WIDTHxHEIGHT is wanted");
  }
  AnswerOr(m_host.ScriptPreview(wish));
}

void ScriptDriver::View(const ScriptLine& line) {
  Json answer = m_host.ScriptView(line);
  if (answer.contains("error")) return Fail(answer["error"]);
  Answer(std::move(answer));
}

void ScriptDriver::WaitIdle(const ScriptLine& line) {
  const bool forIdle = line.verb == "wait-idle";
  const double most = NumberOr(line.Word(), forIdle ? 60.0 : 0.0);
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  auto quiet = std::make_shared<int>(0);
  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [=] {
    const bool over = clock->elapsed() >= 1000.0 * std::min<double>(most, kMaxWait);
    const auto& core = m_host.ScriptedCore();
    *quiet = core.GetRunState() == rws::core::RunState::kIdle ? *quiet + 1 : 0;
    if (!over && !(forIdle && *quiet >= kQuietLooks)) return;
    timer->stop();
    timer->deleteLater();
    if (forIdle && *quiet < kQuietLooks)
      Fail("it is still busy");
    else
      Answer(Json::object());
  });
  timer->start(kLookPeriod);
}

void ScriptDriver::LetLoose(const ScriptLine& line) {
  MonkeyTask task;
  double number = 0.0;
  if (!util::parseNumber(line.Word(), number) || number < 1.0 || number > 1e9)
    return Fail("the number of events is missing");
  task.events = static_cast<int>(number);
  task.seed = static_cast<unsigned>(NumberOr(line.Value("seed"), m_seed));
  task.log = line.Value("log");
  task.folder = rws::core::DataRoot::Get() + "/monkey";
  m_monkey = std::make_unique<Monkey>(m_host, task, [this](Json report) {
    m_failed = m_failed || report.contains("error");
    report["ok"] = !report.contains("error");
    Answer(std::move(report));
    m_monkey.release()->deleteLater();
  });
  m_monkey->Begin();
}

}  // namespace orv::app
