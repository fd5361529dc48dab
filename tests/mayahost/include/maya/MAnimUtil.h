// What is animated.
#pragma once
#include <maya/MDagPath.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MAnimUtil {
 public:
  static bool isAnimated(const MObject& node, bool checkParent = false, MStatus* status = NULL);
  static bool isAnimated(const MDagPath& path, bool checkParent = false, MStatus* status = NULL);
  static bool isAnimated(const MPlug& plug, bool checkParent = false, MStatus* status = NULL);
  static bool findAnimatedPlugs(const MObject& node, MPlugArray& plugs, bool checkParent = false, MStatus* status = NULL);
  static bool findAnimatedPlugs(const MDagPath& path, MPlugArray& plugs, bool checkParent = false, MStatus* status = NULL);
  static bool findAnimatedPlugs(const MSelectionList& list, MPlugArray& plugs, bool checkParent = false, MStatus* status = NULL);
  static bool findAnimatablePlugs(const MSelectionList& list, MPlugArray& plugs, MStatus* status = NULL);
  static bool findAnimation(const MPlug& plug, MObjectArray& curves, MStatus* status = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
