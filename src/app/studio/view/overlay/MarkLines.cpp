#include "app/studio/view/overlay/MarkLines.h"

#include <algorithm>
#include <cmath>

#include "app/studio/view/overlay/NodePaths.h"
#include "core/interface/RigMarks.h"
#include "util/Box.h"

namespace orv::app::view {

using rws::RigMarks;
using Vector = util::Vector3<double>;

namespace {

constexpr Rgba kPathColour{255, 190, 70, 255}, kPathAhead{255, 190, 70, 110};
constexpr Rgba kLoadColour{90, 200, 255, 255}, kRayHit{120, 220, 130, 170},
    kRayMiss{170, 170, 170, 120}, kTargetColour{200, 140, 255, 255}, kShotColour{255, 150, 60, 255},
    kHitColour{255, 70, 60, 255}, kTrackColour{80, 220, 200, 200}, kPassColour{80, 220, 200, 255},
    kStopColour{255, 110, 90, 255};
constexpr double kWayTime = 0.1;            ///< of which a speed's arrow is the way (s)
constexpr double kMuchSlip = 3.0;           ///< that is red (m/s)
constexpr double kMuchSpeed = 15.0;         ///< that is red (m/s)
constexpr double kDotRoom = 7.0;            ///< between two dots (pixels)
constexpr std::size_t kMostStrokes = 2000;  ///< of a path

/// From green over yellow to red.
Rgba Grade(double part) {
  const double t = std::clamp(part, 0.0, 1.0);
  const auto byte = [](double value) {
    return static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(value, 0.0, 1.0)));
  };
  return {byte(0.25 + 1.5 * t), byte(1.6 - 1.4 * t), 60, 255};
}

/// Its head has the same size on the screen wherever it is.
void AddArrow(const Vector& from, const Vector& to, const Rgba& colour, const ScreenScale& scale,
              LineSet& lines) {
  lines.AddLine(from, to, colour, 2.0f);
  const Vector way = to - from;
  const double length = way.length();
  if (!(length > 0.0)) return;
  const double head = std::min(9.0 * scale.At(to), 0.5 * length);
  const Vector ahead = way / length;
  Vector side = ahead.cross(to - scale.eye);
  const double width = side.length();
  if (!(width > 0.0)) return;
  side *= 0.45 * head / width;
  const Vector foot = to - ahead * head;
  lines.AddTriangle(to, foot + side, foot - side, colour);
}

void DrawContacts(const RigMarks& marks, const ScreenScale& scale, LineSet& lines) {
  util::Box box;
  for (const RigMarks::Contact& contact : marks.contacts) box.add(contact.point);
  const double apart = marks.contacts.size() > 1 ? (box.high - box.low).length() : 1.0;
  for (const RigMarks::Contact& contact : marks.contacts) {
    const Vector& at = contact.point;
    AddArrow(at, at + contact.normal * (contact.load * apart), kLoadColour, scale, lines);
    const double slip = contact.slip.length();
    const Rgba colour = Grade(slip / kMuchSlip);
    lines.AddPoint(at, colour, 7.0f);
    if (slip * kWayTime > 2.0 * scale.At(at))
      AddArrow(at, at + contact.slip * kWayTime, colour, scale, lines);
  }
}

}  // namespace

ScreenScale ScreenScale::Of(const FramePacket& packet, int height) {
  // The projection's second number is the cotangent of half the field of view.
  return {packet.origin, 2.0 / (packet.camera.projection[5] * std::max(height, 1))};
}

void DrawPaths(const NodePaths& paths, double time, const ScreenScale& scale, LineSet& lines) {
  const double now = (time - paths.GetStart()) / paths.GetStep();
  for (const NodePaths::Path& path : paths.GetPaths()) {
    const auto& points = path.points;
    const std::size_t step = points.size() / kMostStrokes + 1;
    for (std::size_t i = step; i < points.size(); i += step) {
      const bool isPast = static_cast<double>(i) <= now + 1e-6;
      const Vector &from = points[i - step], &to = points[i];
      const Rgba& colour = isPast ? kPathColour : kPathAhead;
      lines.AddLine(from, to, colour, 1.6f);
      if ((to - from).length() > kDotRoom * scale.At(to)) lines.AddPoint(to, colour, 4.0f);
    }
    const auto present = static_cast<std::size_t>(std::max(0.0, std::floor(now + 1e-6)));
    if (points.size() > 1 && present < points.size())
      lines.AddPoint(points[present], kPathColour, 8.0f);
  }
}

void DrawMarks(const RigMarks& marks, const OverlayChoice& choice, const ScreenScale& scale,
               LineSet& lines) {
  if (choice[kOverlayRays])
    for (const RigMarks::Ray& ray : marks.rays)
      lines.AddLine(ray.from, ray.to, ray.hits ? kRayHit : kRayMiss, 1.2f);
  if (choice[kOverlayContacts]) DrawContacts(marks, scale, lines);
  if (choice[kOverlaySpeeds])
    for (const RigMarks::Speed& speed : marks.speeds)
      AddArrow(speed.point, speed.point + speed.direction * (speed.value * kWayTime),
               Grade(speed.value / kMuchSpeed), scale, lines);
  if (choice[kOverlayShots])
    for (const RigMarks::Shot& shot : marks.shots) {
      lines.AddLine(shot.from, shot.to, kShotColour, 1.4f);
      AddArrow(shot.from, shot.from + shot.direction * (30.0 * scale.At(shot.from)), kShotColour,
               scale, lines);
      lines.AddPoint(shot.to, shot.hits ? kHitColour : kShotColour, shot.hits ? 7.0f : 4.0f);
    }
  if (choice[kOverlayTracks]) {
    for (std::size_t i = 1; i < marks.track.size(); ++i)
      lines.AddLine(marks.track[i - 1], marks.track[i], kTrackColour, 1.6f);
    for (const RigMarks::Waypoint& waypoint : marks.waypoints)
      lines.AddPoint(waypoint.point, waypoint.stops ? kStopColour : kPassColour, 8.0f);
  }
  if (choice[kOverlayTargets])
    for (const RigMarks::Target& target : marks.targets) {
      lines.AddLine(target.from, target.point, kTargetColour, 1.2f);
      lines.AddPoint(target.point, kTargetColour, 8.0f);
    }
}

}  // namespace orv::app::view
