#include "app/studio/view/StageView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QRubberBand>
#include <algorithm>
#include <cmath>

#include "app/studio/view/Graphics.h"

namespace orv::app::view {

namespace {

constexpr double kFieldOfView = 45.0;  ///< degrees, of the user's own eye
constexpr double kWheelFactor = 0.85;  ///< of the distance, a step of the wheel
constexpr double kKeyStep = 0.05;      ///< of the picture's height, an arrow key
/// Lines are thin: what lies so near to a click counts (pixels of the desktop).
constexpr int kClickReach = 4;

LinearColour Floats(const QColor& colour) {
  return {static_cast<float>(colour.redF()), static_cast<float>(colour.greenF()),
          static_cast<float>(colour.blueF())};
}

PickMode ModeOf(Qt::KeyboardModifiers keys) {
  return keys & Qt::ControlModifier ? PickMode::kToggle
         : keys & Qt::ShiftModifier ? PickMode::kAdd
                                    : PickMode::kReplace;
}

/// The id nearest to the middle of a square of ids; 0 for none.
std::uint32_t NearestId(const std::vector<std::uint32_t>& ids, int width, int height, int x,
                        int y) {
  std::uint32_t nearest = 0;
  int least = width * width + height * height;
  for (int row = 0; row < height; ++row)
    for (int column = 0; column < width; ++column) {
      const std::uint32_t id = ids[static_cast<std::size_t>(row * width + column)];
      const int distance = (row - y) * (row - y) + (column - x) * (column - x);
      if (id == 0 || distance >= least) continue;
      nearest = id;
      least = distance;
    }
  return nearest;
}

}  // namespace

StageView::StageView(FrameSource& source, Quality quality, QWidget* parent)
    : QOpenGLWidget(parent), m_source(source) {
  setFormat(MakeFormat(ChooseSamples(GetGraphics(), quality == Quality::kFixed)));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  TakeColours();
}

StageView::~StageView() {
  // The context goes after the members that its slot uses.
  if (context()) context()->disconnect(this);
  if (!m_renderer) return;
  makeCurrent();
  m_renderer.reset();
  doneCurrent();
}

// --- the picture ---

void StageView::initializeGL() {
  connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
    makeCurrent();
    m_renderer.reset();
    doneCurrent();
  });
  m_renderer = std::make_unique<Renderer>();
  std::string problem;
  if (m_renderer->Begin(problem)) return;
  m_renderer.reset();
  if (failed) failed(problem);
}

void StageView::paintGL() {
  if (!m_renderer) return;
  MakePacket();
  const double ratio = devicePixelRatioF();
  m_renderer->Draw(m_packet, static_cast<int>(std::lround(width() * ratio)),
                   static_cast<int>(std::lround(height() * ratio)), ratio);
  if (paintOver) {
    QPainter painter(this);
    paintOver(painter);
  }
  if (painted) painted();
}

double StageView::Aspect() const {
  return static_cast<double>(std::max(width(), 1)) / std::max(height(), 1);
}

void StageView::MakePacket() {
  m_source.Read();
  m_optics.fieldOfView = kFieldOfView;
  if (const util::Box box = m_source.GetBox(false); m_framesNext && !box.isEmpty()) {
    m_framesNext = false;
    m_eye.Frame(box, kFieldOfView, Aspect());
  }
  SourceLens lens;
  m_isThrough = m_source.GetLens(lens);
  m_packet.gate.visible = false;
  OrbitEye eye = m_eye;
  if (m_isThrough) {
    m_pose = lens.pose;
    m_pose.normalizeRows();
    m_optics.fieldOfView = lens.fieldOfView;
    m_packet.gate = ChooseGate(lens.aspect, Aspect(), m_optics.fieldOfView);
    eye = OrbitEye::FromPose(m_pose, m_eye.distance);
  } else {
    m_pose = m_eye.GetPose();
  }
  ChooseClip(m_pose, m_source.GetBox(false), m_optics);
  ChooseGrid(eye, m_packet.grid);
  view::SetEye(m_packet, m_pose, m_optics, Aspect());
  m_source.Write(m_packet);
  m_packet.lines.clear();
  if (linesWanted) linesWanted(m_packet);
  if (m_interactor) m_interactor->Draw(m_packet);
}

