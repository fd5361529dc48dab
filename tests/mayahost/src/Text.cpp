// Texts and states of calls.
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MUuid.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <random>

#include "Report.h"

OPENMAYA_MAJOR_NAMESPACE_OPEN

namespace {
const char* const kStatusTexts[] = {"(kSuccess): Operation succeeded",
                                    "(kFailure): Unexpected Internal Failure",
                                    "(kInsufficientMemory): Out of memory",
                                    "(kInvalidParameter): Object is incompatible with this method",
                                    "(kLicenseFailure): No licence",
                                    "(kUnknownParameter): Unknown parameter",
                                    "(kNotImplemented): Not implemented",
                                    "(kNotFound): Not found",
                                    "(kEndOfFile): End of file"};
std::string Digits(double value, int precision) {
  char text[64];
  const auto end = precision < 0 ? std::to_chars(text, text + 64, value) : std::to_chars(text, text + 64, value, std::chars_format::fixed, precision);
  return {text, end.ptr};
}
bool IsNumber(const std::string& text, bool whole) {
  if (text.empty()) return false;
  char* end = nullptr;
  whole ? void(std::strtol(text.c_str(), &end, 10)) : void(std::strtod(text.c_str(), &end));
  return *end == 0;
}
}  // namespace

MString MStatus::errorString() const { return kStatusTexts[fCode]; }
void MStatus::perror(const char* text) const {
  const std::string line = std::string(text) + ": " + kStatusTexts[fCode];
  if (fCode != kSuccess) mayahost::Say(mayahost::Spoken::kStatus, line);
}
void MStatus::perror(const MString& text) const { perror(text.asChar()); }
std::ostream& operator<<(std::ostream& os, const MStatus& status) { return os << kStatusTexts[status.statusCode()]; }

MString& MString::operator+=(double value) { return *this += Digits(value, -1).c_str(); }
MString& MString::operator+=(int value) { return *this += std::to_string(value).c_str(); }
MString& MString::operator+=(unsigned int value) { return *this += std::to_string(value).c_str(); }
MStatus MString::set(double value, int precision) { return set(Digits(value, precision).c_str()); }
MStatus MString::split(char c, MStringArray& parts) const {
  parts.clear();
  for (std::size_t from = 0, to; from <= fText.size(); from = to + 1) {
    to = std::min(fText.find(c, from), fText.size());
    if (to > from) parts.append(fText.substr(from, to - from).c_str());
  }
  return MStatus::kSuccess;
}
MString MString::substring(int start, int end) const {
  const int last = std::min(end, static_cast<int>(fText.size()) - 1);
  return start < 0 || start > last ? MString() : MString(fText.c_str() + start, last - start + 1);
}
MStatus MString::substitute(const MString& what, const MString& by) {
  for (std::size_t at = 0; what.length() && (at = fText.find(what.fText, at)) != std::string::npos; at += by.length())
    fText.replace(at, what.length(), by.fText);
  return MStatus::kSuccess;
}
MString& MString::toUpperCase() {
  return std::transform(fText.begin(), fText.end(), fText.begin(), [](unsigned char c) { return std::toupper(c); }), *this;
}
MString& MString::toLowerCase() {
  return std::transform(fText.begin(), fText.end(), fText.begin(), [](unsigned char c) { return std::tolower(c); }), *this;
}
bool MString::isInt() const { return IsNumber(fText, true); }
bool MString::isDouble() const { return IsNumber(fText, false); }
int MString::asInt() const { return static_cast<int>(std::strtol(fText.c_str(), nullptr, 10)); }
double MString::asDouble() const {
  double value = 0;
  std::from_chars(fText.data(), fText.data() + fText.size(), value);
  return value;
}
MStatus MString::Format(const MString& text, const std::vector<MString>& parts) {
  std::string made;
  const std::string from = text.asChar();
  for (std::size_t i = 0; i < from.size(); ++i) {
    const std::size_t n = i + 2 < from.size() && from[i] == '^' && from[i + 2] == 's' ? static_cast<std::size_t>(from[i + 1] - '1') : parts.size();
    n < parts.size() ? void((made += parts[n].asChar(), i += 2)) : void(made += from[i]);
  }
  return *this = made.c_str(), MStatus::kSuccess;
}
namespace {
std::wstring Wide(const std::string& text) {
  std::wstring wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i++]);
    const int more = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
    unsigned code = more ? c & (0x3Fu >> more) : c;
    for (int k = 0; k < more && i < text.size(); ++k) code = (code << 6) | (static_cast<unsigned char>(text[i++]) & 0x3Fu);
    wide += static_cast<wchar_t>(code);
  }
  return wide;
}
}  // namespace
MString::MString(const wchar_t* text) {
  for (; text && *text; ++text) {
    const auto code = static_cast<unsigned>(*text);
    const int more = code >= 0x10000 ? 3 : code >= 0x800 ? 2 : code >= 0x80 ? 1 : 0;
    fText += static_cast<char>(more ? (0xFF00u >> (more + 1) & 0xFFu) | code >> 6 * more : code);
    for (int k = more; k-- > 0;) fText += static_cast<char>(0x80u | (code >> 6 * k & 0x3Fu));
  }
}
MStatus MUuid::generate() {
  std::random_device random;
  std::string text = "xxxxxxxx-xxxx-4xxx-axxx-xxxxxxxxxxxx";
  for (char& c : text)
    if (c == 'x') c = "0123456789ABCDEF"[random() % 16];
  return fText = text.c_str(), MStatus::kSuccess;
}
const wchar_t* MString::asWChar() const { return (fWide = Wide(fText)).c_str(); }
const wchar_t* MString::asWChar(int& length) const { return asWChar(), length = static_cast<int>(fWide.size()), fWide.c_str(); }
MStatus MString::splitW(wchar_t c, MStringArray& parts) const { return c < 128 ? split(static_cast<char>(c), parts) : MStatus(MStatus::kNotImplemented); }
MString MString::expandEnvironmentVariablesAndTilde(MStatus* status) const {
  if (status) *status = MStatus::kSuccess;
  std::string text = fText;
  if (!text.empty() && text[0] == '~') text = "$HOME" + text.substr(1);
  for (std::size_t at; (at = text.find('$')) != std::string::npos;) {
    std::size_t end = at + 1;
    while (end < text.size() && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '_')) ++end;
    const char* value = std::getenv(text.substr(at + 1, end - at - 1).c_str());
    text = text.substr(0, at) + (value ? value : "") + text.substr(end);
  }
  return text.c_str();
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
