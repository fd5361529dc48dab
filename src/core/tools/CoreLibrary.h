// The library of the compiled rigs.
#pragma once

#include <vector>

#include "core/tools/Library.h"

namespace orv::rws {
class CCameraPlugin;
}

namespace orv::rws::core {

class InstanceHost;

/// Wraps each rig factory that it is handed in a tool. The factories stay the caller's and must
/// outlive the library. One with another interface version, without an id, or with an id that is
/// taken is left out with an error in the log.
class CoreLibrary : public Library {
 public:
  CoreLibrary(InstanceHost& host, std::vector<CCameraPlugin*> rigs);
  void Load() override;

 private:
  bool IsUsable(CCameraPlugin* rig) const;

  InstanceHost& m_host;
  std::vector<CCameraPlugin*> m_rigs;
};

}  // namespace orv::rws::core
