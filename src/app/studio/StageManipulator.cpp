#include "app/studio/StageManipulator.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "app/studio/view/StageView.h"
#include "core/CoreImplementation.h"
#include "core/windows/LengthUnit.h"
#include "gui/NumberField.h"
#include "gui/Texts.h"
#include "gui/component/qt/Scale.h"

namespace orv::app {

using gui::Translate;
using view::Constraint;
using view::NavigationPreset;
using view::Tool;
using Hand = view::Manipulator::Hand;

namespace {

/// A click that shakes by less (pixels of the desktop) moves nothing.
constexpr double kShake = 3.0;
constexpr int kStatusTime = 6000;  ///< ms
constexpr int kGap = 16;           ///< between pointer and numbers (pixels at 96 dpi)

// Keys of what is kept, and its words; the first of each is the default, and kept as nothing.
constexpr char kKeptTool[] = "tool", kKeptAxes[] = "axes", kKeptPivot[] = "pivot",
               kSnapSteps[] = "snapsteps", kSnapNodes[] = "snapnodes", kSnapGround[] = "snapground";
constexpr const char* kTools[] = {"", "turn", "scale", "none"};
constexpr Tool kToolOf[] = {Tool::kMove, Tool::kTurn, Tool::kScale, Tool::kNone};
constexpr const char* kSpaces[] = {"", "local", "parent", "node"};
constexpr const char* kPivots[] = {"", "own"};

template <std::size_t N>
std::size_t IndexOf(const char* const (&words)[N], const std::string& word) {
  const auto at = std::find(std::begin(words), std::end(words), word);
  return at == std::end(words) ? 0 : static_cast<std::size_t>(at - std::begin(words));
}

QString QText(const std::string& text) {
  return QString::fromStdString(text);
}

std::string SpaceText(view::Space space) {
  switch (space) {
    case view::Space::kLocal:
      return Translate("Own axes");
    case view::Space::kParent:
      return Translate("Axes of the parent");
    case view::Space::kNode:
      return Translate("Axes of the chosen node");
    default:
      return Translate("Axes of the world");
  }
}

QLabel* MakeLabel(QWidget* parent) {
  auto* label = new QLabel(parent);
  view::WindowPictures::Raise(*label);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->setAutoFillBackground(true);
  label->setMargin(gui::component::qt::Scaled(4));
  label->hide();
  return label;
}

}  // namespace

StageManipulator::StageManipulator(rws::core::CoreImplementation& core, NodeManipulation& nodes,
                                   view::StageView& view)
    : m_core(core),
      m_nodes(nodes),
      m_view(view),
      m_manipulator(nodes),
      m_numbers(MakeLabel(&view)),
      m_status(MakeLabel(&view)) {
  m_numbers->setObjectName("manipulatorNumbers");
  m_status->setObjectName("manipulatorStatus");
  m_lines.onTop = true;
  m_statusTime.setSingleShot(true);
  QObject::connect(&m_statusTime, &QTimer::timeout, [this] {
    if (m_status) m_status->hide();
  });
}

StageManipulator::~StageManipulator() {
  m_manipulator.Cancel();
}

// --- choices ---

void StageManipulator::TakeChoices() {
  view::Manipulator::Options options;
  options.tool = kToolOf[IndexOf(kTools, kept(kKeptTool))];
  options.space = static_cast<view::Space>(IndexOf(kSpaces, kept(kKeptAxes)));
  options.pivot = static_cast<view::Pivot>(IndexOf(kPivots, kept(kKeptPivot)));
  options.toSteps = !kept(kSnapSteps).empty();
  options.toNodes = !kept(kSnapNodes).empty();
  options.toGround = !kept(kSnapGround).empty();
  // What a node's axes were taken from lasts as long as its scene.
  if (options.space == view::Space::kNode && m_nodes.GetReferenceName().empty())
    options.space = view::Space::kWorld;
  m_manipulator.SetOptions(options);
  m_view.update();
}

void StageManipulator::Choose(const char* key, const std::string& value) {
  keep(key, value);
  TakeChoices();
}

void StageManipulator::AddTo(QMenu& menu) {
  const view::Manipulator::Options& options = m_manipulator.GetOptions();
  const bool maya = m_view.GetNavigation() == NavigationPreset::kMaya;
  QMenu* nodes = menu.addMenu(QText(Translate("&Place nodes")));
  const auto add = [nodes](const std::string& text, auto action) {
    QAction* entry = nodes->addAction(QText(text));
    QObject::connect(entry, &QAction::triggered, action);
    return entry;
  };
  const auto check = [&add](const std::string& text, bool on, auto action) {
    QAction* entry = add(text, action);
    entry->setCheckable(true);
    entry->setChecked(on);
  };
  const auto choose = [this](const char* key, const char* value) {
    return [this, key, value] { Choose(key, value); };
  };
  const std::string names[] = {Translate("&Move"), Translate("&Turn"), Translate("&Scale"),
                               Translate("&No handles")};
  for (std::size_t i = 0; i < 4; ++i)
    check(names[i] + "\t" + (maya ? "WERQ" : "GRSQ")[i], options.tool == kToolOf[i],
          choose(kKeptTool, kTools[i]));
  nodes->addSeparator();
  const std::string spaces[] = {Translate("Along the &world's axes"),
                                Translate("Along its &own axes"),
                                Translate("Along the &parent's axes")};
  for (std::size_t i = 0; i < 3; ++i)
    check(spaces[i], static_cast<std::size_t>(options.space) == i, choose(kKeptAxes, kSpaces[i]));
  if (const std::string reference = m_nodes.GetReferenceName(); !reference.empty())
    check(Translate("Along the a&xes of %1", {gui::EscapeMnemonics(reference)}),
          options.space == view::Space::kNode, choose(kKeptAxes, kSpaces[3]));
  add(Translate("Along the &chosen node's axes from here on"), [this] {
    m_nodes.TakeReference();
    Choose(kKeptAxes, kSpaces[3]);
  })->setEnabled(!m_manipulator.GetSelection().targets.empty());
  nodes->addSeparator();
  check(Translate("Around the node chosen &last"), options.pivot == view::Pivot::kActive,
        choose(kKeptPivot, kPivots[0]));
  check(Translate("&Each around itself"), options.pivot == view::Pivot::kOwn,
        choose(kKeptPivot, kPivots[1]));
  nodes->addSeparator();
  const auto snap = [&](const std::string& text, const char* key, bool on) {
    check(text, on, choose(key, on ? "" : "yes"));
  };
  snap(Translate("Snap to &grid and steps"), kSnapSteps, options.toSteps);
  snap(Translate("Snap to no&des"), kSnapNodes, options.toNodes);
  snap(Translate("Snap to s&urfaces"), kSnapGround, options.toGround);
  nodes->addSeparator();
  add(Translate("Drop to g&round") + "\t" + Translate("End"), [this] {
    Drop();
  })->setEnabled(!m_manipulator.GetSelection().targets.empty());
}

// --- the mouse ---

QRect StageManipulator::GetPane() const {
  return m_view.GetPlace(m_view.GetActive());
}

Hand StageManipulator::HandAt(const QPointF& at, Qt::KeyboardModifiers keys) {
  m_at = at;
  const QPointF within = at - GetPane().topLeft();
  return {
      {within.x(), within.y()}, bool(keys & Qt::ControlModifier), bool(keys & Qt::ShiftModifier)};
}

bool StageManipulator::OnPress(QMouseEvent& event) {
  if (m_manipulator.IsDragging()) {
    if (event.button() == Qt::RightButton)
      Cancel();
    else if (event.button() == Qt::LeftButton && !m_isHeld)
      Finish();
    return true;
  }
  // With Alt the button moves the eye.
  if (event.button() != Qt::LeftButton || event.modifiers() & Qt::AltModifier) return false;
  if (!m_manipulator.Press(HandAt(event.localPos(), event.modifiers()))) return false;
  m_isHeld = true;
  m_isBeyond = false;
  m_pressed = event.localPos();
  m_wasDragging = true;
  m_view.update();
  return true;
}

bool StageManipulator::OnMove(QMouseEvent& event) {
  Hand hand = HandAt(event.localPos(), event.modifiers());
  if (!m_manipulator.IsDragging()) {
    if (!GetPane().contains(event.pos())) hand.at = {-1e6, -1e6};  // beside all handles
    if (m_manipulator.Hover(hand)) m_view.update();
    return false;
  }
  const QPointF way = event.localPos() - m_pressed;
  m_isBeyond = m_isBeyond || !m_isHeld || std::hypot(way.x(), way.y()) >= kShake;
  if (!m_isBeyond) return true;
  m_manipulator.Move(hand);
  ShowNumbers();
  return true;
}

bool StageManipulator::OnRelease(QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !m_isHeld) return false;
  m_isHeld = false;
  if (m_manipulator.IsDragging()) Finish();
  return true;
}

