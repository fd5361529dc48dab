#include "app/session/delivery/TextFile.h"

#include <charconv>
#include <cmath>

namespace orv::app {

namespace {

constexpr std::size_t kPiece = 1 << 16;  ///< bytes that are written at once
constexpr std::size_t kLongLine = 90;    ///< columns
constexpr double kMostWhole = 1e15;      ///< whole numbers below it are told digit by digit

template <class Number>
std::string_view ShortestText(Number number, char (&buffer)[32]) {
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number + Number(0)).ptr;
  return {buffer, static_cast<std::size_t>(end - buffer)};
}

}  // namespace

TextFile& TextFile::operator<<(double number) {
  // Not every reader takes 1e+06 for a frame's number.
  if (number == std::trunc(number) && std::abs(number) < kMostWhole)
    return *this << static_cast<long long>(number);
  char buffer[32];
  return *this << ShortestText(number, buffer);
}

TextFile& TextFile::operator<<(float number) {
  if (number == std::trunc(number)) return *this << static_cast<double>(number);
  char buffer[32];
  return *this << ShortestText(number, buffer);
}

TextFile& TextFile::Gap() {
  return *this << (m_column > kLongLine ? "\n\t\t" : " ");
}

void TextFile::Put(std::string_view text) {
  m_text += text;
  const std::size_t lineEnd = text.rfind('\n');
  m_column = lineEnd == text.npos ? m_column + text.size() : text.size() - lineEnd - 1;
  if (m_text.size() < kPiece) return;
  m_file.write(m_text);
  m_text.clear();
}

std::string TextFile::Commit() {
  m_file.write(m_text);
  m_file.commit();
  return m_file.error();
}

}  // namespace orv::app
