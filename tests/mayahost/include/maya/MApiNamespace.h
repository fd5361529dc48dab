// The namespace of the API's version, and names of its classes: what declares one of them outside
// of it has made an ambiguous name.
#pragma once
#include <maya/MTypes.h>

#define OPENMAYA_API_VERSION 20190000
#define OPENMAYA_MAJOR_NAMESPACE Autodesk::Maya::OpenMaya20190000
#define OPENMAYA_MAJOR_NAMESPACE_OPEN \
  namespace Autodesk {                \
  namespace Maya {                    \
  namespace OpenMaya20190000 {
#define OPENMAYA_MAJOR_NAMESPACE_CLOSE \
  }                                    \
  }                                    \
  }
#define OPENMAYA_MAJOR_NAMESPACE_USING using namespace OPENMAYA_MAJOR_NAMESPACE;
#define OPENMAYA_MAJOR_NAMESPACE_HEADER_OPEN OPENMAYA_MAJOR_NAMESPACE_OPEN
#define OPENMAYA_MAJOR_NAMESPACE_HEADER_CLOSE OPENMAYA_MAJOR_NAMESPACE_CLOSE
#define OPENMAYA_MAJOR_NAMESPACE_SOURCE_OPEN OPENMAYA_MAJOR_NAMESPACE_OPEN
#define OPENMAYA_MAJOR_NAMESPACE_SOURCE_CLOSE OPENMAYA_MAJOR_NAMESPACE_CLOSE
#define OPENMAYA_EXPORT

OPENMAYA_MAJOR_NAMESPACE_OPEN
// clang-format off
class M3dView; class MAngle; class MAnimControl; class MAnimCurveChange; class MAnimUtil; class MArgDatabase; class MArgList; class MArgParser;
class MCallbackIdArray; class MColor; class MColorArray; class MConditionMessage; class MDagModifier; class MDagPath; class MDagPathArray;
class MDataBlock; class MDataHandle; class MArrayDataHandle; class MDGContext; class MDGContextGuard; class MDGMessage; class MDGModifier;
class MDistance; class MDoubleArray; class MEulerRotation; class MEventMessage; class MFileIO; class MFloatArray; class MFloatPoint;
class MFloatPointArray; class MFloatVector; class MFloatVectorArray; class MFn; class MFnAnimCurve; class MFnAttribute; class MFnBase;
class MFnCamera; class MFnCompoundAttribute; class MFnDagNode; class MFnData; class MFnDependencyNode; class MFnEnumAttribute; class MFnIntArrayData;
class MFnDoubleArrayData; class MFnLambertShader; class MFnMatrixAttribute; class MFnMatrixData; class MFnMesh; class MFnMeshData;
class MFnMessageAttribute; class MFnNumericAttribute; class MFnNumericData; class MFnNurbsCurve; class MFnNurbsSurface; class MFnPlugin;
class MFnReference; class MFnSet; class MFnStringArrayData; class MFnStringData; class MFnTransform; class MFnTypedAttribute; class MFnUnitAttribute;
class MGlobal; class MIntArray; class MItDag; class MItDependencyNodes; class MItSelectionList; class MMatrix; class MMatrixArray; class MMessage;
class MMeshIsectAccelParams; class MNamespace; class MNodeMessage; class MObject; class MObjectArray; class MObjectHandle; class MPlug;
class MPlugArray; class MPoint; class MPointArray; class MPxCommand; class MPxNode; class MQtUtil; class MQuaternion; class MSceneMessage;
class MSelectionList; class MStatus; class MString; class MStringArray; class MSyntax; class MTime; class MTimeArray; class MTransformationMatrix;
class MTypeId; class MUintArray; class MUuid; class MVector; class MVectorArray;
// clang-format on
OPENMAYA_MAJOR_NAMESPACE_CLOSE
OPENMAYA_MAJOR_NAMESPACE_USING

namespace mayahost {
struct Thing;
struct Node;
struct PlugRef;
struct Data;
struct ModifierState;
struct CurveChangeState;
struct BlockState;
struct SyntaxState;
struct ArgState;
}  // namespace mayahost
