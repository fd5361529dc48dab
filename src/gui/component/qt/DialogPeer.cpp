// dialog.
#include <QCloseEvent>
#include <QDialog>
#include <QEventLoop>
#include <QGuiApplication>
#include <QIcon>
#include <QLayout>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include "gui/Texts.h"
#include "gui/component/Dialog.h"
#include "gui/component/qt/ContainerPeer.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

namespace {

/// Closing it is the component's decision.
class DialogWindow : public QDialog {
 public:
  DialogWindow(QWidget* parent, Qt::WindowFlags flags) : QDialog(parent, flags) {}

  void reject() override {
    if (onClose) onClose(true);
  }
  void done(int) override { reject(); }

  std::function<bool(bool byEscape)> onClose;
  std::function<void(bool)> onActive;
  QBrush brush;

 protected:
  void closeEvent(QCloseEvent* event) override { event->setAccepted(!onClose || onClose(false)); }
  bool event(QEvent* event) override {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Show) {
      // Labels that wrap need more than the least height, which knows of no width.
      const int needed = layout() ? layout()->minimumHeightForWidth(width()) : 0;
      if (needed > height()) resize(width(), needed);
    }
    return handled;
  }
  void changeEvent(QEvent* event) override {
    if (event->type() == QEvent::ActivationChange && onActive) onActive(isActiveWindow());
    QDialog::changeEvent(event);
  }
  void paintEvent(QPaintEvent* event) override {
    if (brush.style() == Qt::NoBrush) return QDialog::paintEvent(event);
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
    painter.drawRect(rect());
  }
};

/// The component that has the focus first, if its document names one.
Component* FirstFocus(Component& component) {
  if (component.HasFlag(kInitialFocus)) return &component;
  for (Component* child : component.children())
    if (Component* found = FirstFocus(*child)) return found;
  return nullptr;
}

class DialogPeer : public ContainerPeer, public Dialog::Window {
 public:
  DialogPeer(Component& component, DialogWindow* window)
      : ContainerPeer(component, window, window) {
    window->onClose = [this](bool byEscape) { return !GetComponent() || Held()->Close(byEscape); };
    window->onActive = [this](bool active) { SetActive(active); };
    GetLayout()->setSizeConstraint(QLayout::SetMinimumSize);
  }

  void ShowWindow(bool shown) override {
    DialogWindow* window = View();
    if (!window) return;
    if (shown && !window->isVisible()) {
      Place();
      window->setWindowModality(Held()->IsModal() ? Qt::WindowModal : Qt::NonModal);
      if (Held()->IsModal() && !window->parentWidget())
        window->setWindowModality(Qt::ApplicationModal);
      if (Component* first = FirstFocus(*GetComponent())) first->TakeFocus();
    }
    window->setVisible(shown);
  }

  void RaiseWindow() override {
    if (!View()) return;
    if (View()->isMinimized()) View()->setWindowState(View()->windowState() & ~Qt::WindowMinimized);
    View()->raise();
    View()->activateWindow();
  }

  void RunLoop() override {
    QEventLoop loop;
    m_loop = &loop;
    loop.exec();
    m_loop = nullptr;
  }
  void EndLoop() override {
    if (m_loop) m_loop->quit();
  }

  std::string ReadGeometry() const override {
    return View() ? View()->saveGeometry().toBase64().toStdString() : std::string();
  }
  bool WriteGeometry(const std::string& geometry) override {
    m_placed = View() && View()->restoreGeometry(QByteArray::fromBase64(
                             QByteArray(geometry.data(), static_cast<int>(geometry.size()))));
    return m_placed;
  }
  void FitWindow() override {
    if (!View()) return;
    GetLayout()->activate();
    View()->resize(View()->sizeHint());
  }

 protected:
  BoxLook GetLook() const override {
    BoxLook look{false, Held()->GetPadding(), Held()->GetSpacing()};
    if (look.spacing == kUnset) look.spacing = 8;
    return look;
  }

  void UpdateContent(unsigned changes) override {
    ContainerPeer::UpdateContent(changes);
    DialogWindow* window = View();
    if (changes & kLabelChange) window->setWindowTitle(ToQt(Held()->GetShownLabel()));
    if ((changes & kImageChange) && !Held()->GetIcon().empty())
      window->setWindowIcon(LoadIcon(*GetComponent(), Held()->GetIcon(), *window));
    if (changes & kStyleChange) {
      window->brush = GetBrush();
      window->update();
    }
    if (changes == kAllChanges && !Held()->GetHeldGeometry().empty())
      WriteGeometry(Held()->GetHeldGeometry());
  }

  void Detached() override { EndLoop(); }

 private:
  Dialog* Held() const { return static_cast<Dialog*>(GetComponent()); }
  DialogWindow* View() const { return static_cast<DialogWindow*>(GetWidget()); }

  /// At first as large as the document or the content wishes, but within the screen.
  void Place() {
    if (std::exchange(m_placed, true)) return;
    const Attributes& a = GetComponent()->GetAttributes();
    QSize size = View()->sizeHint();
    if (a.desiredWidth != kUnset) size.setWidth(std::max(Scaled(a.desiredWidth), size.width()));
    if (a.desiredHeight != kUnset) size.setHeight(Scaled(a.desiredHeight));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    View()->resize(size.expandedTo(View()->minimumSizeHint()).boundedTo(screen.size()));
    if (m_left != kUnset && m_top != kUnset) View()->move(Scaled(m_left), Scaled(m_top));
  }

  QEventLoop* m_loop = nullptr;
  bool m_placed = false;
  const int m_left = GetComponent()->GetAttributes().left;
  const int m_top = GetComponent()->GetAttributes().top;
};

}  // namespace

std::unique_ptr<Peer> MakeDialog(Component& component, QWidget* parent) {
  const auto& dialog = static_cast<const Dialog&>(component);
  Qt::WindowFlags flags = parent ? Qt::Dialog : Qt::Window;
  if (dialog.HasTitleBar()) {
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    if (dialog.HasCloseButton()) flags |= Qt::WindowCloseButtonHint;
    if (dialog.HasMinimizeButton()) flags |= Qt::WindowMinMaxButtonsHint;
  } else {
    flags |= Qt::FramelessWindowHint;
  }
  return std::make_unique<DialogPeer>(component, new DialogWindow(parent, flags));
}

}  // namespace orv::gui::component::qt
