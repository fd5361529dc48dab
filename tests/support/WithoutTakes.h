// Scene files without the takes that are kept with them, which undo does not touch.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace orv::tests {

/// All else that a `.glb` file holds, to the byte, but for the lengths of its parts.
inline std::string withoutTakes(const std::string& file) {
  if (file.size() < 20 || file.compare(0, 4, "glTF") != 0) return file;
  std::uint32_t length = 0;
  std::memcpy(&length, file.data() + 12, sizeof length);
  std::string json = file.substr(20, length);
  json.erase(json.find_last_not_of(' ') + 1);
  const std::string key = "\"takes\":\"";
  const std::size_t from = json.find(key);
  if (from != std::string::npos) {
    std::size_t to = json.find('"', from + key.size()) + 1;
    if (to < json.size() && json[to] == ',') ++to;
    json.erase(from, to - from);
  }
  return json + file.substr(20 + length);
}

/// Saves a session's scene as if no take were kept with it; what is wrong, if anything.
template <class Session>
std::string saveWithoutTakes(Session& session, const std::string& path) {
  session.GetTakes().Store();
  std::string& kept = session.GetScene().GetTakes();
  const std::string list = std::exchange(kept, std::string());
  std::string problem = session.Save(path);
  kept = list;
  return problem;
}

}  // namespace orv::tests
