#include "app/studio/script/ScriptTarget.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QTreeView>
#include <algorithm>

#include "app/studio/script/ScriptLine.h"

namespace orv::app {

namespace {

QString Text(const std::string& value) {
  return QString::fromStdString(value);
}

/// As people read it: without the marks of mnemonics.
QString Plain(QString label) {
  label.replace("&&", QChar(1)).remove('&').replace(QChar(1), "&");
  const int tab = label.indexOf('\t');
  return tab < 0 ? label : label.left(tab);
}

bool IsNamed(QWidget& widget, const std::string& name) {
  return AccessibleNameOf(widget) == name;
}

/// In the order in which they are painted, which is that of their making.
QWidget* FindWidget(QWidget& window, const ScriptLine& line) {
  QList<QWidget*> all = window.findChildren<QWidget*>();
  all.prepend(&window);
  for (QWidget* widget : all) {
    if (!widget->isVisible()) continue;
    if (line.Has("id") && widget->objectName() != Text(line.Value("id"))) continue;
    if (line.Has("name") && !IsNamed(*widget, line.Value("name"))) continue;
    return widget;
  }
  return nullptr;
}

void ScrollTo(QWidget& widget) {
  for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(around)) area->ensureWidgetVisible(&widget);
}

/// The item whose texts lead down from the top, each part the text of the first column of a row.
QModelIndex FindRow(const QAbstractItemModel& model, const QString& path) {
  QModelIndex found;
  for (const QString& part : path.split('/')) {
    QModelIndex next;
    for (int row = 0; row < model.rowCount(found) && !next.isValid(); ++row)
      for (int column = 0; column < model.columnCount(found) && !next.isValid(); ++column) {
        const QModelIndex index = model.index(row, column, found);
        if (index.data().toString() == part) next = model.index(row, 0, found);
      }
    if (!next.isValid()) return {};
    found = next;
  }
  return found;
}

ScriptTarget RowTarget(QWidget& widget, const ScriptLine& line) {
  auto* view = qobject_cast<QAbstractItemView*>(&widget);
  if (!view) view = widget.findChild<QAbstractItemView*>();
  if (!view || !view->model()) return {nullptr, {}, "it has no rows"};
  QModelIndex index = FindRow(*view->model(), Text(line.Value("row")));
  if (!index.isValid()) return {nullptr, {}, "it has no row \"" + line.Value("row") + "\""};
  if (line.Has("column")) index = index.sibling(index.row(), Text(line.Value("column")).toInt());
  if (auto* tree = qobject_cast<QTreeView*>(view))
    for (QModelIndex up = index.parent(); up.isValid(); up = up.parent()) tree->expand(up);
  // What a command before this one has brought about may yet have to find its place.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  view->scrollTo(index);
  const QRect rect = view->visualRect(index) & view->viewport()->rect();
  if (!rect.isValid()) return {nullptr, {}, "the row is hidden"};
  return {view->viewport(), rect.center(), {}};
}

/// What a script would call it: its own id or that of what it is part of.
std::string IdOf(const QWidget& widget) {
  const QWidget* named = &widget;
  while (named->parentWidget() &&
         (named->objectName().isEmpty() || named->objectName().startsWith("qt_")))
    named = named->parentWidget();
  return named->objectName().toStdString();
}

/// The first row of this path in any list or tree that the windows show.
ScriptTarget RowInAny(const QList<QWidget*>& windows, const ScriptLine& line) {
  std::string searched;
  for (QWidget* window : windows) {
    for (auto* view : window->findChildren<QAbstractItemView*>()) {
      if (!view->isVisible() || qobject_cast<QHeaderView*>(view)) continue;
      const ScriptTarget target = RowTarget(*view, line);
      if (target.widget) return target;
      searched += (searched.empty() ? "id=" : ", id=") + IdOf(*view);
    }
  }
  if (searched.empty()) return {nullptr, {}, "no tree is shown"};
  return {nullptr, {}, "no row \"" + line.Value("row") + "\" is in what is shown: " + searched};
}

template <class MenuWidget>
ScriptTarget ActionTarget(const QList<MenuWidget*>& menus, const std::string& wanted) {
  for (MenuWidget* menu : menus)
    for (QAction* action : menu->actions())
      if (menu->isVisible() && action->isVisible() && Plain(action->text()) == Text(wanted))
        return action->isEnabled() ? ScriptTarget{menu, menu->actionGeometry(action).center(), {}}
                                   : ScriptTarget{nullptr, {}, "\"" + wanted + "\" is disabled"};
  return {nullptr, {}, "no menu shows \"" + wanted + "\""};
}

ScriptTarget MenuTarget(const ScriptLine& line) {
  if (line.Has("menu")) {
    QWidget* window = WindowNamed(line.Value("win"));
    if (!window) return {nullptr, {}, "there is no such window"};
    return ActionTarget(window->findChildren<QMenuBar*>(), line.Value("menu"));
  }
  QList<QMenu*> menus;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* menu = qobject_cast<QMenu*>(widget)) menus.append(menu);
  return ActionTarget(menus, line.Value("action"));
}

}  // namespace

std::string AccessibleNameOf(QWidget& widget) {
  if (!widget.accessibleName().isEmpty()) return Plain(widget.accessibleName()).toStdString();
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
  return accessible ? Plain(accessible->text(QAccessible::Name)).toStdString() : std::string();
}

QList<QWidget*> ShownWindows() {
  QList<QWidget*> shown;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->isVisible() && widget->windowType() != Qt::ToolTip) shown.append(widget);
  std::stable_sort(shown.begin(), shown.end(), [](const QWidget* a, const QWidget* b) {
    return a->objectName() < b->objectName();
  });
  return shown;
}

QWidget* WindowNamed(const std::string& name) {
  if (name.empty()) {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
  }
  for (QWidget* window : ShownWindows())
    if (name.empty() || window->objectName() == Text(name)) return window;
  return nullptr;
}

ScriptTarget FindTarget(const ScriptLine& line) {
  if (line.Has("menu") || line.Has("action")) return MenuTarget(line);
  QList<QWidget*> windows;
  if (line.Has("win")) {
    windows = {WindowNamed(line.Value("win"))};
    if (!windows[0]) return {nullptr, {}, "no window \"" + line.Value("win") + "\" is shown"};
  } else {
    windows = ShownWindows();
    if (QWidget* front = WindowNamed({})) {
      windows.removeOne(front);
      windows.prepend(front);
    }
    if (QWidget* modal = QApplication::activeModalWidget()) windows = {modal};
  }
  if (line.Has("row") && !line.Has("id") && !line.Has("name")) return RowInAny(windows, line);
  QWidget* widget = nullptr;
  for (QWidget* window : windows)
    if (!widget) widget = FindWidget(*window, line);
  if (!widget) return {nullptr, {}, "nothing that is shown has this id or name"};
  if (line.Has("row")) return RowTarget(*widget, line);
  ScrollTo(*widget);
  ScriptTarget target{widget, widget->rect().center(), {}};
  const QStringList at = Text(line.Value("at")).split(',');
  if (at.size() == 2) target.point = {at[0].toInt(), at[1].toInt()};
  // A check box takes clicks on its box and text alone.
  if (qobject_cast<QAbstractButton*>(widget) && !line.Has("at"))
    target.point.setX(std::min(target.point.x(), widget->sizeHint().width() / 2));
  return target;
}

}  // namespace orv::app
