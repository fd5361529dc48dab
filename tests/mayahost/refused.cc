// Not to be compiled: what is declared here is not the API's own.
class MObject;
#include <maya/MFnDagNode.h>
MStatus Hide(MObject& node) {
  return MFnDagNode(node).setIntermediateObject(true);
}
