// Mark of classes that are created through a factory.
#pragma once

namespace orv::util {

/// A mix-in base without state. `T` is the class itself.
template <class T>
class DynamicCreator {
 public:
  virtual ~DynamicCreator() = default;
};

}  // namespace orv::util