bool StageManipulator::OnWheel(QWheelEvent& event) {
  if (!m_manipulator.IsDragging()) return false;
  event.accept();
  return true;
}

// --- keys ---

/// What a key alone chooses; kNone for none. "No handles" goes by a key of its own.
Tool StageManipulator::ToolOf(int key) const {
  const bool maya = m_view.GetNavigation() == NavigationPreset::kMaya;
  if (key == (maya ? Qt::Key_W : Qt::Key_G)) return Tool::kMove;
  if (key == (maya ? Qt::Key_E : Qt::Key_R)) return Tool::kTurn;
  if (key == (maya ? Qt::Key_R : Qt::Key_S)) return Tool::kScale;
  return Tool::kNone;
}

bool StageManipulator::IsOurs(const QKeyEvent& event) const {
  const Qt::KeyboardModifiers keys = event.modifiers() & ~Qt::KeypadModifier;
  if (keys == Qt::NoModifier)
    return ToolOf(event.key()) != Tool::kNone || event.key() == Qt::Key_Q ||
           event.key() == Qt::Key_End;
  const bool isArrow = (event.key() >= Qt::Key_Left && event.key() <= Qt::Key_Down) ||
                       event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
  return isArrow && keys & Qt::ControlModifier && !(keys & (Qt::AltModifier | Qt::MetaModifier)) &&
         m_manipulator.GetOptions().tool != Tool::kNone;
}

