#include "enroll/private_file.hpp"

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

TEST(WriteUnfinished, MakesAWholeFileForItsOwnerAlone) {
  const TemporaryFolder folder;
  const auto file = write_unfinished(folder.path(), {'a', '\0', 'b'});
  ASSERT_TRUE(file);
  EXPECT_EQ(read_text(*file), std::string("a\0b", 3));
  EXPECT_EQ(fs::status(*file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(file->parent_path(), folder.path());
  EXPECT_EQ(file->extension(), ".unfinished");
}

TEST(WriteUnfinished, MakesANewFileEachTime) {
  const TemporaryFolder folder;
  EXPECT_NE(*write_unfinished(folder.path(), {1}), *write_unfinished(folder.path(), {2}));
}

TEST(WriteUnfinished, FailsWithoutTheFolder) {
  const TemporaryFolder folder;
  EXPECT_FALSE(write_unfinished(folder.path() / "missing", {1}));
  EXPECT_EQ(errno, ENOENT);
}

}  // namespace
}  // namespace halcyra
