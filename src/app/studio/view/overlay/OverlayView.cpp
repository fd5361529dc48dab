#include "app/studio/view/overlay/OverlayView.h"

#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "adaptor/headless/HeadlessNode.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/overlay/MarkLines.h"
#include "gui/Texts.h"
#include "unidevice/Property.h"

namespace orv::app::view {

using gui::Translate;
using util::Matrix;

namespace {

constexpr std::size_t kMostNames = 80, kMostPerformers = 3;
constexpr int kMostInputs = 10;  ///< of one rig
constexpr int kMargin = 8, kBarWidth = 90;

/// As SceneFrames' material of what has none, but to be looked through.
Material GhostMaterial() {
  Material material;
  material.doubleSided = true;
  material.alpha = AlphaMode::kBlend;
  return material;
}

/// Where it is in a picture that lies there (pixels of the desktop); false for what is not in it.
bool Project(const FramePacket& packet, const util::Vector3<double>& world, const QRect& picture,
             QPointF& place) {
  const util::Vector3<double> p = world - packet.origin;
  const auto& view = packet.camera.view;
  const auto& projection = packet.camera.projection;
  double eye[3];
  for (std::size_t row = 0; row < 3; ++row)
    eye[row] = view[row] * p.x + view[4 + row] * p.y + view[8 + row] * p.z;
  if (!(eye[2] < 0.0)) return false;
  const double x = projection[0] * eye[0] / -eye[2], y = projection[5] * eye[1] / -eye[2];
  if (!(std::abs(x) <= 1.0 && std::abs(y) <= 1.0)) return false;
  place = {picture.x() + 0.5 * (1.0 + x) * picture.width(),
           picture.y() + 0.5 * (1.0 - y) * picture.height()};
  return true;
}

/// What is hidden in the scene has no ghost, nor has what was taken out of it.
bool IsHidden(const TakeFilm::Actor& actor) {
  if (!TakeFilm::IsThere(actor)) return !actor.isRound;
  for (const auto* node = actor.node->GetSceneNode(); node; node = node->GetParent())
    if (!node->IsVisible()) return true;
  return false;
}

/// Text is read on any scene.
void PaintPlate(QPainter& painter, const QRectF& place, const QPalette& palette) {
  QColor plate = palette.color(QPalette::Window);
  plate.setAlpha(185);
  painter.fillRect(place, plate);
}

}  // namespace

// --- lines ---

LineSet& OverlayView::LinesOf(const FramePacket& packet) {
  for (const auto& picture : m_pictures)
    if (picture->packet == &packet) return picture->lines;
  m_pictures.push_back(std::make_unique<Picture>(Picture{&packet, {}}));
  return m_pictures.back()->lines;
}

void OverlayView::Write(FramePacket& packet, int height) {
  LineSet& lines = LinesOf(packet);
  lines.Begin(packet.origin);
  lines.hidden = 0.35f;
  const ScreenScale scale = ScreenScale::Of(packet, height);
  if (m_overlay.IsShown(kOverlayPaths))
    DrawPaths(m_overlay.GetPaths(), m_overlay.GetTime(), scale, lines);
  for (const rws::RigMarks& marks : m_overlay.GetMarks())
    DrawMarks(marks, m_overlay.GetChoice(), scale, lines);
  if (!lines.IsEmpty()) packet.lines.push_back(&lines);
  WriteGhost(packet);
}

// --- the ghost ---

void OverlayView::ArrangeGhost(const TakeFilm& film) {
  m_groups.clear();
  const auto& actors = film.GetActors();
  // A gun's rounds have one mesh, which may be in no picture any more.
  std::map<std::tuple<const void*, const void*, int>, std::shared_ptr<const Model>> models;
  for (std::size_t i = 0; i < actors.size(); ++i) {
    if (IsHidden(actors[i])) continue;
    const MeshLook& look = actors[i].look;
    auto& model = models[std::make_tuple(look.file.get(), look.mesh.get(), look.number)];
    if (!model) model = m_frames.GetModel(look);
    for (const Model::Part& part : model->parts) {
      if (part.mesh->lines) continue;
      auto group = std::find_if(m_groups.begin(), m_groups.end(),
                                [&](const Group& one) { return one.mesh == part.mesh; });
      if (group == m_groups.end()) group = m_groups.insert(group, {part.mesh, {}});
      group->actors.push_back(i);
    }
  }
}

/// Without those that stand where the scene's own do.
void OverlayView::AddInstances(const TakeFilm& film, const Group& group, double time,
                               FramePacket& packet) {
  Matrix<double> pose;
  for (const std::size_t i : group.actors) {
    const TakeFilm::Actor& actor = film.GetActors()[i];
    if (!film.GetPose(actor, time, pose) ||
        (TakeFilm::IsThere(actor) && TakeFilm::LookSame(pose, actor.node->GetWorldPose(time))))
      continue;
    Instance instance{{}, {120, 170, 255, 110}, 0};
    for (int row = 0; row < 3; ++row) {
      for (int column = 0; column < 3; ++column)
        instance.pose[4 * row + column] = static_cast<float>(pose[4 * column + row]);
      instance.pose[4 * row + 3] = static_cast<float>(pose[12 + row] - packet.origin[row]);
    }
    packet.ghostInstances.push_back(instance);
  }
}

void OverlayView::WriteGhost(FramePacket& packet) {
  packet.ghosts.clear();
  packet.ghostInstances.clear();
  const TakeFilm* film = m_overlay.GetGhost();
  const double time = m_overlay.GetTime();
  if (!film || !film->Covers(time)) return;
  if (film != m_film || m_serial != m_overlay.GetGhostSerial() || m_structure != packet.structure) {
    m_film = film;
    m_serial = m_overlay.GetGhostSerial();
    m_structure = packet.structure;
    ArrangeGhost(*film);
  }
  static const Material kMaterial = GhostMaterial();
  if (packet.materials.empty() || !(packet.materials.back() == kMaterial))
    packet.materials.push_back(kMaterial);
  Batch batch;
  batch.material = static_cast<std::uint32_t>(packet.materials.size() - 1);
  for (const Group& group : m_groups) {
    batch.first = static_cast<std::uint32_t>(packet.ghostInstances.size());
    AddInstances(*film, group, time, packet);
    batch.count = static_cast<std::uint32_t>(packet.ghostInstances.size()) - batch.first;
    if (batch.count == 0) continue;
    batch.mesh = group.mesh;
    packet.ghosts.push_back(batch);
  }
}

// --- texts ---

bool OverlayView::HasTexts() const {
  return m_overlay.IsShown(kOverlayNames) || m_overlay.IsShown(kOverlayRate) ||
         !m_overlay.GetPerformers().empty();
}

void OverlayView::Paint(QPainter& painter, const QSize& size, const QPalette& palette) {
  if (!m_overlay.GetPerformers().empty()) PaintInputs(painter, size, palette);
  if (m_overlay.IsShown(kOverlayRate)) PaintRate(painter, size, palette);
}

/// What is selected comes first; a name that would lie on another is left out.
void OverlayView::PaintNames(QPainter& painter, const FramePacket& packet, const QRect& place,
                             const QPalette& palette) {
  m_namePlaces.clear();
  if (!m_overlay.IsShown(kOverlayNames)) return;
  const QFontMetrics metrics = painter.fontMetrics();
  for (const Overlay::Name& name : m_overlay.GetNames()) {
    QPointF at;
    if (m_namePlaces.size() >= kMostNames) break;
    if (!name.node->IsValid() ||
        !Project(packet, name.node->GetWorldPose(m_overlay.GetTime()).translation(), place, at))
      continue;
    const QRectF plate(at.x() + 6.0, at.y() - 0.5 * metrics.height(),
                       metrics.horizontalAdvance(name.text) + 6.0, metrics.height());
    if (std::any_of(m_namePlaces.begin(), m_namePlaces.end(),
                    [&](const QRectF& other) { return other.intersects(plate); }))
      continue;
    m_namePlaces.push_back(plate);
    PaintPlate(painter, plate, palette);
    painter.setPen(palette.color(name.isSelected ? QPalette::Highlight : QPalette::WindowText));
    painter.drawText(plate, Qt::AlignCenter, name.text);
  }
}

/// In the corner at the bottom left: names, a bar around the middle, and the value that the rig
/// reads.
void OverlayView::PaintInputs(QPainter& painter, const QSize& size, const QPalette& palette) const {
  const auto& performers = m_overlay.GetPerformers();
  const QFontMetrics metrics = painter.fontMetrics();
  const std::size_t shown = std::min(performers.size(), kMostPerformers);
  int rows = 0, nameWidth = 0;
  for (std::size_t i = 0; i < shown; ++i) {
    const auto inputs = std::min<int>(static_cast<int>(performers[i].inputs.size()), kMostInputs);
    rows += 1 + inputs;
    nameWidth = std::max(nameWidth, metrics.horizontalAdvance(performers[i].name));
    for (int k = 0; k < inputs; ++k)
      nameWidth = std::max(nameWidth, metrics.horizontalAdvance(
                                          performers[i].inputs[static_cast<std::size_t>(k)].name));
  }
  const int line = metrics.height() + 2;
  const int valueWidth = metrics.horizontalAdvance(QStringLiteral("-000.00"));
  const int width = nameWidth + kBarWidth + valueWidth + 4 * kMargin;
  QRect row(kMargin, size.height() - kMargin - rows * line - kMargin, width, line);
  PaintPlate(painter, QRectF(row.x(), row.y(), width, rows * line + kMargin), palette);
  row.translate(kMargin, kMargin / 2);
  for (std::size_t i = 0; i < shown; ++i) {
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, performers[i].name);
    row.translate(0, line);
    const auto inputs = std::min<int>(static_cast<int>(performers[i].inputs.size()), kMostInputs);
    for (int k = 0; k < inputs; ++k, row.translate(0, line)) {
      const Overlay::Input& input = performers[i].inputs[static_cast<std::size_t>(k)];
      const double value = input.property->read();
      const QRectF bar(row.x() + nameWidth + kMargin, row.y() + 3, kBarWidth, line - 6);
      painter.fillRect(bar, palette.color(QPalette::Base));
      const double middle = bar.center().x(),
                   end = middle + 0.5 * kBarWidth * std::clamp(value, -1.0, 1.0);
      painter.fillRect(QRectF(QPointF(std::min(middle, end), bar.top()),
                              QPointF(std::max(middle, end), bar.bottom())),
                       palette.color(QPalette::Highlight));
      painter.fillRect(QRectF(middle - 0.5, bar.top(), 1.0, bar.height()),
                       palette.color(QPalette::WindowText));
      painter.setPen(palette.color(QPalette::WindowText));
      painter.drawText(row, Qt::AlignLeft | Qt::AlignVCenter, input.name);
      painter.drawText(QRectF(bar.right() + kMargin, row.y(), valueWidth, line),
                       Qt::AlignRight | Qt::AlignVCenter, QString::number(value, 'f', 2));
    }
  }
}

