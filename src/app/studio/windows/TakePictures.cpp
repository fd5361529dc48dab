#include "app/studio/windows/TakePictures.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "adaptor/headless/Scene.h"
#include "adaptor/headless/SceneNode.h"
#include "app/session/takes/KeptTake.h"
#include "core/CoreImplementation.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace {

constexpr int kMostPoints = 160;  ///< of a path
constexpr int kFine = 2;          ///< pixels of the picture in one at 96 dpi
// The same in each theme, and where the row is selected.
constexpr QRgb kBehind = 0xff2b3036;
constexpr QRgb kPathColours[] = {0xff6cb4ff, 0xffffa95c, 0xff7fd694, 0xffdd9bea};

/// Seen from above: x to the right, the way ahead (-z) up; metres.
std::vector<QPolygonF> PathsOf(const KeptTake& take, const rws::core::CoreImplementation& core,
                               rws::adaptor::headless::Scene& scene) {
  std::vector<QPolygonF> paths;
  for (const KeptRig& rig : take.rigs) {
    const rws::core::Instance* instance = core.FindInstance(rig.name);
    const auto nodes = instance ? instance->GetNodes() : std::vector<rws::core::CoreNode*>();
    const auto* node = nodes.empty() ? nullptr : scene.Find(nodes.front()->GetSceneName());
    if (!node) continue;
    QPolygonF path;
    for (int i = 0; i <= kMostPoints; ++i) {
      const double time =
          take.range.from + (take.range.to - take.range.from) * i / double(kMostPoints);
      const auto place = node->WorldMatrix(time).translation();
      path << QPointF(place.x, place.z);
    }
    paths.push_back(std::move(path));
  }
  return paths;
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
  const auto paths = PathsOf(take, core, scene);
  if (paths.empty()) return;
  const QImage image = Draw(paths);
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
