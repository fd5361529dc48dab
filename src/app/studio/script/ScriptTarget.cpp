#include "app/studio/script/ScriptTarget.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QTreeView>
#include <algorithm>

#include "app/studio/script/ScriptLine.h"

namespace orv::app {

namespace {

QString text(const std::string& value) {
  return QString::fromStdString(value);
}

/// As people read it: without the marks of mnemonics.
QString plain(QString label) {
  label.replace("&&", QChar(1)).remove('&').replace(QChar(1), "&");
  const int tab = label.indexOf('\t');
  return tab < 0 ? label : label.left(tab);
}

bool isNamed(QWidget& widget, const std::string& name) {
  return accessibleNameOf(widget) == name;
}

/// In the order in which they are painted, which is that of their making.
QWidget* findWidget(QWidget& window, const ScriptLine& line) {
  QList<QWidget*> all = window.findChildren<QWidget*>();
  all.prepend(&window);
  for (QWidget* widget : all) {
    if (!widget->isVisible()) continue;
    if (line.has("id") && widget->objectName() != text(line.value("id"))) continue;
    if (line.has("name") && !isNamed(*widget, line.value("name"))) continue;
    return widget;
  }
  return nullptr;
}

void scrollTo(QWidget& widget) {
  for (QWidget* around = widget.parentWidget(); around; around = around->parentWidget())
    if (auto* area = qobject_cast<QScrollArea*>(around)) area->ensureWidgetVisible(&widget);
}

/// The item whose texts lead down from the top, each part the text of the first column of a row.
QModelIndex findRow(const QAbstractItemModel& model, const QString& path) {
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

ScriptTarget rowTarget(QWidget& widget, const ScriptLine& line) {
  auto* view = qobject_cast<QAbstractItemView*>(&widget);
  if (!view) view = widget.findChild<QAbstractItemView*>();
  if (!view || !view->model()) return {nullptr, {}, "it has no rows"};
  QModelIndex index = findRow(*view->model(), text(line.value("row")));
  if (!index.isValid()) return {nullptr, {}, "it has no row \"" + line.value("row") + "\""};
  if (line.has("column")) index = index.sibling(index.row(), text(line.value("column")).toInt());
  if (auto* tree = qobject_cast<QTreeView*>(view))
    for (QModelIndex up = index.parent(); up.isValid(); up = up.parent()) tree->expand(up);
  view->scrollTo(index);
  const QRect rect = view->visualRect(index);
  if (!rect.isValid()) return {nullptr, {}, "the row is hidden"};
  return {view->viewport(), rect.center(), {}};
}

template <class MenuWidget>
ScriptTarget actionTarget(const QList<MenuWidget*>& menus, const std::string& wanted) {
  for (MenuWidget* menu : menus)
    for (QAction* action : menu->actions())
      if (menu->isVisible() && action->isVisible() && plain(action->text()) == text(wanted))
        return action->isEnabled() ? ScriptTarget{menu, menu->actionGeometry(action).center(), {}}
                                   : ScriptTarget{nullptr, {}, "\"" + wanted + "\" is disabled"};
  return {nullptr, {}, "no menu shows \"" + wanted + "\""};
}

ScriptTarget menuTarget(const ScriptLine& line) {
  if (line.has("menu")) {
    QWidget* window = windowNamed(line.value("win"));
    if (!window) return {nullptr, {}, "there is no such window"};
    return actionTarget(window->findChildren<QMenuBar*>(), line.value("menu"));
  }
  QList<QMenu*> menus;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* menu = qobject_cast<QMenu*>(widget)) menus.append(menu);
  return actionTarget(menus, line.value("action"));
}

}  // namespace

std::string accessibleNameOf(QWidget& widget) {
  if (!widget.accessibleName().isEmpty()) return plain(widget.accessibleName()).toStdString();
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget);
  return accessible ? plain(accessible->text(QAccessible::Name)).toStdString() : std::string();
}

QList<QWidget*> shownWindows() {
  QList<QWidget*> shown;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (widget->isVisible() && widget->windowType() != Qt::ToolTip) shown.append(widget);
  std::stable_sort(shown.begin(), shown.end(), [](const QWidget* a, const QWidget* b) {
    return a->objectName() < b->objectName();
  });
  return shown;
}

QWidget* windowNamed(const std::string& name) {
  if (name.empty()) {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (QWidget* active = QApplication::activeWindow()) return active;
  }
  for (QWidget* window : shownWindows())
    if (name.empty() || window->objectName() == text(name)) return window;
  return nullptr;
}

ScriptTarget findTarget(const ScriptLine& line) {
  if (line.has("menu") || line.has("action")) return menuTarget(line);
  QWidget* widget = nullptr;
  if (line.has("win")) {
    QWidget* window = windowNamed(line.value("win"));
    if (!window) return {nullptr, {}, "no window \"" + line.value("win") + "\" is shown"};
    widget = findWidget(*window, line);
  } else {
    QList<QWidget*> windows = shownWindows();
    if (QWidget* front = windowNamed({})) windows.prepend(front);
    if (QWidget* modal = QApplication::activeModalWidget()) windows = {modal};
    for (QWidget* window : windows)
      if (!widget) widget = findWidget(*window, line);
  }
  if (!widget) return {nullptr, {}, "nothing that is shown has this id or name"};
  if (line.has("row")) return rowTarget(*widget, line);
  scrollTo(*widget);
  ScriptTarget target{widget, widget->rect().center(), {}};
  const QStringList at = text(line.value("at")).split(',');
  if (at.size() == 2) target.point = {at[0].toInt(), at[1].toInt()};
  // A check box takes clicks on its box and text alone.
  if (qobject_cast<QAbstractButton*>(widget) && !line.has("at"))
    target.point.setX(std::min(target.point.x(), widget->sizeHint().width() / 2));
  return target;
}

}  // namespace orv::app
