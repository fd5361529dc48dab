// Arguments by a syntax.
#pragma once
#include <maya/MAngle.h>
#include <maya/MArgList.h>
#include <maya/MDistance.h>
#include <maya/MSelectionList.h>
#include <maya/MSyntax.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArgParser {
 public:
  MArgParser(const MSyntax& syntax, const MArgList& args, MStatus* status = NULL);
  bool isFlagSet(const char* flag, MStatus* status = NULL) const;
  bool isEdit(MStatus* status = NULL) const;
  bool isQuery(MStatus* status = NULL) const;
  unsigned int numberOfFlagsUsed() const;
  unsigned int numberOfFlagUses(const char* flag) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, bool& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, int& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, double& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, MString& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, unsigned int& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, MTime& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, MAngle& value) const;
  MStatus getFlagArgument(const char* flag, unsigned int i, MDistance& value) const;
  bool flagArgumentBool(const char* flag, unsigned int i, MStatus* status = NULL) const;
  int flagArgumentInt(const char* flag, unsigned int i, MStatus* status = NULL) const;
  double flagArgumentDouble(const char* flag, unsigned int i, MStatus* status = NULL) const;
  MString flagArgumentString(const char* flag, unsigned int i, MStatus* status = NULL) const;
  MTime flagArgumentMTime(const char* flag, unsigned int i, MStatus* status = NULL) const;
  MAngle flagArgumentMAngle(const char* flag, unsigned int i, MStatus* status = NULL) const;
  MDistance flagArgumentMDistance(const char* flag, unsigned int i, MStatus* status = NULL) const;
  MStatus getFlagArgumentList(const char* flag, unsigned int use, MArgList& args) const;
  MStatus getFlagArgumentPosition(const char* flag, unsigned int use, unsigned int& position) const;
  MStatus getCommandArgument(unsigned int i, bool& value) const;
  MStatus getCommandArgument(unsigned int i, int& value) const;
  MStatus getCommandArgument(unsigned int i, double& value) const;
  MStatus getCommandArgument(unsigned int i, MString& value) const;
  MStatus getCommandArgument(unsigned int i, unsigned int& value) const;
  MStatus getCommandArgument(unsigned int i, MTime& value) const;
  MStatus getCommandArgument(unsigned int i, MAngle& value) const;
  MStatus getCommandArgument(unsigned int i, MDistance& value) const;
  bool commandArgumentBool(unsigned int i, MStatus* status = NULL) const;
  int commandArgumentInt(unsigned int i, MStatus* status = NULL) const;
  double commandArgumentDouble(unsigned int i, MStatus* status = NULL) const;
  MString commandArgumentString(unsigned int i, MStatus* status = NULL) const;
  MTime commandArgumentMTime(unsigned int i, MStatus* status = NULL) const;
  MAngle commandArgumentMAngle(unsigned int i, MStatus* status = NULL) const;
  MDistance commandArgumentMDistance(unsigned int i, MStatus* status = NULL) const;
  MStatus getObjects(MStringArray& names) const;

 protected:
  std::shared_ptr<mayahost::ArgState> fState;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
