#include "gui/component/qt/Images.h"

#include <QFileInfo>
#include <QPainter>
#include <QPixmapCache>

namespace orv::gui::component::qt {

namespace {

bool IsMask(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  const std::string stem = path.substr(0, dot);
  const std::string mark = "-symbolic";
  return stem.size() >= mark.size() &&
         stem.compare(stem.size() - mark.size(), mark.size(), mark) == 0;
}

/// The first candidate that is an image. Also those that are none are remembered.
QPixmap Load(const Component& component, const std::string& path) {
  for (const std::string& file : component.ResolvePath(path)) {
    const QString key = QLatin1String("orv-image:") + QString::fromStdString(file);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    if (!QFileInfo::exists(QString::fromStdString(file)) ||
        !pixmap.load(QString::fromStdString(file)))
      continue;
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }
  return {};
}

QPixmap Tinted(const QPixmap& mask, const QColor& color) {
  const QString key = QStringLiteral("orv-tint:%1:%2").arg(mask.cacheKey()).arg(color.rgba());
  QPixmap tinted;
  if (QPixmapCache::find(key, &tinted)) return tinted;
  tinted = mask;
  QPainter painter(&tinted);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(tinted.rect(), color);
  painter.end();
  QPixmapCache::insert(key, tinted);
  return tinted;
}

}  // namespace

QPixmap LoadPixmap(const Component& component, const std::string& path, const QWidget& widget) {
  if (path.empty()) return {};
  const QPixmap pixmap = Load(component, path);
  if (pixmap.isNull() || !IsMask(path)) return pixmap;
  return Tinted(pixmap, widget.palette().color(widget.foregroundRole()));
}

QIcon LoadIcon(const Component& component, const std::string& path, const QWidget& widget) {
  const QPixmap pixmap = LoadPixmap(component, path, widget);
  if (pixmap.isNull()) return {};
  QIcon icon(pixmap);
  if (IsMask(path))
    icon.addPixmap(Tinted(Load(component, path),
                          widget.palette().color(QPalette::Disabled, widget.foregroundRole())),
                   QIcon::Disabled);
  return icon;
}

}  // namespace orv::gui::component::qt
