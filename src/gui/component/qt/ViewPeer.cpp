// view and menubar.
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include "gui/component/Menubar.h"
#include "gui/component/View.h"
#include "gui/component/qt/MenuActions.h"
#include "gui/component/qt/Peers.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/ViewArea.h"
#include "gui/component/qt/ViewHandler.h"

namespace orv::gui::component::qt {

void ViewHandler::MousePressed(QMouseEvent& event) {
  event.ignore();
}
void ViewHandler::MouseMoved(QMouseEvent& event) {
  event.ignore();
}
void ViewHandler::MouseReleased(QMouseEvent& event) {
  event.ignore();
}
void ViewHandler::MouseDoubleClicked(QMouseEvent& event) {
  event.ignore();
}
void ViewHandler::Wheel(QWheelEvent& event) {
  event.ignore();
}
void ViewHandler::KeyPressed(QKeyEvent& event) {
  event.ignore();
}
void ViewHandler::KeyReleased(QKeyEvent& event) {
  event.ignore();
}

ViewArea::ViewArea(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void ViewArea::SetHandler(ViewHandler* handler) {
  if (handler != m_handler) {
    delete m_content;
    m_content = handler ? handler->MakeContent(this) : nullptr;
    if (m_content) {
      m_content->setGeometry(rect());
      m_content->show();
    }
  }
  m_handler = handler;
  setFocusPolicy(handler && handler->TakesKeys() ? Qt::StrongFocus : Qt::NoFocus);
  updateGeometry();
  update();
}

QSize ViewArea::sizeHint() const {
  const QSize hint = m_handler ? m_handler->GetSizeHint(*this) : QSize();
  return hint.isValid() ? hint : QSize(Scaled(160), Scaled(80));
}

QSize ViewArea::minimumSizeHint() const {
  const QSize hint = m_handler ? m_handler->GetMinimumSize(*this) : QSize();
  return hint.isValid() ? hint : QSize(0, 0);
}

bool ViewArea::event(QEvent* event) {
  ViewHandler* handler = m_handler;
  if (!handler) return QWidget::event(event);
  switch (event->type()) {
    case QEvent::Paint: {
      QPainter painter(this);
      handler->Paint(painter, *this);
      return true;
    }
    case QEvent::MouseButtonPress:
      if (focusPolicy() & Qt::ClickFocus) setFocus(Qt::MouseFocusReason);
      return Hand(*static_cast<QMouseEvent*>(event), &ViewHandler::MousePressed);
    case QEvent::MouseMove:
      return Hand(*static_cast<QMouseEvent*>(event), &ViewHandler::MouseMoved);
    case QEvent::MouseButtonRelease:
      return Hand(*static_cast<QMouseEvent*>(event), &ViewHandler::MouseReleased);
    case QEvent::MouseButtonDblClick:
      return Hand(*static_cast<QMouseEvent*>(event), &ViewHandler::MouseDoubleClicked);
    case QEvent::Wheel:
      return Hand(*static_cast<QWheelEvent*>(event), &ViewHandler::Wheel);
    case QEvent::KeyPress:
      // What the handler leaves alone is Tab's and the window's.
      if (Hand(*static_cast<QKeyEvent*>(event), &ViewHandler::KeyPressed)) return true;
      break;
    case QEvent::KeyRelease:
      return Hand(*static_cast<QKeyEvent*>(event), &ViewHandler::KeyReleased);
    case QEvent::Leave:
      handler->MouseLeft();
      break;
    case QEvent::Resize:
      if (m_content) m_content->setGeometry(rect());
      handler->Resized(*this);
      break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      handler->FocusChanged(event->type() == QEvent::FocusIn);
      update();
      break;
    case QEvent::ToolTip: {
      const auto& help = *static_cast<QHelpEvent*>(event);
      const QString text = handler->GetTooltip(help.pos());
      if (text.isEmpty()) break;
      QToolTip::showText(help.globalPos(), text, this);
      return true;
    }
    default:
      break;
  }
  return QWidget::event(event);
}

template <class Event>
bool ViewArea::Hand(Event& event, void (ViewHandler::*call)(Event&)) {
  event.accept();
  (m_handler->*call)(event);
  return event.isAccepted();
}

namespace {

class ViewPeer : public PeerOf<component::View, ViewArea> {
 public:
  ViewPeer(Component& component, ViewArea* area) : PeerOf(component, area) {}

 protected:
  void UpdateContent(unsigned changes) override {
    auto* view = dynamic_cast<component::View*>(GetComponent());
    if (changes & kRangeChange)
      View()->SetHandler(view ? dynamic_cast<ViewHandler*>(view->GetHandler()) : nullptr);
    if (changes & kValueChange) View()->update();
  }
  void Detached() override {
    if (View()) View()->SetHandler(nullptr);
  }
};

class MenubarPeer : public PeerOf<Menubar, QMenuBar> {
 public:
  MenubarPeer(Component& component, QMenuBar* bar)
      : PeerOf(component, bar), m_actions(*bar, [this] { return GetComponent(); }) {
    // In the window on every platform, where it belongs to the tree.
    bar->setNativeMenuBar(false);
  }

  QWidget* GetFocusWidget() const override { return nullptr; }

 protected:
  void UpdateContent(unsigned changes) override {
    if (changes & (kMenuChange | kImageChange))
      m_actions.Fill(*View(), Held()->GetMenu().GetItems(), !(changes & kImageChange));
  }

 private:
  MenuActions m_actions;
};

}  // namespace

std::unique_ptr<Peer> MakeView(Component& component, QWidget* parent) {
  return std::make_unique<ViewPeer>(component, new ViewArea(parent));
}

std::unique_ptr<Peer> MakeMenubar(Component& component, QWidget* parent) {
  return std::make_unique<MenubarPeer>(component, new QMenuBar(parent));
}

}  // namespace orv::gui::component::qt
