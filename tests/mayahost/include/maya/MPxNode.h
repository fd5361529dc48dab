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
    kHwShaderNode, kTransformNode, kObjectSet, kFluidEmitterNode, kImagePlaneNode, kParticleAttributeMapperNode, kCameraSetNode, kConstraintNode,
    kManipulatorNode, kClientDeviceNode, kThreadedDeviceNode, kAssembly, kSkinCluster, kGeometryFilter, kBlendShape, kLast
  };
  // clang-format on
  MPxNode() = default;
  virtual ~MPxNode() = default;
  enum SchedulingType { kParallel, kSerial, kGloballySerial, kUntrusted, kDefaultScheduling = kParallel };
  virtual SchedulingType schedulingType() const { return kDefaultScheduling; }
  virtual void postConstructor() {}
  virtual MStatus compute(const MPlug& plug, MDataBlock& block);
  virtual MStatus setDependentsDirty(const MPlug& plug, MPlugArray& affected);
  virtual MStatus connectionMade(const MPlug& plug, const MPlug& other, bool asSrc);
  virtual MStatus connectionBroken(const MPlug& plug, const MPlug& other, bool asSrc);
  virtual MStatus legalConnection(const MPlug& plug, const MPlug& other, bool asSrc, bool& isLegal) const;
  virtual bool getInternalValue(const MPlug&, MDataHandle&) { return false; }
  virtual bool setInternalValue(const MPlug&, const MDataHandle&) { return false; }
  virtual bool getInternalValueInContext(const MPlug& plug, MDataHandle& handle, MDGContext&) { return getInternalValue(plug, handle); }
  virtual bool setInternalValueInContext(const MPlug& plug, const MDataHandle& handle, MDGContext&) { return setInternalValue(plug, handle); }
  virtual MStatus shouldSave(const MPlug& plug, bool& result);
  virtual void copyInternalData(MPxNode*) {}
  virtual Type type() const { return kDependNode; }
  MTypeId typeId() const;
  MString typeName() const;
  MString name() const;
  MObject thisMObject() const;
  bool existWithoutInConnections(MStatus* status = NULL) const;
  bool existWithoutOutConnections(MStatus* status = NULL) const;
  bool doNotWrite(MStatus* status = NULL) const;
  MStatus setDoNotWrite(bool flag);
  static MStatus inheritAttributesFrom(const MString& parentType);
  static MStatus addAttribute(const MObject& attribute);
  static MStatus attributeAffects(const MObject& whenChanges, const MObject& isAffected);
  static MObject message, isHistoricallyInteresting, caching, state;

  std::weak_ptr<mayahost::Thing> thing;  ///< the stand-in's own

 protected:
  MDataBlock forceCache(MDGContext& context = MDGContext::fsNormal);
  void setMPSafe(bool) {}
  MStatus setExistWithoutInConnections(bool flag) { return fAloneIn = flag, MStatus::kSuccess; }
  MStatus setExistWithoutOutConnections(bool flag) { return fAloneOut = flag, MStatus::kSuccess; }

 private:
  bool fAloneIn = true, fAloneOut = true;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
