// An out-parameter across a module border.
#pragma once

namespace orv::util {

/// Names a value in the caller's frame, which the callee fills through `set`. As that is virtual,
/// it is the caller's module that assigns and allocates.
template <class T>
class ReturnValue {
 public:
  explicit ReturnValue(T& value) : target(&value) {}

  virtual T* get() { return target; }
  virtual const T* get() const { return target; }
  /// Assigns to the target and returns it. A reference to the target itself changes nothing.
  virtual T* set(const T& value) {
    if (target != &value) *target = value;
    return target;
  }

  T* target;  ///< not owned, never null
};

}  // namespace orv::util
