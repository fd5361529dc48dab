#include "app/studio/view/StageView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLPaintDevice>
#include <QPainter>
#include <QRubberBand>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/studio/view/Graphics.h"

namespace orv::app::view {

namespace {

constexpr double kFieldOfView = StagePicture::kFieldOfView;
constexpr double kWheelFactor = 0.85;  ///< of the distance, a step of the wheel
constexpr double kKeyStep = 0.05;      ///< of the picture's height, an arrow key
/// Lines are thin: what lies so near to a click counts (pixels of the desktop).
constexpr int kClickReach = 4;
constexpr int kGap = 2;          ///< between two panes (pixels of the desktop)
constexpr int kInsetMargin = 8;  ///< from the pane's edges (pixels of the desktop)
/// Parts of the pane's width and height that an inset takes up at most.
constexpr double kInsetWidth = 0.45, kInsetHeight = 0.32;
constexpr int kLevelSlice = 6;   ///< ms of work between two looks at the events
constexpr int kRestPause = 300;  ///< ms without a picture, until one is drawn that stays
constexpr auto kHurry = static_cast<QEvent::Type>(QEvent::User + 1);

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
    : QOpenGLWidget(parent),
      m_source(source),
      m_quality(quality),
      m_control(GetGraphics().isSoftware),
      m_window(*this) {
  setFormat(MakeFormat(0));  // samples are the renderer's business
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  TakeColours();
  connect(&m_idle, &QTimer::timeout, this, [this] { MakeLevels(); });
  m_rest.setSingleShot(true);
  m_rest.setInterval(kRestPause);
  connect(&m_rest, &QTimer::timeout, this, [this] {
    m_isAtRest = true;
    update();
  });
  connect(this, &QOpenGLWidget::frameSwapped, this, [this] { NoteCost(); });
  m_pending.setTimerType(Qt::PreciseTimer);
  m_pending.setInterval(1);
  connect(&m_pending, &QTimer::timeout, this, [this] { LookForPicture(); });
}

StageView::~StageView() {
  // The context goes after the members that its slot uses.
  if (context()) context()->disconnect(this);
  if (!m_renderer) return;
  makeCurrent();
  m_renderer.reset();
  doneCurrent();
}

// --- the pictures ---

void StageView::initializeGL() {
  connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
    makeCurrent();
    m_window.Drop();
    m_renderer.reset();
    doneCurrent();
  });
  m_renderer = std::make_unique<Renderer>();
  if (m_quality == Quality::kByMachine) m_renderer->SetLevels(&m_levels);
  std::string problem;
  if (m_renderer->Begin(problem)) return;
  m_renderer.reset();
  if (failed) failed(problem);
}

void StageView::paintGL() {
  m_window.Drop();
  if (m_renderer) Draw();
}

void StageView::Hurry() {
  if (IsPending()) return;
  m_isHurried = true;
  QCoreApplication::postEvent(this, new QEvent(kHurry), Qt::HighEventPriority);
}

void StageView::DrawToWindow() {
  m_isHurried = false;
  if (!m_renderer || !m_window.Begin()) return update();
  m_isHurrying = true;
  Draw();
  m_isHurrying = false;
  m_window.End();
  m_pending.start();
}

void StageView::LookForPicture() {
  const bool isSeen = m_window.Poll();
  if (!m_window.IsPending()) m_pending.stop();
  if (isSeen) emit frameSwapped();
}

