#include "util/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "support/TempFolder.h"

namespace orv::util {
namespace {

namespace fs = std::filesystem;

class AtomicFile : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return (m_folder / name).string(); }
  std::string content(const std::string& name) const {
    std::string bytes;
    EXPECT_TRUE(readFile(path(name), bytes));
    return bytes;
  }
  std::ptrdiff_t entries() const { return std::distance(fs::directory_iterator(m_folder), {}); }

  const tests::TempFolder m_own;
  const fs::path m_folder = m_own.path;
};

TEST_F(AtomicFile, ReplacesAFileWholeAndKeepsItsPermissions) {
  ASSERT_TRUE(writeFile(path("scene"), std::string("a\0b", 3)));
  EXPECT_EQ(std::string("a\0b", 3), content("scene"));
  fs::permissions(path("scene"), fs::perms(0640));
  {
    util::AtomicFile file(path("scene"));
    EXPECT_TRUE(file.write("new"));
    EXPECT_TRUE(file.write(std::string(200000, 'x')));
    EXPECT_EQ(std::string("a\0b", 3), content("scene")) << "not before the commit";
    EXPECT_TRUE(file.commit());
    EXPECT_FALSE(file.commit()) << "once";
  }
  EXPECT_EQ(200003u, content("scene").size());
  EXPECT_EQ(fs::perms(0640), fs::status(path("scene")).permissions());
  { util::AtomicFile(path("scene")).write("abandoned"); }
  EXPECT_EQ(200003u, content("scene").size());
  EXPECT_EQ(1, entries());
}

TEST_F(AtomicFile, FollowsLinksToWhereTheyLead) {
  fs::create_directories(m_folder / "real");
  fs::create_symlink("real/scene", m_folder / "link");
  fs::create_symlink("link", m_folder / "chain");
  ASSERT_TRUE(writeFile(path("chain"), "1")) << "the target need not exist yet";
  ASSERT_TRUE(writeFile(path("link"), "2"));
  EXPECT_EQ("2", content("real/scene"));
  EXPECT_TRUE(fs::is_symlink(m_folder / "link"));
  fs::create_symlink("loop", m_folder / "loop");
  std::string error;
  EXPECT_FALSE(writeFile(path("loop"), "3", &error));
  EXPECT_NE(std::string::npos, error.find("loop")) << error;
}

TEST_F(AtomicFile, SaysWhatFailedAndLeavesNothingBehind) {
  std::string error;
  EXPECT_FALSE(writeFile(path("absent/scene"), "x", &error));
  EXPECT_EQ(path("absent/scene") + ": cannot create a file beside it: No such file or directory",
            error);
  EXPECT_FALSE(writeFile(m_folder.string(), "x", &error));
  EXPECT_EQ(m_folder.string() + ": cannot be written: Is a directory", error);
  EXPECT_FALSE(writeFile("/dev/full", "x", &error)) << "a device is written to, not replaced";
  EXPECT_EQ("/dev/full: cannot be written: No space left on device", error);
  std::string bytes = "old";
  EXPECT_FALSE(readFile(path("absent"), bytes, &error));
  EXPECT_EQ(path("absent") + ": cannot be read: No such file or directory", error);
  EXPECT_EQ("", bytes);

  // A size limit stands for a disk that fills up in the middle.
  ASSERT_TRUE(writeFile(path("scene"), "old"));
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &small);
  const bool written = writeFile(path("scene"), std::string(5000, 'x'), &error);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_FALSE(written);
  EXPECT_EQ(path("scene") + ": cannot be written: File too large", error);
  EXPECT_EQ("old", content("scene"));
  EXPECT_EQ(1, entries());
}

TEST_F(AtomicFile, StopsWhenItIsCancelledInTheMiddleOrAtTheEnd) {
  ASSERT_TRUE(writeFile(path("scene"), "old"));
  // Cancelled at the n-th look, until a write is through without one.
  int done = 0;
  for (int limit = 1; done == 0 && limit < 100; ++limit) {
    int looks = 0;
    util::AtomicFile::setCancelCheck([&] { return ++looks >= limit; });
    std::string error;
    const bool written = writeFile(path("scene"), std::string(5u << 20, 'x'), &error);
    util::AtomicFile::setCancelCheck({});
    EXPECT_EQ(written ? 5u << 20 : 3u, content("scene").size()) << limit;
    EXPECT_EQ(written, error.empty()) << error;
    EXPECT_EQ(1, entries()) << limit;
    if (written) done = limit;
  }
  EXPECT_GE(done, 8) << "between the chunks and before the renaming";
}

TEST_F(AtomicFile, WritesIntoAPipeWithoutAName) {
  int ends[2];
  ASSERT_EQ(0, ::pipe(ends));
  EXPECT_TRUE(writeFile("/dev/fd/" + std::to_string(ends[1]), "through"));
  std::array<char, 16> bytes{};
  EXPECT_EQ(7, ::read(ends[0], bytes.data(), bytes.size()));
  EXPECT_STREQ("through", bytes.data());
  ::close(ends[0]);
  ::close(ends[1]);
}

}  // namespace
}  // namespace orv::util
