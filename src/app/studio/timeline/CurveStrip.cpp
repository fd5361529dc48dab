#include "app/studio/timeline/CurveStrip.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/timeline/Timeline.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"
#include "unidevice/Property.h"

namespace orv::app {

using gui::Translate;
using gui::component::qt::Scaled;
using rws::core::Instance;
using rws::core::RunState;

namespace {

/// A pass that ends within it is waited for: one that each move drops would never be seen.
constexpr double kFirstSlice = 0.1;   // s
constexpr double kPassSlice = 0.015;  // s between two looks at the events
constexpr double kValueStep = 0.05;   // of a key press
constexpr int kPointReach = 6;        // px at 96 dpi

constexpr int kCurveHues[] = {205, 28, 130, 330, 265, 55, 175, 0};

}  // namespace

CurveStrip::CurveStrip(rws::core::CoreImplementation& core,
                       rws::adaptor::headless::HeadlessAdaptor& host, Timeline& timeline)
    : util::MessageNode("CurveStrip"),
      m_core(core),
      m_host(host),
      m_timeline(timeline),
      m_edit(core) {
  m_host.GetObservers().Add(*this);
  util::MessageNode::connect(&m_core);
  QObject::connect(&m_pass, &QTimer::timeout, [this] { GoOn(); });
  m_timeline.scaleChanged = [this] {
    if (m_widget) m_widget->update();
  };
}

CurveStrip::~CurveStrip() {
  changed = nullptr;
  m_timeline.scaleChanged = nullptr;
  util::MessageNode::disconnect(&m_core);
  m_host.GetObservers().Remove(*this);
}

QWidget* CurveStrip::MakeContent(QWidget* parent) {
  m_widget = parent;
  return nullptr;
}

QSize CurveStrip::GetSizeHint(const QWidget&) const {
  return QSize(Scaled(200), Scaled(150));
}

QSize CurveStrip::GetMinimumSize(const QWidget&) const {
  return QSize(Scaled(200), Scaled(84));
}

// --- what is shown ---

void CurveStrip::NoteChange() {
  m_isOld = true;
  if (m_isMoving || !m_isVisible) return;
  if (m_widget) m_widget->update();
  if (changed) changed();
}

void CurveStrip::OnTree() {
  if (m_scene != &m_host.GetScene() && m_drag != Drag::kNone) {
    m_edit.Abandon();
    Cancel();
  }
  m_scene = &m_host.GetScene();
  NoteChange();
}

void CurveStrip::OnUndo() {
  if (m_drag == Drag::kNone) NoteChange();
}

void CurveStrip::OnTime(double) {
  if (m_widget && m_isVisible) m_widget->update();
}

void CurveStrip::onMessage(util::Message& message, bool) {
  if (rws::core::NewsIn<rws::core::RunStateChanged>(message) && !m_isMoving &&
      !m_edit.IsRunning()) {
    if (m_core.GetRunState() != RunState::kIdle && m_drag != Drag::kNone) {
      m_edit.Abandon();
      Cancel();
    }
    NoteChange();
  }
  if (rws::core::NewsIn<rws::core::RowSelected>(message) ||
      rws::core::NewsIn<rws::core::RowDeleted>(message))
    NoteChange();
}

Instance* CurveStrip::FindRig() const {
  for (const int id : m_core.GetSelection()) {
    const auto* row = m_core.FindRow(id);
    if (row && !row->IsGroup()) return row->GetInstance();
  }
  for (Instance* rig : m_core.List(false))
    for (const Track& track : rig->GetTracks())
      if (!track.samples.empty()) return rig;
  return nullptr;
}

void CurveStrip::Read() {
  m_isOld = false;
  m_inputs.clear();
  Instance* rig = FindRig();
  if (m_drag == Drag::kNone) {
    m_low = -1.0;
    m_high = 1.0;
  }
  const auto count =
      rig ? std::min(rig->GetTracks().size(), rig->GetProperties().entries.size()) : std::size_t{0};
  for (std::size_t i = 0; i < count; ++i) {
    const Track& track = rig->GetTracks()[i];
    if (track.samples.empty()) continue;
    Input input;
    input.index = static_cast<int>(i);
    input.name = rig->GetProperties().entries[i].first;
    const auto hue = kCurveHues[m_inputs.size() % std::size(kCurveHues)];
    input.colour = QColor::fromHsl(hue, 190, 128);
    input.isShown = m_hidden.count(input.name) == 0;
    m_inputs.push_back(std::move(input));
    for (const auto& sample : track.samples) {
      m_low = std::min(m_low, sample.value);
      m_high = std::max(m_high, sample.value);
    }
  }
  if (m_drag != Drag::kNone) return;
  // Of points that are gone nothing is selected any more.
  const int identity = rig ? rig->GetIdentity() : 0;
  if (identity != m_rig) m_selection.clear();
  m_rig = identity;
  for (auto& [input, times] : m_selection) {
    const Track* track = TrackOf(input);
    std::set<double> left;
    if (track)
      for (const auto& sample : track->samples)
        if (times.count(sample.time) != 0) left.insert(sample.time);
    times = std::move(left);
  }
}

const std::vector<CurveStrip::Input>& CurveStrip::GetInputs() {
  if (m_isOld) Read();
  return m_inputs;
}

void CurveStrip::ShowInput(const std::string& name, bool shown) {
  if (shown)
    m_hidden.erase(name);
  else
    m_hidden.insert(name);
  m_isOld = true;
  if (m_widget) m_widget->update();
}

void CurveStrip::SetTool(Tool tool) {
  m_tool = tool;
  if (m_widget) m_widget->update();
  if (changed) changed();
}

void CurveStrip::SetRadius(double radius) {
  m_radius = std::clamp(radius, 0.01, 10.0);
  if (m_widget) m_widget->update();
}

void CurveStrip::SetVisible(bool visible) {
  if (!visible) Cancel();
  m_isVisible = visible;
  m_isOld = true;
  if (changed) changed();
}

const CurveStrip::Track* CurveStrip::TrackOf(int input) const {
  Instance* rig = FindRig();
  const auto index = static_cast<std::size_t>(input);
  return rig && index < rig->GetTracks().size() ? &rig->GetTracks()[index] : nullptr;
}

// --- places ---

double CurveStrip::ToX(double time) const {
  return m_timeline.GetScale().ToPixel(time / m_host.GetFrameDuration());
}

/// The names stand above all values.
std::pair<double, double> CurveStrip::GetEnds() const {
  if (!m_widget) return {0.0, 1.0};
  const double top = m_widget->fontMetrics().height() + Scaled(8);
  return {top, std::max(top + 1.0, m_widget->height() - 1.0 * Scaled(6))};
}

double CurveStrip::ToY(double value) const {
  const auto [top, bottom] = GetEnds();
  return top + (bottom - top) * (m_high - value) / (m_high - m_low);
}

QPoint CurveStrip::GetPlace(double time, double value) const {
  return QPointF(ToX(time), ToY(value)).toPoint();
}

CurveStrip::Place CurveStrip::ToPlace(const QPoint& at) const {
  const auto [top, bottom] = GetEnds();
  return {m_timeline.GetScale().ToFrame(at.x()) * m_host.GetFrameDuration(),
          m_high - (at.y() - top) * (m_high - m_low) / (bottom - top)};
}

int CurveStrip::FindCurve(const QPoint& at) const {
  int found = -1;
  double least = 1e9;
  for (const Input& input : m_inputs) {
    const Track* track = TrackOf(input.index);
    if (!input.isShown || !track) continue;
    const double away = std::abs(ToY(track->value(ToPlace(at).first)) - at.y());
    if (away < least) {
      least = away;
      found = input.index;
    }
  }
  return found;
}

int CurveStrip::FindPoint(const QPoint& at, double& time) const {
  int found = -1;
  double least = std::pow(Scaled(kPointReach), 2);
  for (const Input& input : m_inputs) {
    const Track* track = TrackOf(input.index);
    if (!input.isShown || !track) continue;
    for (const auto& sample : track->samples) {
      const double x = ToX(sample.time) - at.x(), y = ToY(sample.value) - at.y();
      const double away = x * x + y * y;
      if (away > least) continue;
      least = away;
      found = input.index;
      time = sample.time;
    }
  }
  return found;
}

bool CurveStrip::IsLocked() {
  const std::string locked = Translate(m_core.WhyLocked().text);
  if (!locked.empty() && told) told(locked);
  return !locked.empty();
}

// --- hands ---

void CurveStrip::Choose(int input, double time, bool adds) {
  auto& times = m_selection[input];
  const bool was = times.count(time) != 0;
  if (adds) {
    if (was)
      times.erase(time);
    else
      times.insert(time);
  } else if (!was) {
    m_selection.clear();
    m_selection[input] = {time};
  }
}

void CurveStrip::MousePressed(QMouseEvent& event) {
  if (m_drag != Drag::kNone) return;
  m_pressed = m_at = event.pos();
  if (event.button() == Qt::MiddleButton) {
    m_drag = Drag::kPan;
    return;
  }
  if (event.button() != Qt::LeftButton) return event.ignore();
  if (IsLocked()) return;
  if (m_isOld) Read();
  if (m_tool == Tool::kPoints) return PressPoints(event);
  m_curve = FindCurve(event.pos());
  if (m_curve < 0) return;
  m_stroke.clear();
  Begin(m_tool == Tool::kDraw ? Drag::kDraw : Drag::kSmooth);
  Follow(event.pos(), false);
}

void CurveStrip::PressPoints(QMouseEvent& event) {
  double time = 0.0;
  const int input = FindPoint(event.pos(), time);
  const bool adds = event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
  m_grabbed = m_selection;
  if (input < 0) {
    if (!adds) m_selection.clear();
    m_drag = Drag::kBox;
  } else {
    Choose(input, time, adds);
    if (m_selection[input].count(time) != 0) Begin(Drag::kPoints);
  }
  if (m_widget) m_widget->update();
}

void CurveStrip::Begin(Drag drag) {
  m_drag = drag;
  Instance* rig = FindRig();
  m_rig = rig ? rig->GetIdentity() : 0;
  m_grabbed = m_selection;
  m_base.clear();
  for (const Input& input : m_inputs)
    if (const Track* track = TrackOf(input.index)) m_base[input.index] = *track;
  qApp->installEventFilter(this);
}

void CurveStrip::MouseMoved(QMouseEvent& event) {
  m_isOver = true;
  const QPoint before = std::exchange(m_at, event.pos());
  switch (m_drag) {
    case Drag::kPan:
      m_timeline.Pan(event.pos().x() - before.x());
      return;
    case Drag::kPoints:
    case Drag::kDraw:
    case Drag::kSmooth:
      Follow(event.pos(), event.modifiers() & Qt::ShiftModifier);
      return;
    default:
      if (m_widget) m_widget->update();
  }
}

void CurveStrip::MouseLeft() {
  m_isOver = false;
  if (m_widget) m_widget->update();
}

void CurveStrip::Follow(const QPoint& at, bool oneWay) {
  Put(Edit(at, oneWay));
  if (m_widget) m_widget->update();
}

std::vector<InputDrag::Edited> CurveStrip::Edit(const QPoint& at, bool oneWay) {
  const double frame = m_host.GetFrameDuration();
  std::vector<InputDrag::Edited> edited;
  if (m_drag == Drag::kPoints) {
    const Place from = ToPlace(m_pressed), to = ToPlace(at);
    const QPoint way = at - m_pressed;
    const bool across = std::abs(way.x()) > std::abs(way.y());
    const long frames = oneWay && !across ? 0 : std::lround((to.first - from.first) / frame);
    const double by = oneWay && across ? 0.0 : to.second - from.second;
    m_selection.clear();
    for (const auto& [input, times] : m_grabbed)
      if (!times.empty())
        edited.push_back({m_rig, input,
                          CurveEdit(m_base[input], frame)
                              .Move(times, frames, way.isNull() ? 0.0 : by, &m_selection[input])});
    return edited;
  }
  // What lies between two places of the hand is drawn over as well.
  m_stroke.push_back(ToPlace(at));
  const CurveEdit curve(m_base[m_curve], frame);
  edited.push_back(
      {m_rig, m_curve,
       m_drag == Drag::kDraw ? curve.Draw(m_stroke) : curve.Smooth(m_stroke, m_radius)});
  return edited;
}

bool CurveStrip::Put(const std::vector<InputDrag::Edited>& edited) {
  m_isMoving = true;
  const bool can = m_edit.Move(edited);
  if (can) m_edit.Go(kFirstSlice);
  m_isMoving = false;
  if (!can) {
    Cancel();
    IsLocked();
    return false;
  }
  if (m_edit.IsRunning()) m_pass.start(0);
  return true;
}

/// Between the events, for a pass that takes long.
void CurveStrip::GoOn() {
  // A run that somebody has ended is over for the drag too.
  if (m_edit.IsRunning() && !m_core.IsResimulating()) {
    m_edit.Abandon();
    return Cancel();
  }
  m_isMoving = true;
  const bool isDone = m_edit.Go(kPassSlice);
  m_isMoving = false;
  if (m_widget) m_widget->update();
  if (!isDone) return;
  m_pass.stop();
  if (m_drag == Drag::kEnding) End();
}

void CurveStrip::MouseReleased(QMouseEvent& event) {
  switch (m_drag) {
    case Drag::kNone:
    case Drag::kEnding:
      return;
    case Drag::kPan:
      m_drag = Drag::kNone;
      return;
    case Drag::kBox:
      ChooseIn(event.pos());
      m_drag = Drag::kNone;
      if (m_widget) m_widget->update();
      return;
    default:
      return End();
  }
}

/// A pass that takes long goes on behind the hand's drag.
void CurveStrip::End() {
  if (m_edit.IsRunning()) {
    m_drag = Drag::kEnding;
    return;
  }
  m_isMoving = true;
  m_edit.Keep();
  m_isMoving = false;
  Cancel();
}

/// Also where nothing is left to be cancelled.
void CurveStrip::Cancel() {
  m_pass.stop();
  m_isMoving = true;
  m_edit.Cancel();
  m_isMoving = false;
  qApp->removeEventFilter(this);
  m_base.clear();
  m_stroke.clear();
  if (std::exchange(m_drag, Drag::kNone) == Drag::kNone) return;
  NoteChange();
  m_host.RefreshViews();
}

void CurveStrip::ChooseIn(const QPoint& at) {
  if ((at - m_pressed).manhattanLength() < Scaled(3)) return;
  for (const Input& input : m_inputs) {
    const Track* track = TrackOf(input.index);
    if (!input.isShown || !track) continue;
    const auto found = CurveEdit::FindIn(*track, ToPlace(m_pressed), ToPlace(at));
    m_selection[input.index].insert(found.begin(), found.end());
  }
}

void CurveStrip::Wheel(QWheelEvent& event) {
  m_timeline.Wheel(event);
}

void CurveStrip::EditAtOnce(const std::function<Track(const CurveEdit&, int input)>& edit) {
  if (m_drag != Drag::kNone || IsLocked()) return;
  if (m_isOld) Read();
  Begin(Drag::kPoints);
  std::vector<InputDrag::Edited> edited;
  m_selection.clear();
  for (const auto& [input, times] : m_grabbed)
    if (!times.empty())
      edited.push_back(
          {m_rig, input, edit(CurveEdit(m_base[input], m_host.GetFrameDuration()), input)});
  if (Put(edited)) End();
}

void CurveStrip::StepPoint(bool later) {
  if (m_isOld) Read();
  // From the last point that is selected, or from the present time on the first curve.
  int input = -1;
  double time = m_host.GetCurrentTime();
  for (const auto& [chosen, times] : m_selection)
    if (!times.empty()) {
      input = chosen;
      time = later ? *times.rbegin() : *times.begin();
    }
  for (const Input& shown : m_inputs)
    if (input < 0 && shown.isShown) input = shown.index;
  const Track* track = input < 0 ? nullptr : TrackOf(input);
  if (!track || track->samples.empty()) return;
  const auto& samples = track->samples;
  const auto next = std::find_if(samples.begin(), samples.end(),
                                 [&](const auto& sample) { return sample.time > time; });
  auto at = next;
  if (!later) {
    at = std::find_if(samples.begin(), samples.end(),
                      [&](const auto& sample) { return sample.time >= time; });
    if (at == samples.begin()) return;
    --at;
  }
  if (at == samples.end()) return;
  m_selection.clear();
  m_selection[input] = {at->time};
  m_timeline.Reveal(at->time);
  if (m_widget) m_widget->update();
}

void CurveStrip::KeyPressed(QKeyEvent& event) {
  const bool control = event.modifiers() & Qt::ControlModifier;
  const auto move = [this](long frames, double by) {
    EditAtOnce([=](const CurveEdit& curve, int input) {
      return curve.Move(m_grabbed[input], frames, by, &m_selection[input]);
    });
  };
  switch (event.key()) {
    case Qt::Key_Escape:
      if (m_drag == Drag::kNone) return event.ignore();
      m_selection = m_grabbed;
      return Cancel();
    case Qt::Key_Up:
      return move(0, kValueStep);
    case Qt::Key_Down:
      return move(0, -kValueStep);
    case Qt::Key_Left:
      return move(-1, 0.0);
    case Qt::Key_Right:
      return move(1, 0.0);
    case Qt::Key_PageUp:
      return StepPoint(false);
    case Qt::Key_PageDown:
      return StepPoint(true);
    case Qt::Key_Delete:
      return EditAtOnce(
          [this](const CurveEdit& curve, int input) { return curve.Remove(m_grabbed[input]); });
    case Qt::Key_A:
      if (!control) return event.ignore();
      for (const Input& input : GetInputs())
        if (const Track* track = TrackOf(input.index); track && input.isShown)
          for (const auto& sample : track->samples) m_selection[input.index].insert(sample.time);
      break;
    default:
      return event.ignore();
  }
  if (m_widget) m_widget->update();
}

bool CurveStrip::eventFilter(QObject*, QEvent* event) {
  if (m_drag == Drag::kNone) return false;
  if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
    if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
      m_selection = m_grabbed;
      Cancel();
    }
    event->accept();
    return true;
  }
  return event->type() == QEvent::Shortcut;
}

QString CurveStrip::GetTooltip(const QPoint& at) const {
  const int input = FindCurve(at);
  for (const Input& shown : m_inputs) {
    if (shown.index != input) continue;
    const double time = ToPlace(at).first;
    return QString::fromStdString(Translate(
        "%1: %2 in frame %3",
        {shown.name, QLocale().toString(TrackOf(input)->value(time), 'f', 3).toStdString(),
         std::to_string(std::lround(time / m_host.GetFrameDuration()))}));
  }
  return QString::fromStdString(Translate("Nothing has been recorded of the selected rig."));
}

QString CurveStrip::GetAccessibleValue() const {
  std::size_t points = 0;
  for (const auto& [input, times] : m_selection) points += times.size();
  return QString::number(points);
}

}  // namespace orv::app
