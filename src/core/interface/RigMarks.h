// What a rig shows of its work, for pictures of a scene.
#pragma once

#include <vector>

#include "util/Vector3.h"

namespace orv::rws {

/// The answer of a rig to kTellMarks. World space (m). Whoever asks often keeps one: lists that
/// have been as long as they become allocate nothing.
struct RigMarks {
  using Vector = util::Vector3<double>;

  /// Where something stands on a ground.
  struct Contact {
    Vector point;
    Vector normal;      ///< unit, of the ground
    double load = 0.0;  ///< part of the rig's weight that it carries there; 0 pushes nothing
    Vector slip;        ///< speed of what touches against the ground (m/s)
  };
  struct Ray {
    Vector from, to;
    bool hits = false;  ///< what is at `to`
  };
  /// What a camera, or what steers by itself, follows.
  struct Target {
    Vector from, point;
  };
  /// The way of a round from its barrel to where it is, or rests.
  struct Shot {
    Vector from, to;
    Vector direction;   ///< unit, along which it left
    bool hits = false;  ///< something was in its way
  };
  /// How fast something runs where it can't be seen from poses alone.
  struct Speed {
    Vector point;
    Vector direction;    ///< unit
    double value = 0.0;  ///< m/s
  };

  /// A place on a track.
  struct Waypoint {
    Vector point;
    bool stops = false;  ///< what runs there stands still
  };

  double time = 0.0;  ///< asked for: the frame of a running take, or the host's time (s)
  std::vector<Contact> contacts;
  std::vector<Ray> rays;
  std::vector<Target> targets;
  std::vector<Shot> shots;
  std::vector<Speed> speeds;
  std::vector<Vector> track;  ///< along which something runs, point by point; one a rig
  std::vector<Waypoint> waypoints;

  void Begin(double newTime) {
    time = newTime;
    contacts.clear();
    rays.clear();
    targets.clear();
    shots.clear();
    speeds.clear();
    track.clear();
    waypoints.clear();
  }
};

}  // namespace orv::rws
