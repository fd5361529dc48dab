// Lights.
#pragma once
#include <maya/MColor.h>
#include <maya/MFnDagNode.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnLight : public MFnDagNode {
  declareDagMFn(MFnLight)
  MColor color(MStatus* status = NULL) const;
  MStatus setColor(const MColor& color);
  float intensity(MStatus* status = NULL) const;
  MStatus setIntensity(const float& intensity);
  bool useRayTraceShadows(MStatus* status = NULL) const;
  MStatus setUseRayTraceShadows(const bool& use);

 protected:
  /// A light with its transform, which is what is told.
  MObject Make(const char* type, const MObject& parent, MStatus* status);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
