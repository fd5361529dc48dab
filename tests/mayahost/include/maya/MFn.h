// Kinds of objects and function sets.
#pragma once
#include <maya/MApiNamespace.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFn {
 public:
  // clang-format off
  enum Type {
    kInvalid, kBase, kNamedObject, kModel, kDependencyNode, kAnimCurve, kAnimCurveTimeToAngular, kAnimCurveTimeToDistance, kAnimCurveTimeToTime,
    kAnimCurveTimeToUnitless, kAnimCurveUnitlessToAngular, kAnimCurveUnitlessToDistance, kAnimCurveUnitlessToTime, kAnimCurveUnitlessToUnitless, kTime,
    kUnitConversion, kPluginDependNode, kReference, kDisplayLayer, kAnimLayer, kLambert, kPhong, kBlinn, kPlace2dTexture, kTexture2d, kFileTexture,
    kPairBlend, kCharacter, kSet, kShadingEngine, kDagNode, kTransform, kJoint, kConstraint, kPluginTransformNode, kWorld, kShape, kCamera, kLocator,
    kPluginLocatorNode, kLight, kPointLight, kDirectionalLight, kGeometric, kMesh, kNurbsCurve, kNurbsSurface, kPluginShape, kAttribute,
    kNumericAttribute, kUnitAttribute, kTimeAttribute, kDoubleLinearAttribute, kDoubleAngleAttribute, kTypedAttribute, kEnumAttribute, kMatrixAttribute,
    kMessageAttribute, kCompoundAttribute, kAttribute2Double, kAttribute3Double, kAttribute3Float, kGenericAttribute, kData, kNumericData, kData3Double,
    kData3Float, kStringData, kStringArrayData, kMatrixData, kIntArrayData, kDoubleArrayData, kVectorArrayData, kPointArrayData, kMeshData,
    kNurbsCurveData, kNurbsSurfaceData, kPluginData, kComponent, kMeshPolygonComponent, kMeshVertComponent, kMeshEdgeComponent, kSingleIndexedComponent,
    kPlugin, kControllerTag, kUnknown, kLast
  };
  // clang-format on
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
