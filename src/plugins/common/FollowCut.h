// A cut in what a camera follows.
#pragma once

#include <optional>

#include "core/interface/CInterface.h"
#include "plugins/common/RigSceneNode.h"
#include "util/QTransform.h"

namespace orv::rws::addon {

/// A move of what a camera follows, within a frame, that is a cut and no motion (world). The camera
/// is carried along as one piece: its lag and swing go on behind the cut as they were before it.
struct FollowCut {
  using Transform = util::QTransform<double>;

  Transform from, to;

  util::Quat<double> Turn() const { return from.rotation.conjugate() * to.rotation; }
  Transform Carried(const Transform& pose) const {
    return {to.position + Turn().rotate(pose.position - from.position), pose.rotation * Turn()};
  }
};

/// The move of `followed` from the frame at `before` to `now` when it is farther than `threshold`
/// (m), of which 0 knows no cuts.
inline std::optional<FollowCut> FindCut(const RigSceneNode& followed, double before,
                                        const util::QTransform<double>& now, double threshold) {
  if (!(threshold > 0.0)) return {};
  const FollowCut cut{FollowCut::Transform::fromMatrix(followed.ReadMatrix(before)), now};
  if ((cut.to.position - cut.from.position).length() <= threshold) return {};
  return cut;
}

}  // namespace orv::rws::addon
