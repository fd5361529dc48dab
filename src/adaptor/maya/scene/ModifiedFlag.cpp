#include "adaptor/maya/scene/ModifiedFlag.h"

#include <maya/MGlobal.h>

namespace orv::rws::adaptor::maya {

bool ModifiedFlag::IsSet() {
  int modified = 0;
  MGlobal::executeCommand("file -q -modified", modified, false, false);
  return modified != 0;
}

void ModifiedFlag::Set(bool modified) {
  MGlobal::executeCommand(modified ? "file -modified 1" : "file -modified 0", false, false);
}

}  // namespace orv::rws::adaptor::maya
