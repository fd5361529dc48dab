// Where nodes stood in the frames of a run.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/studio/view/MeshLook.h"
#include "util/Matrix.h"

namespace orv::rws::adaptor::headless {
class HeadlessNode;
}

namespace orv::app::view {

/// World poses by frame, and what they are the poses of, which may go: the film keeps it. A film
/// holds so many poses at most: of a longer run every second frame, then every fourth, and so on.
class TakeFilm {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  static constexpr std::size_t kMostPoses = 1 << 20;

  /// What its poses are read from.
  enum class From {
    kHost,  ///< what the running take has come to, or the keys
    kKeys   ///< the keys, also those that a running take is about to replace
  };

  struct Pose {
    float axes[9];
    float place[3];  ///< from the film's origin
  };
  struct Actor {
    HeadlessNode* node = nullptr;
    std::string name;
    MeshLook look;
    bool isRound = false;          ///< came while the run went on, and may be made anew by another
    std::size_t first = 0;         ///< frame of the film that it came with
    std::vector<Pose> poses = {};  ///< from there on
  };

  /// An empty film of these from the frame at `start` on; `frame` is a frame's duration (s). They
  /// outlive it or its next Begin or Clear.
  void Begin(double start, double frame, const std::vector<HeadlessNode*>& nodes);
  /// From the next frame on another node has a part.
  void AddRound(HeadlessNode* node);
  /// Adds the frames up to `time` that it does not have yet.
  void Follow(double time, From from);
  /// Leaves out frames from here on, so that there are no more than `most` poses up to `time`.
  void Spare(double time, std::size_t most);
  /// Rounds that have gone are now those that `find` has for their names, if any.
  template <class Find>
  void FindRounds(Find find) {
    for (Actor& actor : m_actors)
      if (actor.isRound && !IsThere(actor))
        if (HeadlessNode* node = find(actor.name)) actor.node = node;
  }
  /// Whether its latest frame is what the host tells of it.
  bool IsGoingOn() const { return m_frames == 0 || IsSame(m_frames - 1); }
  /// Whether some of it is not what the host tells; looks at a few frames.
  bool IsOther() const;
  void Clear();

  bool IsEmpty() const { return m_frames == 0; }
  bool Covers(double time) const;
  const std::vector<Actor>& GetActors() const { return m_actors; }
  /// Whether its node still stands in the scene.
  static bool IsThere(const Actor& actor);
  /// World pose in the frame that `time`, which the film must cover, lies in. False where the actor
  /// had not come yet.
  bool GetPose(const Actor& actor, double time, util::Matrix<double>& pose) const;

  /// Whether two poses look the same, one of them as a film keeps it.
  static bool LookSame(const util::Matrix<double>& a, const util::Matrix<double>& b);

 private:
  double TimeOf(std::size_t frame) const;
  util::Matrix<double> Unpack(const Pose& kept) const;
  void Add(Actor& actor, double time, From from);
  bool IsSame(std::size_t frame) const;
  void Thin();

  std::vector<Actor> m_actors;
  std::size_t m_poses = 0;  ///< of all actors
  util::Vector3<double> m_origin;
  double m_start = 0.0;   ///< s
  double m_frame = 0.04;  ///< a frame's duration (s)
  int m_stride = 1;       ///< frames of the run from one to the next
  std::size_t m_frames = 0;
};

}  // namespace orv::app::view
