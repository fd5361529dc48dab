// Storage record of a rig in a scene file.
#pragma once

#include <string>

namespace orv::rws::adaptor {

/// Storage record of one rig, as it stands in the file.
struct RigRecord {
  std::string kind;
  std::string name;
  std::string record;   ///< text that only the rig's instance understands
  std::string others;   ///< what else stood there, a text that only the file's reader understands
  std::string raw;      ///< a damaged record, written back as it is; else empty
  std::string problem;  ///< what is wrong with a damaged record and where; else empty

  bool Damaged() const { return !problem.empty(); }
};

}  // namespace orv::rws::adaptor