void StageView::TakeColours() {
  const QColor window = palette().color(QPalette::Window);
  const bool isDark = window.lightness() < 128;
  m_packet.background = Floats(isDark ? window.lighter(115) : window.darker(135));
  m_packet.gridColour = Floats(isDark ? window.lighter(260) : window.darker(210));
  m_packet.outline = Floats(palette().color(QPalette::Highlight));
}

void StageView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
    TakeColours();
    update();
  }
  QOpenGLWidget::changeEvent(event);
}

void StageView::SetShading(Shading shading) {
  m_packet.shading = shading;
  update();
}

void StageView::SetGridVisible(bool visible) {
  m_packet.grid.visible = visible;
  update();
}

Renderer::Counts StageView::GetCounts() const {
  return m_renderer ? m_renderer->GetCounts() : Renderer::Counts();
}

// --- the eye ---

void StageView::Frame(bool selection) {
  m_source.Read();
  const util::Box box = m_source.GetBox(selection);
  if (box.isEmpty()) return;
  LeaveCamera();
  m_framesNext = false;
  m_eye.Frame(box, kFieldOfView, Aspect());
  update();
}

void StageView::FrameAll() {
  Frame(false);
}

void StageView::FrameSelected() {
  Frame(true);
}

void StageView::FrameNext() {
  m_framesNext = true;
  update();
}

void StageView::SetEye(const OrbitEye& eye) {
  m_eye = eye;
  m_framesNext = false;
  update();
}

void StageView::LeaveCamera() {
  if (!m_isThrough) return;
  m_isThrough = false;
  m_eye = OrbitEye::FromPose(m_pose, m_eye.distance);
  if (cameraLeft) cameraLeft();
}

void StageView::GetRay(const QPointF& at, util::Vector3<double>& origin,
                       util::Vector3<double>& direction) const {
  RayThrough(m_pose, m_optics, Aspect(), at.x() / std::max(width(), 1),
             1.0 - at.y() / std::max(height(), 1), origin, direction);
}

// --- picks ---

std::vector<std::uint32_t> StageView::ReadIds(const QRect& part) {
  std::vector<std::uint32_t> ids;
  if (!m_renderer) return ids;
  const double ratio = devicePixelRatioF();
  const auto pixels = [ratio](int length) { return static_cast<int>(std::lround(length * ratio)); };
  const QRect inside = part & rect();
  const PixelRect rectangle{pixels(inside.x()), pixels(height() - inside.y() - inside.height()),
                            pixels(inside.width()), pixels(inside.height())};
  if (inside.isEmpty()) return ids;
  makeCurrent();
  MakePacket();
  m_renderer->ReadIds(m_packet, pixels(width()), pixels(height()), rectangle, ids);
  doneCurrent();
  return ids;
}

void StageView::Pick(const QRect& part, PickMode mode) {
  std::vector<std::uint32_t> hit;
  if (part.width() > 1 || part.height() > 1) {
    hit = ReadIds(part);
    std::sort(hit.begin(), hit.end());
    hit.erase(std::unique(hit.begin(), hit.end()), hit.end());
    hit.erase(std::remove(hit.begin(), hit.end(), 0u), hit.end());
  } else {
    const QRect around =
        part.adjusted(-kClickReach, -kClickReach, kClickReach, kClickReach) & rect();
    const std::vector<std::uint32_t> ids = ReadIds(around);
    const double ratio = devicePixelRatioF();
    const auto pixel = [ratio](double at) { return static_cast<int>((at + 0.5) * ratio); };
    const int width = static_cast<int>(std::lround(around.width() * ratio));
    if (!ids.empty() && width > 0)
      hit = {NearestId(ids, width, static_cast<int>(ids.size()) / width,
                       pixel(part.x() - around.x()), pixel(around.bottom() - part.y()))};
    if (!hit.empty() && hit.front() == 0) hit.clear();
  }
  if (picked) picked(hit, mode);
}

// --- hands ---

void StageView::mousePressEvent(QMouseEvent* event) {
  if (m_button != Qt::NoButton || (m_interactor && m_interactor->OnPress(*event))) return;
  const Qt::KeyboardModifiers keys = event->modifiers();
  const PointerButton button = event->button() == Qt::LeftButton     ? PointerButton::kLeft
                               : event->button() == Qt::MiddleButton ? PointerButton::kMiddle
                                                                     : PointerButton::kRight;
  m_drag = KindOfDrag(m_preset, button, keys & Qt::ShiftModifier, keys & Qt::ControlModifier,
                      keys & Qt::AltModifier);
  m_button = event->button();
  m_pressed = m_last = event->pos();
  m_isDragged = false;
}

