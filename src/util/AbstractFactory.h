// The process-wide list of factories of one class, by name.
#pragma once

#include "util/FactoryList.h"
#include "util/Singleton.h"

namespace orv::util {

/// Reached through `AbstractFactory<T>::instance()`. Its factories die from the last to the first.
template <class T>
class AbstractFactory : public FactoryList<T>, public Singleton<AbstractFactory<T>> {
 public:
  ~AbstractFactory() {
    for (auto it = this->m_factories.rbegin(); it != this->m_factories.rend(); ++it)
      (*it)->destroy();
  }

 private:
  friend class Singleton<AbstractFactory<T>>;
  AbstractFactory() = default;
};

}  // namespace orv::util
