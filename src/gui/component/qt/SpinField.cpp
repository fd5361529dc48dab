#include "gui/component/qt/SpinField.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>
#include <cmath>

#include "gui/Texts.h"
#include "gui/component/Spinner.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

constexpr int kArrowWidth = 14;      ///< px at 96 dpi
constexpr int kMargin = 6;           ///< px at 96 dpi, before and behind the number
constexpr int kPixelsAStep = 4;      ///< of a drag, at 96 dpi
constexpr int kRepeatDelay = 400;    ///< ms until a held arrow repeats
constexpr int kRepeatInterval = 50;  ///< ms

double Factor(Qt::KeyboardModifiers modifiers) {
  if (modifiers & Qt::ControlModifier) return 10.0;
  return modifiers & Qt::ShiftModifier ? 0.1 : 1.0;
}

}  // namespace

SpinField::SpinField(Spinner& spinner, QWidget* parent) : QWidget(parent), m_spinner(&spinner) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setAttribute(Qt::WA_InputMethodEnabled);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setForegroundRole(QPalette::Text);
  connect(&m_repeat, &QTimer::timeout, this, [this] {
    if (m_wheeling) return EndSteps(false);
    m_repeat.setInterval(kRepeatInterval);
    Step(m_part == Part::kUp ? 1.0 : -1.0);
  });
}

void SpinField::Release() {
  m_spinner = nullptr;
  m_repeat.stop();
  if (m_editor) m_editor->removeEventFilter(this);
}

bool SpinField::CanEdit() const {
  return m_spinner && isEnabled() && !m_spinner->IsReadOnly();
}

QString SpinField::ShownText() const {
  if (!m_spinner) return {};
  QString text = QString::fromStdString(m_spinner->GetShownText());
  const std::string& unit = m_spinner->GetUnit();
  if (!unit.empty()) text += ' ' + QString::fromStdString(unit);
  return text;
}

void SpinField::RangeChanged() {
  m_digitWidth = 0;
  updateGeometry();
}

void SpinField::Refresh() {
  if (IsEditing() && !m_editor->isModified() && m_spinner) {
    m_editor->setText(QString::fromStdString(m_spinner->GetShownText()));
    m_editor->setModified(false);
  }
  update();
}

QSize SpinField::sizeHint() const {
  return Hint(10);
}

QSize SpinField::minimumSizeHint() const {
  return Hint(7);
}

QSize SpinField::Hint(int digits) const {
  if (m_digitWidth == 0) {
    const QFontMetrics metrics(font());
    const std::string unit = m_spinner ? m_spinner->GetUnit() : std::string();
    m_digitWidth = metrics.width('0');
    m_around = QSize(2 * Scaled(kMargin) + Scaled(kArrowWidth), metrics.height() + Scaled(8));
    if (!unit.empty())
      m_around.rwidth() += metrics.width(' ' + QString::fromStdString(unit)) + Scaled(2);
  }
  return m_around + QSize(digits * m_digitWidth, 0);
}

void SpinField::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) m_digitWidth = 0;
  QWidget::changeEvent(event);
}

QRect SpinField::ArrowRect() const {
  return QRect(width() - Scaled(kArrowWidth) - 1, 1, Scaled(kArrowWidth), height() - 2);
}

QRect SpinField::TextRect() const {
  return rect().adjusted(Scaled(kMargin), 1, -Scaled(kArrowWidth) - 2, -1);
}

SpinField::Part SpinField::PartAt(const QPoint& place) const {
  if (!CanEdit() || !ArrowRect().contains(place)) return Part::kText;
  return place.y() < height() / 2 ? Part::kUp : Part::kDown;
}

void SpinField::PaintArrows(QPainter& painter) const {
  const QRect area = ArrowRect();
  const int size = Scaled(3);
  for (const Part part : {Part::kUp, Part::kDown}) {
    const bool up = part == Part::kUp;
    const int middle = area.top() + area.height() * (up ? 1 : 3) / 4;
    const int tip = up ? -1 : 1;
    const QPointF x(area.center().x() + 0.5, middle + 0.5);
    const QPolygonF arrow({x + QPointF(-size, -tip * size / 2.0),
                           x + QPointF(size, -tip * size / 2.0), x + QPointF(0, tip * size / 2.0)});
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        ToneOf(palette(), m_hovered && m_hover == part ? Tone::kText : Tone::kWeakText));
    painter.drawPolygon(arrow);
  }
}

void SpinField::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const bool focus = hasFocus() || IsEditing();
  const QColor frame = m_invalid ? ToneOf(palette(), Tone::kError)
                       : focus   ? ToneOf(palette(), Tone::kAccent)
                                 : ToneOf(palette(), Tone::kLine);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(frame);
  painter.setBrush(
      palette().brush(m_spinner && m_spinner->IsReadOnly() ? QPalette::Window : QPalette::Base));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Scaled(2), Scaled(2));
  if (CanEdit() && (m_hovered || focus)) PaintArrows(painter);
  if (IsEditing()) return;
  const bool marked = m_spinner && m_spinner->IsMarked() && isEnabled();
  painter.setPen(marked ? ToneOf(palette(), Tone::kAccent) : palette().color(QPalette::Text));
  const QRect area = TextRect();
  painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(ShownText(), Qt::ElideRight, area.width()));
}

