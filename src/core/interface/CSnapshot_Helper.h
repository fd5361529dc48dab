// Display attributes of a helper mesh.
#pragma once

#include "core/interface/CExtendable.h"

namespace orv::util {
class CMesh;
}

namespace orv::rws {

/// Drives the display of a helper mesh.
class CSnapshot_Helper : public CExtendable {
 public:
  /// Replaces the geometry, undoably.
  virtual void SetMesh(const util::CMesh& mesh) = 0;
  virtual void SetColor(float r, float g, float b) = 0;
  /// A hint that an adaptor may ignore.
  virtual void SetXRay(bool on) = 0;
  /// A hint that an adaptor may ignore.
  virtual void SetLocked(bool on) = 0;
  ~CSnapshot_Helper() override = default;
};

}  // namespace orv::rws