void StageView::Draw() {
  m_sincePaint.start();
  m_source.Read();
  if (begun) begun();
  const PictureQuality quality = ChooseQuality();
  m_counts = {};
  // As wide as its camera tells.
  SourceLens lens;
  m_isInsetThere = m_hasInset && m_source.GetLens(kInset, lens);
  if (m_isInsetThere) m_insetAspect = lens.aspect;
  if (m_layout != PaneLayout::kOne) m_renderer->Clear(m_gap);
  for (std::size_t picture = 0; picture < kPictures; ++picture) {
    if (!IsShown(picture)) continue;
    MakePacket(picture);
    AddLines(picture);
    m_renderer->Draw(m_pictures[picture].packet, AreaOf(picture), devicePixelRatioF(), quality);
    const Renderer::Counts counts = m_renderer->GetCounts();
    m_counts.meshes += counts.meshes;
    m_counts.all += counts.all;
    m_counts.triangles += counts.triangles;
  }
  if (paintOver && hasTexts && hasTexts()) {
    // A painter of the widget would paint elsewhere when that is grabbed.
    const double ratio = devicePixelRatioF();
    QOpenGLPaintDevice device(size() * ratio);
    device.setDevicePixelRatio(ratio);
    QPainter painter(&device);
    painter.setFont(font());
    paintOver(painter);
  }
  const FramePacket& packet = m_pictures[0].packet;
  if (m_quality == Quality::kByMachine && m_structure != packet.structure) {
    m_structure = packet.structure;
    m_levels.Follow(packet);
    m_idle.start(0);
  }
  if (painted) painted();
}

PictureQuality StageView::ChooseQuality() {
  const bool isAtRest = std::exchange(m_isAtRest, false);
  m_isTimed = !isAtRest;
  if (m_quality == Quality::kFixed) return {};
  PictureQuality quality = isAtRest ? m_control.GetAtRest() : m_control.Get();
  // Without a graphics processor the program would wait for what is drawn at another scale.
  if (m_isHurrying && GetGraphics().isSoftware) {
    quality = {0, 1.0, true};
    m_isTimed = false;
  }
  if (quality.scale < 1.0 || m_isHurrying)
    m_rest.start();
  else
    m_rest.stop();
  return quality;
}

/// Behind the update, when the window has been put together: the driver draws until then.
void StageView::NoteCost() {
  if (!std::exchange(m_isTimed, false) || m_quality == Quality::kFixed) return;
  m_control.Note(static_cast<double>(m_sincePaint.nsecsElapsed()) / 1e6);
}

void StageView::MakeLevels() {
  if (isBusy && isBusy()) return m_idle.start(200);
  m_idle.setInterval(0);
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < kLevelSlice)
    if (!m_levels.Work()) return m_idle.stop();
}

void StageView::MakePacket(std::size_t picture) {
  StagePicture& made = m_pictures[picture];
  made.Make(m_source, AspectOf(picture));
  made.packet.lines.clear();
  made.packet.isFramed = picture == kInset || (m_layout != PaneLayout::kOne && picture == m_active);
}

void StageView::AddLines(std::size_t picture) {
  FramePacket& packet = m_pictures[picture].packet;
  if (linesWanted) linesWanted(packet);
  if (m_interactor && picture == m_active) m_interactor->Draw(packet);
}

// --- where they lie ---

bool StageView::IsShown(std::size_t picture) const {
  return picture == 0 || (picture == kInset ? m_isInsetThere : m_layout != PaneLayout::kOne);
}

QRect StageView::GetPlace(std::size_t picture) const {
  if (picture == kInset) {
    const QRect pane = GetPlace(0);
    const double most =
        std::min(kInsetWidth * pane.width(), kInsetHeight * pane.height() * m_insetAspect);
    const int width = std::max(1, static_cast<int>(std::lround(most)));
    const int height = std::max(1, static_cast<int>(std::lround(most / m_insetAspect)));
    return {pane.right() + 1 - kInsetMargin - width, pane.bottom() + 1 - kInsetMargin - height,
            width, height};
  }
  if (m_layout == PaneLayout::kOne) return rect();
  QRect place = rect();
  if (m_layout == PaneLayout::kColumns) {
    const int half = std::max(1, (width() - kGap) / 2);
    picture == 0 ? place.setWidth(half) : place.setLeft(half + kGap);
  } else {
    const int half = std::max(1, (height() - kGap) / 2);
    picture == 0 ? place.setHeight(half) : place.setTop(half + kGap);
  }
  return place;
}

std::size_t StageView::NumberOf(const FramePacket& packet) const {
  const auto at =
      std::find_if(m_pictures.begin(), m_pictures.end(),
                   [&packet](const StagePicture& picture) { return &picture.packet == &packet; });
  return static_cast<std::size_t>(at - m_pictures.begin());
}

