// Events of all widgets that make messages of any component.
#pragma once

#include <QObject>

class QWidget;

namespace orv::gui::component::qt {

class QtPeer;

/// One for the process: where widgets stand, the focus, context menus, files dropped.
class Watcher : public QObject {
 public:
  static Watcher& Instance();
  void Watch(QWidget& widget);
  /// Tab follows the tree from the next turn of the event loop on.
  void OrderTabs(QtPeer& peer);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  Watcher();
};

}  // namespace orv::gui::component::qt
