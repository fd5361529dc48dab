// Locators of plug-ins. What they would draw is left out: there are no views to draw in.
#pragma once
#include <maya/MBoundingBox.h>
#include <maya/MPxNode.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPxLocatorNode : public MPxNode {
 public:
  virtual bool isBounded() const { return false; }
  virtual MBoundingBox boundingBox() const { return {}; }
  virtual bool isTransparent() const { return false; }
  virtual bool drawLast() const { return false; }
  virtual bool excludeAsLocator() const { return true; }
  Type type() const override { return kLocatorNode; }
  static MObject localPosition, localPositionX, localPositionY, localPositionZ, localScale, localScaleX, localScaleY, localScaleZ, worldMatrix, matrix,
      inverseMatrix, parentMatrix, parentInverseMatrix, worldInverseMatrix, visibility, intermediateObject;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