void StageView::mouseMoveEvent(QMouseEvent* event) {
  if (m_button == Qt::NoButton) {
    if (m_interactor) m_interactor->OnMove(*event);
    return;
  }
  const QPoint by = event->pos() - m_last;
  if (!m_isDragged &&
      (event->pos() - m_pressed).manhattanLength() < QApplication::startDragDistance())
    return;
  m_isDragged = true;
  m_last = event->pos();
  if (m_drag == DragKind::kSelect) {
    if (!m_band) m_band = new QRubberBand(QRubberBand::Rectangle, this);
    m_band->setGeometry(QRect(m_pressed, event->pos()).normalized());
    m_band->show();
    return;
  }
  Drag(by);
}

void StageView::Drag(const QPoint& by) {
  if (m_drag == DragKind::kMenu) return;
  LeaveCamera();
  const double x = static_cast<double>(by.x()) / std::max(height(), 1);
  const double y = static_cast<double>(by.y()) / std::max(height(), 1);
  if (m_drag == DragKind::kOrbit) m_eye.Orbit(x, y);
  if (m_drag == DragKind::kPan) m_eye.Pan(x, y, kFieldOfView);
  if (m_drag == DragKind::kDolly) m_eye.Dolly(std::exp(3.0 * (y - x)));
  update();
}

void StageView::mouseReleaseEvent(QMouseEvent* event) {
  if (m_button == Qt::NoButton && m_interactor && m_interactor->OnRelease(*event)) return;
  if (event->button() != m_button) return;
  m_button = Qt::NoButton;
  if (m_band) m_band->hide();
  if (m_drag == DragKind::kMenu && !m_isDragged && menuWanted) menuWanted(event->globalPos());
  if (m_drag != DragKind::kSelect) return;
  const QRect part =
      m_isDragged ? QRect(m_pressed, event->pos()).normalized() : QRect(m_pressed, QSize(1, 1));
  Pick(part, ModeOf(event->modifiers()));
}

void StageView::wheelEvent(QWheelEvent* event) {
  if (m_interactor && m_interactor->OnWheel(*event)) return;
  LeaveCamera();
  m_eye.Dolly(std::pow(kWheelFactor, event->angleDelta().y() / 120.0));
  update();
  event->accept();
}

bool StageView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && m_interactor &&
      m_interactor->WantsKey(*static_cast<QKeyEvent*>(event)))
    event->accept();
  // Tab would go to the next widget before it comes as a key.
  if (event->type() == QEvent::KeyPress && m_interactor &&
      m_interactor->OnKey(*static_cast<QKeyEvent*>(event)))
    return true;
  return QOpenGLWidget::event(event);
}

void StageView::focusOutEvent(QFocusEvent* event) {
  if (m_interactor) m_interactor->OnFocusLost();
  QOpenGLWidget::focusOutEvent(event);
}

void StageView::keyPressEvent(QKeyEvent* event) {
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  // Others belong to the menus and to the hot keys.
  if (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
    return QOpenGLWidget::keyPressEvent(event);
  double x = 0.0, y = 0.0;
  switch (event->key()) {
    case Qt::Key_F:
    case Qt::Key_Period:
      return FrameSelected();
    case Qt::Key_A:
    case Qt::Key_Home:
      return FrameAll();
    case Qt::Key_Left:
      x = kKeyStep;
      break;
    case Qt::Key_Right:
      x = -kKeyStep;
      break;
    case Qt::Key_Up:
      y = kKeyStep;
      break;
    case Qt::Key_Down:
      y = -kKeyStep;
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      LeaveCamera();
      m_eye.Dolly(event->key() == Qt::Key_PageUp ? kWheelFactor : 1.0 / kWheelFactor);
      return update();
    default:
      return QOpenGLWidget::keyPressEvent(event);
  }
  LeaveCamera();
  if (shift)
    m_eye.Pan(x, y, kFieldOfView);
  else
    m_eye.Orbit(x, y);
  update();
}

/// By the keyboard; the mouse's own comes with the release of the button.
void StageView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard && menuWanted)
    menuWanted(mapToGlobal(rect().center()));
  event->accept();
}

}  // namespace orv::app::view
