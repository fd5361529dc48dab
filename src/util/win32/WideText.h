// Text as Windows wants it.
#pragma once

#include <string>

namespace orv::util {

/// UTF-8 to UTF-16. Empty for what is no UTF-8.
std::wstring toWide(const std::string& text);

/// UTF-16 to UTF-8; half a pair becomes U+FFFD.
std::string toUtf8(const std::wstring& text);

}  // namespace orv::util
