// What the two kinds of factory manager have in common.
#pragma once

#include <string>
#include <vector>

namespace orv::util {

/// Owns factories in order of registration. `T::Factory` derives from `DynamicObject` and has
/// `name()`, `create(tag)` and, where it is chosen by a document's tag, `matches(tag)`.
template <class T>
class FactoryList {
 public:
  using Factory = typename T::Factory;

  FactoryList(const FactoryList&) = delete;
  FactoryList& operator=(const FactoryList&) = delete;

  /// Takes ownership. If the name is taken the new factory is destroyed at once, the first one
  /// stays, and the result is false; so too for null, and for one that is here already.
  bool add(Factory* factory) {
    if (!factory) return false;
    if (const Factory* first = find(factory->name())) {
      if (first != factory) factory->destroy();
      return false;
    }
    m_factories.push_back(factory);
    return true;
  }

  /// The factory of exactly this name, or null.
  Factory* find(const std::string& name) const {
    for (Factory* factory : m_factories)
      if (factory->name() == name) return factory;
    return nullptr;
  }

  /// The first factory that takes this tag, or null.
  template <class Tag>
  Factory* match(Tag&& tag) const {
    for (Factory* factory : m_factories)
      if (factory->matches(tag)) return factory;
    return nullptr;
  }

  /// The object that the first matching factory makes of the tag; null when none does.
  template <class Tag>
  T* create(Tag&& tag) const {
    Factory* factory = match(tag);
    return factory ? factory->create(tag) : nullptr;
  }

  const std::vector<Factory*>& factories() const { return m_factories; }

 protected:
  FactoryList() = default;
  ~FactoryList() = default;

  std::vector<Factory*> m_factories;
};

}  // namespace orv::util
