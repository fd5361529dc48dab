// What the user is told of a belt that does not run well.
#include <algorithm>
#include <cmath>

#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"

namespace orv::rws::addon {

using Vector = CrawlerTracks::Vector;

/// Whether neighbours are together, and all are near.
bool CrawlerTracks::IsWhole() const {
  constexpr double kMostPitches = 5.0;   // between the middles of neighbours
  constexpr double kFarthest = 10000.0;  // from the driveWheel (units of the Frame)
  const int count = m_world->GetStepCount();
  if (count < 3) return true;  // no belt that could burst
  const double pitch = m_track->steps.front()->body.pitch;
  const Vector drive = m_world->GetWheel(0).position;
  for (int i = 0; i < count; ++i) {
    const Vector place = m_world->GetStepPlace(i);
    const double apart = (place - m_world->GetStepPlace((i + 1) % count)).length();
    // What is not a number is no place either.
    if (!(apart < kMostPitches * pitch) || !((place - drive).length() < kFarthest)) return false;
  }
  return true;
}

/// A belt that flew apart stands still from here on, and the user is told what helps.
bool CrawlerTracks::HasBurst() {
  if (IsWhole()) return false;
  m_isRunning = false;
  Tell("Warning",
       "The track has burst, and stands still from here on. Try more SubFrames, more Accuracy, "
       "less Gravity or a slower driveWheel, and see that the wheels leave it room.",
       kIconWarning);
  return true;
}

/// Whether a step is far inside of a wheel, none is at the driveWheel, or some have gone through
/// the ground in this frame.
bool CrawlerTracks::HasLeft() const {
  constexpr double kDeepest = 0.25;  // that a step's middle may be in a wheel (of the radius)
  constexpr int kMostThrough = 1;    // steps that a sharp edge may push through the ground
  const StepBody& body = m_track->steps.front()->body;
  bool isOnDrive = false;
  for (std::size_t w = 0; w < m_motions.size(); ++w) {
    const auto wheel = m_world->GetWheel(static_cast<int>(w));
    const auto toWheel = wheel.rotation.conjugate();
    const double radius = m_motions[w].wheel->radius / m_scale,
                 halfWidth = m_motions[w].wheel->halfWidth / m_scale;
    const double deep = std::min((1.0 - kDeepest) * radius, radius - body.size.y);
    for (int i = 0; i < m_world->GetStepCount(); ++i) {
      const Vector apart = toWheel.rotate(m_world->GetStepPlace(i) - wheel.position);
      const double distance = std::hypot(apart.y, apart.z);
      if (std::abs(apart.x) < halfWidth && distance < deep) return true;
      isOnDrive = isOnDrive || (w == 0 && std::abs(apart.x) < halfWidth + body.size.x / 2 &&
                                distance < radius + 2.0 * body.size.y);
    }
  }
  return !isOnDrive || m_world->CountStepsThroughGround() > kMostThrough;
}

/// Once a take, with the setting that is beyond what the physics bears.
void CrawlerTracks::WarnOfLeaving() {
  constexpr double kMostGravity = 100.0;
  constexpr int kLeastAccuracy = 4, kMostIterations = 10;
  if (!m_isRunning || m_hasLeft || !HasLeft()) return;
  m_hasLeft = true;
  const char* advice =
      "more SubFrames or a slower driveWheel, and see that the wheels leave it room";
  if (std::abs(m_settings.gravity) > kMostGravity)
    advice = "a Gravity of 100 at most";
  else if (m_settings.trackAccuracy < kLeastAccuracy)
    advice = "an Accuracy of 4 at least";
  else if (m_settings.trackIterations > kMostIterations)
    advice = "a Flaccidity Reduction of 10 at most";
  Tell("Warning",
       std::string("The track has left its wheels or gone through the ground. Try ") + advice + ".",
       kIconWarning);
}

}  // namespace orv::rws::addon
