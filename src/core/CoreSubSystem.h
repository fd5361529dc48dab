// Base of the parts that the core is made of.
#pragma once

#include <vector>

namespace orv::rws::core {

class CoreImplementation;

/// A part of the core. All live as bases of CoreImplementation and are built in its base order.
class CoreSubSystem {
 public:
  CoreSubSystem(const CoreSubSystem&) = delete;
  CoreSubSystem& operator=(const CoreSubSystem&) = delete;

  /// Called on every subsystem once the core stands.
  virtual void OnCoreReady() {}
  /// The core. Before it is set, a message box tells of the mistake and the answer is null.
  CoreImplementation* GetCore() const;
  virtual ~CoreSubSystem();

 protected:
  CoreSubSystem();

 private:
  friend class CoreImplementation;

  /// The process-wide list that constructors append to while it is open.
  static std::vector<CoreSubSystem*>& OpenList();
  static bool s_listClosed;

  CoreImplementation* m_pCore = nullptr;
};

}  // namespace orv::rws::core
