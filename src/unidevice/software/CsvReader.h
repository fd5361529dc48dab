// Rows of comma-separated text with quoting.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv::unidevice {

/// One field of a row.
struct CsvField {
  std::string text;     ///< without quotes; blanks around unquoted text are dropped
  bool quoted = false;  ///< stood in double quotes
  int line = 0;         ///< where it begins, from 1
};

/// Cuts a text into rows, reading RFC 4180: fields in double quotes may hold commas, line ends and
/// doubled quotes. Lines end with LF or CRLF; a UTF-8 byte order mark at the start is skipped.
class CsvReader {
 public:
  /// `text` must outlive the reader.
  explicit CsvReader(std::string_view text);

  /// Fills `row` with the fields of the next row. False at the end of the text and on damaged
  /// quoting; then `error` tells which by being empty or not.
  bool readRow(std::vector<CsvField>& row);

  /// What is wrong with the last field of the last row; empty if nothing is.
  const std::string& error() const { return m_error; }

 private:
  bool readField(CsvField& field);
  bool readQuoted(CsvField& field);
  bool readPlain(CsvField& field);
  bool atFieldEnd() const;
  void skipBlanks();

  std::string_view m_text;
  std::size_t m_at = 0;
  int m_line = 1;
  std::string m_error;
};

/// `text` as a field: in quotes where a reader needs them.
std::string csvField(std::string_view text);

}  // namespace orv::unidevice