std::size_t StageView::PictureAt(const QPoint& at) const {
  for (std::size_t picture = kPictures; picture-- > 1;)
    if (IsShown(picture) && GetPlace(picture).contains(at)) return picture;
  return 0;
}

/// Its place in pixels of the screen.
PixelRect StageView::AreaOf(std::size_t picture) const {
  const double ratio = devicePixelRatioF();
  const auto pixels = [ratio](int length) { return static_cast<int>(std::lround(length * ratio)); };
  const QRect place = GetPlace(picture);
  const int left = pixels(place.x()), right = pixels(place.x() + place.width());
  const int bottom = pixels(height() - place.y() - place.height()),
            top = pixels(height() - place.y());
  return {left, bottom, std::max(1, right - left), std::max(1, top - bottom)};
}

double StageView::AspectOf(std::size_t picture) const {
  const QRect place = GetPlace(picture);
  return static_cast<double>(std::max(place.width(), 1)) / std::max(place.height(), 1);
}

void StageView::SetLayout(PaneLayout layout) {
  if (layout == m_layout) return;
  if (m_layout == PaneLayout::kOne) m_pictures[1].SetEye(m_pictures[0].GetEye());
  m_layout = layout;
  if (!IsShown(m_active)) m_active = 0;
  m_control.Restart();
  update();
}

void StageView::SetInsetVisible(bool visible) {
  m_hasInset = visible;
  update();
}

void StageView::SetActive(std::size_t pane) {
  if (pane == m_active || pane == kInset || !IsShown(pane)) return;
  m_active = pane;
  update();
}

void StageView::TakeColours() {
  const QColor window = palette().color(QPalette::Window);
  const bool isDark = window.lightness() < 128;
  m_gap = Floats(window);
  for (StagePicture& picture : m_pictures) {
    picture.packet.background = Floats(isDark ? window.lighter(115) : window.darker(135));
    picture.packet.gridColour = Floats(isDark ? window.lighter(260) : window.darker(210));
    picture.packet.outline = Floats(palette().color(QPalette::Highlight));
  }
}

void StageView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
    TakeColours();
    update();
  }
  QOpenGLWidget::changeEvent(event);
}

void StageView::SetShading(Shading shading, std::size_t picture) {
  m_pictures[picture].packet.shading = shading;
  update();
}

void StageView::SetGridVisible(bool visible) {
  m_pictures[0].packet.grid.visible = m_pictures[1].packet.grid.visible = visible;
  m_pictures[kInset].packet.grid.visible = false;
  update();
}

// --- the eye ---

void StageView::Frame(BoxOf what) {
  m_source.Read();
  if (!m_source.GetBox(what).isEmpty()) LeaveCamera();
  if (m_pictures[m_active].Frame(m_source, what)) update();
}

void StageView::FrameAll() {
  Frame(BoxOf::kAll);
}

void StageView::FrameSelected() {
  Frame(BoxOf::kSelection);
}

void StageView::FrameNext() {
  for (StagePicture& picture : m_pictures) picture.FrameNext();
  m_control.Restart();
  update();
}

void StageView::SetEye(const OrbitEye& eye) {
  m_pictures[m_active].SetEye(eye);
  update();
}

void StageView::LeaveCamera() {
  if (!m_pictures[m_active].IsThroughCamera()) return;
  m_pictures[m_active].LeaveCamera();
  if (cameraLeft) cameraLeft();
}

void StageView::GetRay(const QPointF& at, util::Vector3<double>& origin,
                       util::Vector3<double>& direction) const {
  const QRect place = GetPlace(m_active);
  m_pictures[m_active].GetRay((at.x() - place.x()) / std::max(place.width(), 1),
                              1.0 - (at.y() - place.y()) / std::max(place.height(), 1), origin,
                              direction);
}

// --- picks ---

