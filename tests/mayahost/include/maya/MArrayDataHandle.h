// Values of an array attribute within a node's computation.
#pragma once
#include <maya/MArrayDataBuilder.h>
#include <maya/MDataHandle.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArrayDataHandle {
 public:
  MArrayDataHandle(const MDataHandle& handle, MStatus* status = NULL);
  explicit MArrayDataHandle(const MPlug& plug = MPlug(), bool output = false) : fPlug(plug), fOutput(output) {}
  unsigned int elementCount(MStatus* status = NULL);
  unsigned int elementIndex(MStatus* status = NULL);
  MStatus next();
  MStatus jumpToElement(unsigned int logicalIndex);
  MStatus jumpToArrayElement(unsigned int position);
  MDataHandle inputValue(MStatus* status = NULL);
  MDataHandle outputValue(MStatus* status = NULL);
  MArrayDataHandle inputArrayValue(MStatus* status = NULL) { return MArrayDataHandle(inputValue(status)); }
  MArrayDataHandle outputArrayValue(MStatus* status = NULL) { return MArrayDataHandle(outputValue(status)); }
  MArrayDataBuilder builder(MStatus* status = NULL);
  MStatus set(const MArrayDataBuilder& builder);
  MStatus setClean();
  MStatus setAllClean();

 private:
  MPlug fPlug;
  bool fOutput = false;
  unsigned int fAt = 0;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
