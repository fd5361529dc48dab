#include "util/xml/Base64.h"

#include <array>
#include <cstdint>

namespace orv::util::xml {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Set in a table's entry for a character outside the alphabet; no valid group reaches it.
constexpr std::uint32_t kBad = 1u << 24;

using Table = std::array<std::uint32_t, 256>;

/// The value of each character, shifted to its place in a group of 24 bits.
constexpr Table makeTable(int shift) {
  Table table{};
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = kBad;
  for (std::uint32_t i = 0; i < 64; ++i) {
    table[static_cast<unsigned char>(kAlphabet[i])] = i << shift;
  }
  return table;
}

constexpr Table kFirst = makeTable(18);
constexpr Table kSecond = makeTable(12);
constexpr Table kThird = makeTable(6);
constexpr Table kFourth = makeTable(0);

std::uint32_t groupBits(const unsigned char* in) {
  return kFirst[in[0]] | kSecond[in[1]] | kThird[in[2]] | kFourth[in[3]];
}

/// A group with "=" in it: writes its one or two bytes and returns their number, 0 when it is bad.
std::size_t decodeFilledGroup(const unsigned char* in, unsigned char* out) {
  if (in[3] != '=') return 0;
  const std::uint32_t two = kFirst[in[0]] | kSecond[in[1]];
  const std::uint32_t bits = in[2] == '=' ? two : two | kThird[in[2]];
  if (bits & kBad) return 0;
  out[0] = static_cast<unsigned char>(bits >> 16);
  if (in[2] == '=') return 1;
  out[1] = static_cast<unsigned char>(bits >> 8);
  return 2;
}

}  // namespace

std::string encodeBase64(const void* bytes, std::size_t size) {
  const auto* in = static_cast<const unsigned char*>(bytes);
  std::string text((size + 2) / 3 * 4, '=');
  char* out = text.data();
  for (; size >= 3; size -= 3, in += 3, out += 4) {
    const std::uint32_t bits = std::uint32_t(in[0]) << 16 | std::uint32_t(in[1]) << 8 | in[2];
    out[0] = kAlphabet[bits >> 18];
    out[1] = kAlphabet[bits >> 12 & 63];
    out[2] = kAlphabet[bits >> 6 & 63];
    out[3] = kAlphabet[bits & 63];
  }
  if (size > 0) {
    const std::uint32_t bits = std::uint32_t(in[0]) << 16 | (size > 1 ? in[1] << 8 : 0);
    out[0] = kAlphabet[bits >> 18];
    out[1] = kAlphabet[bits >> 12 & 63];
    if (size > 1) out[2] = kAlphabet[bits >> 6 & 63];
  }
  return text;
}

bool decodeBase64(std::string_view text, std::vector<unsigned char>& bytes) {
  bytes.clear();
  if (text.size() % 4 != 0) return false;
  std::vector<unsigned char> decoded(text.size() / 4 * 3);
  const auto* in = reinterpret_cast<const unsigned char*>(text.data());
  const auto* const end = in + text.size();
  unsigned char* out = decoded.data();
  for (; in != end; in += 4) {
    const std::uint32_t bits = groupBits(in);
    if (bits & kBad) {
      const std::size_t count = decodeFilledGroup(in, out);
      if (count == 0) return false;
      out += count;
      continue;
    }
    out[0] = static_cast<unsigned char>(bits >> 16);
    out[1] = static_cast<unsigned char>(bits >> 8);
    out[2] = static_cast<unsigned char>(bits);
    out += 3;
  }
  decoded.resize(static_cast<std::size_t>(out - decoded.data()));
  bytes = std::move(decoded);
  return true;
}

std::vector<unsigned char> decodeBase64(std::string_view text) {
  std::vector<unsigned char> bytes;
  decodeBase64(text, bytes);
  return bytes;
}

}  // namespace orv::util::xml
