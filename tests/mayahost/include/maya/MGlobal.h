// The program as a whole.
#pragma once
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MGlobal {
 public:
  enum MMayaState { kInteractive = 0, kBatch, kLibraryApp, kBaseUIMode };
  enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };
  enum SelectionMode { kSelectObjectMode, kSelectComponentMode, kSelectRootMode, kSelectLeafMode, kSelectTemplateMode };
  static MMayaState mayaState(MStatus* status = NULL);
  static int apiVersion() { return MAYA_API_VERSION; }
  static MString mayaVersion() { return "2019"; }
  static MString mayaName() { return "Maya"; }
  static bool isYAxisUp(MStatus* status = NULL);
  static bool isZAxisUp(MStatus* status = NULL);
  static MStatus setYAxisUp(bool rotateView = false);
  static MStatus setZAxisUp(bool rotateView = false);
  static MVector upAxis(MStatus* status = NULL);
  static MStatus getActiveSelectionList(MSelectionList& list, bool orderedSelectionIfAvailable = false);
  static MStatus setActiveSelectionList(const MSelectionList& list, ListAdjustment how = kReplaceList);
  static MStatus select(const MObject& object, ListAdjustment how = kAddToList);
  static MStatus select(const MDagPath& path, const MObject& component, ListAdjustment how = kAddToList);
  static MStatus selectByName(const MString& name, ListAdjustment how = kAddToList);
  static MStatus unselect(const MObject& object);
  static MStatus unselect(const MDagPath& path, const MObject& component = MObject::kNullObj);
  static MStatus clearSelectionList();
  static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
  static MStatus addToModel(MObject& object, MObject& parent = MObject::kNullObj);
  static MStatus removeFromModel(MObject& object);
  static MStatus deleteNode(MObject& object);
  static MStatus executeCommand(const MString& command, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, int& result, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, double& result, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, MString& result, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, MStringArray& result, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, MIntArray& result, bool display = false, bool undo = false);
  static MStatus executeCommand(const MString& command, MDoubleArray& result, bool display = false, bool undo = false);
  static MString executeCommandStringResult(const MString& command, bool display = false, bool undo = false, MStatus* status = NULL);
  static MStatus executeCommandOnIdle(const MString& command, bool display = false);
  static bool isUndoing();
  static bool isRedoing();
  static void displayInfo(const MString& text);
  static void displayWarning(const MString& text, bool showLineNumber = false);
  static void displayError(const MString& text, bool showLineNumber = false);
  static MStatus viewFrame(const MTime& time);
  static MStatus viewFrame(double frame);
  static bool isSelected(MObject& object);
  static MStatus unselectByName(const MString& name);
  static SelectionMode selectionMode(MStatus* status = NULL);
  static MStatus setSelectionMode(SelectionMode mode);
  static MStatus selectCommand(const MSelectionList& list, ListAdjustment how = kReplaceList);
  static MStatus getAssociatedSets(const MSelectionList& list, MSelectionList& sets);
  static MStatus sourceFile(const MString& file);
  static MStatus executeCommand(const MString& command, MCommandResult& result, bool display = false, bool undo = false);
  /// There is no Python here.
  static MStatus executePythonCommand(const MString& command, bool display = false, bool undo = false);
  static MStatus getFunctionSetList(MObject object, MStringArray& names);
  static double optionVarDoubleValue(const MString& name, bool* exists = NULL);
  static bool setOptionVarValue(const MString& name, double value);
  static bool initOptionVar(const MString& name, int value, const MString& = MString()) { return !optionVarExists(name) && setOptionVarValue(name, value); }
  static bool initOptionVar(const MString& name, double value, const MString& = MString()) { return !optionVarExists(name) && setOptionVarValue(name, value); }
  static bool initOptionVar(const MString& name, const MString& value, const MString& = MString()) {
    return !optionVarExists(name) && setOptionVarValue(name, value);
  }
  static MString optionVarStringValue(const MString& name, bool* exists = NULL);
  static int optionVarIntValue(const MString& name, bool* exists = NULL);
  static bool optionVarExists(const MString& name);
  static bool setOptionVarValue(const MString& name, const MString& value);
  static bool setOptionVarValue(const MString& name, int value);
  static bool removeOptionVar(const MString& name);
  static MStatus startErrorLogging(const MString& file = MString());
  static MStatus closeErrorLog();
  static MString errorLogPathName(MStatus* status = NULL);
  static bool errorLoggingIsOn(MStatus* status = NULL);
  static MStatus doErrorLogEntry(const MString& text);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
