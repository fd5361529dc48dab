#include "app/studio/script/Monkey.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QScrollArea>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "app/studio/script/ScriptDevice.h"
#include "app/studio/script/ScriptEvents.h"
#include "app/studio/script/ScriptHost.h"
#include "app/studio/script/ScriptLine.h"
#include "app/studio/script/ScriptTarget.h"
#include "core/CoreImplementation.h"
#include "core/WindowIds.h"
#include "core/host/AdaptorInterface.h"
#include "core/windows/MainWindowIds.h"

namespace orv::app {

namespace {

using namespace rws::core::windows;
using rws::core::RunState;

constexpr int kMostSettling = 30000;  ///< ms
constexpr int kSettleStep = 10;       ///< ms
constexpr double kProvenBy = 0.2;     ///< s that the last take must come forward
constexpr int kScenes = 4;
constexpr const char* kUrls[] = {"http", "https", "file", "mailto"};

constexpr const char* kKeys[] = {"Tab",
                                 "Shift+Tab",
                                 "Space",
                                 "Return",
                                 "Escape",
                                 "Delete",
                                 "F2",
                                 "Up",
                                 "Down",
                                 "Left",
                                 "Right",
                                 "Home",
                                 "End",
                                 "PgUp",
                                 "PgDown",
                                 "Backspace",
                                 "Ctrl+Z",
                                 "Ctrl+Shift+Z",
                                 "Ctrl+Y",
                                 "Ctrl+A",
                                 "Ctrl+C",
                                 "Ctrl+V",
                                 "Ctrl+D",
                                 "Ctrl+G",
                                 "Ctrl+Shift+G",
                                 "Ctrl+Shift+A",
                                 "Ctrl+P",
                                 "Ctrl+I",
                                 "+",
                                 "-",
                                 "Ctrl+Alt+Space",
                                 "Alt+F",
                                 "Alt+E",
                                 "Alt+R",
                                 "Alt+T",
                                 "Menu",
                                 "F1",
                                 "F10",
                                 "Ctrl+S",
                                 "Ctrl+Shift+S",
                                 "Ctrl+O",
                                 "Ctrl+N",
                                 "Ctrl+Q",
                                 "Ctrl+Space"};
constexpr const char* kTexts[] = {"0",    "1,5",    "0.00005", "-3",  "1e308", "nan", "x",
                                  "-0.0", "1e-320", "120",     "25",  "abc",   "4",   "a/b",
                                  "Grün", "10",     "\n",      "1\n", "0.5\n", "2\n"};

template <class List>
auto PickOf(const List& list, unsigned number) {
  return list[number % static_cast<unsigned>(std::size(list))];
}

QString IdText(int id) {
  return QString::number(id);
}

std::string Name(const QWidget& widget) {
  return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
}

}  // namespace

Monkey::Monkey(ScriptHost& host, MonkeyTask task, Done done)
    : m_host(host),
      m_task(std::move(task)),
      m_done(std::move(done)),
      m_random(m_task.seed),
      m_left(m_task.events) {}

Monkey::~Monkey() {
  m_host.ScriptKeepOpen(false);
  for (const char* scheme : kUrls) QDesktopServices::unsetUrlHandler(scheme);
}

void Monkey::Begin() {
  std::error_code error;
  std::filesystem::create_directories(m_task.folder, error);
  // Its saves go to a copy.
  const std::string problem = m_host.ScriptSave(SceneFile());
  if (!problem.empty()) return Report(problem);
  m_host.ScriptKeepOpen(true);
  // No browser is opened: what there is no method for is not done.
  for (const char* scheme : kUrls) QDesktopServices::setUrlHandler(scheme, this, "ignoreUrl");
  m_since.start();
  QTimer::singleShot(0, this, [this] { Next(); });
}

// --- from event to event ---

const std::vector<Monkey::Deed>& Monkey::Deeds() {
  static const std::vector<Deed> deeds{
      {26, &Monkey::ClickSomething}, {16, &Monkey::UseRow},        {12, &Monkey::PressKeys},
      {6, &Monkey::TypeText},        {10, &Monkey::DragSomething}, {4, &Monkey::TurnWheel},
      {6, &Monkey::OpenMenu},        {10, &Monkey::UseTake},       {5, &Monkey::UsePad},
      {2, &Monkey::ChangeScene},     {3, &Monkey::CloseWindow},
  };
  return deeds;
}

void Monkey::Next() {
  Watch();
  if (m_left-- <= 0) {
    m_settling.start();
    return Settle();
  }
  // First, since what it does may open a loop.
  QTimer::singleShot(0, this, [this] { Next(); });
  Act();
}

void Monkey::Watch() {
  const qint64 ms = m_since.restart();
  if (ms > m_slowestMs) {
    m_slowestMs = ms;
    m_slowest = m_last;
  }
  const bool runs = m_host.ScriptedCore().GetRunState() != RunState::kIdle;
  if (runs && !m_ran) ++m_takes;
  m_ran = runs;
  for (const QWidget* window : ShownWindows()) m_windows.insert(window->objectName().toStdString());
}

void Monkey::Act() {
  QWidget* const box = QApplication::activeModalWidget();
  if (auto* files = qobject_cast<QFileDialog*>(box)) return ChooseFile(*files);
  if (box && Chance(40)) return AnswerBox(*box);
  QWidget* const popup = QApplication::activePopupWidget();
  if (popup && Chance(50)) return PickAction(*popup);
  int all = 0;
  for (const Deed& deed : Deeds()) all += deed.weight;
  int drawn = Random(all);
  for (const Deed& deed : Deeds()) {
    drawn -= deed.weight;
    if (drawn < 0) return (this->*deed.act)();
  }
}

void Monkey::Note(const std::string& what) {
  m_last = what;
  if (m_task.log.empty()) return;
  // Anew each time, so that the line is there when the event ends the program.
  std::ofstream(m_task.log, std::ios::app) << m_left << " " << what << "\n";
}

QWidget* Monkey::PickWindow() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  const QList<QWidget*> windows = ShownWindows();
  return windows.isEmpty() ? nullptr : windows[Random(windows.size())];
}

