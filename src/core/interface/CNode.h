// A scene node as a rig sees it.
#pragma once

#include "core/interface/CExtendable.h"

namespace orv::rws {

/// A node of the host's scene. The core owns it; a pointer handed to a rig goes back by Release
/// where the operation that gave it says so.
class CNode : public CExtendable {
 public:
  virtual void Show() = 0;
  virtual void Hide() = 0;
  virtual bool IsVisible() = 0;
  /// Selects the node in the host, undoable.
  virtual void Select() = 0;
  /// Whether the host object still exists.
  virtual bool IsValid() = 0;
  /// Null at the root. The caller hands it back with CInterface::ReleaseNode.
  virtual CNode* GetParent() = 0;
  /// Transform children only.
  virtual int GetChildCount() = 0;
  /// The caller hands it back with CInterface::ReleaseNode.
  virtual CNode* GetChild(int index) = 0;
  virtual void Release() = 0;
  ~CNode() override = default;
};

}  // namespace orv::rws
