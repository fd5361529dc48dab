// Bytes come back from their text, and text that decodes is either the encoder's or re-encodes to
// the same bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "util/xml/Base64.h"

using orv::util::xml::decodeBase64;
using orv::util::xml::encodeBase64;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<unsigned char> input(data, data + size);
  std::vector<unsigned char> back;
  const std::string text = encodeBase64(input.data(), input.size());
  if (text.size() != (size + 2) / 3 * 4) std::abort();
  if (!decodeBase64(text, back) || back != input) std::abort();

  std::vector<unsigned char> decoded;
  const std::string_view asText(reinterpret_cast<const char*>(data), size);
  if (!decodeBase64(asText, decoded)) {
    if (!decoded.empty() || size == 0) std::abort();
    return 0;
  }
  if (size % 4 != 0 || decoded.size() > size / 4 * 3) std::abort();
  if (decodeBase64(encodeBase64(decoded.data(), decoded.size())) != decoded) std::abort();
  return 0;
}