QWidget* Monkey::PickWidget() {
  QWidget* const window = PickWindow();
  if (!window) return nullptr;
  QList<QWidget*> all;
  for (QWidget* widget : window->findChildren<QWidget*>())
    if (widget->isVisible() && (widget->focusPolicy() != Qt::NoFocus || Chance(10)))
      all.append(widget);
  if (all.isEmpty()) return window;
  QWidget* const widget = all[Random(all.size())];
  for (QWidget* around = widget->parentWidget(); around; around = around->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(around)) area->ensureWidgetVisible(widget);
  return widget;
}

std::string Monkey::SceneFile() {
  return m_task.folder + "/scene" + std::to_string(Random(kScenes)) + ".glb";
}

// --- deeds ---

void Monkey::ClickSomething() {
  QWidget* const widget = PickWidget();
  if (!widget) return;
  const QPoint point(Random(std::max(1, widget->width())), Random(std::max(1, widget->height())));
  const Qt::MouseButton button = Chance(12) ? Qt::RightButton : Qt::LeftButton;
  const QString held = PickOf(std::vector<QString>{"", "", "", "ctrl", "shift"}, m_random());
  Note("click " + Name(*widget));
  const QPointer<QWidget> alive(widget);
  SendClick(*widget, point, button, ModifiersOf(held), Chance(20));
  if (button != Qt::RightButton || !alive) return;
  QContextMenuEvent menu(QContextMenuEvent::Mouse, point, widget->mapToGlobal(point));
  QApplication::sendEvent(widget, &menu);
}

void Monkey::UseRow() {
  QWidget* const window = PickWindow();
  if (!window) return;
  QList<QAbstractItemView*> views;
  for (auto* view : window->findChildren<QAbstractItemView*>())
    if (view->isVisible()) views.append(view);
  if (views.isEmpty()) return ClickSomething();
  QAbstractItemView* const view = views[Random(views.size())];
  QWidget* const area = view->viewport();
  const int height = std::max(1, std::min(area->height(), 24 * view->model()->rowCount() + 24));
  const QPoint point(Random(std::max(1, area->width())), Random(height));
  const QPoint other(Random(std::max(1, area->width())), Random(height));
  Note("row " + Name(*view));
  if (Chance(25)) return SendDrag(*area, point, other, 4, Qt::NoModifier);
  SendClick(*area, point, Qt::LeftButton, Chance(30) ? Qt::ControlModifier : Qt::NoModifier,
            Chance(35));
}

