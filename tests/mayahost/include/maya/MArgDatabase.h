// Arguments by a syntax, and objects.
#pragma once
#include <maya/MArgParser.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MArgDatabase : public MArgParser {
 public:
  using MArgParser::getObjects;
  using MArgParser::MArgParser;
  MStatus getObjects(MSelectionList& list) const;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
