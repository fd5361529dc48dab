// Makes the elements of an array attribute.
#pragma once
#include <maya/MDataHandle.h>

#include <set>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArrayDataBuilder {
 public:
  MArrayDataBuilder(MDataBlock* block, const MObject& attribute, unsigned int count, MStatus* status = NULL);
  explicit MArrayDataBuilder(const MPlug& plug);
  MDataHandle addElement(unsigned int index, MStatus* status = NULL);
  MDataHandle addLast(MStatus* status = NULL);
  MArrayDataHandle addElementArray(unsigned int index, MStatus* status = NULL);
  MArrayDataHandle addLastArray(MStatus* status = NULL);
  MStatus removeElement(unsigned int index);
  MStatus growArray(unsigned int) { return MStatus::kSuccess; }
  unsigned int elementCount(MStatus* status = NULL) const;

  MPlug plug;  ///< the stand-in's own, with the elements that are to be there
  std::set<int> elements;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
