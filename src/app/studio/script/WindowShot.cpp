#include "app/studio/script/WindowShot.h"

#include <QPainter>
#include <QWidget>
#include <algorithm>

#include "app/studio/script/ScriptTarget.h"

namespace orv::app {

namespace {

/// How many widgets stand above it; a menu's submenu has the menu among them.
int DepthOf(const QWidget* widget) {
  int depth = 0;
  while ((widget = widget->parentWidget())) ++depth;
  return depth;
}

QRect OnScreen(const QWidget& widget) {
  return {widget.mapToGlobal(QPoint()), widget.size()};
}

/// The window's own, the latest last.
QList<QWidget*> PopupsOf(const QWidget& window) {
  QList<QWidget*> popups;
  for (QWidget* popup : ShownWindows()) {
    if (popup->windowType() != Qt::Popup || popup == &window) continue;
    const QWidget* above = popup->parentWidget();
    while (above && above != &window) above = above->parentWidget();
    if (above) popups.append(popup);
  }
  std::stable_sort(popups.begin(), popups.end(),
                   [](const QWidget* a, const QWidget* b) { return DepthOf(a) < DepthOf(b); });
  return popups;
}

}  // namespace

QPixmap GrabWithPopups(QWidget& window) {
  const QPixmap alone = window.grab();
  const QList<QWidget*> popups = PopupsOf(window);
  if (popups.isEmpty()) return alone;
  QRect all = OnScreen(window);
  for (const QWidget* popup : popups) all |= OnScreen(*popup);
  const double ratio = alone.devicePixelRatioF();
  QPixmap picture(all.size() * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.drawPixmap(OnScreen(window).topLeft() - all.topLeft(), alone);
  for (QWidget* popup : popups)
    painter.drawPixmap(OnScreen(*popup).topLeft() - all.topLeft(), popup->grab());
  return picture;
}

}  // namespace orv::app
