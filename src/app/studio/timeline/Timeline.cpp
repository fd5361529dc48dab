#include "app/studio/timeline/Timeline.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/UndoBlock.h"
#include "app/studio/HeadlessBrowser.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"
#include "unidevice/Property.h"
#include "util/FrameGrid.h"

namespace orv::app {

using gui::Translate;
using gui::component::qt::Scaled;
using rws::adaptor::headless::ChannelPath;
using rws::adaptor::headless::SceneNode;
using rws::core::RunState;

namespace {

constexpr int kMostLanes = 3;
constexpr int kRunPause = 60;  ///< ms from picture to picture in a run
constexpr double kWheelFactor = 1.25;
constexpr int kLookTime = 4;    ///< ms of work on a sound between two looks at the events
constexpr int kLookPause = 80;  ///< ms from picture to picture of a sound that comes to be seen

}  // namespace

Timeline::Timeline(rws::core::CoreImplementation& core,
                   rws::adaptor::headless::HeadlessAdaptor& host, HeadlessBrowser& browser)
    : util::MessageNode("Timeline"), m_core(core), m_host(host), m_browser(browser) {
  m_host.GetObservers().Add(*this);
  m_browser.AddObserver(*this);
  connect(&m_core);
  m_later.setSingleShot(true);
  QObject::connect(&m_later, &QTimer::timeout, [this] {
    if (m_widget) m_widget->update();
  });
  QObject::connect(&m_look, &QTimer::timeout, [this] { LookAtSound(); });
}

/// In moments that nobody needs; a take needs all of them.
void Timeline::LookAtSound() {
  const bool isIdle = m_core.GetRunState() == RunState::kIdle;
  m_look.setInterval(isIdle ? 0 : 200);
  if (!isIdle) return;
  QElapsedTimer clock;
  clock.start();
  bool isMore = true;
  while (isMore && clock.elapsed() < kLookTime) isMore = m_sound && m_sound->Look();
  if (!isMore) m_look.stop();
  if (!m_later.isActive()) m_later.start(kLookPause);
}

Timeline::~Timeline() {
  disconnect(&m_core);
  m_browser.RemoveObserver(*this);
  m_host.GetObservers().Remove(*this);
}

QWidget* Timeline::MakeContent(QWidget* parent) {
  m_widget = parent;
  return nullptr;
}

// --- what is shown ---

void Timeline::NoteChange() {
  m_isOld = true;
  if (!m_widget) return;
  if (m_core.GetRunState() == RunState::kIdle) return m_widget->update();
  if (!m_later.isActive()) m_later.start(kRunPause);
}

void Timeline::OnTree() {
  if (m_scene != &m_host.GetScene()) {
    m_fitsNext = true;
    m_drag = Drag::kNone;
    SetMarks(0.0, 0.0);
  }
  m_scene = &m_host.GetScene();
  NoteChange();
}

void Timeline::onMessage(util::Message& message, bool) {
  if (rws::core::NewsIn<rws::core::RunStateChanged>(message)) {
    if (m_core.GetRunState() != RunState::kIdle) EndDrag(true);
    NoteChange();
  }
  if (rws::core::NewsIn<rws::core::InputsChanged>(message)) NoteChange();
}

/// Between two frames no more than the cursor's two places are painted.
void Timeline::OnTime(double time) {
  if (!m_widget) return;
  if (m_core.GetRunState() != RunState::kIdle) {
    if (!m_later.isActive()) m_later.start(kRunPause);
    return;
  }
  if (m_drag == Drag::kNone && m_scale.Reveal(time / m_host.GetFrameDuration()))
    return m_widget->update();
  m_widget->update(CursorRect(m_shown));
  m_widget->update(CursorRect(time));
}

void Timeline::Read() {
  m_isOld = false;
  ReadKeys();
  ReadTakes();
  ReadRange();
}

void Timeline::ReadRange() {
  if (m_drag != Drag::kNone && m_drag != Drag::kTime && m_drag != Drag::kPan) return;
  m_host.GetTimeRange(m_begin, m_end);
  const auto& sound = m_host.GetScene().GetSound();
  m_soundStart = sound ? sound->start : 0.0;
}

void Timeline::ReadKeys() {
  m_keys.clear();
  for (const int key : m_browser.GetSelection()) {
    const SceneNode* node = m_browser.GetNode(key);
    if (!node) continue;
    for (const auto path : {ChannelPath::kTranslation, ChannelPath::kRotation, ChannelPath::kScale})
      if (const auto* channel = node->GetChannel(path))
        m_keys.insert(m_keys.end(), channel->GetTimes().begin(), channel->GetTimes().end());
  }
  std::sort(m_keys.begin(), m_keys.end());
  m_keys.erase(std::unique(m_keys.begin(), m_keys.end()), m_keys.end());
}

void Timeline::ReadTakes() {
  m_takes.clear();
  for (rws::core::Instance* rig : m_core.List(false)) {
    // Between its samples, which a table may have few of, an input has values too.
    timeline::Bar bar{HUGE_VAL, -HUGE_VAL, rig->GetInstanceName(), 0};
    for (const auto& track : rig->GetTracks()) {
      if (track.samples.empty()) continue;
      bar.from = std::min(bar.from, track.samples.front().time);
      bar.to = std::max(bar.to, track.samples.back().time);
    }
    if (bar.from > bar.to) continue;
    int armed = 0;
    const int all = rig->GetProperties().count();
    for (int i = 0; i < all; ++i) armed += !rig->IsPlayed(i);
    if (armed < all)
      bar.name = Translate("%1 (records %2 of %3)",
                           {bar.name, std::to_string(armed), std::to_string(all)});
    m_takes.push_back(bar);
  }
  m_lanes = std::max(1, timeline::StackBars(m_takes, kMostLanes));
}

void Timeline::SetSound(std::shared_ptr<sound::Sound> sound, const std::string& problem) {
  m_sound = std::move(sound);
  m_soundProblem = problem;
  m_look.start(0);
  NoteChange();
  if (m_widget) m_widget->updateGeometry();
}

QSize Timeline::GetSizeHint(const QWidget& widget) const {
  const bool hasSound = m_sound || !m_soundProblem.empty();
  const int line = widget.fontMetrics().height();
  return QSize(Scaled(200), line + Scaled(8) + Scaled(10) + kMostLanes * Scaled(8) + Scaled(4) +
                                (hasSound ? Scaled(30) : 0) + Scaled(14));
}

void Timeline::PlaceRows() {
  const double line = m_widget->fontMetrics().height();
  m_rows.ruler = line + Scaled(8);
  m_rows.keys = m_rows.ruler + Scaled(10);
  m_rows.takes = m_rows.keys + kMostLanes * Scaled(8) + Scaled(4);
  const bool hasSound = m_sound || !m_soundProblem.empty();
  m_rows.sound = m_rows.takes + (hasSound ? Scaled(30) : 0);
  m_rows.range = m_rows.sound + Scaled(14);
}

void Timeline::Resized(const QWidget& widget) {
  m_scale.SetWidth(widget.width());
  if (m_fitsNext) ShowRange();
}

void Timeline::ShowRange() {
  double begin = 0.0, end = 0.0;
  m_host.GetTimeRange(begin, end);
  m_scale.Show(begin / m_host.GetFrameDuration(), end / m_host.GetFrameDuration());
  if (m_widget) m_widget->update();
}

void Timeline::SetMarks(double from, double to) {
  m_markFrom = from;
  m_markTo = to;
  if (m_widget) m_widget->update();
}

void Timeline::Pan(double pixels) {
  m_scale.Pan(pixels);
  if (m_widget) m_widget->update();
}

void Timeline::Reveal(double time) {
  m_scale.Reveal(time / m_host.GetFrameDuration());
  if (m_widget) m_widget->update();
}

int Timeline::GetFrame() const {
  return m_core.FrameIndex(m_host.GetCurrentTime());
}

double Timeline::ToX(double time) const {
  return m_scale.ToPixel(time / m_host.GetFrameDuration());
}

QString Timeline::TimeText(int frame) const {
  const timeline::TimeCode code = timeline::TimeCodeOf(frame, m_host.GetFrameRate());
  const auto two = [](int number) { return QString("%1").arg(number, 2, 10, QChar('0')); };
  const QString hours = code.hours ? QString::number(code.hours) + ":" : QString();
  return (code.negative ? "-" : "") + hours + two(code.minutes) + ":" + two(code.seconds) + ":" +
         two(code.frames);
}

QString Timeline::GetTooltip(const QPoint& at) const {
  const int frame = m_scale.SnapToFrame(at.x());
  const double time = frame * m_host.GetFrameDuration();
  std::string text = Translate(
      "Frame %1, %2 s, %3", {std::to_string(frame), QLocale().toString(time, 'f', 2).toStdString(),
                             TimeText(frame).toStdString()});
  if (at.y() >= m_rows.keys && at.y() < m_rows.takes)
    for (const timeline::Bar& bar : m_takes)
      if (time >= bar.from && time <= bar.to) text += "\n" + Translate("Recorded: %1", {bar.name});
  if (!m_soundProblem.empty() && at.y() >= m_rows.takes && at.y() < m_rows.sound)
    text += "\n" + m_soundProblem;
  const std::string locked = WhyLocked();
  if (!locked.empty()) text += "\n" + locked;
  return QString::fromStdString(text);
}

QString Timeline::GetAccessibleValue() const {
  return QString::number(GetFrame());
}

// --- where one goes ---

std::string Timeline::WhyLocked() const {
  return Translate(m_core.WhyLocked().text);
}

bool Timeline::IsLocked() {
  const std::string locked = WhyLocked();
  if (!locked.empty() && told) told(locked);
  return !locked.empty();
}

void Timeline::GoTo(int frame) {
  const double time = frame * m_host.GetFrameDuration();
  if (!IsLocked() && time != m_host.GetCurrentTime()) m_host.SetCurrentTime(time);
}

void Timeline::StepFrames(int frames) {
  GoTo(GetFrame() + frames);
}

void Timeline::GoToKey(bool later) {
  if (IsLocked()) return;
  if (m_isOld) Read();
  double found = 0.0;
  if (timeline::FindNext(m_keys, m_host.GetCurrentTime(), later, util::kFrameTolerance, found))
    return m_host.SetCurrentTime(found);
  if (told)
    told(m_keys.empty() ? Translate("What is selected has no keys. Select nodes that have.")
         : later        ? Translate("There is no later key of what is selected.")
                        : Translate("There is no earlier key of what is selected."));
}

void Timeline::GoToRangeEnd(bool end) {
  double from = 0.0, to = 0.0;
  m_host.GetTimeRange(from, to);
  const double duration = m_host.GetFrameDuration();
  GoTo(static_cast<int>(end ? util::lastFrameUntil(to, duration)
                            : util::firstFrameFrom(from, duration)));
}

// --- hands ---

Timeline::Part Timeline::FindPart(const QPoint& at) const {
  const bool hasSound = m_sound && m_host.GetScene().GetSound();
  const double begin = ToX(m_soundStart);
  const double end = hasSound ? ToX(m_soundStart + m_sound->GetSeconds()) : begin;
  return m_rows.Find(at.x(), at.y(), ToX(m_begin), ToX(m_end), begin, end, Scaled(5));
}

void Timeline::ShowCursor(const QPoint& at) {
  if (!m_widget) return;
  const Part part = FindPart(at);
  const bool ends = part == Part::kRangeBegin || part == Part::kRangeEnd;
  m_widget->setCursor(!WhyLocked().empty()  ? Qt::ForbiddenCursor
                      : ends                ? Qt::SizeHorCursor
                      : part == Part::kTime ? Qt::ArrowCursor
                                            : Qt::OpenHandCursor);
}

void Timeline::MousePressed(QMouseEvent& event) {
  if (m_drag != Drag::kNone) return;
  m_pressed = event.pos();
  m_grabbed = m_scale.ToFrame(event.pos().x());
  if (event.button() == Qt::MiddleButton) {
    m_drag = Drag::kPan;
    return;
  }
  if (event.button() != Qt::LeftButton) return event.ignore();
  if (IsLocked()) return;
  if (m_isOld) Read();
  switch (FindPart(event.pos())) {
    case Part::kRangeBegin:
      m_drag = Drag::kRangeBegin;
      return;
    case Part::kRangeEnd:
      m_drag = Drag::kRangeEnd;
      return;
    case Part::kRange:
      m_drag = Drag::kRange;
      return;
    case Part::kSound:
      m_drag = Drag::kSound;
      return;
    case Part::kTime:
      m_drag = event.modifiers() & Qt::ControlModifier ? Drag::kMarks : Drag::kTime;
      return DragTo(event.pos());
  }
}

void Timeline::MouseMoved(QMouseEvent& event) {
  if (m_drag == Drag::kNone) return ShowCursor(event.pos());
  DragTo(event.pos());
}

void Timeline::DragTo(const QPoint& at) {
  const double duration = m_host.GetFrameDuration();
  const int frame = m_scale.SnapToFrame(at.x());
  const int by = static_cast<int>(std::lround(m_scale.ToFrame(at.x()) - m_grabbed));
  double begin = 0.0, end = 0.0;
  m_host.GetTimeRange(begin, end);
  switch (m_drag) {
    case Drag::kTime:
      return GoTo(frame);
    case Drag::kMarks: {
      const auto grabbed = static_cast<int>(std::lround(m_grabbed));
      return SetMarks(std::min(frame, grabbed) * duration, std::max(frame, grabbed) * duration);
    }
    case Drag::kPan:
      m_scale.Pan(at.x() - m_pressed.x());
      m_pressed = at;
      break;
    case Drag::kRangeBegin:
      m_begin = std::min(frame * duration, m_end);
      break;
    case Drag::kRangeEnd:
      m_end = std::max(frame * duration, m_begin);
      break;
    case Drag::kRange:
      m_begin = begin + by * duration;
      m_end = end + by * duration;
      break;
    case Drag::kSound:
      // Onto a frame, wherever it began.
      if (const auto& sound = m_host.GetScene().GetSound())
        m_soundStart = (std::lround(sound->start / duration) + by) * duration;
      break;
    case Drag::kNone:
      break;
  }
  if (m_widget) m_widget->update();
}

void Timeline::MouseReleased(QMouseEvent& event) {
  const bool pans = m_drag == Drag::kPan;
  if (event.button() == (pans ? Qt::MiddleButton : Qt::LeftButton)) EndDrag(false);
}

/// A drag is one step of undo.
void Timeline::EndDrag(bool cancelled) {
  const Drag drag = std::exchange(m_drag, Drag::kNone);
  const bool isRange = drag == Drag::kRangeBegin || drag == Drag::kRangeEnd || drag == Drag::kRange;
  double begin = 0.0, end = 0.0;
  m_host.GetTimeRange(begin, end);
  if (!cancelled && isRange && (m_begin != begin || m_end != end)) {
    UndoBlock block(m_host, "Playback range");
    m_host.SetTimeRange(m_begin, m_end);
    block.Keep();
  }
  const auto sound = m_host.GetScene().GetSound();
  if (!cancelled && drag == Drag::kSound && sound && m_soundStart != sound->start) {
    UndoBlock block(m_host, "Sound");
    m_host.SetSound(rws::adaptor::headless::SceneSound{sound->file, m_soundStart});
    block.Keep();
  }
  if (drag != Drag::kNone) NoteChange();
}

void Timeline::Wheel(QWheelEvent& event) {
  const QPoint turned = event.angleDelta();
  const bool pans = event.modifiers() & Qt::ShiftModifier || turned.y() == 0;
  const double steps = (turned.y() != 0 ? turned.y() : turned.x()) / 120.0;
  if (pans)
    m_scale.Pan(steps * Scaled(60));
  else
    m_scale.Zoom(std::pow(kWheelFactor, steps), event.position().x());
  if (m_widget) m_widget->update();
}

void Timeline::KeyPressed(QKeyEvent& event) {
  if (event.key() == Qt::Key_Escape && m_drag != Drag::kNone) return EndDrag(true);
  const Qt::KeyboardModifiers held =
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (held) return event.ignore();
  const bool shift = event.modifiers() & Qt::ShiftModifier;
  const int second = std::max(1, static_cast<int>(std::lround(m_host.GetFrameRate())));
  switch (event.key()) {
    case Qt::Key_Left:
      return StepFrames(shift ? -10 : -1);
    case Qt::Key_Right:
      return StepFrames(shift ? 10 : 1);
    case Qt::Key_PageUp:
      return StepFrames(-second);
    case Qt::Key_PageDown:
      return StepFrames(second);
    case Qt::Key_Home:
      return GoToRangeEnd(false);
    case Qt::Key_End:
      return GoToRangeEnd(true);
    case Qt::Key_BracketLeft:
    case Qt::Key_BracketRight: {
      if (IsLocked()) return;
      m_host.GetTimeRange(m_begin, m_end);
      const bool isEnd = event.key() == Qt::Key_BracketRight;
      const double now = GetFrame() * m_host.GetFrameDuration();
      (isEnd ? m_end : m_begin) = now;
      (isEnd ? m_begin : m_end) = isEnd ? std::min(m_begin, now) : std::max(m_end, now);
      m_drag = isEnd ? Drag::kRangeEnd : Drag::kRangeBegin;
      return EndDrag(false);
    }
    case Qt::Key_Up:
    case Qt::Key_Down:
      m_scale.Zoom(event.key() == Qt::Key_Up ? kWheelFactor : 1.0 / kWheelFactor,
                   m_scale.ToPixel(GetFrame()));
      break;
    case Qt::Key_F:
      return ShowRange();
    default:
      return event.ignore();
  }
  if (m_widget) m_widget->update();
}

}  // namespace orv::app
