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
class M3dView; class MAngle; class MAnimControl; class MAnimCurveChange; class MAnimCurveClipboard; class MAnimCurveClipboardItem;
class MAnimCurveClipboardItemArray; class MAnimMessage; class MAnimUtil; class MArgDatabase; class MArgList; class MArgParser; class MArrayDataBuilder;
class MArrayDataHandle; class MBoundingBox; class MCallbackIdArray; class MColor; class MColorArray; class MCommandMessage; class MCommandResult;
class MCommonRenderSettingsData; class MComputation; class MConditionMessage; class MCursor; class MDagMessage; class MDagModifier; class MDagPath;
class MDagPathArray; class MDataBlock; class MDataHandle; class MDGContext; class MDGContextGuard; class MDGMessage; class MDGModifier; class MDistance;
class MDoubleArray; class MDrawRegistry; class MEulerRotation; class MEvaluationManager; class MEvaluationNode; class MEvent; class MEventMessage;
class MExternalContentInfoTable; class MFileIO; class MFileObject; class MFloatArray; class MFloatMatrix; class MFloatPoint; class MFloatPointArray;
class MFloatVector; class MFloatVectorArray; class MFn; class MFnAmbientLight; class MFnAnimCurve; class MFnArrayAttrsData; class MFnAssembly;
class MFnAttribute; class MFnBase; class MFnBlendShapeDeformer; class MFnBlinnShader; class MFnCamera; class MFnCharacter; class MFnClip; class MFnComponent;
class MFnComponentListData; class MFnCompoundAttribute; class MFnContainerNode; class MFnDagNode; class MFnData; class MFnDependencyNode;
class MFnDirectionalLight; class MFnDoubleArrayData; class MFnDoubleIndexedComponent; class MFnEnumAttribute; class MFnExpression; class MFnFluid;
class MFnGenericAttribute; class MFnGeometryFilter; class MFnIkEffector; class MFnIkHandle; class MFnIkJoint; class MFnIntArrayData; class MFnLambertShader;
class MFnLattice; class MFnLatticeDeformer; class MFnLayeredShader; class MFnLight; class MFnMatrixArrayData; class MFnMatrixAttribute; class MFnMatrixData;
class MFnMesh; class MFnMeshData; class MFnMessageAttribute; class MFnNumericAttribute; class MFnNumericData; class MFnNurbsCurve; class MFnNurbsCurveData;
class MFnNurbsSurface; class MFnNurbsSurfaceData; class MFnParticleSystem; class MFnPartition; class MFnPhongShader; class MFnPlugin; class MFnPluginData;
class MFnPointArrayData; class MFnPointLight; class MFnReference; class MFnReflectShader; class MFnSet; class MFnSingleIndexedComponent;
class MFnSkinCluster; class MFnSpotLight; class MFnStringArrayData; class MFnStringData; class MFnSubd; class MFnTransform; class MFnTypedAttribute;
class MFnUInt64ArrayData; class MFnUnicodeStringData; class MFnUnitAttribute; class MFnVectorArrayData; class MFnVolumeLight; class MFnWeightGeometryFilter;
class MGlobal; class MIffFile; class MImage; class MInt64Array; class MIntArray; class MItCurveCV; class MItDag; class MItDependencyGraph;
class MItDependencyNodes; class MIteratorType; class MItGeometry; class MItKeyframe; class MItMeshEdge; class MItMeshFaceVertex; class MItMeshPolygon;
class MItMeshVertex; class MItSelectionList; class MItSubdVertex; class MItSurfaceCV; class MLibrary; class MLockMessage; class MMatrix; class MMatrixArray;
class MMeshIntersector; class MMeshIsectAccelParams; class MMeshSmoothOptions; class MMessage; class MModelMessage; class MNamespace; class MNodeClass;
class MNodeMessage; class MObject; class MObjectArray; class MObjectHandle; class MObjectSetMessage; class MPaintMessage; class MPlug; class MPlugArray;
class MPoint; class MPointArray; class MPointOnMesh; class MPolyMessage; class MProgressWindow; class MPxCacheFormat; class MPxCommand; class MPxConstraint;
class MPxContext; class MPxContextCommand; class MPxData; class MPxDeformerNode; class MPxFileTranslator; class MPxHardwareShader; class MPxIkSolverNode;
class MPxLocatorNode; class MPxManipContainer; class MPxNode; class MPxObjectSet; class MPxSurfaceShape; class MPxTransform; class MPxTransformationMatrix;
class MQtUtil; class MQuaternion; class MRampAttribute; class MRenderUtil; class MSceneMessage; class MSelectionList; class MSetAttrEdit; class MSpace;
class MStatus; class MStreamUtils; class MString; class MStringArray; class MSyntax; class MTime; class MTimeArray; class MTimer; class MTimerMessage;
class MTransformationMatrix; class MTrimBoundaryArray; class MTypeId; class MUIDrawManager; class MUint64Array; class MUintArray; class MUserEventMessage;
class MUuid; class MVector; class MVectorArray; class MWeight;
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
struct HandleState;
struct SyntaxState;
struct ArgState;
}  // namespace mayahost
