#include "gui/component/qt/Images.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QWindow>

#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"

namespace orv::gui::component::qt {

namespace {

bool IsMask(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  const std::string stem = path.substr(0, dot);
  const std::string mark = "-symbolic";
  return stem.size() >= mark.size() &&
         stem.compare(stem.size() - mark.size(), mark.size(), mark) == 0;
}

/// A file as an image. Also those that are none are remembered.
QPixmap LoadFile(const QString& file) {
  const QString key = QLatin1String("orv-image:") + file;
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap) && QFileInfo::exists(file) && pixmap.load(file))
    QPixmapCache::insert(key, pixmap);
  return pixmap;
}

QHash<QString, QIcon>& Sets() {
  static QHash<QString, QIcon> sets;
  return sets;
}

/// The set that stands in for a file; null without. Sets are remembered, and those that are none.
QIcon LoadSet(const QString& file, bool dark) {
  if (Sets().isEmpty()) qAddPostRoutine([] { Sets().clear(); });  // before the screens go
  const QFileInfo name(file);
  const auto stemOf = [&name](const char* folder) {
    return name.path() + QLatin1String(folder) + name.completeBaseName() + QLatin1Char('_');
  };
  const QString stem = stemOf(dark ? "/dark/" : "/light/");
  const auto known = Sets().constFind(stem);
  if (known != Sets().constEnd()) return *known;
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64}) {
    const QString end = QString::number(size) + QLatin1String(".png");
    if (!QFileInfo::exists(stem + end)) continue;
    icon.addFile(stem + end);
    // What is selected stands on the accent, which is dark in each theme.
    icon.addFile(stemOf("/dark/") + end, QSize(), QIcon::Selected);
  }
  Sets().insert(stem, icon);
  return icon;
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

QPixmap LoadPixmap(const Component& component, const std::string& path, const QWidget& widget,
                   int size) {
  if (path.empty()) return {};
  for (const std::string& candidate : component.ResolvePath(path)) {
    const QString file = QString::fromStdString(candidate);
    const QPixmap pixmap = LoadFile(file);
    if (!pixmap.isNull())
      return IsMask(path) ? Tinted(pixmap, widget.palette().color(widget.foregroundRole()))
                          : pixmap;
    const QIcon set = LoadSet(file, IsDark(widget.palette()));
    if (!set.isNull())
      return set.pixmap(widget.window()->windowHandle(), QSize(Scaled(size), Scaled(size)));
  }
  return {};
}

QIcon LoadIcon(const Component& component, const std::string& path, const QWidget& widget) {
  if (path.empty()) return {};
  for (const std::string& candidate : component.ResolvePath(path)) {
    const QString file = QString::fromStdString(candidate);
    const QPixmap pixmap = LoadFile(file);
    if (pixmap.isNull()) {
      const QIcon set = LoadSet(file, IsDark(widget.palette()));
      if (!set.isNull()) return set;
      continue;
    }
    if (!IsMask(path)) return QIcon(pixmap);
    const QPalette& palette = widget.palette();
    QIcon icon(Tinted(pixmap, palette.color(widget.foregroundRole())));
    icon.addPixmap(Tinted(pixmap, palette.color(QPalette::Disabled, widget.foregroundRole())),
                   QIcon::Disabled);
    return icon;
  }
  return {};
}

}  // namespace orv::gui::component::qt