void SpinField::resizeEvent(QResizeEvent*) {
  if (m_editor) m_editor->setGeometry(TextRect());
}

void SpinField::BeginTyping(const QString& first) {
  if (!CanEdit() || (IsEditing() && m_editor->hasFocus())) return;
  if (!m_editor) {
    m_editor = new QLineEdit(this);
    m_editor->setFrame(false);
    m_editor->setFocusPolicy(Qt::ClickFocus);
    m_editor->setTextMargins(0, 0, 0, 0);
    m_editor->installEventFilter(this);
    connect(m_editor.data(), &QLineEdit::textEdited, this, [this] { Typed(); });
  }
  m_editor->setAccessibleName(accessibleName());
  m_editor->setGeometry(TextRect().adjusted(-2, 0, 0, 0));
  m_editor->setText(QString::fromStdString(m_spinner->GetShownText()));
  m_editor->setModified(false);
  m_editor->show();
  m_editor->setFocus(Qt::OtherFocusReason);
  m_editor->selectAll();
  if (!first.isEmpty()) {
    m_editor->insert(first);
    m_editor->setModified(true);
    Typed();
  }
  update();
}

void SpinField::Typed() {
  if (!m_spinner) return;
  m_spinner->SetTyping(true);
  double value = 0.0;
  MarkInvalid(!m_spinner->ReadText(m_editor->text().toStdString(), value));
}

void SpinField::MarkInvalid(bool invalid) {
  if (m_invalid == invalid) return;
  m_invalid = invalid;
  QPalette colors;
  if (invalid) colors.setColor(QPalette::Text, ToneOf(palette(), Tone::kError));
  m_editor->setPalette(colors);
  m_editor->setToolTip(
      invalid ? QString::fromStdString(Translate("This is no number. Esc brings the old one back."))
              : QString());
  update();
}

void SpinField::EndTyping(bool take) {
  if (!m_editor || !m_spinner) return;
  double value = 0.0;
  const bool changed =
      m_editor->isModified() && take && m_spinner->ReadText(m_editor->text().toStdString(), value);
  MarkInvalid(false);
  m_editor->setModified(false);
  m_spinner->SetTyping(false);
  if (changed && (!m_spinner->EnterByUser(value) || !m_spinner)) return;
  Refresh();
}

void SpinField::LeaveEditor(bool next) {
  EndTyping(true);
  if (!m_spinner) return;
  m_quiet = true;
  setFocus(Qt::OtherFocusReason);
  if (m_editor) m_editor->hide();
  m_quiet = false;
  focusNextPrevChild(next);
}

void SpinField::Step(double steps) {
  if (!CanEdit()) return;
  if (IsEditing()) EndTyping(true);
  if (!m_spinner) return;
  if (!m_stepping) {
    m_stepping = true;
    if (!m_spinner->BeginDrag() || !m_spinner) return;
  }
  m_spinner->EnterByUser(m_spinner->Stepped(m_spinner->GetValue(), steps));
  if (m_spinner && IsEditing()) m_editor->selectAll();
}

void SpinField::EndSteps(bool cancelled) {
  m_repeat.stop();
  m_wheeling = false;
  if (std::exchange(m_stepping, false) && m_spinner) m_spinner->EndDrag(cancelled);
}

bool SpinField::HandleKey(QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_PageUp:
      Step((event.key() == Qt::Key_PageUp ? 10.0 : 1.0) * Factor(event.modifiers()));
      return true;
    case Qt::Key_Down:
    case Qt::Key_PageDown:
      Step((event.key() == Qt::Key_PageDown ? -10.0 : -1.0) * Factor(event.modifiers()));
      return true;
    case Qt::Key_Escape:
      if (m_dragging || m_stepping) {
        m_dragging = m_pressed = false;
        if (m_stepping)
          EndSteps(true);
        else
          m_spinner->EndDrag(true);
        return true;
      }
      if (!IsEditing() || !m_editor->isModified()) return false;
      EndTyping(false);
      if (m_spinner && m_editor) m_editor->selectAll();
      return true;
    default:
      return false;
  }
}

