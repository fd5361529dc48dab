// Help texts and the manual.
#include <sys/wait.h>

#include "app/ProgramTest.h"

namespace orv::tests {
namespace {

class Help : public ProgramTest {};

TEST_F(Help, EveryVerbShowsAnExample) {
  const std::string help = ok("--help");
  std::istringstream lines(help.substr(help.find("\nVerbs:")));
  std::string line;
  std::getline(lines, line);
  std::getline(lines, line);
  int verbs = 0;
  while (std::getline(lines, line) && line.rfind("  ", 0) == 0) {
    const std::string verb = line.substr(2, line.find(' ', 2) - 2);
    if (verb.empty()) continue;
    ++verbs;
    const std::string own = ok({verb, "--help"});
    expectTold(own, {"Example:\n  rigwright " + verb});
  }
  EXPECT_GE(verbs, 19);
  EXPECT_EQ(ok("--version").rfind("rigwright ", 0), 0u);
}

TEST_F(Help, TheExamplesOfTheManualRun) {
  if (std::system("command -v python3 >/dev/null 2>&1") != 0)
    GTEST_SKIP() << "*** the manual's examples were NOT run: python3 is missing ***";
  std::ifstream manual(ORV_SOURCE_DIR "/docs/cli.md");
  std::string line, script = "set -e\n";
  bool inside = false;
  int commands = 0;
  while (std::getline(manual, line)) {
    if (line == "```sh" || line == "```") {
      inside = line == "```sh";
    } else if (inside) {
      script += line + "\n";
      ++commands;
    }
  }
  EXPECT_GT(commands, 30);
  std::filesystem::create_symlink(ORV_SOURCE_DIR "/examples", path("examples"));
  folder.Write("manual.sh", script);
  const std::string programs = std::filesystem::path(RIGWRIGHT_PROGRAM).parent_path();
  const std::string shell = "cd '" + folder.path + "' && RIGWRIGHT_DATA_ROOT=root PATH='" +
                            programs + "':\"$PATH\" sh -x manual.sh >log 2>&1";
  EXPECT_EQ(std::system(shell.c_str()), 0) << folder.Read("log");
}

}  // namespace
}  // namespace orv::tests
