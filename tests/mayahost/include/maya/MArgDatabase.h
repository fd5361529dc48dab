// Arguments by a syntax, and objects.
#pragma once
#include <maya/MArgParser.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArgDatabase : public MArgParser {
 public:
  using MArgParser::getCommandArgument;
  using MArgParser::getFlagArgument;
  using MArgParser::getObjects;
  using MArgParser::MArgParser;
  MStatus getFlagArgument(const char* flag, unsigned int i, MSelectionList& list) const;
  MStatus getCommandArgument(unsigned int i, MSelectionList& list) const;
  MStatus getObjects(MSelectionList& list) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
