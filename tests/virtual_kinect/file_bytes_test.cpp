#include "virtual_kinect/file_bytes.hpp"

#include <sys/stat.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra::virtual_kinect {
namespace {

TEST(ReadFile, ReturnsEveryByte) {
  const TemporaryFolder folder;
  const std::string bytes("a\0\r\n\xFF", 5);
  write_text(folder.path() / "file", bytes);
  EXPECT_EQ(read_file(folder.path() / "file"), bytes);
}

TEST(ReadFile, ReturnsTheEmptyFileAsEmpty) {
  const TemporaryFolder folder;
  write_text(folder.path() / "file", "");
  EXPECT_EQ(read_file(folder.path() / "file"), "");
}

TEST(ReadFile, ReturnsNothingWhereThereIsNoFileToRead) {
  const TemporaryFolder folder;
  EXPECT_EQ(read_file(folder.path() / "missing"), std::nullopt);
  EXPECT_EQ(read_file(folder.path()), std::nullopt);
}

TEST(ReadFile, DoesNotWaitForTheWriterOfAPipe) {
  const TemporaryFolder folder;
  const std::string pipe = (folder.path() / "pipe").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(read_file(pipe), std::nullopt);
}

}  // namespace
}  // namespace halcyra::virtual_kinect
