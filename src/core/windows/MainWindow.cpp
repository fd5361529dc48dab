#include "core/windows/MainWindow.h"

#include <QEvent>
#include <QKeyEvent>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <algorithm>
#include <iterator>

#include "core/CoreImplementation.h"
#include "core/WindowIds.h"
#include "core/services/Product.h"
#include "core/windows/MainWindowDevices.h"
#include "core/windows/MainWindowDock.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MainWindowNotice.h"
#include "core/windows/MainWindowPose.h"
#include "core/windows/MainWindowRigs.h"
#include "core/windows/MainWindowScene.h"
#include "core/windows/MainWindowTake.h"
#include "core/windows/MainWindowTools.h"
#include "core/windows/MainWindowUndo.h"
#include "core/windows/MenuIds.h"
#include "core/windows/Program.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Menu.h"
#include "gui/Texts.h"
#include "gui/component/qt/ViewHandler.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Menubar.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/Splitter.h"
#include "gui/componentinterface/View.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

constexpr int kSplitters[] = {kMainColumns, kMainRight, kMainLeft};
constexpr int kCheckBoxes[] = {kResimulateFromFirstFrame, kAutoExpandTimeline, kLowPolyOnRecord};
/// Buttons of the pages at the right, each followed by what it shows.
constexpr std::pair<int, int> kPages[] = {{kPageParameters, kPanelParameters},
                                          {kPageUndo, kPanelUndo},
                                          {kPageDevices, kPanelDevices},
                                          {kPageTakes, kPanelTakes}};
constexpr char kPage[] = "page";

std::string KeyOf(const char* what, int id) {
  return what + std::to_string(id);
}

std::string Join(const std::vector<int>& numbers) {
  QStringList list;
  for (const int number : numbers) list << QString::number(number);
  return list.join(' ').toStdString();
}

std::vector<int> Split(const std::string& text) {
  std::vector<int> numbers;
  for (const QString& number : QString::fromStdString(text).split(' '))
    if (!number.isEmpty()) numbers.push_back(number.toInt());
  return numbers;
}

}  // namespace

/// Escape, which closes a dialog, leaves the main window open.
class MainWindow::EscapeFilter : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    return event->type() == QEvent::KeyPress &&
           static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
  }
};

MainWindow::MainWindow(Windows& windows)
    : MainWindowFrame(windows, "MainWindow", kMainLayout),
      m_escape(std::make_unique<EscapeFilter>()) {
  auto rigs = std::make_unique<MainWindowRigs>(*this);
  auto scene = std::make_unique<MainWindowScene>(*this);
  m_pages.push_back(std::make_unique<MainWindowTools>(*this));
  m_pages.push_back(std::make_unique<MainWindowDock>(*this));
  m_pages.push_back(std::make_unique<MainWindowPose>(*this, *scene));
  m_pages.push_back(std::move(rigs));
  m_pages.push_back(std::move(scene));
  m_pages.push_back(std::make_unique<MainWindowTake>(*this));
  m_pages.push_back(std::make_unique<MainWindowUndo>(*this));
  m_pages.push_back(std::make_unique<MainWindowDevices>(*this));
  m_pages.push_back(std::make_unique<MainWindowNotice>(*this));
  windows.GetProgram().MakePages(
      *this, [this](std::unique_ptr<MainWindowPage> page) { m_pages.push_back(std::move(page)); });
}

MainWindow::~MainWindow() = default;

SceneBrowser* MainWindow::GetBrowser() const {
  return GetWindows().GetProgram().GetSceneBrowser();
}

// --- what is kept ---

std::string MainWindow::GetKept(const std::string& key) const {
  return GetWindows().GetSettings().Get(name(), key);
}

void MainWindow::Keep(const std::string& key, const std::string& value) {
  GetWindows().GetSettings().Set(name(), key, value);
}

