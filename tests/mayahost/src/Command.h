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
/// The plug-in's format of that name, or the first that knows the file; options are its own where none are given.
std::shared_ptr<MPxFileTranslator> TranslatorFor(const std::string& type, const std::string& file, bool write, std::string& options);
bool Translate(MPxFileTranslator& translator, const std::string& file, const std::string& options, int mode);
}  // namespace mayahost
