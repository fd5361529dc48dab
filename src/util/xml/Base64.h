/// Byte blobs as text, for documents and scene attributes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::util::xml {

/// Standard alphabet, filled with "=", no line breaks.
std::string encodeBase64(const void* bytes, std::size_t size);

/// The bytes of `text`, whole or not at all: a character outside the alphabet, a "=" out of place
/// or an incomplete last group gives an empty result. Each group of four is decoded on its own, so
/// encoded blobs put behind each other decode to their bytes behind each other.
std::vector<unsigned char> decodeBase64(std::string_view text);

/// As above, telling failure (false, `bytes` empty) from an empty blob (true).
bool decodeBase64(std::string_view text, std::vector<unsigned char>& bytes);

}  // namespace orv::util::xml