void MainWindow::OnBuilt() {
  m_selection = GetCore().GetSelection();
  GetRoot()->SetDropFiles(true);
  for (const int id : kSplitters) {
    const std::vector<int> sizes = Split(GetKept(KeyOf("sizes", id)));
    if (!sizes.empty()) With<Splitter>(id, [&](Splitter& splitter) { splitter.SetSizes(sizes); });
  }
  for (const int id : kCheckBoxes) {
    const std::string state = GetKept(KeyOf("check", id));
    if (!state.empty()) With<CheckBox>(id, [&](CheckBox& box) { box.SetOn(state == "1"); });
  }
  With<Menubar>(kMainMenu, [this](Menubar& bar) { HideMissing(bar.GetMenu()); });
  gui::component::qt::ViewHandler* stage = GetWindows().GetProgram().GetStage();
  With<View>(kMainStage, [stage](View& view) { view.SetHandler(stage); });
  if (gui::Component* view = Find(kMainStage)) view->SetVisible(stage != nullptr);
  gui::component::qt::ViewHandler* timeline = GetWindows().GetProgram().GetTimeline();
  With<View>(kMainTimeline, [timeline](View& view) { view.SetHandler(timeline); });
  for (const int id : {kMainTimeline, kMainTimeButtons})
    if (gui::Component* part = Find(id)) part->SetVisible(timeline != nullptr);
  for (const auto& page : m_pages) page->OnBuilt();
  const std::vector<int> page = Split(GetKept(kPage));
  const gui::Component* kept = page.size() == 1 ? Find(page.front()) : nullptr;
  ShowPage(kept && kept->IsVisible() ? page.front() : kPageParameters);
  ShowTitle();
  ShowCommands();
}

void MainWindow::OnShown() {
  GetWidget()->installEventFilter(m_escape.get());
}

// --- MainWindowView ---

bool MainWindow::GetCheckBox(int id, bool& on) {
  const CheckBox* box = Get<CheckBox>(id);
  if (box) on = box->IsOn();
  return box != nullptr;
}

void MainWindow::SetSpinner(int id, int value) {
  With<Spinner>(id, [value](Spinner& spinner) { spinner.SetValue(value); });
}

void MainWindow::SetRecordState(bool) {
  ShowCommands();
}

void* MainWindow::GetWindowHandle() {
  QWidget* widget = GetWidget();
  return widget ? reinterpret_cast<void*>(widget->winId()) : nullptr;
}

// --- title and menus ---

void MainWindow::ShowTitle() {
  const Program& program = GetWindows().GetProgram();
  const std::string product = kProductName;
  const std::string scene = program.GetSceneTitle();
  SetTitle(scene.empty() ? product : scene + (program.IsSceneChanged() ? "* - " : " - ") + product);
}

/// Entries that the program around the window has not.
void MainWindow::HideMissing(gui::Menu& menu) {
  const Program& program = GetWindows().GetProgram();
  for (int id = kProgramCommands; id < kFirstRecent; ++id)
    menu.SetVisible(id, program.HasCommand(id));
  if (!GetBrowser())
    for (const int id : {kNodeGround, kNodeFit, kNodeSelectDriven}) menu.SetVisible(id, false);
}

template <class Use>
void MainWindow::ForMenus(Use&& use) {
  With<Menubar>(kMainMenu, [&](Menubar& bar) { use(bar.GetMenu()); });
  for (const int id : {kRigTree, kNodeTree})
    if (gui::Component* component = Find(id))
      if (gui::Menu* popup = component->GetPopup()) use(*popup);
}

void MainWindow::ShowCommand(int command, bool enabled, const std::string& why) {
  ForMenus([&](gui::Menu& menu) { menu.SetEnabled(command, enabled, why); });
}

void MainWindow::ShowCommandLabel(int command, const std::string& label) {
  ForMenus([&](gui::Menu& menu) { menu.SetLabel(command, label); });
}

void MainWindow::ShowCommands() {
  if (!GetRoot()) return;
  for (const auto& page : m_pages) page->ShowCommands();
}

