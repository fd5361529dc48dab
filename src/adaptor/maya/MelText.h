// Text within MEL.
#pragma once

#include <string>

namespace orv::rws::adaptor::maya {

/// As a literal, with its quotes.
inline std::string QuoteMel(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    if (c == '\n')
      quoted += "\\n";
    else if (c == '\t')
      quoted += "\\t";
    else if (c == '\r')
      quoted += "\\r";
    else
      quoted += c;
  }
  return quoted + '"';
}

}  // namespace orv::rws::adaptor::maya
