#include "core/windows/Windows.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <algorithm>
#include <iterator>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "core/services/Resources.h"
#include "core/windows/Program.h"
#include "core/windows/Window.h"
#include "gui/Component.h"
#include "gui/Texts.h"
#include "gui/component/qt/Realise.h"
#include "gui/componentinterface/Dialog.h"

namespace orv::rws::core::windows {

namespace {

constexpr int kLivePeriod = 66;  ///< ms
constexpr char kFolders[] = "folders";

gui::LayoutServices Services() {
  gui::LayoutServices services;
  services.readUser = [](const std::string& path, std::string& bytes) {
    return ReadResource(DataRoot::GetDataFolder() + path, bytes);
  };
  services.readFactory = [](const std::string& path, std::string& bytes) {
    return ReadResource(":/data" + path, bytes);
  };
  services.log = [](const std::string& line) { LogEntry(LogLevel::kWarning, line); };
  return services;
}

QString Text(const std::string& text) {
  return QString::fromStdString(text);
}

std::string Native(const QString& path) {
  return path.isEmpty() ? std::string() : QFile::encodeName(path).toStdString();
}

}  // namespace

Windows::Windows(CoreImplementation& core, Program& program)
    : m_core(core), m_program(program), m_layout(Services()) {
  InitResources();
  gui::RegisterElements();
  m_live.setInterval(kLivePeriod);
  connect(&m_live, &QTimer::timeout, this, [this] { GoLive(); });
  m_live.start();
  m_core.SetUserInterface(this);
}

Windows::~Windows() {
  m_live.stop();
  m_core.SetUserInterface(nullptr);
  // Those of rigs may be docked in the main window.
  while (!m_windows.empty()) m_windows.erase(std::prev(m_windows.end()));
  m_dropped.clear();
  gui::DestroyRetired();
}

Window* Windows::Make(WindowKind kind, int row) {
  const auto maker = m_makers.find(kind);
  if (maker == m_makers.end()) return nullptr;
  std::unique_ptr<Window> window = maker->second(*this, row);
  if (!window) return nullptr;
  return (m_windows[{kind, row}] = std::move(window)).get();
}

Window* Windows::Find(WindowKind kind, int row) const {
  const auto found = m_windows.find({kind, row});
  return found == m_windows.end() || !found->second->GetRoot() ? nullptr : found->second.get();
}

Window* Windows::Open(WindowKind kind, int row) {
  const auto found = m_windows.find({kind, row});
  Window* window = found != m_windows.end() ? found->second.get() : Make(kind, row);
  if (window && window->Show()) return window;
  if (window) Drop(kind, row);
  return nullptr;
}

void Windows::Close(WindowKind kind, int row) {
  Window* window = Find(kind, row);
  if (!window) return;
  if (auto* dialog = dynamic_cast<gui::componentinterface::Dialog*>(window->GetRoot()))
    dialog->Close();
  else
    window->Hide();
}

void Windows::Drop(WindowKind kind, int row) {
  const auto found = m_windows.find({kind, row});
  if (found == m_windows.end()) return;
  found->second->Hide();
  m_dropped.push_back(std::move(found->second));
  m_windows.erase(found);
  QTimer::singleShot(0, this, [this] { ClearDropped(); });
}

/// A window that waits for an answer runs an event loop, in which its rig may go.
void Windows::ClearDropped() {
  if (gui::IsDelivering())
    QTimer::singleShot(kLivePeriod, this, [this] { ClearDropped(); });
  else
    m_dropped.clear();
}

Window* Windows::Dock(WindowKind kind, int row, gui::Component& container) {
  Drop(kind, row);
  Window* window = Make(kind, row);
  if (window && window->BuildIn(container)) return window;
  if (window) Drop(kind, row);
  return nullptr;
}

void Windows::DropRow(int row) {
  for (const WindowKind kind : {WindowKind::kToolConfig, WindowKind::kInputConfig}) Drop(kind, row);
}

QWidget* Windows::GetParentFor(const Window& window) const {
  const Window* main = Find(WindowKind::kMain);
  return main && main != &window ? main->GetWidget() : m_program.GetHostWindow();
}

QWidget* Windows::GetMainWidget() const {
  const Window* main = Find(WindowKind::kMain);
  return main ? main->GetWidget() : m_program.GetHostWindow();
}

std::string Windows::ChooseFile(const std::string& title, const std::string& filter,
                                const std::string& what) {
  const QString path = QFileDialog::getOpenFileName(
      GetMainWidget(), Text(title), Text(m_settings.Get(kFolders, what)), Text(filter));
  if (!path.isEmpty()) m_settings.Set(kFolders, what, QFileInfo(path).absolutePath().toStdString());
  return Native(path);
}

std::vector<std::string> Windows::ChooseFiles(const std::string& title, const std::string& filter,
                                              const std::string& what) {
  const QStringList paths = QFileDialog::getOpenFileNames(
      GetMainWidget(), Text(title), Text(m_settings.Get(kFolders, what)), Text(filter));
  if (!paths.isEmpty())
    m_settings.Set(kFolders, what, QFileInfo(paths.front()).absolutePath().toStdString());
  std::vector<std::string> result;
  for (const QString& path : paths) result.push_back(Native(path));
  return result;
}

std::string Windows::ChooseFileToSave(const std::string& title, const std::string& filter,
                                      const std::string& what, const std::string& name,
                                      const std::string& suffix, const std::string& folder) {
  const std::string& kept = m_settings.Get(kFolders, what);
  QFileDialog dialog(GetMainWidget(), Text(title), Text(kept.empty() ? folder : kept),
                     Text(filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  // The dialog's own question is asked of the name that it completes.
  dialog.setDefaultSuffix(
      Text(suffix.substr(std::min(suffix.find_first_not_of('.'), suffix.size()))));
  dialog.selectFile(Text(name));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  const QString path = dialog.selectedFiles().front();
  m_settings.Set(kFolders, what, QFileInfo(path).absolutePath().toStdString());
  return Native(path);
}

bool Windows::AskText(const std::string& title, const std::string& label, std::string& text) {
  bool accepted = false;
  const QString answer = QInputDialog::getText(GetMainWidget(), Text(title), Text(label),
                                               QLineEdit::Normal, Text(text), &accepted);
  if (accepted) text = answer.trimmed().toStdString();
  return accepted && !text.empty();
}

void Windows::ShowSettings() {
  for (std::size_t i = 0; i < m_all.size(); ++i) {
    if (!m_all[i]->GetRoot()) continue;
    if (!m_all[i]->IsDocked()) m_all[i]->GetRoot()->Retranslate();
    m_all[i]->OnSettingsChanged();
  }
}

void Windows::TellSceneChanged() {
  for (std::size_t i = 0; i < m_all.size(); ++i)
    if (m_all[i]->GetRoot()) m_all[i]->OnSceneChanged();
}

void Windows::ShowNotice(const std::string& text) {
  for (std::size_t i = 0; i < m_all.size(); ++i)
    if (m_all[i]->GetRoot()) m_all[i]->OnNotice(text);
}

void Windows::Enter(Window& window) {
  m_all.push_back(&window);
}

void Windows::Leave(Window& window) {
  m_all.erase(std::remove(m_all.begin(), m_all.end(), &window), m_all.end());
}

void Windows::Prepare(gui::Component& root) {
  m_core.RegisterImageAliases(&root);
}

void Windows::GoLive() {
  // A window may open and close others meanwhile.
  const std::vector<Window*> all = m_all;
  for (Window* window : all)
    if (std::find(m_all.begin(), m_all.end(), window) != m_all.end() && window->IsShown())
      window->OnLive();
}

MainWindowView* Windows::GetMainWindow() {
  Window* main = Find(WindowKind::kMain);
  return main && main->IsShown() && m_views.main ? m_views.main(*main) : nullptr;
}

bool Windows::OpenMainWindow(void*) {
  return Open(WindowKind::kMain) != nullptr;
}

void Windows::RaiseMainWindow() {
  Open(WindowKind::kMain);
}

void Windows::CloseMainWindow() {
  Close(WindowKind::kMain);
}

CountdownDialog* Windows::CreateCountdownDialog() {
  return m_views.countdown ? m_views.countdown(*this) : nullptr;
}

ResimulationView* Windows::CreateResimulationView() {
  return m_views.resimulation ? m_views.resimulation(*this) : nullptr;
}

int Windows::MessageBox(const std::string& title, const std::string& text, unsigned flags) {
  if (!m_views.messageBox) {
    LogEntry(LogLevel::kWarning, title + ": " + text);
    return kAnswerCancel;
  }
  constexpr unsigned kButtons = 15;
  if ((flags & kButtons) != kButtonsOk || !m_core.GetMessages().IsHeld())
    return m_views.messageBox(*this, title, text, flags);
  // What a rig says in each frame is said once.
  for (const Box& box : m_boxes)
    if (box.title == title && box.text == text) return kAnswerOk;
  m_boxes.push_back({title, text, flags});
  QTimer::singleShot(0, this, [this] { ShowBoxes(); });
  return kAnswerOk;
}

void Windows::ShowBoxes() {
  if (std::exchange(m_showsBoxes, true)) return;
  for (; !m_boxes.empty(); m_boxes.pop_front()) {
    const Box box = m_boxes.front();
    m_views.messageBox(*this, box.title, box.text, box.flags);
  }
  m_showsBoxes = false;
}

void Windows::ShowInputConfig(const std::string& instanceName) {
  if (InstanceReference* row = m_core.FindTool(instanceName))
    Open(WindowKind::kInputConfig, row->GetId());
}

}  // namespace orv::rws::core::windows
