// Number of a node type.
#pragma once
#include <maya/MStatus.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MTypeId {
 public:
  MTypeId() = default;
  MTypeId(unsigned int id) : fId(id) {}
  MTypeId(unsigned int prefix, unsigned int id) : fId((prefix << 8) | id) {}
  unsigned int id() const { return fId; }
  MTypeId& operator=(unsigned int id) { return fId = id, *this; }
  bool operator==(const MTypeId& o) const { return fId == o.fId; }
  bool operator!=(const MTypeId& o) const { return fId != o.fId; }

 private:
  unsigned int fId = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
