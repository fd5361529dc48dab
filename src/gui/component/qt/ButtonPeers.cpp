// button, flmbutton and checkbox.
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include "gui/GuiMessages.h"
#include "gui/component/Button.h"
#include "gui/component/CheckBox.h"
#include "gui/component/FlmButton.h"
#include "gui/component/qt/BoxLayout.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

using componentinterface::ButtonImage;
using componentinterface::CheckState;

namespace {

void PressOnEnter(QAbstractButton& button, QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return event->ignore();
  button.click();
  event->accept();
}

class PushButton : public QPushButton {
 public:
  explicit PushButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
  }

  /// Behind a flat one or one with a background of its own; none: the style draws the frame.
  std::function<QBrush()> brush;

  QSize sizeHint() const override {
    QSize size = QPushButton::sizeHint();
    // A style's least width would move a short label away from the left edge.
    if (isFlat() && icon().isNull())
      size.setWidth(fontMetrics().size(Qt::TextShowMnemonic, text()).width() + 2 * Scaled(4));
    return size;
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
      PressOnEnter(*this, event);
    else
      QPushButton::keyPressEvent(event);
  }

  void paintEvent(QPaintEvent* event) override {
    const QBrush own = brush ? brush() : QBrush();
    if (!isFlat() && own.style() == Qt::NoBrush) {
      QPushButton::paintEvent(event);
      PaintFocus();
      return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(hasFocus() ? QPen(ToneOf(palette(), Tone::kAccent)) : QPen(Qt::NoPen));
    painter.setBrush(own);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Scaled(3), Scaled(3));
    QStyleOptionButton option;
    initStyleOption(&option);
    option.state &= ~QStyle::State_HasFocus;
    style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
  }

 private:
  /// Within the frame, whose colour tells the default button.
  void PaintFocus() {
    if (!hasFocus() || !window()->testAttribute(Qt::WA_KeyboardFocusChange)) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ToneOf(palette(), Tone::kAccent));
    const double inset = Scaled(3) - 0.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), 2, 2);
  }
};

class ButtonPeer : public PeerOf<Button, PushButton> {
 public:
  ButtonPeer(Component& component, PushButton* button) : PeerOf(component, button) {
    button->setFlat(Held()->IsFlat());
    button->setCheckable(Held()->IsToggle());
    button->setDefault(Held()->IsDefault());
    // What comes and goes behind a field does not move it.
    if (Held()->IsFlat() && component.GetShownLabel().empty()) {
      QSizePolicy policy = button->sizePolicy();
      policy.setRetainSizeWhenHidden(true);
      button->setSizePolicy(policy);
    }
    button->brush = [this] { return OwnBrush(); };
    QObject::connect(button, &QPushButton::pressed, [this] { Stand(kMsgPressed); });
    QObject::connect(button, &QPushButton::released, [this] { Stand(kMsgReleased); });
    QObject::connect(button, &QPushButton::clicked, [this] {
      // The component turns a toggle itself.
      if (!Held()) return;
      View()->setChecked(Held()->IsDown());
      Held()->Click();
    });
  }

 protected:
  bool HoldsValue() const override { return false; }
  bool DrawsBackground() const override { return true; }

  void UpdateContent(unsigned changes) override {
    PushButton* button = View();
    if (changes & kLabelChange) button->setText(ToQt(Held()->GetShownLabel()));
    if (changes & kValueChange) button->setChecked(Held()->IsDown());
    if (changes & kImageChange) UpdateImage();
    if (changes & (kStyleChange | kMarkChange))
      ApplyTextStyle(*button, Held()->GetAttributes().style, Held()->IsMarked());
  }

 private:
  void Stand(GuiMessage message) {
    if (!Held() || !Held()->Post(message) || !Held()) return;
    UpdateImage();
    SetActive(View()->isDown() || View()->isChecked());
  }

