// The two parts of a `.glb`.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace orv::app {

/// Its JSON, and the bytes of its binary chunk.
struct GlbParts {
  nlohmann::ordered_json json;
  std::string binary;
};

/// False when `bytes` are no whole `.glb`.
bool SplitGlb(const std::string& bytes, GlbParts& parts);
/// Texts that are no UTF-8 keep what can be kept.
std::string JoinGlb(const GlbParts& parts);
/// Appends to the binary part, at a place where anything may begin; gives that place.
std::size_t AppendBinary(GlbParts& parts, const void* data, std::size_t size);

}  // namespace orv::app
