// Main of every test program. Refuses a filter that selects no test, and with --only-suites=A,B a
// suite that no CTest entry would run. What a test keeps for users goes with the program: neither
// they nor tests beside it see it.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "support/TempFolder.h"

namespace {

// "Prefix/Suite" and "Suite/0" are the instantiations of Suite.
bool NamesSuite(const std::string& list, const std::string& suite) {
  const std::string padded = "," + list + ",";
  std::string rest = suite + "/";
  for (std::size_t slash; (slash = rest.find('/')) != std::string::npos;) {
    if (padded.find("," + rest.substr(0, slash) + ",") != std::string::npos) return true;
    rest.erase(0, slash + 1);
  }
  return false;
}

int CheckSuites(const std::string& list) {
  const auto& unit = *testing::UnitTest::GetInstance();
  int strays = 0;
  for (int i = 0; i < unit.total_test_suite_count(); ++i) {
    const std::string name = unit.GetTestSuite(i)->name();
    if (NamesSuite(list, name)) continue;
    std::fprintf(stderr, "suite %s is in no file of its name: no CTest entry runs it\n",
                 name.c_str());
    ++strays;
  }
  std::printf("%d suites checked\n", unit.total_test_suite_count());
  return strays ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::string option = "--only-suites=";
  if (argc > 1 && std::string(argv[1]).rfind(option, 0) == 0)
    return CheckSuites(std::string(argv[1]).substr(option.size()));
  const orv::tests::TempFolder root;
  setenv("RIGWRIGHT_DATA_ROOT", root.path.c_str(), 1);
  const int result = RUN_ALL_TESTS();
  if (testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
    std::fprintf(stderr, "no test matches the filter\n");
    return 1;
  }
  return result;
}
