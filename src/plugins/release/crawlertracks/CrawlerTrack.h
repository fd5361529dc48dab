// The belt of a crawler: its steps, their shape and their memory.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"
#include "util/AVar_Latest.h"
#include "util/CMesh.h"

namespace orv::rws::addon {

/// The shape of a step as its TemplateStep gives it.
struct CrawlerTracks::StepShape {
  Vector size;                  ///< of the mesh's box, scaled (units of the Frame)
  Vector middle;                ///< of that box from the node's origin (units of the Frame)
  Vector scale{1.0, 1.0, 1.0};  ///< of the node (m)
};

/// Owns the steps, in the order of the chain.
class CrawlerTracks::Track {
 public:
  class Step;

  Track(CrawlerTracks& rig, util::CMesh mesh) : rig(rig), mesh(std::move(mesh)) {}

  CrawlerTracks& rig;
  const util::CMesh mesh;  ///< of the TemplateStep, for hosts whose nodes can't share one
  double density = 0.0;
  std::vector<std::unique_ptr<Step>> steps;
  /// Where the driveWheel holds the belt: all that it holds follows from one step. By time.
  util::AVar_Latest<int> heldStep;      ///< index; -1 when it holds none
  util::AVar_Latest<double> heldAngle;  ///< rad, round the wheel's axle

  /// Appends a step called by its number; its node is not made yet.
  Step& Add();
};

/// A step of the belt, that is one of its shoes: a node that shows the TemplateStep's mesh, and a
/// body's memory by time.
class CrawlerTracks::Track::Step : public RigSceneNode, public CInterface::Callback {
 public:
  Step(Track& track, int number);

  StepShape shape;
  StepBody body;
  // Velocities of the belt's world in the Frame's axes, by time.
  util::AVar_Latest<Vector> linVelocity;  ///< units of the Frame per second
  util::AVar_Latest<Vector> angVelocity;  ///< rad/s

  const std::string& GetName() const { return m_name; }
  /// "Select All Steps in Track" selects the step.
  void OnCallback(std::string name) override;

 protected:
  CNode* MakeNode(CInterface& core, CNode* parent) override;

 private:
  Track& m_track;
};

}  // namespace orv::rws::addon
