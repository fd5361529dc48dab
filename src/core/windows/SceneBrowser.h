// The host's scene as the main window shows it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "util/Vector3.h"

namespace orv::rws::core::windows {

/// Nodes, their poses and the list of undo, of a program whose host has no windows of its own for
/// that. Nodes go by a key above 0 that stays theirs while their scene is open. What changes the
/// scene is one undo step each; an empty answer means success, any other says why not, for the user
/// and translated. Main thread only.
class SceneBrowser {
 public:
  enum class Type { kGroup, kMesh, kCurve, kCamera };

  struct Node {
    int key = 0;
    int parent = 0;  ///< 0: the world
    Type type = Type::kGroup;
    std::string name;
    bool keyed = false;  ///< has keys of its own
    bool ofRig = false;
  };

  enum class Space { kParent, kWorld };

  struct Pose {
    util::Vector3<double> translation;  ///< m
    util::Vector3<double> rotation;     ///< degrees: about X first, then Y, then Z
    util::Vector3<double> scale{1.0, 1.0, 1.0};
  };

  /// Names of the steps, oldest first; those before `position` are in force.
  struct UndoSteps {
    std::vector<std::string> names;
    std::size_t position = 0;
  };

  /// A car of the user's: keys of its body and of the wheels front left, front right, back left and
  /// back right.
  struct Car {
    int body = 0;
    std::array<int, 4> wheels{};
  };

  class Observer {
   public:
    virtual ~Observer() = default;
    /// Nodes have come, gone, moved or been renamed, or another scene has come. Told of each
    /// change.
    virtual void OnNodes() {}
    virtual void OnNodeSelection() {}
    /// Poses, keys, time or undo may be others.
    virtual void OnRefresh() {}
  };

  virtual ~SceneBrowser() = default;
  virtual void AddObserver(Observer& observer) = 0;
  virtual void RemoveObserver(Observer& observer) = 0;

  /// All, parents before their children, in the order of the tree.
  virtual std::vector<Node> GetNodes() = 0;
  /// Keys, in the order of their selection.
  virtual std::vector<int> GetSelection() = 0;
  virtual void Select(const std::vector<int>& keys) = 0;
  /// Nodes of a rig and what the user has hung on them, by the rig's row.
  virtual std::vector<int> GetDriven(int rigRow) = 0;

  /// At the present time. False when the node is gone.
  virtual bool GetPose(int key, Space space, Pose& pose) = 0;
  /// Properties with keys get one at the present time.
  virtual std::string SetPose(int key, Space space, const Pose& pose) = 0;
  /// 0: under the world. World poses stay.
  virtual std::string MoveUnder(const std::vector<int>& keys, int parent) = 0;

  /// The rig meets these meshes from then on. `told` is what it meets.
  virtual std::string UseAsGround(int rigRow, const std::vector<int>& keys, std::string& told) = 0;
  /// Why this rig can't be fitted to any car; empty when it can.
  virtual std::string WhyNotFit(int rigRow) = 0;
  /// What the names of the nodes say; 0 where they say nothing.
  virtual Car GuessCar(int key) = 0;
  /// `told` is what the user should look at.
  virtual std::string FitCar(int rigRow, const Car& car, std::string& told) = 0;

  virtual std::string SetFrameRate(double fps) = 0;
  virtual UndoSteps GetUndoSteps() = 0;
  /// Undoes or redoes until so many steps are in force; false when that can't be, as in a take.
  virtual bool GoToStep(std::size_t position) = 0;
};

}  // namespace orv::rws::core::windows
