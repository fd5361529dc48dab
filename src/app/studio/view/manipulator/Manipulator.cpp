#include "app/studio/view/manipulator/Manipulator.h"

#include <algorithm>
#include <cmath>

#include "util/Angles.h"

namespace orv::app::view {

using util::Matrix;
using util::Vector3;
using Kind = Constraint::Kind;

namespace {

constexpr SnapSteps kCoarse{1.0, 15.0 * util::kRadiansPerDegree, 0.1};
/// Where a pointer takes hold that drags the eye itself (steps of the grid).
constexpr double kReach = 10.0;
constexpr SnapSteps kFine{0.1, 1.0 * util::kRadiansPerDegree, 0.01};

}  // namespace

// --- the picture ---

void Manipulator::SetView(const ViewFrame& view, double gridStep, double scale) {
  m_view = view;
  m_gridStep = gridStep;
  m_scale = scale;
  m_scene.Read(m_selection);
  if (m_isDragging && !IsStillThere()) Cancel();
  if (m_selection.targets.empty() || !m_selection.blocked.empty()) m_hot.reset();
}

/// Whether nothing else has come between.
bool Manipulator::IsStillThere() const {
  return m_selection.blocked.empty() && m_selection.targets == m_held.targets &&
         m_selection.active == m_held.active;
}

void Manipulator::Draw(LineSet& lines) const {
  if (m_isDragging) {
    Frame frame = GetDragFrame();
    DrawGuide(m_drag.GetFrame(), m_drag.GetConstraint(),
              Handles::kLength * m_scale * m_view.PixelSize(frame.origin), lines);
    const Handles handles(m_drag.GetTool(), frame, m_view, m_scale);
    return handles.Draw(&m_drag.GetConstraint(), false, lines);
  }
  if (m_selection.targets.empty()) return;
  const Handles handles(m_options.tool, ChooseFrame(m_selection, m_options.space), m_view, m_scale);
  handles.Draw(m_hot ? &*m_hot : nullptr, !m_selection.blocked.empty(), lines);
}

/// Where the handles have come to.
Frame Manipulator::GetDragFrame() const {
  Frame frame = m_drag.GetFrame();
  if (m_change.tool == Tool::kMove) frame.origin += frame.ToWorld(m_change.move);
  return frame;
}

// --- a drag ---

bool Manipulator::Hover(const Hand& hand) {
  if (m_isDragging) return false;
  Constraint found;
  const bool canUse = !m_selection.targets.empty() && m_selection.blocked.empty();
  const bool isHit =
      canUse && Handles(m_options.tool, ChooseFrame(m_selection, m_options.space), m_view, m_scale)
                    .Hit(hand.at, found);
  const std::optional<Constraint> before = m_hot;
  m_hot = isHit ? std::optional<Constraint>(found) : std::nullopt;
  return before.has_value() != isHit || (isHit && !(*before == found));
}

bool Manipulator::Press(const Hand& hand) {
  if (m_isDragging) return false;
  Hover(hand);
  return m_hot && Start(m_options.tool, Drag::Grip::kHandle, *m_hot, hand);
}

bool Manipulator::Begin(Tool tool, const Hand& hand) {
  return !m_isDragging && Start(tool, Drag::Grip::kAnywhere, {}, hand);
}

bool Manipulator::Start(Tool tool, Drag::Grip grip, const Constraint& constraint,
                        const Hand& hand) {
  m_scene.Read(m_selection);
  if (m_selection.targets.empty() || !m_selection.blocked.empty() || tool == Tool::kNone)
    return false;
  m_held = m_selection;
  m_hand = hand;
  m_depth.reset();
  m_isDragging = true;
  m_space = m_options.space;
  const Frame frame = ChooseFrame(m_held, m_space);
  m_drag = MakeDrag(tool, constraint, grip, frame, m_view, hand.at);
  Restart(constraint, m_space);
  return true;
}

Drag Manipulator::MakeDrag(Tool tool, const Constraint& constraint, Drag::Grip grip,
                           const Frame& frame, const ViewFrame& view, const Pixel& start) const {
  const double reach = kReach * m_gridStep;
  const double pixel = view.PixelSize(Drag::AnchorOf(frame.origin, view, reach));
  return {tool, constraint, grip, frame, view, Handles::kLength * m_scale * pixel, reach, start};
}

/// The same drag, from where it began, under another constraint.
void Manipulator::Restart(const Constraint& constraint, Space space) {
  m_space = space;
  const Frame frame = ChooseFrame(m_held, space);
  m_drag = MakeDrag(m_drag.GetTool(), constraint, m_drag.GetGrip(), frame, m_drag.GetView(),
                    m_drag.GetStart());
  m_steps = {};
  m_angleSteps = 0.0;
  m_isMoved = false;
  m_numbers.Begin(static_cast<int>(GetAmountAxes().size()));
  m_change = m_drag.Begin();
  if (m_hand.at.x != m_drag.GetStart().x || m_hand.at.y != m_drag.GetStart().y) Move(m_hand);
}

void Manipulator::Move(const Hand& hand) {
  m_hand = hand;
  m_isMoved = true;
  Update();
}

void Manipulator::SetKeys(bool otherSnap, bool fine) {
  m_hand.otherSnap = otherSnap;
  m_hand.fine = fine;
  if (m_isDragging && m_isMoved) Update();
}

void Manipulator::Lock(Kind kind, int axis) {
  if (!m_isDragging) return;
  const Constraint wanted{kind, axis};
  const Space other = m_options.space == Space::kWorld ? Space::kLocal : Space::kWorld;
  if (!(m_drag.GetConstraint() == wanted)) return Restart(wanted, m_options.space);
  if (m_space == other) return Restart({}, m_options.space);
  Restart(wanted, other);
}

void Manipulator::Cancel() {
  if (!m_isDragging) return;
  m_isDragging = false;
  m_hot.reset();
  m_scene.EndPreview();
}

std::string Manipulator::Finish() {
  if (!m_isDragging) return {};
  m_scene.Read(m_selection);
  const bool isThere = IsStillThere();
  const std::vector<NewPose> poses = Apply(m_held, m_change, m_space, m_options.pivot);
  const bool isNothing = m_change.IsNothing() || m_isRefused || !isThere;
  Cancel();
  return isNothing ? std::string() : m_scene.Commit(m_change.tool, m_held, poses);
}

// --- numbers ---

bool Manipulator::Type(char letter) {
  if (!m_isDragging || !m_numbers.Type(letter)) return false;
  Update();
  return true;
}

void Manipulator::Erase() {
  m_numbers.Erase();
  if (m_isDragging) Update();
}

void Manipulator::NextNumber() {
  m_numbers.Next();
}

/// Axes of the frame that the drag's numbers are of; -1 for one that is of none.
std::vector<int> Manipulator::GetAmountAxes() const {
  const Constraint& constraint = m_drag.GetConstraint();
  if (m_drag.GetTool() == Tool::kTurn)
    return {constraint.kind == Kind::kFree ? -1 : constraint.axis};
  if (m_drag.GetTool() == Tool::kScale && constraint.kind == Kind::kFree) return {-1};
  std::vector<int> axes;
  for (int i = 0; i < 3; ++i)
    if (constraint.Has(i)) axes.push_back(i);
  return axes;
}

std::vector<Manipulator::Amount> Manipulator::GetAmounts() const {
  std::vector<Amount> amounts;
  for (const int axis : GetAmountAxes()) {
    const int number = static_cast<int>(amounts.size());
    Amount amount;
    amount.axis = axis;
    amount.value = m_change.tool == Tool::kTurn    ? m_change.angle * util::kDegreesPerRadian
                   : m_change.tool == Tool::kScale ? m_change.factors[std::max(axis, 0)]
                                                   : m_change.move[axis];
    amount.typed = m_numbers.GetText(number);
    amount.isCurrent = m_numbers.IsUsed() && number == m_numbers.GetCurrent();
    amounts.push_back(std::move(amount));
  }
  return amounts;
}

/// What is typed counts alone: a number that is not typed is that of nothing.
void Manipulator::TakeTyped(Change& change) {
  change = m_drag.Begin();
  int number = 0;
  for (const int axis : GetAmountAxes()) {
    const double value = m_numbers.Get(number++, change.tool == Tool::kScale ? 1.0 : 0.0);
    if (change.tool == Tool::kTurn) change.angle = value * util::kRadiansPerDegree;
    if (change.tool == Tool::kMove) change.move[axis] = value / m_unit;
    if (change.tool == Tool::kScale && axis >= 0) change.factors[axis] = value;
    if (change.tool == Tool::kScale && axis < 0) change.factors = {value, value, value};
  }
}

// --- what it comes to ---

SnapSteps Manipulator::GetSteps(bool fine) const {
  SnapSteps steps = fine ? kFine : kCoarse;
  steps.length *= m_gridStep;
  return steps;
}

/// Nodes and surfaces come before steps; true when there was one.
bool Manipulator::SnapToScene(Change& change) {
  const Frame& frame = m_drag.GetFrame();
  const ViewFrame& view = m_drag.GetView();
  Matrix<double> node;
  if (m_options.toNodes && change.tool != Tool::kScale &&
      m_scene.FindNode(m_held, view, m_hand.at, node)) {
    if (change.tool == Tool::kMove)
      SnapToPlace(node.translation(), m_drag.GetConstraint(), frame, change);
    else
      SnapToAxes(FrameOf(m_held.active.world), FrameOf(node), change);
    return true;
  }
  Pixel pivot;
  if (!m_options.toGround || change.tool != Tool::kMove ||
      m_drag.GetConstraint().kind == Kind::kAxis || !view.Project(frame.origin, pivot))
    return false;
  // The pivot, wherever the hand has taken hold.
  Vector place;
  if (!m_scene.Meet(m_held, view.RayAt(pivot + (m_hand.at - m_drag.GetStart())), place))
    return false;
  if (!m_depth) m_depth = m_scene.GetDepth(m_held);
  change.isFree = true;
  SnapToPlace(place + Vector(0.0, *m_depth, 0.0), {}, frame, change);
  return true;
}

void Manipulator::Snap(Change& change) {
  const bool isAny = m_options.toSteps || m_options.toNodes || m_options.toGround;
  if (m_hand.otherSnap && isAny) return;
  if (!m_hand.otherSnap && SnapToScene(change)) return;
  if (m_options.toSteps == m_hand.otherSnap) return;
  const Space space = m_space;
  const Vector world;
  const Vector parent = m_held.active.parent.translation();
  const Vector node = m_held.reference ? m_held.reference->translation() : world;
  const Vector* lattice = space == Space::kLocal    ? nullptr
                          : space == Space::kParent ? &parent
                          : space == Space::kNode   ? &node
                                                    : &world;
  SnapToSteps(GetSteps(m_hand.fine), m_drag.GetConstraint(), m_drag.GetFrame(), lattice, change);
}

void Manipulator::Update() {
  Change change = m_drag.Begin();
  if (m_isMoved) change = m_drag.Follow(m_hand.at);
  if (m_isMoved) Snap(change);
  change.move += m_steps;
  change.angle += m_angleSteps;
  for (int i = 0; i < 3; ++i)
    if (change.tool == Tool::kScale && m_drag.GetConstraint().Has(i))
      change.factors[i] = std::max(change.factors[i] + m_steps[i], kFine.factor);
  if (m_numbers.IsUsed()) TakeTyped(change);
  m_change = change;
  const Vector& f = change.factors;
  m_isRefused = change.tool == Tool::kScale && (f.x == 0.0 || f.y == 0.0 || f.z == 0.0);
  if (!m_isRefused) m_scene.Preview(m_held, Apply(m_held, m_change, m_space, m_options.pivot));
}

// --- arrow keys ---

int Manipulator::AxisTowards(const Vector& direction, const Frame& frame, int except,
                             double& sign) const {
  int best = except == 0 ? 1 : 0;
  for (int i = 0; i < 3; ++i)
    if (i != except &&
        std::abs(frame.axes[i].dot(direction)) > std::abs(frame.axes[best].dot(direction)) + 1e-9)
      best = i;
  sign = frame.axes[best].dot(direction) < 0.0 ? -1.0 : 1.0;
  return best;
}

void Manipulator::AddSteps(int right, int up, int nearer, bool fine) {
  const SnapSteps steps = GetSteps(fine);
  const Constraint& constraint = m_drag.GetConstraint();
  const Frame& frame = m_drag.GetFrame();
  const double any = right + up + nearer;
  if (m_drag.GetTool() == Tool::kTurn) {
    m_angleSteps += any * steps.angle;
  } else if (m_drag.GetTool() == Tool::kScale) {
    for (int i = 0; i < 3; ++i)
      if (constraint.Has(i)) m_steps[i] += any * steps.factor;
  } else if (constraint.kind == Kind::kAxis) {
    m_steps[constraint.axis] += any * steps.length;
  } else {
    // Each key has an axis of its own, the one that it runs along most.
    double signs[3];
    const int x = AxisTowards(m_view.GetRight(), frame, -1, signs[0]);
    const int y = AxisTowards(m_view.GetUp(), frame, x, signs[1]);
    const int z = 3 - x - y;
    signs[2] = frame.axes[z].dot(m_view.GetForward()) > 0.0 ? -1.0 : 1.0;
    const Vector before = m_steps;
    m_steps[x] += right * signs[0] * steps.length;
    m_steps[y] += up * signs[1] * steps.length;
    m_steps[z] += nearer * signs[2] * steps.length;
    for (int i = 0; i < 3; ++i)
      if (!constraint.Has(i)) m_steps[i] = before[i];
  }
}

std::string Manipulator::Nudge(int right, int up, int nearer, bool fine) {
  if (m_isDragging) {
    AddSteps(right, up, nearer, fine);
    Update();
    return {};
  }
  if (!Start(m_options.tool, Drag::Grip::kAnywhere, {}, Hand())) return m_selection.blocked;
  if (m_drag.GetTool() == Tool::kTurn) {
    // About the axis that stands most as the movement's own does.
    double sign = 1.0;
    const Vector about = right ? m_view.GetUp() : up ? -m_view.GetRight() : -m_view.GetForward();
    const int axis = AxisTowards(about, m_drag.GetFrame(), -1, sign);
    Restart({Kind::kAxis, axis}, m_space);
    const int turns = static_cast<int>(sign) * (right + up + nearer);
    right = turns;
    up = nearer = 0;
  }
  AddSteps(right, up, nearer, fine);
  Update();
  return Finish();
}

}  // namespace orv::app::view
