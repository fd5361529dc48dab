// The core's link to the host.
#pragma once

#include "core/CoreSubSystem.h"

namespace orv::rws {
class AdaptorInterface;
}

namespace orv::rws::core {

/// Holds the one adaptor, which is not owned.
class AdaptorManager : public CoreSubSystem {
 public:
  void SetAdaptor(AdaptorInterface* adaptor) { m_pAdaptor = adaptor; }
  AdaptorInterface* GetAdaptor() const { return m_pAdaptor; }

 private:
  AdaptorInterface* m_pAdaptor = nullptr;
};

}  // namespace orv::rws::core
