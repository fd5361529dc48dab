// Values of an array attribute within a node's computation.
#pragma once
#include <maya/MDataHandle.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArrayDataHandle {
 public:
  explicit MArrayDataHandle(const MPlug& plug = MPlug(), bool output = false) : fPlug(plug), fOutput(output) {}
  unsigned int elementCount(MStatus* status = NULL);
  unsigned int elementIndex(MStatus* status = NULL);
  MStatus next();
  MStatus jumpToElement(unsigned int logicalIndex);
  MStatus jumpToArrayElement(unsigned int position);
  MDataHandle inputValue(MStatus* status = NULL);
  MDataHandle outputValue(MStatus* status = NULL);
  MStatus setClean();
  MStatus setAllClean() { return setClean(); }

 private:
  MPlug fPlug;
  bool fOutput = false;
  unsigned int fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
