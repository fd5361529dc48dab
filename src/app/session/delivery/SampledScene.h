// A scene's nodes as other programs' files tell them: nine channels a frame.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "adaptor/common/Space.h"
#include "app/session/anyhost/TimeSpan.h"
#include "util/Vector3.h"

namespace orv::rws::adaptor::headless {
struct Lens;
class Scene;
class SceneNode;
}  // namespace orv::rws::adaptor::headless

namespace orv::app {

class Monitor;

/// What is sampled, and in which space it is told.
struct SampleRequest {
  std::vector<const rws::adaptor::headless::SceneNode*> only;  ///< empty: all nodes
  TimeSpan span;
  rws::adaptor::UpAxis up = rws::adaptor::UpAxis::kY;
  double metre = 1.0;           ///< a metre in the file's unit of length
  std::set<std::string> taken;  ///< names that no node may have in the file
  bool hasGeometry = true;      ///< whether the file holds meshes and curves
};

/// What hangs on a node's transform in the file; a helper where there is nothing else.
enum class ShapeKind { kHelper, kMesh, kCamera, kCurve };

struct SampledShape {
  ShapeKind kind;
  std::string name;
};

/// The nine channels of a transform in a frame, relative to the parent in the file.
struct SampledPose {
  util::Vector3<double> translation;  ///< in the file's unit
  util::Vector3<double> degrees;      ///< X first, then Y, then Z; any number of turns
  util::Vector3<double> scale;
};

struct SampledNode {
  const rws::adaptor::headless::SceneNode* node = nullptr;
  std::string name;                  ///< legal, and unique in the file, also among shapes
  std::vector<SampledShape> shapes;  ///< never empty
  int parent = -1;                   ///< place in the list, -1 for the world
  int depth = 0;                     ///< 0 below the world
  int children = 0;
  bool isVisible = true;  ///< of a node whose parent is not in the file, with all above it
  bool isMoving = false;
  /// One pose a frame (a single one of a node that stands still). Lengths are converted to the
  /// file's unit on every level and scales are not; the turn to another up axis is the topmost
  /// nodes'.
  std::vector<SampledPose> poses;

  /// The pose of a frame, counted from the first.
  const SampledPose& Pose(long frame) const {
    return poses[isMoving ? static_cast<std::size_t>(frame) : 0];
  }
};

struct SampledScene {
  std::vector<SampledNode> nodes;  ///< in the order of the tree, each before what is below it
  long firstFrame = 0;             ///< a frame's time is its number times 1 / `frameRate`
  long frames = 0;
  double frameRate = 0.0;
  rws::adaptor::UpAxis up = rws::adaptor::UpAxis::kY;
  double metre = 1.0;
  bool isCancelled = false;
  std::string error;                  ///< why there is nothing to write; empty when all is well
  std::vector<std::string> warnings;  ///< what nine channels can't tell
};

/// A node whose parent is not in the file carries its world pose. A shear is lost, which is told,
/// and what is below stays at its place in the world. What is no number is an error that names node
/// and frame.
SampledScene SampleScene(const rws::adaptor::headless::Scene& scene, const SampleRequest& request,
                         const Monitor& monitor);

/// A lens as film: the picture's width is 36 mm, more where the focal length would be below 2.5 mm,
/// the least that hosts take.
struct Film {
  double focalLength;    ///< mm
  double width, height;  ///< mm
  double nearClip;       ///< m
  double farClip;        ///< m; 100 km where the lens has no end
};
Film FilmOf(const rws::adaptor::headless::Lens& lens);

}  // namespace orv::app
