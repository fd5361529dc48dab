// Commands of plug-ins.
#pragma once
#include "State.h"

namespace mayahost {
/// Runs a registered command; one that can be undone is noted in `journal`, if any.
bool RunCommand(const std::string& name, const std::vector<std::string>& words, std::vector<std::string>& result, Journal* journal);
/// The node type whose initialize runs, or null.
NodeType* Initializing();
std::vector<std::string> PluginTypes();
std::vector<std::string> Callbacks();
}  // namespace mayahost
