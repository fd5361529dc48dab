// Nodes of plug-ins.
#pragma once
#include <maya/MDataBlock.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

#include <memory>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPxNode {
 public:
  // clang-format off
  enum Type {
    kDependNode, kLocatorNode, kDeformerNode, kManipContainer, kSurfaceShape, kFieldNode, kEmitterNode, kSpringNode, kIkSolverNode, kHardwareShader,
    kHwShaderNode, kTransformNode, kObjectSet, kFluidEmitterNode, kImagePlaneNode, kParticleAttributeMapperNode, kLast
  };
  // clang-format on
  MPxNode() = default;
  virtual ~MPxNode() = default;
  virtual void postConstructor() {}
  virtual MStatus compute(const MPlug& plug, MDataBlock& block);
  virtual MStatus setDependentsDirty(const MPlug& plug, MPlugArray& affected);
  virtual MStatus connectionMade(const MPlug& plug, const MPlug& other, bool asSrc);
  virtual MStatus connectionBroken(const MPlug& plug, const MPlug& other, bool asSrc);
  virtual bool getInternalValueInContext(const MPlug&, MDataHandle&, MDGContext&) { return false; }
  virtual bool setInternalValueInContext(const MPlug&, const MDataHandle&, MDGContext&) { return false; }
  virtual void copyInternalData(MPxNode*) {}
  virtual bool isPassiveOutput(const MPlug&) const { return false; }
  virtual Type type() const { return kDependNode; }
  MTypeId typeId() const;
  MString typeName() const;
  MString name() const;
  MObject thisMObject() const;
  static MStatus addAttribute(const MObject& attribute);
  static MStatus attributeAffects(const MObject& whenChanges, const MObject& isAffected);
  static MObject message, isHistoricallyInteresting, caching, state;

  std::weak_ptr<mayahost::Thing> thing;  ///< the stand-in's own

 protected:
  MDataBlock forceCache(MDGContext& context = MDGContext::fsNormal);
  void setMPSafe(bool) {}
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
