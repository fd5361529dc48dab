// An object that may go away.
#pragma once
#include <maya/MObject.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MObjectHandle {
 public:
  MObjectHandle() = default;
  MObjectHandle(const MObject& object) : fThing(object.thing) {}
  MObject object() const { return MObject(fThing.lock()); }
  MObject objectRef() const { return object(); }
  bool isValid() const;
  bool isAlive() const { return !fThing.expired(); }
  unsigned int hashCode() const;
  bool operator==(const MObjectHandle& o) const { return object() == o.object(); }
  bool operator!=(const MObjectHandle& o) const { return !(*this == o); }
  bool operator==(const MObject& o) const { return object() == o; }
  bool operator!=(const MObject& o) const { return object() != o; }

 private:
  std::weak_ptr<mayahost::Thing> fThing;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
