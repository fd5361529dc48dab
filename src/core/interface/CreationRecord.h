// What the core hands to a factory with the wish for a new rig.
#pragma once

#include <string>

namespace orv::rws {

/// Identity of a rig object at its creation.
struct CreationRecord {
  int id = 0;            ///< number of the rig object, unique in the process
  std::string typeName;  ///< kind identifier, as CCameraPlugin::GetId tells it
};

}  // namespace orv::rws
