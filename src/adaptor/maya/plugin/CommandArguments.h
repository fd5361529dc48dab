// The arguments of a command.
#pragma once

#include <maya/MArgList.h>
#include <maya/MString.h>

#include <string>
#include <vector>

namespace orv::rws::adaptor::maya {

/// What follows the flag `-name` (`-n`): its value, then any others. Empty without the flag.
inline std::vector<std::string> ValuesOfName(const MArgList& args) {
  std::vector<std::string> values;
  bool found = false;
  for (unsigned i = 0; i < args.length(); ++i) {
    MStatus status;
    const std::string word = args.asString(i, &status).asChar();
    if (!status) break;
    if (found)
      values.push_back(word);
    else
      found = word == "-name" || word == "-n";
  }
  return values;
}

/// The whole number behind the flag `-id`; `fallback` without one.
inline int NumberOfId(const MArgList& args, int fallback) {
  for (unsigned i = 0; i + 1 < args.length(); ++i) {
    MStatus status;
    if (std::string(args.asString(i, &status).asChar()) != "-id" || !status) continue;
    const int id = args.asInt(i + 1, &status);
    return status ? id : fallback;
  }
  return fallback;
}

}  // namespace orv::rws::adaptor::maya
