// The overlay of one view.
#pragma once

#include <QElapsedTimer>
#include <QRectF>
#include <QString>
#include <array>
#include <memory>
#include <vector>

#include "app/studio/view/FileMeshes.h"
#include "app/studio/view/overlay/Overlay.h"

class QPainter;
class QPalette;

namespace orv::app::view {

class SceneFrames;

/// How long what a hand does takes to the picture (ms); below 0 where it is not measured.
struct PictureLatency {
  double median = -1.0, p95 = -1.0;
};

/// Hangs lines and ghosts into the packets of a view, of which it may have several, and writes
/// texts and bars over its pictures. What it works with is kept: once warm, lines and ghosts
/// allocate nothing. The overlay, the view's source and its packets outlive it.
class OverlayView {
 public:
  OverlayView(Overlay& overlay, SceneFrames& frames) : m_overlay(overlay), m_frames(frames) {}

  /// Ahead of each update of the view.
  void Read() { m_overlay.Read(); }
  /// Of a picture that is `height` pixels of the desktop high.
  void Write(FramePacket& packet, int height);
  /// Whether there is something for the next two.
  bool HasTexts() const;
  /// Over the picture of this packet, which lies at `place` (pixels of the desktop).
  void PaintNames(QPainter& painter, const FramePacket& packet, const QRect& place,
                  const QPalette& palette);
  /// Once an update: what is of no one picture.
  void Paint(QPainter& painter, const QSize& size, const QPalette& palette);

  void SetLatency(const PictureLatency& latency) { m_latency = latency; }
  /// Of the latest picture (ms).
  void SetCost(double cost) { m_cost = cost; }
  /// Rectangles that names stand in, of the latest call of PaintNames.
  const std::vector<QRectF>& GetNamePlaces() const { return m_namePlaces; }

 private:
  /// Actors of the ghost that show the same mesh.
  struct Group {
    std::shared_ptr<const MeshData> mesh;
    std::vector<std::size_t> actors;
  };

  /// One of the view's.
  struct Picture {
    const FramePacket* packet;
    LineSet lines;
  };

  LineSet& LinesOf(const FramePacket& packet);
  void WriteGhost(FramePacket& packet);
  void ArrangeGhost(const TakeFilm& film);
  void AddInstances(const TakeFilm& film, const Group& group, double time, FramePacket& packet);
  void PaintInputs(QPainter& painter, const QSize& size, const QPalette& palette) const;
  void PaintRate(QPainter& painter, const QSize& size, const QPalette& palette);

  Overlay& m_overlay;
  SceneFrames& m_frames;
  std::vector<std::unique_ptr<Picture>> m_pictures;
  std::vector<Group> m_groups;
  std::uint64_t m_structure = 0;  ///< of the packet that the groups are of
  int m_serial = -1;              ///< of the ghost that they are of
  const TakeFilm* m_film = nullptr;
  std::vector<QRectF> m_namePlaces;
  PictureLatency m_latency;
  double m_cost = 0.0;
  // The latest pictures' times (ms), round and round.
  QElapsedTimer m_clock;
  std::array<qint64, 32> m_times{};
  std::size_t m_drawn = 0;
};

}  // namespace orv::app::view