void MainWindow::RunCommand(int command) {
  if (command >= kProgramCommands && command <= kLastProgramCommand)
    return GetWindows().GetProgram().RunCommand(command);
  static constexpr std::pair<int, WindowKind> kWindows[] = {
      {kCommandPreferences, WindowKind::kPreferences},
      {kCommandDevices, WindowKind::kDevices},
      {kCommandLog, WindowKind::kLog},
      {kCommandHotKeys, WindowKind::kHotKeys},
      {kCommandWhy, WindowKind::kWhy},
      {kCommandAbout, WindowKind::kAbout}};
  for (const auto& [id, kind] : kWindows)
    if (id == command) GetWindows().Open(kind);
  for (const auto& page : m_pages) page->OnCommand(command);
}

std::string MainWindow::WhyLocked() const {
  return Translate(GetCore().WhyLocked().text);
}

void MainWindow::Tell(int label, const std::string& text) {
  SetText(label, text);
  if (gui::Component* notice = Find(label)) notice->SetVisible(!text.empty());
}

void MainWindow::ShowPage(int button) {
  bool known = false;
  for (const auto& page : kPages) known = known || page.first == button;
  if (!known) return;
  for (const auto& [id, panel] : kPages) {
    With<Button>(id, [&, id = id](Button& b) { b.SetDown(id == button); });
    if (gui::Component* shown = Find(panel)) shown->SetVisible(id == button);
  }
  Keep(kPage, std::to_string(button));
}

// --- what comes in ---

void MainWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id == gui::kMsgMenuItem) return RunCommand(message.param);
  OnFrame(source, message);
  if (!GetRoot()) return;
  for (const auto& page : m_pages) page->OnComponent(source, message);
}

void MainWindow::OnFrame(gui::Component& source, util::Message& message) {
  Program& program = GetWindows().GetProgram();
  const int id = source.GetId();
  switch (message.id) {
    case gui::kMsgCloseRequest:
      if (&source == GetRoot() && !program.MayClose())
        gui::DataOf<gui::CloseRequest>(message)->refused = true;
      break;
    case gui::kMsgClosed:
      if (&source == GetRoot()) program.OnMainWindowClosed();
      break;
    case gui::kMsgFilesDropped:
      program.OpenDropped(gui::DataOf<gui::FilesDropped>(message)->paths);
      break;
    case gui::kMsgPopupOpening:
      if (id == kMainMenu)
        With<Menubar>(kMainMenu, [&](Menubar& bar) { program.UpdateMenu(bar.GetMenu()); });
      break;
    case gui::kMsgValueChanged:
      if (std::count(std::begin(kSplitters), std::end(kSplitters), id) != 0)
        Keep(KeyOf("sizes", id), Join(Get<Splitter>(id)->GetSizes()));
      if (id >= kResimulateFromFirstFrame && id <= kLowPolyOnRecord)
        Keep(KeyOf("check", id), message.param ? "1" : "0");
      break;
    case gui::kMsgClicked:
      ShowPage(id);
      if (id >= kProgramCommands && id <= kLastProgramCommand) program.RunCommand(id);
      break;
    default:
      break;
  }
}

void MainWindow::OnCore(const util::Message& message) {
  // Of many rows that are selected at once each is told, and the first tells of all.
  const bool selected = NewsIn<RowSelected>(message) != nullptr;
  if (selected && m_selection == GetCore().GetSelection()) return;
  if (selected || NewsIn<RowDeleted>(message)) m_selection = GetCore().GetSelection();
  for (const auto& page : m_pages) page->OnCore(message);
  if (selected || NewsIn<RunStateChanged>(message) || NewsIn<RowChecked>(message)) ShowCommands();
}

void MainWindow::OnLive() {
  for (const auto& page : m_pages) page->OnLive();
}

void MainWindow::OnSettingsChanged() {
  for (const auto& page : m_pages) page->OnSettingsChanged();
  ShowTitle();
  ShowCommands();
}

void MainWindow::OnSceneChanged() {
  ShowTitle();
  for (const auto& page : m_pages) page->OnSceneChanged();
  ShowCommands();
}

void MainWindow::OnNotice(const std::string& text) {
  for (const auto& page : m_pages) page->OnNotice(text);
}

}  // namespace orv::rws::core::windows
