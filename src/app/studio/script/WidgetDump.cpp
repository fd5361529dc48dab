#include "app/studio/script/WidgetDump.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QMenu>
#include <QMetaEnum>
#include <QWidget>
#include <nlohmann/json.hpp>

#include "app/studio/script/ScriptTarget.h"

namespace orv::app {

namespace {

using nlohmann::json;

/// Buttons and labels say by their size hint how much room their text takes.
bool IsClipped(const QWidget& widget) {
  const auto* label = qobject_cast<const QLabel*>(&widget);
  if (label && label->wordWrap()) return label->heightForWidth(label->width()) > label->height();
  if (!label && !qobject_cast<const QAbstractButton*>(&widget)) return false;
  const QSize hint = widget.minimumSizeHint();
  return hint.width() > widget.width() || hint.height() > widget.height();
}

json DescribeEntries(const QMenu& menu) {
  json entries = json::array();
  for (const QAction* action : menu.actions()) {
    if (action->isSeparator() || !action->isVisible()) continue;
    entries.push_back({{"text", action->text().toStdString()},
                       {"enabled", action->isEnabled()},
                       {"checked", action->isChecked()}});
    if (action->menu()) entries.back()["entries"] = DescribeEntries(*action->menu());
  }
  return entries;
}

json Describe(QWidget& widget) {
  const QPoint at = widget.mapToGlobal({0, 0});
  json entry{{"id", widget.objectName().toStdString()},
             {"class", widget.metaObject()->className()},
             {"name", AccessibleNameOf(widget)},
             {"rect", {at.x(), at.y(), widget.width(), widget.height()}},
             {"enabled", widget.isEnabled()},
             {"focusable", widget.focusPolicy() != Qt::NoFocus},
             {"focus", widget.hasFocus()},
             {"clipped", IsClipped(widget)}};
  if (QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&widget)) {
    const QMetaEnum roles = QMetaEnum::fromType<QAccessible::Role>();
    const char* role = roles.valueToKey(accessible->role());
    entry["role"] = role ? role : "NoRole";
    std::string value = accessible->text(QAccessible::Value).toStdString();
    if (auto* number = accessible->valueInterface(); number && value.empty())
      value = number->currentValue().toString().toStdString();
    entry["value"] = value;
    if (accessible->state().checkable) entry["checked"] = bool(accessible->state().checked);
  }
  if (const auto* label = qobject_cast<const QLabel*>(&widget))
    entry["value"] = label->text().toStdString();
  if (const auto* menu = qobject_cast<const QMenu*>(&widget))
    entry["entries"] = DescribeEntries(*menu);
  return entry;
}

}  // namespace

json DumpWidgets(QWidget& window) {
  json entries = json::array();
  QList<QWidget*> all = window.findChildren<QWidget*>();
  all.prepend(&window);
  for (QWidget* widget : all) {
    if (!widget->isVisible()) continue;
    const bool isMenu = qobject_cast<QMenu*>(widget);
    if (isMenu && widget != &window) continue;  // a window of its own
    if (!isMenu && widget->objectName().isEmpty() && AccessibleNameOf(*widget).empty() &&
        widget->focusPolicy() == Qt::NoFocus)
      continue;
    entries.push_back(Describe(*widget));
  }
  return entries;
}

}  // namespace orv::app
