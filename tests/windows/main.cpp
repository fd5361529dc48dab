// What runs on Windows, or under Wine, without a host: the files and the drivers.
#include <filesystem>
#include <iostream>
#include <string>

#include "Check.h"
#include "util/win32/Windows.h"

namespace orv::tests {
void testFiles(const std::filesystem::path& folder);
void testJoysticks();
void testKeysAndPen();
}  // namespace orv::tests

int main() {
  namespace fs = std::filesystem;
  const fs::path folder =
      fs::temp_directory_path() / ("rigwright-" + std::to_string(GetCurrentProcessId()));
  fs::create_directories(folder);
  orv::tests::testFiles(folder);
  fs::remove_all(folder);
  orv::tests::testJoysticks();
  orv::tests::testKeysAndPen();
  if (orv::tests::g_failures) std::cerr << orv::tests::g_failures << " checks failed\n";
  return orv::tests::g_failures ? 1 : 0;
}
