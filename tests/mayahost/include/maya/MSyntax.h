// Flags and arguments that a command takes.
#pragma once
#include <maya/MString.h>

#include <memory>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MSyntax {
 public:
  enum MArgType { kInvalidArgType, kNoArg, kBoolean, kLong, kDouble, kString, kUnsigned, kDistance, kAngle, kTime, kSelectionItem, kLastArgType };
  enum MObjectFormat { kInvalidObjectFormat, kNone, kStringObjects, kSelectionList, kLastObjectFormat };
  MSyntax();
  MStatus addFlag(const char* brief, const char* full, MArgType a1 = kNoArg, MArgType a2 = kNoArg, MArgType a3 = kNoArg, MArgType a4 = kNoArg,
                  MArgType a5 = kNoArg, MArgType a6 = kNoArg);
  MStatus makeFlagMultiUse(const char* flag);
  MStatus makeFlagQueryWithFullArgs(const char* flag, bool argsOptional);
  MStatus addArg(MArgType type);
  void enableQuery(bool supported = true);
  void enableEdit(bool supported = true);
  bool canQuery() const;
  bool canEdit() const;
  MStatus setObjectType(MObjectFormat type, unsigned int min = 0);
  MStatus setObjectType(MObjectFormat type, unsigned int min, unsigned int max);
  void setMinObjects(unsigned int count);
  void setMaxObjects(unsigned int count);
  unsigned int minObjects() const;
  unsigned int maxObjects() const;
  void useSelectionAsDefault(bool use = true);

  std::shared_ptr<mayahost::SyntaxState> state;  ///< the stand-in's own
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
