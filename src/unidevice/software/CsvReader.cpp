#include "unidevice/software/CsvReader.h"

namespace orv::unidevice {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

}  // namespace

CsvReader::CsvReader(std::string_view text) : m_text(text) {
  if (m_text.substr(0, kByteOrderMark.size()) == kByteOrderMark) m_at = kByteOrderMark.size();
}

bool CsvReader::readRow(std::vector<CsvField>& row) {
  if (m_at >= m_text.size()) {
    row.clear();
    return false;
  }
  // Strings of earlier rows are used again, so that a long file costs no allocation per row.
  std::size_t count = 0;
  for (bool more = true; more;) {
    if (row.size() == count) row.emplace_back();
    if (!readField(row[count++])) {
      row.resize(count);
      return false;
    }
    more = m_at < m_text.size() && m_text[m_at] == ',';
    if (more) ++m_at;
  }
  row.resize(count);
  if (m_at < m_text.size() && m_text[m_at] == '\r') ++m_at;
  if (m_at < m_text.size()) ++m_at;  // the line feed
  ++m_line;
  return true;
}

bool CsvReader::readField(CsvField& field) {
  field.text.clear();
  field.line = m_line;
  skipBlanks();
  field.quoted = m_at < m_text.size() && m_text[m_at] == '"';
  return field.quoted ? readQuoted(field) : readPlain(field);
}

bool CsvReader::readQuoted(CsvField& field) {
  for (++m_at; m_at < m_text.size(); ++m_at) {
    const char c = m_text[m_at];
    if (c == '\n') ++m_line;
    if (c != '"') {
      field.text += c;
    } else if (m_at + 1 < m_text.size() && m_text[m_at + 1] == '"') {
      field.text += c;
      ++m_at;
    } else {
      ++m_at;
      skipBlanks();
      if (atFieldEnd()) return true;
      m_error = "there is text behind the closing quote (write a quote inside a field twice)";
      return false;
    }
  }
  m_error = "the quote that opens here is never closed (close it, or write it twice)";
  return false;
}

bool CsvReader::readPlain(CsvField& field) {
  const std::size_t begin = m_at;
  while (!atFieldEnd() && m_text[m_at] != '"') ++m_at;
  if (!atFieldEnd()) {
    m_error = "a quote stands inside the field (put the whole field in quotes, this one twice)";
    return false;
  }
  std::size_t end = m_at;
  while (end > begin && isBlank(m_text[end - 1])) --end;
  field.text.assign(m_text.substr(begin, end - begin));
  return true;
}

bool CsvReader::atFieldEnd() const {
  if (m_at >= m_text.size() || m_text[m_at] == ',' || m_text[m_at] == '\n') return true;
  return m_text[m_at] == '\r' && (m_at + 1 == m_text.size() || m_text[m_at + 1] == '\n');
}

void CsvReader::skipBlanks() {
  while (m_at < m_text.size() && isBlank(m_text[m_at])) ++m_at;
}

std::string csvField(std::string_view text) {
  const bool plain = text.find_first_of(",\"\r\n") == std::string_view::npos && !text.empty() &&
                     !isBlank(text.front()) && !isBlank(text.back());
  if (plain) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

}  // namespace orv::unidevice
