// A process of a user whose numbers have a comma.
#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace orv::tests {

/// C and C++ write numbers the German way while this lives.
class GermanLocale {
 public:
  GermanLocale() : m_old(std::locale::global(std::locale(std::locale(), new Punctuation))) {
    std::setlocale(LC_ALL, "de_DE.UTF-8");
  }
  ~GermanLocale() {
    std::locale::global(m_old);
    std::setlocale(LC_ALL, "C");
  }

 private:
  struct Punctuation : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale m_old;
};

}  // namespace orv::tests
