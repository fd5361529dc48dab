// Plain shaders.
#pragma once
#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnLambertShader : public MFnDependencyNode {
  declareMinimalMFn(MFnLambertShader)
  MObject create(bool unique = true, MStatus* status = NULL);
  MColor color(MStatus* status = NULL) const;
  MStatus setColor(const MColor& color);
  MColor transparency(MStatus* status = NULL) const;
  MStatus setTransparency(const MColor& color);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
