#include "app/studio/StagePane.h"

#include <QMenu>
#include <QPainter>
#include <algorithm>
#include <cmath>

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
using view::NavigationPreset;
using view::PickMode;
using view::Shading;

namespace {

constexpr char kStageSettings[] = "Stage";
/// However long a picture takes, a run has some five of them a second (ms).
constexpr qint64 kLongestPause = 150;

QString Shown(const std::string& text) {
  return QString::fromStdString(text);
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
  m_later.setSingleShot(true);
  QObject::connect(&m_later, &QTimer::timeout, [this] { Update(); });
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
  m_view->SetShading(GetKept("shading") == "wire" ? Shading::kWireOverPlain : Shading::kPlain);
  m_view->SetGridVisible(GetKept("grid") != "no");
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
  m_view->cameraLeft = [this] { m_frames.LookThrough(nullptr); };
  m_view->painted = [this] { NotePicture(); };
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
  m_note = new QLabel(m_view);
  m_note->setAttribute(Qt::WA_TransparentForMouseEvents);
  const int space = gui::component::qt::Scaled(8);
  m_note->move(space, space);
  TakeChoices();
  OnNodeSelection();
  m_view->FrameNext();
  return m_view;
}

void StagePane::ConnectOverlay() {
  m_view->linesWanted = [this](view::FramePacket& packet) {
    m_overlayView.Read();
    m_overlayView.Write(packet, m_view->height());
  };
  m_view->paintOver = [this](QPainter& painter) {
    m_overlayView.PaintNames(painter, m_view->GetPacket(), m_view->rect(), m_view->palette());
    m_overlayView.Paint(painter, m_view->size(), m_view->palette());
  };
}

void StagePane::ShowNote() {
  if (!m_view || !m_note) return;
  std::string text;
  if (const SceneNode* camera = m_frames.GetLookThrough())
    text = Translate("Through %1", {camera->GetName()});
  else if (m_view->IsGridVisible())
    text = Translate("Grid: %1", {StepText(m_view->GetPacket().grid.step)});
  if (m_note->text() == Shown(text)) return;
  m_note->setText(Shown(text));
  m_note->adjustSize();
}

// --- when it draws ---

void StagePane::OnTree() {
  if (m_scene != &m_host.GetScene() && m_view) m_view->FrameNext();
  m_scene = &m_host.GetScene();
  Update();
}

void StagePane::Update() {
  if (!m_view) return;
  if (m_core.GetRunState() == rws::core::RunState::kIdle) return m_view->update();
  m_isWanted = true;
  if (m_isPainting) return;
  const qint64 due = m_end + std::min(m_cost, kLongestPause);
  const qint64 left = due - m_since.elapsed();
  if (left <= 0) {
    m_isWanted = false;
    return m_view->update();
  }
  if (!m_later.isActive()) m_later.start(static_cast<int>(left));
}

void StagePane::NotePicture() {
  // The driver draws behind this call, until the window is put together.
  m_since.restart();
  m_end = m_cost = 0;
  m_isPainting = true;
  QTimer::singleShot(0, &m_later, [this] {
    m_isPainting = false;
    m_end = m_cost = m_since.elapsed();
    m_overlayView.SetCost(static_cast<double>(m_cost));
    if (m_isWanted) Update();
    ShowNote();
    for (const std::string& odd : m_frames.TakeOdd())
      rws::core::LogEntry(rws::core::LogLevel::kWarning, odd);
  });
}

// --- the selection ---

void StagePane::OnNodeSelection() {
  std::vector<const SceneNode*> nodes;
  for (const int key : m_browser.GetSelection())
    if (const SceneNode* node = m_browser.GetNode(key)) nodes.push_back(node);
  m_overlay.Select(nodes);
  m_frames.Select(std::move(nodes));
  Update();
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

// --- the menu ---

void StagePane::OpenMenu(const QPoint& at) {
  if (!m_view) return;
  auto* menu = new QMenu(m_view);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [](QMenu& to, const std::string& text, auto action) {
    QAction* entry = to.addAction(Shown(text));
    QObject::connect(entry, &QAction::triggered, action);
    return entry;
  };
  const auto check = [&](QMenu& to, const std::string& text, bool on, auto action) {
    QAction* entry = add(to, text, action);
    entry->setCheckable(true);
    entry->setChecked(on);
  };
  add(*menu, Translate("Show &all") + "\tA", [this] { m_view->FrameAll(); });
  add(*menu, Translate("Show the &selection") + "\tF", [this] {
    m_view->FrameSelected();
  })->setEnabled(!m_browser.GetSelection().empty());
  m_hands->AddTo(*menu);
  menu->addSeparator();
  QMenu* cameras = menu->addMenu(Shown(Translate("Look &through")));
  for (const SceneNode* node : m_host.GetScene().GetNodes()) {
    if (!node->GetLens()) continue;
    const int key = m_browser.GetKey(*node);
    check(*cameras, gui::EscapeMnemonics(node->GetName()), node == m_frames.GetLookThrough(),
          [this, key] {
            const SceneNode* chosen = m_browser.GetNode(key);
            m_frames.LookThrough(chosen == m_frames.GetLookThrough() ? nullptr : chosen);
            Update();
          });
  }
  cameras->setEnabled(!cameras->isEmpty());
  menu->addSeparator();
  const bool wire = m_view->GetShading() == Shading::kWireOverPlain, grid = m_view->IsGridVisible(),
             maya = m_view->GetNavigation() == NavigationPreset::kMaya;
  check(*menu, Translate("&Edges of triangles"), wire,
        [this, wire] { Keep("shading", wire ? "" : "wire"); });
  check(*menu, Translate("&Grid"), grid, [this, grid] { Keep("grid", grid ? "no" : ""); });
  AddOverlayMenu(*menu->addMenu(Shown(Translate("&Overlay"))));
  QMenu* hands = menu->addMenu(Shown(Translate("&Mouse as in")));
  check(*hands, "&Blender", !maya, [this] { Keep("navigation", ""); });
  check(*hands, "&Maya", maya, [this] { Keep("navigation", "maya"); });
  menu->popup(at);
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