bool StageManipulator::WantsKey(const QKeyEvent& event) const {
  return m_manipulator.IsDragging() || IsOurs(event);
}

bool StageManipulator::OnKey(QKeyEvent& event) {
  const bool isPress = event.type() == QEvent::KeyPress;
  if (m_manipulator.IsDragging()) {
    if (event.key() == Qt::Key_Control || event.key() == Qt::Key_Shift)
      DragModifier(event, isPress);
    else if (isPress)
      DragKey(event);
    return true;
  }
  if (!isPress || !IsOurs(event)) return false;
  if (TakeArrow(event)) return true;
  if (event.key() == Qt::Key_End) {
    Drop();
    return true;
  }
  const Tool tool = ToolOf(event.key());
  Choose(kKeptTool,
         kTools[std::find(std::begin(kToolOf), std::end(kToolOf), tool) - std::begin(kToolOf)]);
  if (tool != Tool::kNone && m_view.GetNavigation() == NavigationPreset::kBlender)
    BeginAnywhere(tool);
  return true;
}

void StageManipulator::BeginAnywhere(Tool tool) {
  if (!m_manipulator.Begin(tool, HandAt(m_at, Qt::NoModifier)))
    return ShowStatus(m_manipulator.GetSelection().blocked);
  m_wasDragging = true;
  // The pointer may go on beyond the picture.
  m_view.grabMouse(Qt::SizeAllCursor);
  ShowNumbers();
}

bool StageManipulator::TakeArrow(const QKeyEvent& event) {
  int right = 0, up = 0, nearer = 0;
  if (event.key() == Qt::Key_Left || event.key() == Qt::Key_Right)
    right = event.key() == Qt::Key_Right ? 1 : -1;
  if (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up)
    up = event.key() == Qt::Key_Up ? 1 : -1;
  if (event.key() == Qt::Key_PageDown || event.key() == Qt::Key_PageUp)
    nearer = event.key() == Qt::Key_PageUp ? 1 : -1;
  if (right == 0 && up == 0 && nearer == 0) return false;
  ShowStatus(m_manipulator.Nudge(right, up, nearer, event.modifiers() & Qt::ShiftModifier));
  if (!m_manipulator.IsDragging()) ShowStatus(m_nodes.TakeNote());
  return true;
}

/// What snaps, and how finely, is another thing at once, wherever the pointer is.
void StageManipulator::DragModifier(const QKeyEvent& event, bool isPress) {
  // The event's own modifiers may be those from before it.
  const auto isDown = [&](Qt::Key key, Qt::KeyboardModifier modifier) {
    return event.key() == key ? isPress : bool(event.modifiers() & modifier);
  };
  m_manipulator.SetKeys(isDown(Qt::Key_Control, Qt::ControlModifier),
                        isDown(Qt::Key_Shift, Qt::ShiftModifier));
  ShowNumbers();
}

void StageManipulator::DragKey(const QKeyEvent& event) {
  const int key = event.key();
  const bool shift = event.modifiers() & Qt::ShiftModifier;
  const Tool tool = m_isHeld ? Tool::kNone : ToolOf(key);
  if (key == Qt::Key_Escape) return Cancel();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return Finish();
  if (key >= Qt::Key_X && key <= Qt::Key_Z) {
    m_manipulator.Lock(shift ? Constraint::Kind::kPlane : Constraint::Kind::kAxis, key - Qt::Key_X);
  } else if (key == Qt::Key_Backspace) {
    m_manipulator.Erase();
  } else if (key == Qt::Key_Tab) {
    m_manipulator.NextNumber();
  } else if (tool != Tool::kNone && tool != m_manipulator.GetDragTool()) {
    Cancel();
    Choose(kKeptTool,
           kTools[std::find(std::begin(kToolOf), std::end(kToolOf), tool) - std::begin(kToolOf)]);
    return BeginAnywhere(tool);
  } else if (!TakeArrow(event)) {
    const QString text = event.text();
    if (text.size() == 1) m_manipulator.Type(text[0].toLatin1());
  }
  ShowNumbers();
}

