#include "adaptor/maya/plugin/Platform.h"

namespace orv::rws::adaptor::maya {

// The loader reads its folders once, when the host starts; the module file names ours, and the
// plug-in's own run path.
void AddLibraryFolder(const std::string& /*folder*/) {}

}  // namespace orv::rws::adaptor::maya
