// The values of a node within its computation.
#pragma once
#include <maya/MArrayDataHandle.h>
#include <maya/MDataHandle.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDataBlock {
 public:
  MDataHandle inputValue(const MPlug& plug, MStatus* status = NULL);
  MDataHandle inputValue(const MObject& attribute, MStatus* status = NULL);
  MDataHandle outputValue(const MPlug& plug, MStatus* status = NULL);
  MDataHandle outputValue(const MObject& attribute, MStatus* status = NULL);
  MArrayDataHandle inputArrayValue(const MPlug& plug, MStatus* status = NULL);
  MArrayDataHandle inputArrayValue(const MObject& attribute, MStatus* status = NULL);
  MArrayDataHandle outputArrayValue(const MPlug& plug, MStatus* status = NULL);
  MArrayDataHandle outputArrayValue(const MObject& attribute, MStatus* status = NULL);
  MStatus setClean(const MPlug& plug);
  MStatus setClean(const MObject& attribute);
  bool isClean(const MPlug& plug);
  MDGContext context() const;
  mayahost::Node* node = NULL;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