bool SpinField::eventFilter(QObject* object, QEvent* event) {
  if (object != m_editor || !m_spinner) return QWidget::eventFilter(object, event);
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      // A hot key of the program must not take what a number is edited with.
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Escape && m_editor->isModified()) event->accept();
      return false;
    }
    case QEvent::KeyPress: {
      auto& key = *static_cast<QKeyEvent*>(event);
      if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) {
        LeaveEditor(key.key() == Qt::Key_Tab);
        return true;
      }
      if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        // An invalid text stays, marked. With nothing typed the window's default button is meant.
        if (!m_editor->isModified()) return false;
        if (!m_invalid) EndTyping(true);
        if (m_spinner && m_editor && !m_invalid) m_editor->selectAll();
        return true;
      }
      return HandleKey(key);
    }
    case QEvent::KeyRelease:
      if (!static_cast<QKeyEvent*>(event)->isAutoRepeat() && m_stepping && !m_wheeling)
        EndSteps(false);
      return false;
    case QEvent::Wheel:
      wheelEvent(static_cast<QWheelEvent*>(event));
      return true;
    case QEvent::FocusOut: {
      const auto reason = static_cast<QFocusEvent*>(event)->reason();
      if (reason == Qt::PopupFocusReason || m_quiet) return false;
      EndSteps(false);
      EndTyping(true);
      // The editor goes with the focus, but not while it is handling its loss.
      if (m_editor && m_spinner)
        QTimer::singleShot(0, m_editor.data(), [this] {
          if (m_editor && !m_editor->hasFocus()) m_editor->hide();
          update();
        });
      return false;
    }
    default:
      return false;
  }
}

void SpinField::keyPressEvent(QKeyEvent* event) {
  if (!m_spinner || !CanEdit()) return QWidget::keyPressEvent(event);
  if (HandleKey(*event)) return;
  const bool enter = event->key() == Qt::Key_F2;
  const QString text = event->text();
  const bool types = !text.isEmpty() && text[0].isPrint() &&
                     !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (enter || types)
    BeginTyping(types && !enter ? text : QString());
  else
    QWidget::keyPressEvent(event);
}

void SpinField::keyReleaseEvent(QKeyEvent* event) {
  if (!event->isAutoRepeat() && m_stepping && !m_wheeling) EndSteps(false);
  QWidget::keyReleaseEvent(event);
}

void SpinField::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  const Qt::FocusReason reason = event->reason();
  // By Tab one wants to type; the mouse may mean to drag.
  if (!m_quiet && (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason || reason == Qt::OtherFocusReason))
    BeginTyping();
}

void SpinField::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason && !m_dragging) EndSteps(false);
}

void SpinField::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !CanEdit()) return event->ignore();
  if (!hasFocus() && !IsEditing()) {
    m_quiet = true;
    setFocus(Qt::MouseFocusReason);
    m_quiet = false;
  }
  m_part = PartAt(event->pos());
  if (m_part != Part::kText) {
    Step((m_part == Part::kUp ? 1.0 : -1.0) * Factor(event->modifiers()));
    m_repeat.start(kRepeatDelay);
    return;
  }
  m_pressed = true;
  m_pressedAt = event->pos();
}

void SpinField::DragTo(const QMouseEvent& event) {
  const QPoint way = event.pos() - m_pressedAt;
  if (!m_dragging) {
    if (way.manhattanLength() < QApplication::startDragDistance()) return;
    m_dragging = true;
    m_from = m_spinner->GetValue();
    if (!m_spinner->BeginDrag() || !m_spinner) return;
  }
  // To the right and up is more.
  const double steps = std::trunc((way.x() - way.y()) / static_cast<double>(Scaled(kPixelsAStep)));
  m_spinner->EnterByUser(m_spinner->Stepped(m_from, steps * Factor(event.modifiers())));
}

void SpinField::mouseMoveEvent(QMouseEvent* event) {
  if (m_pressed && m_spinner) return DragTo(*event);
  m_hovered = true;
  m_hover = PartAt(event->pos());
  setCursor(CanEdit() && m_hover == Part::kText ? Qt::SizeHorCursor : Qt::ArrowCursor);
  update();
}

void SpinField::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (m_stepping) EndSteps(false);
  if (!std::exchange(m_pressed, false) || !m_spinner) return;
  if (std::exchange(m_dragging, false))
    m_spinner->EndDrag(false);
  else
    BeginTyping();
}

void SpinField::leaveEvent(QEvent*) {
  m_hovered = false;
  update();
}

void SpinField::wheelEvent(QWheelEvent* event) {
  // Without the focus it scrolls what the field lies in.
  if (!CanEdit() || !(hasFocus() || IsEditing())) return event->ignore();
  const int turn = event->angleDelta().y();
  if (turn == 0) return event->ignore();
  event->accept();
  m_wheeling = true;
  Step(turn / 120.0 * Factor(event->modifiers()));
  m_repeat.start(kWheelPause);
}

namespace {

class SpinnerPeer : public PeerOf<Spinner, SpinField> {
 public:
  SpinnerPeer(Component& component, SpinField* field) : PeerOf(component, field) {}

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & (kStyleChange)) ApplyTextStyle(*View(), Held()->GetAttributes().style, false);
    if (changes & (kRangeChange | kValueChange | kMarkChange)) View()->Refresh();
    if (changes & kRangeChange) View()->RangeChanged();
  }
  void Detached() override {
    if (View()) View()->Release();
  }
};

}  // namespace

std::unique_ptr<Peer> MakeSpinner(Component& component, QWidget* parent) {
  return std::make_unique<SpinnerPeer>(component,
                                       new SpinField(static_cast<Spinner&>(component), parent));
}

}  // namespace orv::gui::component::qt
