// Where nodes stood in the frames of a run.
#pragma once

#include <cstddef>
#include <vector>

#include "util/Matrix.h"

namespace orv::rws::adaptor::headless {
class HeadlessNode;
}

namespace orv::app::view {

/// World poses by frame. A film holds so many at most: of a longer run every second frame, then
/// every fourth, and so on. A node that has gone stays in it and is not read.
class TakeFilm {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  static constexpr std::size_t kMostPoses = 1 << 20;

  /// What its poses are read from.
  enum class From {
    kHost,  ///< what the running take has come to, or the keys
    kKeys   ///< the keys, also those that a running take is about to replace
  };

  /// An empty film of these from the frame at `start` on; `frame` is a frame's duration (s). They
  /// outlive it or its next Begin or Clear.
  void Begin(double start, double frame, std::vector<HeadlessNode*> actors);
  /// Adds the frames up to `time` that it does not have yet.
  void Follow(double time, From from);
  /// Leaves out frames from here on, so that there are no more than `most` poses up to `time`.
  void Spare(double time, std::size_t most);
  /// Whether its latest frame is what the host tells of it.
  bool IsGoingOn() const { return m_frames == 0 || IsSame(m_frames - 1); }
  /// Whether some of it is not what the host tells; looks at a few frames.
  bool IsOther() const;
  void Clear();

  bool IsEmpty() const { return m_frames == 0; }
  bool Covers(double time) const;
  const std::vector<HeadlessNode*>& GetActors() const { return m_actors; }
  /// World pose in the frame that `time`, which it must cover, lies in.
  util::Matrix<double> GetPose(std::size_t actor, double time) const;

  /// Whether two poses look the same, one of them as a film keeps it.
  static bool LookSame(const util::Matrix<double>& a, const util::Matrix<double>& b);

 private:
  struct Pose {
    float axes[9];
    float place[3];  ///< from `m_origin`
  };

  double TimeOf(std::size_t frame) const;
  util::Matrix<double> Unpack(std::size_t actor, std::size_t frame) const;
  bool IsSame(std::size_t frame) const;
  void Thin();

  std::vector<HeadlessNode*> m_actors;
  std::vector<Pose> m_poses;  ///< frame by frame
  util::Vector3<double> m_origin;
  double m_start = 0.0;   ///< s
  double m_frame = 0.04;  ///< a frame's duration (s)
  int m_stride = 1;       ///< frames of the run from one to the next
  std::size_t m_frames = 0;
};

}  // namespace orv::app::view
