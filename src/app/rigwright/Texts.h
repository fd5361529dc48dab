// Small help with texts that users type and read.
#pragma once

#include <string>
#include <vector>

#include "util/Vector3.h"

namespace orv::app {

/// `text` in one line: line ends and runs of blanks become single blanks.
std::string InOneLine(const std::string& text);

/// `text` cut into lines of at most `width` characters, each behind `indent`.
std::string Wrapped(const std::string& text, std::size_t width, const std::string& indent);

/// Number of characters of a UTF-8 text.
std::size_t TextWidth(const std::string& text);

/// "a:b" as two times (s). A part left out is left as it is. False when it can't be read, or b is
/// before a.
bool ParseRange(const std::string& text, double& from, double& to);
/// "x,y,z" as three numbers.
bool ParseVector(const std::string& text, util::Vector3<double>& value);

/// Columns of text, each as wide as its widest cell.
class Table {
 public:
  void Add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
  bool IsEmpty() const { return m_rows.empty(); }
  /// One line per row, behind `indent`, without a line end.
  std::vector<std::string> Lines(const std::string& indent = {}) const;

 private:
  std::vector<std::vector<std::string>> m_rows;
};

}  // namespace orv::app
