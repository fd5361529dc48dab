// A host under test, in words that all hosts share.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "util/Matrix.h"

namespace orv::tests {

using rws::CInterface;
using rws::CNode;
using rws::NodeIdentity;
using rws::core::CoreNode;
using util::Matrix;

using NodeList = std::vector<CoreNode*>;

/// An adaptor with a small scene, all in rig space (metres, Y up), playback range 0 to 4 s:
/// "Mover" is keyed at 0 and 4 s and moves from the origin to (4, 0, 0); "Hook" is an empty node
/// below it at (0, 1, 0); "Ground" is a mesh of two triangles, 10 m square in the plane y = 0 round
/// the origin, normal up; "Eye" is a camera with 40 degrees; "Path" is a polyline (0,0,0), (3,0,0),
/// (3,0,4).
class AdaptorFixture {
 public:
  virtual ~AdaptorFixture() = default;
  virtual rws::AdaptorInterface& Adaptor() = 0;
  /// A node of the scene above; null when it is not there.
  virtual CoreNode* UserNode(const std::string& sceneName) = 0;
  /// Frame rates that the host knows, the scene's own first: 59.94 may be 60000/1001.
  virtual std::vector<double> Rates() = 0;
  virtual void SetFrameRate(double fps) = 0;
  /// One metre in the host's unit of length.
  virtual double Metre() = 0;
  virtual bool IsZUp() = 0;
  /// Where a node stands in the host's own words: its unit and its axes.
  virtual Matrix<double> HostWorld(CoreNode* node, double time) = 0;
  /// Saves the scene and opens it anew: every node pointer is gone.
  virtual void Reopen() = 0;
  /// A scene file with the node "Crate" at (0, 0, 2) and "Lid" below it.
  virtual std::string ImportFile() = 0;
  /// Title and text of all that ShowMessage was asked to show.
  virtual std::vector<std::pair<std::string, std::string>>& Messages() = 0;
  /// Names of the entries that the host's undo would take back, oldest first.
  virtual std::vector<std::string> UndoEntries() = 0;
};

}  // namespace orv::tests
