// The one object of its class in the process.
#pragma once

namespace orv::util {

/// Built on first use (the one step that is thread-safe) and destroyed at process exit. A class
/// with a private constructor names `Singleton<T>` its friend.
template <class T>
class Singleton {
 public:
  static T& instance() {
    static T object;
    return object;
  }
};

}  // namespace orv::util