std::vector<std::uint32_t> StageView::ReadIds(const QRect& part, std::size_t picture) {
  std::vector<std::uint32_t> ids;
  const QRect place = GetPlace(picture), inside = part & place;
  if (!m_renderer || inside.isEmpty()) return ids;
  const double ratio = devicePixelRatioF();
  const auto pixels = [ratio](int length) { return static_cast<int>(std::lround(length * ratio)); };
  const PixelRect area = AreaOf(picture);
  const PixelRect rectangle{pixels(inside.x()) - area.x,
                            pixels(height() - inside.y() - inside.height()) - area.y,
                            pixels(inside.width()), pixels(inside.height())};
  makeCurrent();
  m_source.Read();
  MakePacket(picture);
  m_renderer->ReadIds(m_pictures[picture].packet, area.width, area.height, rectangle, ids);
  doneCurrent();
  return ids;
}

void StageView::Pick(const QRect& part, PickMode mode) {
  std::vector<std::uint32_t> hit;
  if (part.width() > 1 || part.height() > 1) {
    hit = ReadIds(part, m_pointed);
    std::sort(hit.begin(), hit.end());
    hit.erase(std::unique(hit.begin(), hit.end()), hit.end());
    hit.erase(std::remove(hit.begin(), hit.end(), 0u), hit.end());
  } else {
    const QRect around =
        part.adjusted(-kClickReach, -kClickReach, kClickReach, kClickReach) & GetPlace(m_pointed);
    const std::vector<std::uint32_t> ids = ReadIds(around, m_pointed);
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
  if (m_button != Qt::NoButton) return;
  if (m_interactor && m_interactor->IsBusy() && m_interactor->OnPress(*event)) return;
  // With another button held the hand stays in its pane.
  const std::size_t before = m_active;
  if (event->buttons() == event->button()) SetActive(m_pointed = PictureAt(event->pos()));
  if (m_interactor && m_pointed == before && m_interactor->OnPress(*event)) return;
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
  if (m_drag == DragKind::kMenu || m_pointed == kInset) return;
  LeaveCamera();
  OrbitEye& eye = m_pictures[m_active].UseEye();
  const double side = std::max(GetPlace(m_active).height(), 1);
  const double x = by.x() / side, y = by.y() / side;
  if (m_drag == DragKind::kOrbit) eye.Orbit(x, y);
  if (m_drag == DragKind::kPan) eye.Pan(x, y, kFieldOfView);
  if (m_drag == DragKind::kDolly) eye.Dolly(std::exp(3.0 * (y - x)));
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
  event->accept();
  const std::size_t picture = PictureAt(event->position().toPoint());
  if (picture == kInset) return;
  SetActive(picture);
  LeaveCamera();
  m_pictures[m_active].UseEye().Dolly(std::pow(kWheelFactor, event->angleDelta().y() / 120.0));
  update();
}

bool StageView::event(QEvent* event) {
  if (event->type() == kHurry) {
    DrawToWindow();
    return true;
  }
  if (event->type() == QEvent::ShortcutOverride && m_interactor &&
      m_interactor->WantsKey(*static_cast<QKeyEvent*>(event)))
    event->accept();
  // Tab would go to the next widget before it comes as a key.
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  if (isKey && m_interactor && m_interactor->OnKey(*static_cast<QKeyEvent*>(event))) return true;
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
      m_pictures[m_active].UseEye().Dolly(event->key() == Qt::Key_PageUp ? kWheelFactor
                                                                         : 1.0 / kWheelFactor);
      return update();
    default:
      if (!keyPressed || !keyPressed(event->key(), shift)) QOpenGLWidget::keyPressEvent(event);
      return;
  }
  LeaveCamera();
  OrbitEye& eye = m_pictures[m_active].UseEye();
  if (shift)
    eye.Pan(x, y, kFieldOfView);
  else
    eye.Orbit(x, y);
  update();
}

/// By the keyboard; the mouse's own comes with the release of the button.
void StageView::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Keyboard && menuWanted)
    menuWanted(mapToGlobal(GetPlace(m_active).center()));
  event->accept();
}

}  // namespace orv::app::view
