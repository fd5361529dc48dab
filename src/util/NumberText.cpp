#include "util/NumberText.h"

#include <charconv>
#include <cmath>

namespace orv::util {

namespace {

/// Drops a leading "+", which std::from_chars does not know, but not in front of another sign.
std::string_view withoutPlus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  return text;
}

template <typename T>
bool parseWhole(std::string_view text, T& value) {
  text = withoutPlus(text);
  T parsed{};
  const char* const end = text.data() + text.size();
  const auto [behind, error] = std::from_chars(text.data(), end, parsed);
  if (error != std::errc() || behind != end || text.empty()) return false;
  value = parsed;
  return true;
}

}  // namespace

std::string shortText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return {buffer, result.ptr};
}

std::string exactText(double value) {
  char buffer[32];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 17);
  return {buffer, result.ptr};
}

std::string counted(std::int64_t count, std::string_view one, std::string_view many) {
  std::string text = std::to_string(count).append(" ");
  if (count == 1 || many.empty()) text.append(one);
  if (count != 1) text.append(many.empty() ? "s" : many);
  return text;
}

bool parseNumber(std::string_view text, double& value, NonFinite nonFinite) {
  double parsed = 0.0;
  if (!parseWhole(text, parsed)) return false;
  if (nonFinite == NonFinite::kRefuse && !std::isfinite(parsed)) return false;
  value = parsed;
  return true;
}

bool parseNumber(std::string_view text, int& value) {
  return parseWhole(text, value);
}

bool parseNumber(std::string_view text, std::int64_t& value) {
  return parseWhole(text, value);
}

}  // namespace orv::util
