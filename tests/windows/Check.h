// A test's checks where no test library is to be had.
#pragma once

#include <cmath>
#include <iostream>

namespace orv::tests {

inline int g_failures = 0;

template <typename A, typename B>
void checkEqual(const A& wanted, const B& got, const char* text, const char* file, int line) {
  if (wanted == got) return;
  ++g_failures;
  std::cerr << file << ":" << line << ": " << text << " is " << got << ", not " << wanted << "\n";
}

}  // namespace orv::tests

#define CHECK_EQ(wanted, got) orv::tests::checkEqual(wanted, got, #got, __FILE__, __LINE__)
#define CHECK(condition) CHECK_EQ(true, static_cast<bool>(condition))
#define CHECK_NEAR(wanted, got) CHECK(std::abs((wanted) - (got)) < 1e-9)
