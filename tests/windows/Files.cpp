#include <filesystem>
#include <string>

#include "Check.h"
#include "util/AtomicFile.h"
#include "util/win32/WideText.h"
#include "util/win32/Windows.h"

namespace orv::tests {

namespace {

namespace fs = std::filesystem;

std::string content(const std::string& path) {
  std::string bytes;
  std::string error;
  if (!util::readFile(path, bytes, &error)) return error;
  return bytes;
}

bool names(const std::string& error, const std::string& path, const std::string& action) {
  return error.rfind(path + ": " + action + ": ", 0) == 0 && error.size() > path.size() + 30;
}

}  // namespace

void testFiles(const fs::path& folder) {
  const std::string path = (folder / u8"Gr\u00fc\u00dfe \u8eca.txt").generic_u8string();
  CHECK(util::writeFile(path, std::string("a\0b", 3)));
  CHECK_EQ(std::string("a\0b", 3), content(path));
  {
    util::AtomicFile file(path);
    CHECK(file.write(std::string(3 << 20, 'x')));
    CHECK_EQ(std::string("a\0b", 3), content(path));
    CHECK(file.commit());
    CHECK(!file.commit());
  }
  CHECK_EQ(std::string(3 << 20, 'x'), content(path));
  { util::AtomicFile(path).write("abandoned"); }
  CHECK_EQ(3u << 20, content(path).size());

  std::string error;
  const std::wstring wide = util::toWide(path);
  SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_READONLY);
  CHECK(!util::writeFile(path, "new", &error));
  CHECK(names(error, path, "cannot be written"));
  SetFileAttributesW(wide.c_str(), FILE_ATTRIBUTE_NORMAL);

  const std::string missing = (folder / "missing/scene").generic_u8string();
  CHECK(!util::writeFile(missing, "new", &error));
  CHECK(names(error, missing, "cannot create a file beside it"));
  const std::string itself = folder.generic_u8string();
  CHECK(!util::writeFile(itself, "new", &error));
  CHECK(names(error, itself, "cannot be written"));
  std::string bytes = "old";
  CHECK(!util::readFile(missing, bytes, &error));
  CHECK(names(error, missing, "cannot be read"));
  CHECK_EQ("", bytes);
  CHECK(util::writeFile("NUL", "gone"));

  CHECK_EQ(1, std::distance(fs::directory_iterator(folder), {}));
  CHECK_EQ("C:/", util::absolutePath("C:\\"));
  CHECK_EQ("C:/b", util::absolutePath("C:\\a\\..\\b\\"));
}

}  // namespace orv::tests