void StageManipulator::Drop() {
  const std::string problem = m_nodes.DropToGround();
  ShowStatus(problem.empty() ? m_nodes.TakeNote() : problem);
  m_view.update();
}

// --- the end of a drag ---

void StageManipulator::Finish() {
  const std::string problem = m_manipulator.Finish();
  End();
  ShowStatus(problem.empty() ? m_nodes.TakeNote() : problem);
}

void StageManipulator::Cancel() {
  m_manipulator.Cancel();
  End();
}

void StageManipulator::End() {
  m_isHeld = m_wasDragging = false;
  if (QWidget::mouseGrabber() == &m_view) m_view.releaseMouse();
  if (m_numbers) m_numbers->hide();
  if (m_status) m_status->hide();
  m_view.update();
}

void StageManipulator::OnFocusLost() {
  if (m_manipulator.IsDragging()) Cancel();
}

// --- the picture ---

void StageManipulator::Draw(view::FramePacket& packet) {
  const double scale = gui::component::qt::Scaled(960) / 960.0;
  m_manipulator.SetUnit(rws::core::windows::UnitOf(m_core.GetPreferences().units).perMetre);
  const QRect pane = m_view.GetPlace(m_view.GetActive());
  m_manipulator.SetView(
      view::ViewFrame(m_view.GetEyePose(), m_view.GetOptics(), pane.width(), pane.height()),
      packet.grid.step, scale);
  // Something else has come between, such as a take.
  if (m_wasDragging && !m_manipulator.IsDragging()) {
    End();
    ShowStatus(m_manipulator.GetSelection().blocked);
  }
  m_lines.Begin(packet.origin);
  m_manipulator.Draw(m_lines);
  if (!m_lines.IsEmpty()) packet.lines.push_back(&m_lines);
}

std::string StageManipulator::GetNumbers() const {
  const auto unit = rws::core::windows::UnitOf(m_core.GetPreferences().units);
  const Tool tool = m_manipulator.GetDragTool();
  const int decimals = tool == Tool::kMove ? unit.decimals : tool == Tool::kTurn ? 2 : 3;
  const double grain = std::pow(10.0, decimals);
  std::string text;
  for (const auto& amount : m_manipulator.GetAmounts()) {
    const double value = tool == Tool::kMove ? amount.value * unit.perMetre : amount.value;
    std::string number = amount.typed.empty()
                             ? gui::ShownNumber(std::round(value * grain) / grain + 0.0, 0)
                             : amount.typed;
    if (amount.isCurrent) number += "|";
    const std::string name = amount.axis < 0 ? "" : std::string(1, "XYZ"[amount.axis]) + "  ";
    const std::string mark = tool == Tool::kScale ? "\u00d7 " : "";
    const std::string behind = tool == Tool::kMove   ? std::string(" ") + unit.name
                               : tool == Tool::kTurn ? "\u00b0"
                                                     : "";
    text += (text.empty() ? "" : "\n") + name + mark + number + behind;
  }
  if (m_manipulator.IsRefused()) text += "\n" + Translate("A scale of 0 can't be had.");
  return text;
}

std::string StageManipulator::GetHint() const {
  return Translate("%1. X, Y, Z: one axis, with Shift two; digits; Enter; Escape",
                   {SpaceText(m_manipulator.GetDragSpace())});
}

void StageManipulator::ShowNumbers() {
  if (!m_numbers || !m_manipulator.IsDragging()) return;
  m_numbers->setText(QText(GetNumbers()));
  m_numbers->adjustSize();
  const int gap = gui::component::qt::Scaled(kGap);
  const QPoint at = m_at.toPoint() + QPoint(gap, gap);
  m_numbers->move(std::clamp(at.x(), 0, std::max(0, m_view.width() - m_numbers->width())),
                  std::clamp(at.y(), 0, std::max(0, m_view.height() - m_numbers->height())));
  m_numbers->show();
  ShowStatus(GetHint());
  m_view.update();
}

void StageManipulator::ShowStatus(const std::string& text) {
  if (!m_status || text.empty()) return;
  const QRect pane = GetPane();
  const int space = gui::component::qt::Scaled(8), room = pane.width() - 2 * space;
  m_status->setText(QText(text));
  m_status->setWordWrap(false);
  m_status->adjustSize();
  if (m_status->width() > room) {
    m_status->setWordWrap(true);
    m_status->resize(room, m_status->heightForWidth(room));
  }
  m_status->move(pane.x() + space, pane.y() + pane.height() - m_status->height() - space);
  m_status->show();
  if (m_manipulator.IsDragging())
    m_statusTime.stop();
  else
    m_statusTime.start(kStatusTime);
}

}  // namespace orv::app