  void UpdateImage() {
    const ButtonImage which = View()->isDown() || View()->isChecked() ? ButtonImage::kPressed
                              : View()->underMouse()                  ? ButtonImage::kHover
                                                                      : ButtonImage::kDefault;
    const std::string& path = Held()->GetImage(which);
    if (path.empty()) return;
    View()->setIcon(LoadIcon(*GetComponent(), path, *View()));
    View()->setIconSize(QSize(Scaled(16), Scaled(16)));
  }

  QBrush OwnBrush() const {
    if (!Held()) return {};
    const bool pressed = View()->isDown() || View()->isChecked();
    const QBrush background = GetBrush();
    if (!Held()->IsFlat()) return background;
    const auto color = [](const Rgba& c) { return QColor(c.r, c.g, c.b, c.a); };
    const QPalette& palette = View()->palette();
    if (pressed)
      return Held()->GetPressedColor() ? color(*Held()->GetPressedColor())
                                       : ToneOf(palette, Tone::kLine);
    if (View()->underMouse() && View()->isEnabled())
      return Held()->GetHoverColor() ? color(*Held()->GetHoverColor())
                                     : ToneOf(palette, Tone::kHover);
    return background;
  }
};

/// Consists of its images; what lies in it stands over them.
class ImageButton : public QAbstractButton {
 public:
  explicit ImageButton(QWidget* parent) : QAbstractButton(parent) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
  }

  std::function<QPixmap(ButtonImage)> image;
  std::function<QBrush()> brush;

  QSize sizeHint() const override {
    const QPixmap pixmap = image(ButtonImage::kDefault);
    QSize size = pixmap.isNull() ? QSize(Scaled(24), Scaled(24)) : Size(pixmap);
    if (layout()) size = size.expandedTo(layout()->sizeHint());
    return size;
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
      PressOnEnter(*this, event);
    else
      QAbstractButton::keyPressEvent(event);
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QBrush behind = brush();
    if (behind.style() != Qt::NoBrush) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(behind);
      painter.drawRect(rect());
    }
    const ButtonImage which = isDown()       ? ButtonImage::kPressed
                              : underMouse() ? ButtonImage::kHover
                                             : ButtonImage::kDefault;
    const QPixmap pixmap = image(which);
    if (!pixmap.isNull()) {
      const QSize size =
          Size(pixmap).scaled(Size(pixmap).boundedTo(this->size()), Qt::KeepAspectRatio);
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.setOpacity(isEnabled() ? 1.0 : 0.4);
      painter.drawPixmap(
          QRect(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size),
          pixmap);
      painter.setOpacity(1.0);
    }
    if (!hasFocus()) return;
    painter.setPen(ToneOf(palette(), Tone::kAccent));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }

 private:
  static QSize Size(const QPixmap& pixmap) {
    const QSize size = pixmap.size() / pixmap.devicePixelRatio();
    return QSize(Scaled(size.width()), Scaled(size.height()));
  }
};

class FlmButtonPeer : public PeerOf<FlmButton, ImageButton> {
 public:
  FlmButtonPeer(Component& component, ImageButton* button) : PeerOf(component, button) {
    button->image = [this](ButtonImage which) {
      return Held() ? LoadPixmap(*Held(), Held()->GetImage(which), *View()) : QPixmap();
    };
    button->brush = [this] { return GetBrush(); };
    QObject::connect(button, &QAbstractButton::pressed, [this] { Stand(kMsgPressed); });
    QObject::connect(button, &QAbstractButton::released, [this] { Stand(kMsgReleased); });
    QObject::connect(button, &QAbstractButton::clicked, [this] {
      if (Held()) Held()->Click();
    });
  }

  void AddChild(Component& child, int) override {
    QtPeer* peer = QtPeer::Of(child);
    if (!peer || !peer->GetWidget()) return;
    // Clicks go through what only decorates the button.
    if (!peer->GetFocusWidget()) peer->GetWidget()->setAttribute(Qt::WA_TransparentForMouseEvents);
    if (!View()->layout()) new BoxLayout(QBoxLayout::TopToBottom, View());
    static_cast<BoxLayout*>(View()->layout())->Insert(GetComponent()->childIndex(&child), *peer);
    if (View()->isVisible() && child.IsVisible()) peer->GetWidget()->show();
  }
  void RemoveChild(Component& child) override {
    if (View() && View()->layout())
      static_cast<BoxLayout*>(View()->layout())->Remove(*QtPeer::Of(child));
  }

