// Text that is written to a file piece by piece.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "util/AtomicFile.h"

namespace orv::app {

/// Numbers are told by the shortest text that reads back as the same, in every locale; there is no
/// "-0". Nothing is in place before `Commit`.
class TextFile {
 public:
  explicit TextFile(const std::string& path) : m_file(path) {}

  TextFile& operator<<(std::string_view text) {
    Put(text);
    return *this;
  }
  TextFile& operator<<(double number);
  TextFile& operator<<(float number);
  template <class Whole, class = std::enable_if_t<std::is_integral_v<Whole>>>
  TextFile& operator<<(Whole number) {
    Put(std::to_string(number));
    return *this;
  }
  /// A blank, or a new line where this one has become long.
  TextFile& Gap();

  /// Why the file was not put in place; empty when it was.
  std::string Commit();

 private:
  void Put(std::string_view text);

  util::AtomicFile m_file;
  std::string m_text;        ///< not yet written
  std::size_t m_column = 0;  ///< of the line that is being made
};

}  // namespace orv::app
