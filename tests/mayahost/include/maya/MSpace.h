// Which space values are told in.
#pragma once
#include <maya/MApiNamespace.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MSpace {
 public:
  enum Space { kInvalid = 0, kTransform = 1, kPreTransform = 2, kPostTransform = 3, kObject = 2, kWorld = 4, kLast };
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
