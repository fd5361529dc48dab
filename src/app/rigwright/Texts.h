// Small help with texts that users type and read.
#pragma once

#include <string>
#include <vector>

#include "util/Vector3.h"

namespace orv::app {

/// What to say about a name that is not among `known`: the ones that it comes near to, else all of
/// them (the first `most`). `kind` in the plural, such as "rigs".
std::string hintFor(const std::string& wanted, const std::vector<std::string>& known,
                    const std::string& kind, std::size_t most = 12);
/// `text` in one line: line ends and runs of blanks become single blanks.
std::string inOneLine(const std::string& text);

/// `values` separated by commas.
std::string joined(const std::vector<std::string>& values, const std::string& separator = ", ");

/// `text` cut into lines of at most `width` characters, each behind `indent`.
std::string wrapped(const std::string& text, std::size_t width, const std::string& indent);

/// Number of characters of a UTF-8 text.
std::size_t textWidth(const std::string& text);

/// The file's ending in small letters with its point, such as ".glb"; empty without one.
std::string endingOf(const std::string& path);
/// The file's name without its folder.
std::string fileNameOf(const std::string& path);

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
