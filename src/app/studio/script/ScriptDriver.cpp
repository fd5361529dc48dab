#include "app/studio/script/ScriptDriver.h"

#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <csignal>
#include <iostream>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/studio/script/ScriptDevice.h"
#include "app/studio/script/ScriptEvents.h"
#include "app/studio/script/ScriptHost.h"
#include "app/studio/script/ScriptLine.h"
#include "app/studio/script/ScriptTarget.h"
#include "app/studio/script/WidgetDump.h"
#include "core/CoreImplementation.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

constexpr int kMaxWait = 600;    ///< s
constexpr int kLookPeriod = 20;  ///< ms
constexpr int kQuietLooks = 3;   ///< rounds without anything running that count as idle

double numberOr(const std::string& text, double byDefault) {
  double value = byDefault;
  util::parseNumber(text, value);
  return value;
}

}  // namespace

ScriptDriver::ScriptDriver(ScriptHost& host) : m_host(host) {}

ScriptDriver::~ScriptDriver() = default;

bool ScriptDriver::start(const std::string& file, std::string& problem) {
  if (file == "-") {
    m_notifier = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { readInput(); });
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
  QTimer::singleShot(0, this, [this] { next(); });
  return true;
}

void ScriptDriver::readInput() {
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
  next();
}

void ScriptDriver::next() {
  if (m_busy) return;
  if (m_lines.empty()) {
    if (m_ended) finish();
    return;
  }
  const std::string text = m_lines.front();
  m_lines.pop_front();
  run(text);
}

void ScriptDriver::finish() {
  m_ended = false;
  m_host.scriptQuit(m_failed ? 1 : 0);
}

void ScriptDriver::run(const std::string& text) {
  ScriptLine line;
  std::string problem;
  m_busy = true;
  if (!ScriptLine::parse(text, line, problem)) return fail(problem);
  if (!line.verb.empty()) return perform(line);
  m_busy = false;
  QTimer::singleShot(0, this, [this] { next(); });
}

void ScriptDriver::perform(const ScriptLine& line) {
  using Command = std::function<void()>;
  rws::core::CoreImplementation& core = m_host.scriptedCore();
  const std::map<std::string, Command> commands{
      {"new", [&] { answerOr(m_host.scriptNew()); }},
      {"open", [&] { answerOr(m_host.scriptOpen(line.word())); }},
      {"save", [&] { answerOr(m_host.scriptSave(line.word())); }},
      {"click", [&] { pointer(line); }},
      {"wheel", [&] { pointer(line); }},
      {"drag", [&] { drag(line); }},
      {"type", [&] { type(line); }},
      {"key", [&] { type(line); }},
      {"record", [&] { act([&core] { core.StartRecording(); }); }},
      {"stop", [&] { act([&core] { core.StopRecording(); }); }},
      {"device", [&] { device(line); }},
      {"feed", [&] { feed(line); }},
      {"move", [&] { move(line); }},
      {"unplug", [&] { device(line); }},
      {"dump", [&] { dump(line); }},
      {"shot", [&] { shot(line); }},
      {"state", [&] { answer(m_host.scriptState()); }},
      {"wait", [&] { waitIdle(line); }},
      {"wait-idle", [&] { waitIdle(line); }},
      {"crash", [] { std::raise(SIGKILL); }},
      {"quit",
       [&] {
         answer(Json::object());
         m_lines.clear();
         m_host.scriptQuit(static_cast<int>(numberOr(line.word(), m_failed ? 1 : 0)));
       }},
  };
  const auto found = commands.find(line.verb);
  if (found != commands.end()) return found->second();
  std::string known;
  for (const auto& [name, command] : commands) known += (known.empty() ? "" : ", ") + name;
  fail("there is no command \"" + line.verb + "\" (" + known + ")");
}

// --- answers ---

void ScriptDriver::act(Action action) {
  QTimer::singleShot(0, this, std::move(action));
  // Behind the action, or within the event loop that it opens.
  QTimer::singleShot(1, this, [this] { answer(Json::object()); });
}

void ScriptDriver::answer(Json reply) {
  if (!reply.contains("ok")) reply["ok"] = true;
  std::cout << reply.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
  m_busy = false;
  QTimer::singleShot(0, this, [this] { next(); });
}

void ScriptDriver::fail(const std::string& why) {
  m_failed = true;
  answer({{"ok", false}, {"error", why}});
}

void ScriptDriver::answerOr(const std::string& why) {
  if (why.empty())
    answer(Json::object());
  else
    fail(why);
}

// --- hands ---

void ScriptDriver::pointer(const ScriptLine& line) {
  const ScriptTarget target = findTarget(line);
  if (!target.widget) return fail(target.problem);
  const QPointer<QWidget> widget(target.widget);
  const QPoint point = target.point;
  const Qt::KeyboardModifiers modifiers = modifiersOf(QString::fromStdString(line.value("with")));
  if (line.verb == "wheel") {
    const int steps = static_cast<int>(numberOr(line.word(), 1.0));
    return act([=] {
      if (widget) sendWheel(*widget, point, steps, modifiers);
    });
  }
  const std::string what = line.word();
  const Qt::MouseButton button = what == "right"    ? Qt::RightButton
                                 : what == "middle" ? Qt::MiddleButton
                                                    : Qt::LeftButton;
  act([=] {
    if (!widget) return;
    sendClick(*widget, point, button, modifiers, what == "double");
    if (button != Qt::RightButton || !widget) return;
    QContextMenuEvent menu(QContextMenuEvent::Mouse, point, widget->mapToGlobal(point));
    QApplication::sendEvent(widget, &menu);
  });
}

