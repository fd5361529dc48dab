// Text, UTF-8 inside.
#pragma once
#include <maya/MApiNamespace.h>
#include <maya/MStatus.h>

#include <iostream>
#include <string>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MString {
 public:
  MString() = default;
  MString(const char* text) : fText(text ? text : "") {}
  MString(const char* text, int length) : fText(text, static_cast<std::size_t>(length)) {}
  MString(const wchar_t* text);
  MString(const wchar_t* text, int length) : MString(std::wstring(text, static_cast<std::size_t>(length)).c_str()) {}
  MString& operator+=(const MString& other) { return fText += other.fText, *this; }
  MString& operator+=(const char* other) { return fText += other, *this; }
  MString& operator+=(const wchar_t* other) { return *this += MString(other); }
  MString& operator+=(double value);
  MString& operator+=(int value);
  MString& operator+=(unsigned int value);
  MString& operator+=(float value) { return *this += static_cast<double>(value); }
  MString& operator=(const char* text) { return fText = text ? text : "", *this; }
  MString& operator=(const wchar_t* text) { return *this = MString(text); }
  MString& operator=(double value) { return fText.clear(), *this += value; }
  MString& operator=(const MString&) = default;
  MString(const MString&) = default;
  bool operator==(const MString& other) const { return fText == other.fText; }
  bool operator==(const char* other) const { return fText == other; }
  bool operator!=(const MString& other) const { return fText != other.fText; }
  bool operator!=(const char* other) const { return fText != other; }
  MString operator+(const MString& other) const { return MString(*this) += other; }
  MString operator+(const char* other) const { return MString(*this) += other; }
  MString operator+(double value) const { return MString(*this) += value; }
  MString operator+(float value) const { return MString(*this) += value; }
  MString operator+(int value) const { return MString(*this) += value; }
  MString operator+(unsigned int value) const { return MString(*this) += value; }
  MStatus set(const char* text) { return *this = text, MStatus::kSuccess; }
  MStatus set(double value) { return *this = value, MStatus::kSuccess; }
  MStatus set(double value, int precision);
  MStatus set(const char* text, int length) { return *this = MString(text, length), MStatus::kSuccess; }
  MStatus setWChar(const wchar_t* text) { return *this = text, MStatus::kSuccess; }
  MStatus setUTF8(const char* text) { return set(text); }
  const char* asChar() const { return fText.c_str(); }
  const char* asUTF8() const { return fText.c_str(); }
  const char* asChar(int& length) const { return length = static_cast<int>(fText.size()), asChar(); }
  const char* asUTF8(int& length) const { return asChar(length); }
  const wchar_t* asWChar() const;
  const wchar_t* asWChar(int& length) const;
  unsigned int numChars() const { return length(); }
  unsigned int length() const { return static_cast<unsigned int>(fText.size()); }
  void clear() { fText.clear(); }
  int index(char c) const { return Place(fText.find(c)); }
  int rindex(char c) const { return Place(fText.rfind(c)); }
  int indexW(wchar_t c) const { return indexW(MString(&c, 1)); }
  int rindexW(wchar_t c) const { return rindexW(MString(&c, 1)); }
  int indexW(const MString& text) const { return Place(fText.find(text.fText)); }
  int rindexW(const MString& text) const { return Place(fText.rfind(text.fText)); }
  MStatus split(char c, MStringArray& parts) const;
  MStatus splitW(wchar_t c, MStringArray& parts) const;
  MString substring(int start, int end) const;
  MString substringW(int start, int end) const { return substring(start, end); }
  MStatus substitute(const MString& what, const MString& by);
  MString& toUpperCase();
  MString& toLowerCase();
  bool isInt() const;
  bool isDouble() const;
  bool isFloat() const { return isDouble(); }
  bool isUnsigned() const { return isInt() && fText[0] != '-'; }
  int asInt() const;
  unsigned int asUnsigned() const { return static_cast<unsigned int>(asInt()); }
  double asDouble() const;
  float asFloat() const { return static_cast<float>(asDouble()); }
  bool isShort() const { return isInt(); }
  short asShort() const { return static_cast<short>(asInt()); }
  /// "^1s" to "^9s" stand for what follows.
  template <class... Texts>
  MStatus format(const MString& text, const Texts&... parts) {
    const std::vector<MString> all{MString(parts)...};
    return Format(text, all);
  }
  MString expandEnvironmentVariablesAndTilde(MStatus* status = NULL) const;
  MString expandFilePath() const { return expandEnvironmentVariablesAndTilde(); }

 private:
  MStatus Format(const MString& text, const std::vector<MString>& parts);
  static int Place(std::size_t at) { return at == std::string::npos ? -1 : static_cast<int>(at); }
  std::string fText;
  mutable std::wstring fWide;
};
inline MString operator+(const char* a, const MString& b) { return MString(a) += b; }
inline bool operator==(const char* a, const MString& b) { return b == a; }
inline bool operator!=(const char* a, const MString& b) { return b != a; }
inline std::ostream& operator<<(std::ostream& os, const MString& s) { return os << s.asChar(); }
OPENMAYA_MAJOR_NAMESPACE_CLOSE
