#include "app/studio/StagePane.h"

#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/HeadlessBrowser.h"
#include "app/studio/StageManipulator.h"
#include "app/studio/view/Graphics.h"
#include "core/CoreImplementation.h"
#include "core/services/Log.h"
#include "core/windows/WindowSettings.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"

namespace orv::app {

using gui::Translate;
using rws::adaptor::headless::SceneNode;
using view::kInset;
using view::NavigationPreset;
using view::PaneLayout;
using view::PickMode;
using view::Shading;

namespace {

constexpr char kStageSettings[] = "Stage";
/// By pane.
constexpr const char* kShadingKeys[] = {"shading", "shading2"};
/// What settings keep of a choice, in the order of their enums.
constexpr const char* kLayouts[] = {"", "columns", "rows"};
constexpr const char* kShadings[] = {"", "wire", "xray"};
constexpr double kSmoothPause = 0.015;  ///< s, between pictures of what moves between frames

QString Shown(const std::string& text) {
  return QString::fromStdString(text);
}

/// The place of a text among the choices; the first one for any other.
template <class Choice, std::size_t count>
Choice ChoiceOf(const char* const (&texts)[count], const std::string& text) {
  const auto at = std::find(std::begin(texts), std::end(texts), text);
  return static_cast<Choice>(at == std::end(texts) ? 0 : at - std::begin(texts));
}

template <class Action>
QAction* AddEntry(QMenu& menu, const std::string& text, Action action) {
  QAction* entry = menu.addAction(Shown(text));
  QObject::connect(entry, &QAction::triggered, action);
  return entry;
}

template <class Action>
void AddChoice(QMenu& menu, const std::string& text, bool on, Action action) {
  QAction* entry = AddEntry(menu, text, action);
  entry->setCheckable(true);
  entry->setChecked(on);
}

/// A power of ten of metres.
std::string StepText(double step) {
  if (step >= 1000.0) return std::to_string(std::lround(step / 1000.0)) + " km";
  if (step >= 1.0) return std::to_string(std::lround(step)) + " m";
  if (step > 0.005) return std::to_string(std::lround(step * 100.0)) + " cm";
  return QString::number(step * 1000.0).toStdString() + " mm";
}

}  // namespace

StagePane::StagePane(rws::core::CoreImplementation& core,
                     rws::adaptor::headless::HeadlessAdaptor& host, HeadlessBrowser& browser,
                     bool isFixedQuality)
    : m_core(core),
      m_host(host),
      m_browser(browser),
      m_quality(isFixedQuality ? view::Quality::kFixed : view::Quality::kByMachine),
      m_frames(host),
      m_nodes(core, host, browser, m_frames),
      m_overlay(core, host),
      m_overlayView(m_overlay, m_frames) {
  m_nodes.changed = [this] { Update(); };
  m_host.GetObservers().Add(*this);
  m_browser.AddObserver(*this);
  m_frames.SetClock([this] { return GetShownTime(); });
  m_since.start();
}

StagePane::~StagePane() {
  delete m_view;
  m_browser.RemoveObserver(*this);
  m_host.GetObservers().Remove(*this);
}

// --- choices ---

void StagePane::SetSettings(rws::core::windows::WindowSettings* settings) {
  m_settings = settings;
  TakeChoices();
}

std::string StagePane::GetKept(const char* key) const {
  return m_settings ? m_settings->Get(kStageSettings, key) : std::string();
}

void StagePane::Keep(const char* key, const std::string& value) {
  if (m_settings) m_settings->Set(kStageSettings, key, value);
  TakeChoices();
}

void StagePane::TakeChoices() {
  // A kind that a user has not chosen keeps what it begins with.
  for (std::size_t i = 0; i < view::kOverlayKindCount; ++i) {
    const std::string kept = GetKept(view::GetOverlayKinds()[i].key);
    m_overlay.Show(static_cast<view::OverlayKind>(i),
                   kept.empty() ? view::GetOverlayKinds()[i].isShown : kept == "yes");
  }
  Update();
  if (!m_view) return;
  m_view->SetNavigation(GetKept("navigation") == "maya" ? NavigationPreset::kMaya
                                                        : NavigationPreset::kBlender);
  for (std::size_t pane = 0; pane < kInset; ++pane)
    m_view->SetShading(ChoiceOf<Shading>(kShadings, GetKept(kShadingKeys[pane])), pane);
  m_view->SetGridVisible(GetKept("grid") != "no");
  m_isBetween = GetKept("between") == "yes";
  m_view->SetLayout(ChoiceOf<PaneLayout>(kLayouts, GetKept("panes")));
  m_view->SetInsetVisible(GetKept("inset") == "yes");
  ChooseInset();
  m_hands->TakeChoices();
}

// --- the widget ---

void StagePane::Paint(QPainter& painter, QWidget& widget) {
  if (m_problem.empty()) return;
  painter.setPen(widget.palette().color(QPalette::WindowText));
  const int space = gui::component::qt::Scaled(16);
  painter.drawText(
      widget.rect().adjusted(space, space, -space, -space), Qt::AlignCenter | Qt::TextWordWrap,
      Shown(Translate("The scene can't be shown here: %1. Everything else works as ever; a driver "
                      "with OpenGL 3.3 brings the picture back.",
                      {m_problem})));
}

QWidget* StagePane::MakeContent(QWidget* parent) {
  m_problem = view::GetGraphics().problem;
  if (!m_problem.empty()) {
    rws::core::LogEntry(rws::core::LogLevel::kWarning, "No view of the scene: " + m_problem);
    return nullptr;
  }
  m_view = new view::StageView(m_frames, m_quality, parent);
  m_view->setObjectName("stage");
  m_view->setAccessibleName(Shown(Translate("Picture of the scene")));
  m_view->picked = [this](const std::vector<std::uint32_t>& ids, PickMode mode) {
    Select(ids, mode);
  };
  m_view->menuWanted = [this](const QPoint& at) { OpenMenu(at); };
  m_view->cameraLeft = [this] { m_frames.LookThrough(nullptr, m_view->GetActive()); };
  m_view->keyPressed = [this](int key, bool shift) { return PressKey(key, shift); };
  m_view->isBusy = [this] { return m_core.GetRunState() != rws::core::RunState::kIdle; };
  m_view->painted = [this] { NotePainted(); };
  QObject::connect(m_view, &QOpenGLWidget::frameSwapped, m_view, [this] { NoteSwapped(); });
  ConnectOverlay();
  m_view->failed = [this](const std::string& problem) {
    rws::core::LogEntry(rws::core::LogLevel::kWarning, "No view of the scene: " + problem);
    m_problem = problem;
    // Not within its own call; the text below it is seen then.
    QTimer::singleShot(0, m_view, [view = m_view] {
      view->parentWidget()->update();
      view->deleteLater();
    });
  };
  auto hands = std::make_unique<StageManipulator>(m_core, m_nodes, *m_view);
  m_hands = hands.get();
  m_hands->kept = [this](const char* key) { return GetKept(key); };
  m_hands->keep = [this](const char* key, const std::string& value) { Keep(key, value); };
  m_view->SetInteractor(std::move(hands));
  for (auto& note : m_notes) {
    note = new QLabel(m_view);
    view::WindowPictures::Raise(*note);
    note->setAttribute(Qt::WA_TransparentForMouseEvents);
    note->setAutoFillBackground(true);  // the picture below it may be of any colour
    note->setMargin(gui::component::qt::Scaled(2));
  }
  TakeChoices();
  OnNodeSelection();
  m_view->FrameNext();
  return m_view;
}

void StagePane::ConnectOverlay() {
  m_view->begun = [this] {
    if (m_drawnFrom < 0.0) m_drawnFrom = Now();
    m_overlayView.Read();
  };
  m_view->linesWanted = [this](view::FramePacket& packet) {
    m_overlayView.Write(packet, m_view->GetPlace(m_view->NumberOf(packet)).height());
  };
  m_view->hasTexts = [this] { return m_overlayView.HasTexts(); };
  m_view->paintOver = [this](QPainter& painter) {
    for (std::size_t picture = 0; picture < kInset; ++picture)
      if (m_view->IsShown(picture))
        m_overlayView.PaintNames(painter, m_view->GetPicture(picture).packet,
                                 m_view->GetPlace(picture), m_view->palette());
    m_overlayView.Paint(painter, m_view->size(), m_view->palette());
  };
}

std::string StagePane::NoteOf(std::size_t picture) const {
  if (!m_view->IsShown(picture)) return {};
  if (const SceneNode* camera = m_frames.GetLookThrough(picture))
    return picture == kInset ? camera->GetName() : Translate("Through %1", {camera->GetName()});
  std::string text;
  if (m_view->IsGridVisible())
    text = Translate("Grid: %1", {StepText(m_view->GetPicture(picture).packet.grid.step)});
  if (const SceneNode* followed = m_frames.GetFollowed(picture))
    text += (text.empty() ? "" : "  ") + Translate("Along with %1", {followed->GetName()});
  return text;
}

void StagePane::ShowNotes() {
  if (!m_view) return;
  const int space = gui::component::qt::Scaled(8);
  for (std::size_t picture = 0; picture < m_notes.size(); ++picture) {
    QLabel* note = m_notes[picture];
    if (!note) continue;
    const int within = picture == kInset ? space / 2 : space;
    const QRect room = m_view->GetPlace(picture).adjusted(within, within, -within, -within);
    const QString text = note->fontMetrics().elidedText(Shown(NoteOf(picture)), Qt::ElideRight,
                                                        room.width() - 2 * note->margin());
    if (note->text() != text) {
      note->setText(text);
      note->adjustSize();
    }
    note->setVisible(!text.isEmpty());
    if (note->pos() != room.topLeft()) note->move(room.topLeft());
  }
}

// --- when it draws ---

void StagePane::OnTree() {
  if (m_scene != &m_host.GetScene() && m_view) m_view->FrameNext();
  m_scene = &m_host.GetScene();
  Update();
}

bool StagePane::IsInTake() const {
  const auto state = m_core.GetRunState();
  return state == rws::core::RunState::kRecording || state == rws::core::RunState::kCountdown;
}

double StagePane::GetShownTime() const {
  const bool showsNewest = IsInTake() && !m_isBetween;
  return showsNewest ? m_core.GetFrameTime() : m_host.GetCurrentTime();
}

int StagePane::GetNewestFrame() const {
  return static_cast<int>(std::lround(m_core.GetFrameTime() / m_core.GetFrameDuration()));
}

void StagePane::OnTime(double) {
  // A take tells its time with every tick, many of which step no frame.
  if (!IsInTake() || m_isBetween || GetNewestFrame() != m_asked) return Update();
  DrawWhenDue();
}

void StagePane::Update() {
  if (!m_view) return;
  const bool wasInTake = std::exchange(m_wasInTake, IsInTake());
  if (!m_wasInTake) return m_view->update();
  if (!wasInTake) m_pace.BeginTake(m_asked = GetNewestFrame());
  m_isWanted = true;
  DrawWhenDue();
}

void StagePane::DrawWhenDue() {
  if (!m_view || !m_isWanted || m_view->IsPending()) return;
  if (!m_pace.MayDraw(Now(), m_core.IsBehind())) return;
  if (m_isBetween && m_pace.GetPause(Now()) < kSmoothPause) return;
  m_isWanted = false;
  m_asked = GetNewestFrame();
  m_pace.NoteBegin(Now());
  m_view->Hurry();
}

void StagePane::AgeMoves() {
  const double passed = Now() - std::exchange(m_agedAt, Now());
  for (double& age : m_ages) age += 1000.0 * passed;
}

void StagePane::NotePainted() {
  m_painted = IsInTake() ? GetNewestFrame() : 0;
  m_isPainted = true;
  AgeMoves();
  for (const double age : m_core.TakeInputAges()) m_ages.push_back(age);
  m_core.PollInputs();
  QTimer::singleShot(0, m_view, [this] {
    ChooseInset();
    ShowNotes();
    if (m_core.GetRunState() == rws::core::RunState::kIdle) m_frames.LoadAhead();
    for (const std::string& odd : m_frames.TakeOdd())
      rws::core::LogEntry(rws::core::LogLevel::kWarning, odd);
  });
}

void StagePane::NoteSwapped() {
  m_core.PollInputs();
  // The window is put together for other widgets too.
  if (!std::exchange(m_isPainted, false)) return;
  AgeMoves();
  m_pace.NotePicture(Now(), m_painted, m_ages);
  m_ages.clear();
  DrawWhenDue();
  m_overlayView.SetCost(1000.0 * (Now() - m_drawnFrom));
  m_drawnFrom = -1.0;
  if (!m_overlay.IsShown(view::kOverlayRate)) return;
  const PictureFigures figures = GetFigures();
  if (figures.latencies > 0) m_overlayView.SetLatency({figures.medianMs, figures.p95Ms});
}

// --- the selection ---

void StagePane::OnNodeSelection() {
  std::vector<const SceneNode*> nodes;
  for (const int key : m_browser.GetSelection())
    if (const SceneNode* node = m_browser.GetNode(key)) nodes.push_back(node);
  const SceneNode* latest = nodes.empty() ? nullptr : nodes.back();
  m_overlay.Select(nodes);
  m_frames.Select(std::move(nodes));
  if (latest && latest->GetLens()) m_frames.LookThrough(latest, kInset);
  Update();
}

const SceneNode* StagePane::GetSelected() const {
  const std::vector<int> keys = m_browser.GetSelection();
  return keys.empty() ? nullptr : m_browser.GetNode(keys.back());
}

void StagePane::Select(const std::vector<std::uint32_t>& ids, PickMode mode) {
  std::vector<int> keys;
  if (mode != PickMode::kReplace) keys = m_browser.GetSelection();
  for (const std::uint32_t id : ids) {
    const SceneNode* node = m_frames.FindNode(id);
    if (!node) continue;
    const int key = m_browser.GetKey(*node);
    const auto held = std::find(keys.begin(), keys.end(), key);
    if (held == keys.end())
      keys.push_back(key);
    else if (mode == PickMode::kToggle)
      keys.erase(held);
  }
  m_browser.Select(keys);
}

// --- panes, cameras, companions ---

void StagePane::LookThrough(const SceneNode* camera) {
  m_frames.LookThrough(camera, m_view->GetActive());
  if (camera) m_frames.LookThrough(camera, kInset);
  Update();
}

void StagePane::Follow(bool turns) {
  const std::size_t pane = m_view->GetActive();
  const bool isSame = m_frames.GetFollowed(pane) && m_frames.TurnsWithFollowed(pane) == turns;
  const SceneNode* now = isSame ? nullptr : m_frames.GetFollowed(pane);
  if (!isSame && !now) now = GetSelected();
  m_frames.Follow(now, turns, pane);
  Update();
}

void StagePane::SetShading(Shading shading) {
  Keep(kShadingKeys[m_view->GetActive()], kShadings[static_cast<std::size_t>(shading)]);
}

void StagePane::ChooseInset() {
  if (!m_view || GetKept("inset") != "yes" || m_frames.GetLookThrough(kInset)) return;
  for (const SceneNode* node : m_host.GetScene().GetNodes()) {
    if (!node->GetLens()) continue;
    m_frames.LookThrough(node, kInset);
    return Update();
  }
}

bool StagePane::PressKey(int key, bool shift) {
  const auto layout = [this](PaneLayout wanted) {
    Keep("panes", kLayouts[static_cast<std::size_t>(wanted)]);
  };
  switch (key) {
    case Qt::Key_1:
      layout(PaneLayout::kOne);
      return true;
    case Qt::Key_2:
      layout(PaneLayout::kColumns);
      return true;
    case Qt::Key_3:
      layout(PaneLayout::kRows);
      return true;
    case Qt::Key_I:
      Keep("inset", m_view->IsInsetVisible() ? "" : "yes");
      return true;
    case Qt::Key_L:
      Follow(shift);
      return true;
    case Qt::Key_D:
      SetShading(static_cast<Shading>((static_cast<std::size_t>(m_view->GetShading()) + 1) %
                                      std::size(kShadings)));
      return true;
    case Qt::Key_C: {
      const SceneNode* node = GetSelected();
      const bool isThrough = m_frames.GetLookThrough(m_view->GetActive());
      LookThrough(!isThrough && node && node->GetLens() ? node : nullptr);
      return true;
    }
    default:
      return false;
  }
}

// --- the menu ---

void StagePane::OpenMenu(const QPoint& at) {
  if (!m_view) return;
  auto* menu = new QMenu(m_view);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  AddEntry(*menu, Translate("Show &all") + "\tA", [this] { m_view->FrameAll(); });
  AddEntry(*menu, Translate("Show the &selection") + "\tF", [this] {
    m_view->FrameSelected();
  })->setEnabled(!m_browser.GetSelection().empty());
  m_hands->AddTo(*menu);
  menu->addSeparator();
  AddCameraEntries(*menu);
  AddFollowEntries(*menu);
  menu->addSeparator();
  AddPaneEntries(*menu);
  AddShadingEntries(*menu);
  const bool grid = m_view->IsGridVisible(),
             maya = m_view->GetNavigation() == NavigationPreset::kMaya;
  AddChoice(*menu, Translate("&Grid"), grid, [this, grid] { Keep("grid", grid ? "no" : ""); });
  AddOverlayMenu(*menu->addMenu(Shown(Translate("&Overlay"))));
  AddChoice(*menu, Translate("Takes &between their frames"), m_isBetween,
            [this] { Keep("between", m_isBetween ? "" : "yes"); });
  QMenu* hands = menu->addMenu(Shown(Translate("&Mouse as in")));
  AddChoice(*hands, "&Blender", !maya, [this] { Keep("navigation", ""); });
  AddChoice(*hands, "&Maya", maya, [this] { Keep("navigation", "maya"); });
  menu->popup(at);
}

void StagePane::AddCameraEntries(QMenu& menu) {
  QMenu* cameras = menu.addMenu(Shown(Translate("Look &through")));
  QMenu* insets = menu.addMenu(Shown(Translate("Camera in the &corner")));
  const bool hasInset = m_view->IsInsetVisible();
  AddChoice(*insets, Translate("&None") + "\tI", !hasInset, [this] { Keep("inset", ""); });
  insets->addSeparator();
  const std::size_t pane = m_view->GetActive();
  for (const SceneNode* node : m_host.GetScene().GetNodes()) {
    if (!node->GetLens()) continue;
    const int key = m_browser.GetKey(*node);
    const bool isSeen = node == m_frames.GetLookThrough(pane);
    AddChoice(*cameras, gui::EscapeMnemonics(node->GetName()), isSeen,
              [this, key, isSeen] { LookThrough(isSeen ? nullptr : m_browser.GetNode(key)); });
    AddChoice(*insets, gui::EscapeMnemonics(node->GetName()),
              hasInset && node == m_frames.GetLookThrough(kInset), [this, key] {
                m_frames.LookThrough(m_browser.GetNode(key), kInset);
                Keep("inset", "yes");
                Update();
              });
  }
  const bool hasCameras = !cameras->isEmpty();
  cameras->setEnabled(hasCameras);
  insets->setEnabled(hasCameras);
}

void StagePane::AddFollowEntries(QMenu& menu) {
  QMenu* follow = menu.addMenu(Shown(Translate("Travel a&long with")));
  const std::size_t pane = m_view->GetActive();
  const SceneNode* followed = m_frames.GetFollowed(pane);
  const SceneNode* node = followed ? followed : GetSelected();
  const bool turns = m_frames.TurnsWithFollowed(pane);
  const std::string name = gui::EscapeMnemonics(node ? node->GetName() : std::string());
  AddChoice(*follow, Translate("The &place of %1", {name}) + "\tL", followed && !turns,
            [this] { Follow(false); });
  AddChoice(*follow, Translate("Place and &heading of %1", {name}) + "\tShift+L", followed && turns,
            [this] { Follow(true); });
  follow->setEnabled(node != nullptr);
}

void StagePane::AddPaneEntries(QMenu& menu) {
  QMenu* panes = menu.addMenu(Shown(Translate("Pa&nes")));
  const std::string texts[] = {Translate("&One"), Translate("Two &side by side"),
                               Translate("Two one &above the other")};
  for (std::size_t i = 0; i < std::size(texts); ++i)
    AddChoice(*panes, texts[i] + "\t" + std::to_string(i + 1),
              m_view->GetLayout() == static_cast<PaneLayout>(i),
              [this, i] { Keep("panes", kLayouts[i]); });
}

void StagePane::AddShadingEntries(QMenu& menu) {
  QMenu* shadings = menu.addMenu(Shown(Translate("S&hading") + "\tD"));
  const std::string texts[] = {Translate("&Plain"), Translate("With the &edges of triangles"),
                               Translate("&Rigs shine through")};
  for (std::size_t i = 0; i < std::size(texts); ++i)
    AddChoice(*shadings, texts[i], m_view->GetShading() == static_cast<Shading>(i),
              [this, i] { SetShading(static_cast<Shading>(i)); });
}

void StagePane::AddOverlayMenu(QMenu& menu) {
  for (std::size_t i = 0; i < view::kOverlayKindCount; ++i) {
    const view::OverlayKindText& kind = view::GetOverlayKinds()[i];
    const bool isShown = m_overlay.IsShown(static_cast<view::OverlayKind>(i));
    QAction* entry = menu.addAction(Shown(Translate(kind.text)));
    entry->setCheckable(true);
    entry->setChecked(isShown);
    QObject::connect(entry, &QAction::triggered,
                     [this, key = kind.key, isShown] { Keep(key, isShown ? "no" : "yes"); });
  }
}

}  // namespace orv::app
