// The ways of nodes over the range.
#pragma once

#include <cstddef>
#include <vector>

#include "util/Vector3.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class HeadlessNode;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class CoreImplementation;
}

namespace orv::app::view {

/// Places by frame, from the keys and, in a run, as it comes. They are read when the scene has
/// changed, and a picture of a run reads its new frames only.
class NodePaths {
 public:
  using HeadlessNode = rws::adaptor::headless::HeadlessNode;
  /// In all paths together when they are read from keys; longer ones are read less densely.
  static constexpr std::size_t kMostPoints = 20000;

  struct Path {
    HeadlessNode* node = nullptr;
    std::vector<util::Vector3<double>> points;  ///< world (m), from GetStart on; empty if it stands
  };

  NodePaths(rws::core::CoreImplementation& core, rws::adaptor::headless::HeadlessAdaptor& host)
      : m_core(core), m_host(host) {}

  void Follow(const std::vector<HeadlessNode*>& nodes);
  const std::vector<Path>& GetPaths() const { return m_paths; }
  double GetStart() const { return m_start; }  ///< time of the first points (s)
  double GetStep() const { return m_step; }    ///< from point to point (s)

 private:
  /// What the points were read from.
  struct Source {
    const void* scene = nullptr;
    int change = 0;
    double start = 0.0, end = 0.0, frame = 0.0;
    bool operator==(const Source& o) const {
      return scene == o.scene && change == o.change && start == o.start && end == o.end &&
             frame == o.frame;
    }
  };

  bool HasOthers(const std::vector<HeadlessNode*>& nodes) const;
  void Begin(const std::vector<HeadlessNode*>& nodes, const Source& source);
  void FollowUntil(double time);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  std::vector<Path> m_paths;
  Source m_source;
  double m_start = 0.0, m_step = 0.04;
  double m_frame = 0.04;  ///< a frame's duration (s)
  bool m_isRunning = false;
};

}  // namespace orv::app::view
