// The process-wide list of factories of script functions, by keyword.
#pragma once

#include "util/FactoryList.h"
#include "util/Singleton.h"

namespace orv::util {

/// Reached through `FactoryManager<T>::instance()`. Its factories die from the first to the last.
template <class T>
class FactoryManager : public FactoryList<T>, public Singleton<FactoryManager<T>> {
 public:
  ~FactoryManager() {
    for (auto* factory : this->m_factories) factory->destroy();
  }

 private:
  friend class Singleton<FactoryManager<T>>;
  FactoryManager() = default;
};

}  // namespace orv::util
