#include "gui/component/qt/Watcher.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QSet>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include "gui/GuiMessages.h"
#include "gui/component/qt/QtPeer.h"
#include "gui/component/qt/Scale.h"

namespace orv::gui::component::qt {

namespace {

void TellPlace(QtPeer& peer, const QWidget& widget) {
  Component& component = *peer.GetComponent();
  const QRect place = widget.geometry();
  const int left = Unscaled(place.x()), top = Unscaled(place.y());
  const int width = Unscaled(place.width()), height = Unscaled(place.height());
  if (component.GetLeft() == left && component.GetTop() == top && component.GetWidth() == width &&
      component.GetHeight() == height)
    return;
  component.Moved(left, top, width, height);
}

std::vector<std::string> FilesOf(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdString());
  return paths;
}

/// Tells the component in or around a widget that the focus has come or gone.
void TellFocus(const QWidget* widget, GuiMessage message) {
  while (widget && !QtPeer::At(widget)) widget = widget->parentWidget();
  if (widget) QtPeer::At(widget)->GetComponent()->Post(message);
}

void CollectTabs(Component& component, QWidget*& last) {
  QtPeer* peer = QtPeer::Of(component);
  QWidget* widget = peer ? peer->GetFocusWidget() : nullptr;
  if (widget && widget->focusPolicy() & Qt::TabFocus) {
    if (last) QWidget::setTabOrder(last, widget);
    last = widget;
  }
  for (Component* child : component.children()) CollectTabs(*child, last);
}

}  // namespace

Watcher& Watcher::Instance() {
  // Lives as long as the application, whose widgets it watches.
  static QPointer<Watcher> watcher;
  if (!watcher) watcher = new Watcher;
  return *watcher;
}

Watcher::Watcher() : QObject(qApp) {
  connect(qApp, &QApplication::focusChanged, this, [](QWidget* old, QWidget* now) {
    const QPointer<QWidget> gained = now;
    TellFocus(old, kMsgFocusLost);
    TellFocus(gained, kMsgFocusGained);
  });
}

void Watcher::Watch(QWidget& widget) {
  widget.installEventFilter(this);
  connect(&widget, &QObject::destroyed, [](QObject* gone) { QtPeer::Forget(gone); });
}

void Watcher::OrderTabs(QtPeer& peer) {
  QWidget* root = peer.GetComponent()->GetRoot().GetPeer()
                      ? QtPeer::Of(peer.GetComponent()->GetRoot())->GetWidget()
                      : nullptr;
  static QSet<QWidget*> waiting;
  if (!root || waiting.contains(root)) return;
  waiting.insert(root);
  const QPointer<QWidget> guarded = root;
  QTimer::singleShot(0, this, [guarded, root] {
    waiting.remove(root);
    QWidget* last = nullptr;
    if (QtPeer* peer = guarded ? QtPeer::At(guarded) : nullptr)
      CollectTabs(*peer->GetComponent(), last);
  });
}

bool Watcher::eventFilter(QObject* object, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
      if (QtPeer* peer = QtPeer::At(object)) TellPlace(*peer, *static_cast<QWidget*>(object));
      return false;
    case QEvent::PaletteChange:
    case QEvent::FontChange:
      if (QtPeer* peer = QtPeer::At(object)) peer->Restyle();
      return false;
    case QEvent::ContextMenu: {
      QtPeer* peer = QtPeer::At(object);
      if (!peer || peer->HandlesMenu() || !peer->GetComponent()->GetPopup()) return false;
      const auto& menu = *static_cast<QContextMenuEvent*>(event);
      peer->OpenPopupAt(menu.globalPos());
      return true;
    }
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
      QtPeer* peer = QtPeer::At(object);
      if (!peer || !peer->GetComponent()->TakesFiles()) return false;
      auto& drop = *static_cast<QDropEvent*>(event);
      FilesDropped files{FilesOf(*drop.mimeData())};
      if (files.paths.empty()) return false;
      drop.acceptProposedAction();
      if (event->type() == QEvent::Drop) peer->GetComponent()->Post(kMsgFilesDropped, 0, &files);
      return true;
    }
    default:
      return false;
  }
}

}  // namespace orv::gui::component::qt
