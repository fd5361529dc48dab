// Texts and states of calls.
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <cctype>
#include <charconv>

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
MStatus MString::format(const MString& text, const MString& a1, const MString& a2, const MString& a3, const MString& a4) {
  const MString* parts[] = {&a1, &a2, &a3, &a4};
  MString made = text;
  for (int i = 0; i < 4; ++i) made.substitute(MString("^") + (i + 1) + "s", *parts[i]);
  return *this = made, MStatus::kSuccess;
}

OPENMAYA_MAJOR_NAMESPACE_CLOSE