void ScriptDriver::drag(const ScriptLine& line) {
  const ScriptTarget from = findTarget(line);
  if (!from.widget) return fail(from.problem);
  QPoint to = from.point;
  if (line.has("by")) {
    const QStringList by = QString::fromStdString(line.value("by")).split(',');
    if (by.size() != 2) return fail("by=X,Y is wanted");
    to += {by[0].toInt(), by[1].toInt()};
  } else {
    ScriptLine goal = line;
    goal.values.erase("at");
    for (const char* key : {"id", "name", "row", "at"})
      if (line.has(std::string("to-") + key))
        goal.values[key] = line.value(std::string("to-") + key);
    const ScriptTarget target = findTarget(goal);
    if (!target.widget) return fail(target.problem);
    to = from.widget->mapFromGlobal(target.widget->mapToGlobal(target.point));
  }
  const int steps = std::max(1, static_cast<int>(numberOr(line.value("steps"), 10.0)));
  const Qt::KeyboardModifiers modifiers = modifiersOf(QString::fromStdString(line.value("with")));
  const QPointer<QWidget> widget(from.widget);
  act([=, point = from.point] {
    if (widget) sendDrag(*widget, point, to, steps, modifiers);
  });
}

void ScriptDriver::type(const ScriptLine& line) {
  const QString text = QString::fromStdString(line.word());
  if (line.verb == "type") return act([text] { sendText(text); });
  if (QKeySequence::fromString(text, QKeySequence::PortableText).isEmpty())
    return fail("\"" + line.word() + "\" is no key");
  act([text] { sendKeys(text); });
}

// --- devices ---

void ScriptDriver::device(const ScriptLine& line) {
  const std::string name = line.word();
  if (name.empty()) return fail("the device's name is missing");
  const auto found = m_devices.find(name);
  if (line.verb == "unplug") {
    if (found == m_devices.end()) return fail("there is no device \"" + name + "\"");
    found->second->destroy();
    m_devices.erase(found);
    return answer(Json::object());
  }
  if (found != m_devices.end()) return fail("\"" + name + "\" is there already");
  auto* device = new ScriptDevice(name, static_cast<int>(numberOr(line.value("axes"), 4.0)),
                                  static_cast<int>(numberOr(line.value("buttons"), 8.0)));
  device->setNoise(numberOr(line.value("noise"), 0.0));
  m_devices[name] = device;
  answer(Json::object());
}

void ScriptDriver::feed(const ScriptLine& line) {
  const std::string name =
      line.has("device") || m_devices.empty() ? line.value("device") : m_devices.begin()->first;
  const auto found = m_devices.find(name);
  if (found == m_devices.end()) return fail("there is no device to feed (device NAME makes one)");
  // In a take by its frames, so that what is fed is what is recorded, whatever the machine does.
  auto* core = &m_host.scriptedCore();
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  std::string problem;
  found->second->feed(
      line.word(),
      [core, clock] {
        return core->IsRecording() ? core->GetFrameTime() : clock->elapsed() / 1000.0;
      },
      problem);
  answerOr(problem);
}

void ScriptDriver::move(const ScriptLine& line) {
  const auto found = m_devices.find(line.word());
  if (found == m_devices.end()) return fail("there is no device \"" + line.word() + "\"");
  for (const auto& [control, value] : line.values)
    if (!found->second->set(control, numberOr(value, 0.0)))
      return fail("it has no control \"" + control + "\"");
  answer(Json::object());
}

// --- what is seen ---

void ScriptDriver::dump(const ScriptLine& line) {
  Json windows = Json::array();
  for (QWidget* window : shownWindows()) {
    const std::string name = window->objectName().toStdString();
    if (!line.word().empty() && name != line.word()) continue;
    windows.push_back({{"window", name},
                       {"title", window->windowTitle().toStdString()},
                       {"widgets", dumpWidgets(*window)}});
  }
  answer({{"windows", std::move(windows)}});
}

void ScriptDriver::shot(const ScriptLine& line) {
  QWidget* window = windowNamed(line.value("win"));
  if (!window) return fail("there is no such window");
  if (line.word().empty()) return fail("the file's name is missing");
  if (!window->grab().save(QString::fromStdString(line.word()), "PNG"))
    return fail(line.word() + ": the picture can't be written");
  answer({{"file", line.word()}});
}

void ScriptDriver::waitIdle(const ScriptLine& line) {
  const bool forIdle = line.verb == "wait-idle";
  const double most = numberOr(line.word(), forIdle ? 60.0 : 0.0);
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  auto quiet = std::make_shared<int>(0);
  auto* timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [=] {
    const bool over = clock->elapsed() >= 1000.0 * std::min<double>(most, kMaxWait);
    const auto& core = m_host.scriptedCore();
    *quiet = core.GetRunState() == rws::core::RunState::kIdle ? *quiet + 1 : 0;
    if (!over && !(forIdle && *quiet >= kQuietLooks)) return;
    timer->stop();
    timer->deleteLater();
    if (forIdle && *quiet < kQuietLooks)
      fail("it is still busy");
    else
      answer(Json::object());
  });
  timer->start(kLookPeriod);
}

}  // namespace orv::app