void Monkey::PressKeys() {
  const std::string keys = PickOf(kKeys, m_random());
  Note("key " + keys);
  SendKeys(QString::fromStdString(keys));
}

void Monkey::TypeText() {
  const QString text = PickOf(kTexts, m_random());
  Note("type " + text.trimmed().toStdString());
  SendText(text);
}

void Monkey::DragSomething() {
  QWidget* const widget = PickWidget();
  if (!widget) return;
  const QPoint from(Random(std::max(1, widget->width())), Random(std::max(1, widget->height())));
  const QPoint by(Random(301) - 150, Chance(50) ? 0 : Random(301) - 150);
  Note("drag " + Name(*widget));
  SendDrag(*widget, from, from + by, 1 + Random(20), Qt::NoModifier);
}

void Monkey::TurnWheel() {
  QWidget* const widget = PickWidget();
  if (!widget) return;
  Note("wheel " + Name(*widget));
  SendWheel(*widget, widget->rect().center(), Random(11) - 5, Qt::NoModifier);
}

void Monkey::OpenMenu() {
  QWidget* const window = PickWindow();
  auto* const bar = window ? window->findChild<QMenuBar*>() : nullptr;
  if (!bar || bar->actions().isEmpty()) return PressKeys();
  QAction* const action = bar->actions().at(Random(bar->actions().size()));
  Note("menu " + action->text().toStdString());
  SendClick(*bar, bar->actionGeometry(action).center(), Qt::LeftButton, Qt::NoModifier, false);
}

void Monkey::PickAction(QWidget& popup) {
  auto* const menu = qobject_cast<QMenu*>(&popup);
  Note("popup " + Name(popup));
  if (!menu || menu->actions().isEmpty() || Chance(20)) {
    SendKeys(Chance(50) ? "Escape" : "Return");
    return;
  }
  QAction* const action = menu->actions().at(Random(menu->actions().size()));
  Note("entry " + action->text().toStdString());
  SendClick(*menu, menu->actionGeometry(action).center(), Qt::LeftButton, Qt::NoModifier, false);
}

void Monkey::UseTake() {
  const bool idle = m_host.ScriptedCore().GetRunState() == RunState::kIdle;
  if (idle && m_host.ScriptedCore().WhyNoTake()) return AddRig();  // clicks seldom make one
  const int ids[] = {kTakeRecord, kTakeRetry, rws::core::kResimulateButton, kTakeStop};
  const int id = idle ? PickOf(ids, m_random()) : ids[Chance(70) ? 3 : 1];
  if (!idle && Chance(40)) return PressKeys();  // takes are to last
  ScriptLine line;
  line.values = {{"win", "MainWindow"}, {"id", std::to_string(id)}};
  const ScriptTarget target = FindTarget(line);
  Note("take " + std::to_string(id));
  if (target.widget) SendClick(*target.widget, target.point, Qt::LeftButton, Qt::NoModifier, false);
}

void Monkey::AddRig() {
  auto& core = m_host.ScriptedCore();
  const std::vector<rws::core::Tool*>& tools = core.GetLibrary().GetTools();
  const std::string kind = tools[Random(static_cast<int>(tools.size()))]->GetDisplayId();
  Note("add " + kind);
  core.CreateTool(kind);
}

void Monkey::UsePad() {
  const std::string name = "Pad" + std::to_string(Random(3));
  const auto found = m_pads.find(name);
  Note("pad " + name);
  if (found == m_pads.end()) {
    m_pads[name] = ScriptDevice::Plug(name, {4, 4, 1});
    m_pads[name]->SetNoise(0.04);
  } else if (Chance(15)) {
    found->second->destroy();
    m_pads.erase(found);
  } else {
    found->second->Set("Axis" + std::to_string(Random(4)), Random(201) / 100.0 - 1.0);
    found->second->Set("Button" + std::to_string(Random(4)), Random(2));
  }
}

void Monkey::ChangeScene() {
  // A program that asks something can't be given another scene.
  if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) return;
  const std::string file = SceneFile();
  const bool isThere = std::filesystem::exists(file);
  Note((isThere ? "open " : "new for ") + file);
  ++m_scenes;
  if (isThere && Chance(70))
    m_host.ScriptOpen(file);
  else
    m_host.ScriptNew();
}

