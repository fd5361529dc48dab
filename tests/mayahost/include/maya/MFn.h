// Kinds of objects and function sets.
#pragma once
#include <maya/MApiNamespace.h>

// What an object of its kind is called by is the name itself. Those of animation curves, attributes, data and components
// stand together each.
// clang-format off
#define MAYAHOST_KINDS(X) \
  X(kInvalid) X(kBase) X(kNamedObject) X(kModel) X(kDependencyNode) X(kAddDoubleLinear) X(kAffect) X(kAnimCurve) X(kAnimCurveTimeToAngular) \
  X(kAnimCurveTimeToDistance) X(kAnimCurveTimeToTime) X(kAnimCurveTimeToUnitless) X(kAnimCurveUnitlessToAngular) X(kAnimCurveUnitlessToDistance) \
  X(kAnimCurveUnitlessToTime) X(kAnimCurveUnitlessToUnitless) X(kTime) X(kUnitConversion) X(kMultDoubleLinear) X(kBlendWeighted) X(kChoice) X(kCondition) \
  X(kDistanceBetween) X(kExpression) X(kScript) X(kReverse) X(kMultiplyDivide) X(kPlusMinusAverage) X(kClamp) X(kRemapValue) X(kDecomposeMatrix) \
  X(kPluginDependNode) X(kReference) X(kDisplayLayer) X(kRenderLayer) X(kAnimLayer) X(kGroupId) X(kGroupParts) X(kLambert) X(kReflect) X(kPhong) X(kBlinn) \
  X(kSurfaceShader) X(kDisplacementShader) X(kPlace2dTexture) X(kTexture2d) X(kFileTexture) X(kBump) X(kPairBlend) X(kCharacter) X(kSet) X(kShadingEngine) \
  X(kPartition) X(kPluginObjectSet) X(kGeometryFilt) X(kSkinClusterFilter) X(kBlendShape) X(kTweak) X(kPluginDeformerNode) X(kPolyCube) X(kPolySphere) \
  X(kPolyMesh) X(kMakeNurbCircle) X(kIkSystem) X(kIkSolver) X(kDagPose) X(kContainer) X(kDagNode) X(kUnderWorld) X(kTransform) X(kJoint) X(kIkHandle) \
  X(kIkEffector) X(kConstraint) X(kPointConstraint) X(kOrientConstraint) X(kScaleConstraint) X(kParentConstraint) X(kAimConstraint) X(kLookAt) \
  X(kPluginTransformNode) X(kWorld) X(kShape) X(kCamera) X(kLocator) X(kImagePlane) X(kPluginLocatorNode) X(kLight) X(kAmbientLight) X(kPointLight) \
  X(kDirectionalLight) X(kSpotLight) X(kAreaLight) X(kGeometric) X(kMesh) X(kNurbsCurve) X(kNurbsSurface) X(kLattice) X(kSubdiv) X(kParticle) X(kFluid) \
  X(kPluginShape) X(kAttribute) X(kNumericAttribute) X(kUnitAttribute) X(kTimeAttribute) X(kDoubleLinearAttribute) X(kDoubleAngleAttribute) \
  X(kTypedAttribute) X(kEnumAttribute) X(kMatrixAttribute) X(kFloatMatrixAttribute) X(kMessageAttribute) X(kCompoundAttribute) X(kAttribute2Double) \
  X(kAttribute3Double) X(kAttribute4Double) X(kAttribute2Float) X(kAttribute3Float) X(kAttribute2Int) X(kAttribute3Int) X(kAttribute2Short) \
  X(kAttribute3Short) X(kLightDataAttribute) X(kGenericAttribute) X(kData) X(kNumericData) X(kData2Double) X(kData3Double) X(kData4Double) X(kData2Float) \
  X(kData3Float) X(kData2Int) X(kData3Int) X(kData2Short) X(kData3Short) X(kStringData) X(kStringArrayData) X(kMatrixData) X(kIntArrayData) \
  X(kDoubleArrayData) X(kVectorArrayData) X(kPointArrayData) X(kMatrixArrayData) X(kComponentListData) X(kMeshData) X(kNurbsCurveData) \
  X(kNurbsSurfaceData) X(kPluginData) X(kComponent) X(kMeshPolygonComponent) X(kMeshVertComponent) X(kMeshEdgeComponent) X(kMeshFaceVertComponent) \
  X(kCurveCVComponent) X(kSurfaceCVComponent) X(kSingleIndexedComponent) X(kDoubleIndexedComponent) X(kPlugin) X(kControllerTag) X(kSelectionItem) \
  X(kUnknown) X(kUnknownDag) X(kUnknownTransform) X(kLast)
// clang-format on

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFn {
 public:
#define MAYAHOST_KIND(kind) kind,
  enum Type { MAYAHOST_KINDS(MAYAHOST_KIND) };
#undef MAYAHOST_KIND
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