 protected:
  bool HoldsValue() const override { return false; }
  bool DrawsBackground() const override { return true; }

  void UpdateContent(unsigned changes) override {
    if (!(changes & kImageChange)) return;
    View()->updateGeometry();
    View()->update();
  }

 private:
  void Stand(GuiMessage message) {
    SetActive(View()->isDown());
    if (Held()) Held()->Post(message);
  }
};

/// Boxes of one paint group take the state of the one that the mouse was pressed on.
class TickBox : public QCheckBox {
 public:
  explicit TickBox(QWidget* parent) : QCheckBox(parent) {}

  std::function<void(CheckState)> onCheck;
  std::function<CheckState()> state;
  std::function<int()> paintGroup;

 protected:
  void nextCheckState() override {
    if (onCheck) onCheck(state() == CheckState::kOn ? CheckState::kOff : CheckState::kOn);
  }

  void mousePressEvent(QMouseEvent* event) override {
    QCheckBox::mousePressEvent(event);
    if (paintGroup() == 0 || event->button() != Qt::LeftButton || !hitButton(event->pos())) return;
    // Painting begins with the press: the box takes its state at once.
    setDown(false);
    m_paint = state() == CheckState::kOn ? CheckState::kOff : CheckState::kOn;
    m_painting = true;
    onCheck(m_paint);
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    if (!m_painting) return QCheckBox::mouseMoveEvent(event);
    auto* under = dynamic_cast<TickBox*>(QApplication::widgetAt(event->globalPos()));
    if (under && under != this && under->isEnabled() && under->window() == window() &&
        under->paintGroup() == paintGroup() && under->state() != m_paint)
      under->onCheck(m_paint);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (!std::exchange(m_painting, false)) QCheckBox::mouseReleaseEvent(event);
  }

 private:
  CheckState m_paint = CheckState::kOff;
  bool m_painting = false;
};

class CheckBoxPeer : public PeerOf<CheckBox, TickBox> {
 public:
  CheckBoxPeer(Component& component, TickBox* box) : PeerOf(component, box) {
    box->onCheck = [this](CheckState state) {
      if (Held()) Held()->CheckByUser(state);
    };
    box->state = [this] { return Held() ? Held()->GetState() : CheckState::kOff; };
    box->paintGroup = [this] { return Held() ? Held()->GetPaintGroup() : 0; };
  }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & kLabelChange) View()->setText(ToQt(Held()->GetShownLabel()));
    if (changes & kValueChange) UpdateState();
    if (changes & kImageChange) UpdateIcon();
    if (changes & (kStyleChange | kMarkChange))
      ApplyTextStyle(*View(), Held()->GetAttributes().style, Held()->IsMarked());
  }

 private:
  void UpdateState() {
    static constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    const CheckState state = Held()->GetState();
    View()->setTristate(state == CheckState::kUndetermined);
    View()->setCheckState(kStates[static_cast<int>(state)]);
    SetActive(state == CheckState::kOn);
    UpdateIcon();
  }

  void UpdateIcon() {
    const std::string& path = Held()->GetIcon(Held()->GetState());
    if (path.empty()) return;
    View()->setIcon(LoadIcon(*GetComponent(), path, *View()));
    View()->setIconSize(QSize(Scaled(16), Scaled(16)));
  }
};

}  // namespace

std::unique_ptr<Peer> MakeButton(Component& component, QWidget* parent) {
  return std::make_unique<ButtonPeer>(component, new PushButton(parent));
}

std::unique_ptr<Peer> MakeFlmButton(Component& component, QWidget* parent) {
  return std::make_unique<FlmButtonPeer>(component, new ImageButton(parent));
}

std::unique_ptr<Peer> MakeCheckBox(Component& component, QWidget* parent) {
  return std::make_unique<CheckBoxPeer>(component, new TickBox(parent));
}

}  // namespace orv::gui::component::qt
