// A component's menu entries as actions.
#pragma once

#include <QKeySequence>
#include <QList>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "gui/Component.h"

class QAction;
class QMenu;
class QWidget;

namespace orv::gui::component::qt {

/// Fills a menu or menu bar and keeps it up to date. Menus and actions that stay are kept as
/// objects, so that one may be refilled while it opens.
class MenuActions {
 public:
  /// `component` gives the one whose entries they are, or null once it has gone; `owner` is its
  /// widget.
  MenuActions(QWidget& owner, std::function<Component*()> component)
      : m_owner(owner), m_component(std::move(component)) {}

  /// `holder` is a QMenu or QMenuBar. With `sameImages` icons that are there stay.
  void Fill(QWidget& holder, const std::vector<MenuItem>& items, bool sameImages = false);
  /// Has the entries' shortcuts work while the focus is in `widget`.
  void ServeShortcuts(QWidget& widget, const std::vector<MenuItem>& items);

 private:
  void FillAt(QWidget& holder, const std::vector<MenuItem>& items, const std::string& path);
  static void Arrange(QWidget& holder, const QList<QAction*>& wanted);
  QAction* ActionOf(const MenuItem& item, QWidget& owner);
  QMenu* MenuOf(const MenuItem& item, const std::string& path, QWidget& holder);
  void Describe(QAction& action, const MenuItem& item);
  void Chosen(int id, bool checked);

  QWidget& m_owner;
  bool m_sameImages = false;  ///< while it fills
  std::function<Component*()> m_component;
  std::map<int, QAction*> m_actions;      ///< by the item's id
  std::map<std::string, QMenu*> m_menus;  ///< by the menu's id, or its place
};

}  // namespace orv::gui::component::qt
