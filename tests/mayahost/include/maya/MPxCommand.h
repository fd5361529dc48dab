// Commands of plug-ins.
#pragma once
#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

#include <string>
#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPxCommand {
 public:
  MPxCommand() = default;
  virtual ~MPxCommand() = default;
  virtual MStatus doIt(const MArgList& args);
  virtual MStatus undoIt() { return MStatus::kSuccess; }
  virtual MStatus redoIt() { return MStatus::kSuccess; }
  virtual bool isUndoable() const { return false; }
  virtual bool hasSyntax() const { return false; }
  MSyntax syntax() const;
  bool isHistoryOn() const { return true; }
  void setHistoryOn(bool) {}
  MString commandString() const { return line; }
  void setCommandString(const MString& text) { line = text; }
  static void displayInfo(const MString& text) { MGlobal::displayInfo(text); }
  static void displayWarning(const MString& text, bool = false) { MGlobal::displayWarning(text); }
  static void displayError(const MString& text, bool = false) { MGlobal::displayError(text); }
  enum MResultType { kLong = MSyntax::kLong, kDouble = MSyntax::kDouble, kString = MSyntax::kString, kNoArg = MSyntax::kNoArg };
  static MResultType currentResultType();
  static bool isCurrentResultArray();
  static int currentIntResult(MStatus* status = NULL);
  static double currentDoubleResult(MStatus* status = NULL);
  static MString currentStringResult(MStatus* status = NULL);
  static void clearResult();
  static void setResult(unsigned int value);
  static void setResult(int value);
  static void setResult(bool value);
  static void setResult(double value);
  static void setResult(const char* value) { setResult(MString(value)); }
  static void setResult(const MString& value);
  static void setResult(const MIntArray& value);
  static void setResult(const MDoubleArray& value);
  static void setResult(const MStringArray& value);
  static void appendToResult(int value);
  static void appendToResult(unsigned int value) { appendToResult(static_cast<int>(value)); }
  static void appendToResult(bool value) { appendToResult(static_cast<int>(value)); }
  static void appendToResult(const MIntArray& values);
  static void appendToResult(const MDoubleArray& values);
  static void appendToResult(const MStringArray& values);
  static void appendToResult(double value);
  static void appendToResult(const MString& value);
  static void appendToResult(const char* value) { appendToResult(MString(value)); }

  MString line, name;  ///< the stand-in's own

 protected:
  void setUndoable(bool) {}
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
