// The program's own streams.
#pragma once
#include <maya/MApiNamespace.h>

#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MStreamUtils {
 public:
  static std::ostream& stdOutStream() { return std::cout; }
  static std::ostream& stdErrorStream() { return std::cerr; }
  static std::istream& stdInStream() { return std::cin; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
