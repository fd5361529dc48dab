#include "app/studio/windows/TakePictures.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "app/session/takes/KeptTake.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

constexpr int kFine = 2;  ///< pixels of the picture in one at 96 dpi
// The same in each theme, and where the row is selected.
constexpr QRgb kBehind = 0xff2b3036;
constexpr QRgb kPathColours[] = {0xff6cb4ff, 0xffffa95c, 0xff7fd694, 0xffdd9bea};

/// Seen from above: x to the right, the way ahead (-z) up; metres.
std::vector<QPolygonF> PolygonsOf(const std::vector<TakePath>& paths) {
  std::vector<QPolygonF> polygons;
  for (const TakePath& path : paths) {
    QPolygonF polygon;
    for (const auto& [x, z] : path.places) polygon << QPointF(x, z);
    polygons.push_back(std::move(polygon));
  }
  return polygons;
}

QImage Draw(const std::vector<QPolygonF>& paths) {
  QImage image(TakePictures::kWidth * kFine, TakePictures::kHeight * kFine,
               QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor(kBehind));
  QRectF all;
  for (const QPolygonF& path : paths) all = all.united(path.boundingRect());
  const double room = 6.0 * kFine;
  const double scale = std::min((image.width() - 2.0 * room) / std::max(all.width(), 0.5),
                                (image.height() - 2.0 * room) / std::max(all.height(), 0.5));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(0.5 * image.width(), 0.5 * image.height());
  painter.scale(scale, scale);
  painter.translate(-all.center());
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const QColor colour(kPathColours[i % std::size(kPathColours)]);
    painter.setPen(QPen(colour, 2.0 * kFine / scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(paths[i]);
    // Where it ends.
    const double dot = 3.0 * kFine / scale;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(paths[i].last(), dot, dot);
  }
  return image;
}

}  // namespace

std::string TakePictures::FileOf(const std::string& hash) {
  return rws::core::DataRoot::GetDataFolder() + "/takes/" + hash + ".png";
}

void TakePictures::Note(const KeptTake& take, const rws::core::CoreImplementation& core,
                        rws::adaptor::headless::Scene& scene) {
  if (take.hash.empty() || !Find(take).isNull()) return;
  Note(take, PathsOf(take, core, scene));
}

void TakePictures::Note(const KeptTake& take, const std::vector<TakePath>& paths) {
  if (paths.empty()) return;
  const QImage image = Draw(PolygonsOf(paths));
  QPixmap picture = QPixmap::fromImage(image);
  picture.setDevicePixelRatio(kFine);
  m_pictures[take.hash] = picture;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  std::error_code ignored;
  const std::string file = FileOf(take.hash);
  std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
  // Without the file the picture is drawn when the take is used again.
  if (image.save(&buffer, "PNG")) util::writeFile(file, bytes.toStdString(), nullptr);
}

QPixmap TakePictures::Find(const KeptTake& take) {
  const auto known = m_pictures.find(take.hash);
  if (known != m_pictures.end()) return known->second;
  QPixmap picture;
  const QString file = QString::fromStdString(FileOf(take.hash));
  if (!take.hash.empty() && QFileInfo::exists(file) && picture.load(file))
    picture.setDevicePixelRatio(kFine);
  return m_pictures[take.hash] = picture;
}

}  // namespace orv::app