/// In the corner at the top right, of the latest pictures.
void OverlayView::PaintRate(QPainter& painter, const QSize& size, const QPalette& palette) {
  if (!m_clock.isValid()) m_clock.start();
  const qint64 now = m_clock.elapsed();
  m_times[m_drawn++ % m_times.size()] = now;
  const std::size_t held = std::min(m_drawn, m_times.size());
  const qint64 span = now - m_times[(m_drawn - held) % m_times.size()];
  const double rate =
      span > 0 ? 1000.0 * static_cast<double>(held - 1) / static_cast<double>(span) : 0.0;
  const auto number = [](double value, int decimals) {
    return QString::number(value, 'f', decimals).toStdString();
  };
  std::string text = Translate("%1 pictures/s, %2 ms each", {number(rate, 1), number(m_cost, 1)});
  if (m_latency.median >= 0.0)
    text += "\n" + Translate("Latency: median %1 ms, 95 % within %2 ms",
                             {number(m_latency.median, 0), number(m_latency.p95, 0)});
  const QString shown = QString::fromStdString(text);
  const QFontMetrics metrics = painter.fontMetrics();
  QRect place = metrics.boundingRect(QRect(0, 0, size.width(), size.height()),
                                     Qt::AlignRight | Qt::AlignTop, shown);
  place.adjust(-kMargin, 0, 0, kMargin / 2);
  place.moveTopRight(QPoint(size.width() - kMargin, kMargin));
  PaintPlate(painter, place, palette);
  painter.setPen(palette.color(QPalette::WindowText));
  painter.drawText(place.adjusted(0, 0, -kMargin / 2, 0), Qt::AlignRight | Qt::AlignVCenter, shown);
}

}  // namespace orv::app::view
