// The commands of a script that are about the scene's picture.
#pragma once

#include <nlohmann/json_fwd.hpp>

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
}

namespace orv::app {

class StagePane;
struct ScriptLine;

/// Does `project NODE`, `pick X Y` or `view ...` and gives its answer; "error" says why it could
/// not be done. Places are pixels of the picture's widget from its top left corner.
nlohmann::json RunViewCommand(const ScriptLine& line, StagePane& stage,
                              rws::adaptor::headless::HeadlessAdaptor& host);

}  // namespace orv::app
