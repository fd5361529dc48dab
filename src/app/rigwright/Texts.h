// Small help with texts that users type and read.
#pragma once

#include <string>
#include <vector>

#include "util/Vector3.h"

namespace orv::app {

/// `text` in one line: line ends and runs of blanks become single blanks.
std::string inOneLine(const std::string& text);

/// `text` cut into lines of at most `width` characters, each behind `indent`.
std::string wrapped(const std::string& text, std::size_t width, const std::string& indent);

/// Number of characters of a UTF-8 text.
std::size_t textWidth(const std::string& text);

/// "a:b" as two times (s). A part left out is left as it is. False when it can't be read, or b is
/// before a.
bool parseRange(const std::string& text, double& from, double& to);
/// "x,y,z" as three numbers.
bool parseVector(const std::string& text, util::Vector3<double>& value);

/// Columns of text, each as wide as its widest cell.
class Table {
 public:
  void add(std::vector<std::string> row) { m_rows.push_back(std::move(row)); }
  bool empty() const { return m_rows.empty(); }
  /// One line per row, behind `indent`, without a line end.
  std::vector<std::string> lines(const std::string& indent = {}) const;

 private:
  std::vector<std::vector<std::string>> m_rows;
};

}  // namespace orv::app
