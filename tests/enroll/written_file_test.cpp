#include "enroll/written_file.hpp"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class Written : public ::testing::Test {
 protected:
  Written() : path_(folder_.path() / "sample.png") { write_text(path_, "as written"); }

  TemporaryFolder folder_;
  fs::path path_;
};

TEST_F(Written, IsDeletedAsLongAsItIsTheSame) {
  const WrittenFile file = written_file(path_);
  EXPECT_TRUE(delete_if_unchanged(file));
  EXPECT_FALSE(fs::exists(path_));
}

TEST_F(Written, IsDeletedOnce) {
  const WrittenFile file = written_file(path_);
  EXPECT_TRUE(delete_if_unchanged(file));
  EXPECT_FALSE(delete_if_unchanged(file));
}

TEST_F(Written, StaysWhenAnotherHasItsName) {
  const WrittenFile file = written_file(path_);
  const fs::path other = folder_.path() / "other.png";
  write_text(other, "as written");
  fs::last_write_time(other, fs::last_write_time(path_));
  fs::rename(other, path_);
  EXPECT_FALSE(delete_if_unchanged(file));
  EXPECT_TRUE(fs::exists(path_));
}

TEST_F(Written, StaysWhenItsContentsHaveChanged) {
  const WrittenFile file = written_file(path_);
  const fs::file_time_type written = fs::last_write_time(path_);
  std::ofstream(path_) << "as written by somebody else";
  fs::last_write_time(path_, written);
  EXPECT_FALSE(delete_if_unchanged(file));
  EXPECT_TRUE(fs::exists(path_));
}

TEST_F(Written, StaysWhenItWasWrittenAgain) {
  const WrittenFile file = written_file(path_);
  fs::last_write_time(path_, fs::last_write_time(path_) + std::chrono::nanoseconds(1));
  EXPECT_FALSE(delete_if_unchanged(file));
  EXPECT_TRUE(fs::exists(path_));
}

// Nothing may be deleted in the place of a file that could not be examined.
TEST_F(Written, IsNothingWithoutAFile) {
  const WrittenFile file = written_file(folder_.path() / "missing.png");
  write_text(file.path, "");
  EXPECT_FALSE(delete_if_unchanged(file));
  EXPECT_TRUE(fs::exists(file.path));
}

}  // namespace
}  // namespace halcyra
