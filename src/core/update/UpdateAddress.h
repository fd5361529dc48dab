// Where newer versions are asked for.
#pragma once

#include <string>

namespace orv::rws::core {

/// The server that the program was built with, such as "https://updates.example.com"; empty when
/// the check is not offered.
std::string GetUpdateAddress();

}  // namespace orv::rws::core
