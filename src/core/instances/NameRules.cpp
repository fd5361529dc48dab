#include "core/instances/NameRules.h"

#include <algorithm>

namespace orv::rws::core {

namespace {

constexpr char kForbidden[] = "\\/:*?\"<>|.,[];";
constexpr char kForbiddenText[] =
    "- name contains forbidden characters. \n The following characters are not allowed: \\ / : * "
    "? \" < > | . , [ ] ;";

bool IsControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 32 || byte == 127;
}

}  // namespace

bool IsNameAllowed(const std::string& name, std::string& problem) {
  if (name.find_first_not_of(' ') == std::string::npos) {
    problem = "a name must have at least one character that is no blank";
    return false;
  }
  if (name.find_first_of(kForbidden) != std::string::npos ||
      std::any_of(name.begin(), name.end(), IsControl)) {
    problem = name + kForbiddenText;
    return false;
  }
  return true;
}

bool IsExampleName(const std::string& name) {
  return name.rfind("Example", 0) == 0 || name.rfind("example", 0) == 0;
}

}  // namespace orv::rws::core