void Monkey::CloseWindow() {
  QWidget* const window = PickWindow();
  // It comes back, and asks first: now and then is enough.
  if (!window || (window->objectName() == "MainWindow" && !Chance(20))) return;
  Note("close " + Name(*window));
  window->close();
}

// --- what asks ---

void Monkey::ChooseFile(QFileDialog& dialog) {
  ++m_boxes;
  Note("files " + dialog.windowTitle().toStdString());
  auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
  if (!name || Chance(30)) {
    // The hot keys of a take come first.
    if (m_host.ScriptedCore().GetRunState() == RunState::kIdle) SendKeys("Escape");
    return dialog.reject();
  }
  name->setText(QString::fromStdString(SceneFile()));
  name->setFocus();
  SendKeys("Return");
}

void Monkey::AnswerBox(QWidget& box) {
  ++m_boxes;
  QList<QAbstractButton*> buttons;
  for (auto* button : box.findChildren<QAbstractButton*>())
    if (button->isVisible() && button->isEnabled()) buttons.append(button);
  Note("box " + box.windowTitle().toStdString());
  if (buttons.isEmpty() || Chance(20)) {
    SendKeys(Chance(50) ? "Escape" : "Return");
    return;
  }
  QAbstractButton* const button = buttons[Random(buttons.size())];
  SendClick(*button, button->rect().center(), Qt::LeftButton, Qt::NoModifier, false);
}

// --- the end ---

void Monkey::Settle() {
  if (m_settling.elapsed() > kMostSettling) {
    const QWidget* const modal = QApplication::activeModalWidget();
    return Report("the program is stuck" + (modal ? " in " + Name(*modal) : std::string()) +
                  ", after: " + m_last);
  }
  if (m_proof == Proof::kDone && ComeToRest()) return Report({});
  QTimer::singleShot(kSettleStep, this, [this] { Settle(); });
  if (m_proof == Proof::kRuns || (m_proof == Proof::kNone && ComeToRest())) ProveTake();
}

/// One step towards a program that waits for its user. True when it does.
bool Monkey::ComeToRest() {
  const bool idle = m_host.ScriptedCore().GetRunState() == RunState::kIdle;
  if (QWidget* const modal = QApplication::activeModalWidget()) {
    if (auto* dialog = qobject_cast<QDialog*>(modal); dialog && idle)
      SendKeys("Escape");
    else
      AnswerBox(*modal);
    return false;
  }
  if (QApplication::activePopupWidget()) {
    SendKeys("Escape");
    return false;
  }
  if (!idle) {
    ScriptLine line;
    line.values = {{"win", "MainWindow"}, {"id", IdText(kTakeStop).toStdString()}};
    const ScriptTarget target = FindTarget(line);
    if (target.widget)
      SendClick(*target.widget, target.point, Qt::LeftButton, Qt::NoModifier, false);
  }
  return idle;
}

/// A take after all that: its clock must come forward.
void Monkey::ProveTake() {
  auto& core = m_host.ScriptedCore();
  const double time = core.GetAdaptor()->GetCurrentTime();
  if (m_proof == Proof::kNone) {
    core.GetPreferences().countdownSeconds = 0;
    core.SetSlowFactorIndex(1);
    m_proof = Proof::kRuns;
    m_proofTime = time;
    core.StartRecording();
  } else if (core.GetRunState() == RunState::kIdle || time > m_proofTime + kProvenBy) {
    // Where the range ends and may not grow it ends by itself.
    m_proof = Proof::kDone;
  }
}

void Monkey::Report(const std::string& problem) {
  for (const auto& [name, pad] : m_pads) pad->destroy();
  m_pads.clear();
  nlohmann::json report{{"events", m_task.events - std::max(0, m_left)},
                        {"seed", m_task.seed},
                        {"takes", m_takes},
                        {"boxes", m_boxes},
                        {"scenes", m_scenes},
                        {"windows", m_windows},
                        {"slowestMs", m_slowestMs},
                        {"slowest", m_slowest}};
  if (!problem.empty()) report["error"] = problem;
  m_done(std::move(report));
}

}  // namespace orv::app
