// Root of objects that are created by name or handed across subsystem borders.
#pragma once

namespace orv::util {

/// Whoever is handed such an object releases it by `destroy`, so that the module which allocated it
/// also frees it.
class DynamicObject {
 public:
  DynamicObject() = default;
  DynamicObject(const DynamicObject&) = default;
  DynamicObject& operator=(const DynamicObject&) = default;

  /// Deletes the object. Use the free `destroy` where the pointer may be null.
  virtual void destroy() { delete this; }
  virtual ~DynamicObject() = default;
};

/// Destroys the object, or does nothing on null.
inline void destroy(DynamicObject* object) {
  if (object) object->destroy();
}

}  // namespace orv::util
