// Numbered calls beside the virtual operations of an interface.
#pragma once

#include <cstdint>
#include <vector>

namespace orv::rws {

/// Base of every class on the rig interface. An extension is a numbered call that needs no virtual
/// operation of its own, so that the order of the slots never changes.
class CExtendable {
 public:
  virtual ~CExtendable() = default;

  /// Runs the extension `code`. The meaning of `a` and `b` belongs to the code; 0 means that this
  /// object does not handle it. The result is wide enough for a pointer.
  virtual std::intptr_t Extension(int code, void* a, void* b);
  /// Appends the codes that this object answers.
  virtual void GetExtensions(std::vector<int>& out);
  /// Whether GetExtensions lists `code`.
  virtual bool HasExtension(int code);
};

/// Extension codes that a CNode answers.
enum NodeExtension : int {
  kBeginGroupSelection = 10,  ///< later Select calls add to one host selection
  kEndGroupSelection = 11,
  kForgetTransformKeys = 17,  ///< drop the cached key state of the transform
  kForgetShapeKeys = 18,      ///< drop the cached key state of the shape
  kHandOver = 31,             ///< hands this node to the CNode in `a`, which acts on it
  kRename = 32,               ///< `a` points to a std::string with the new name
  kAdaptorBookkeeping = 37,   ///< the host adaptor's own
  kWrittenByRig = 61,         ///< the rig writes this node in every frame of a take: until it first
                              ///< does, the node holds the pose of the take's start
  kIsSameNode = 62,           ///< 1 when the CNode in `a` is the same host object, else -1
  kAcquireCurve = 63,  ///< the node's curve at the time (s) that `a`, a const double*, points
                       ///< to: a CSnapshot_Shape*, which goes back by
                       ///< CInterface::ReleaseNode; 0 when the node holds no curve
  kShareMesh = 64,     ///< the node shows the mesh and the colour of the CNode in `a` from here on,
                       ///< of which both then hold one copy: 1, or -1 when that is no mesh
  kReadName = 65,      ///< the node's own name in the scene goes to the std::string in `a`
  kIsOfRig = 66,       ///< 1 when a rig made the node, else -1
  kMayMove = 67,  ///< 1 when the node's world pose may change over time or in the running take,
                  ///< else -1
};

}  // namespace orv::rws
