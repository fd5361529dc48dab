// A handle on something inside the host.
#pragma once
#include <maya/MFn.h>
#include <maya/MStatus.h>

#include <memory>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MObject {
 public:
  MObject() = default;
  explicit MObject(std::shared_ptr<mayahost::Thing> t) : thing(std::move(t)) {}
  bool hasFn(MFn::Type type) const;
  bool isNull() const { return !thing; }
  MFn::Type apiType() const;
  const char* apiTypeStr() const;
  bool operator==(const MObject& o) const { return thing == o.thing; }
  bool operator!=(const MObject& o) const { return thing != o.thing; }
  static MObject kNullObj;

  std::shared_ptr<mayahost::Thing> thing;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
