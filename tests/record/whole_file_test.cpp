#include "record/whole_file.hpp"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"
#include "virtual_kinect/recording.hpp"

namespace halcyra::record {
namespace {

namespace fs = std::filesystem;

TEST(WholeFile, AppearsWithItsName) {
  const TemporaryFolder folder;
  const fs::path file = folder.path() / "file";
  ASSERT_EQ(write_draft(file, "hello", 5), "");
  EXPECT_FALSE(fs::exists(file));
  ASSERT_EQ(publish_draft(file), "");
  EXPECT_EQ(read_text(file), "hello");
  EXPECT_FALSE(fs::exists(draft_of(file)));
}

TEST(WholeFile, ReplacesAnEarlierOne) {
  const TemporaryFolder folder;
  const fs::path file = folder.path() / "file";
  write_text(file, "an earlier, longer text");
  ASSERT_EQ(write_draft(file, "new", 3), "");
  EXPECT_EQ(read_text(file), "an earlier, longer text");
  ASSERT_EQ(publish_draft(file), "");
  EXPECT_EQ(read_text(file), "new");
}

TEST(WholeFile, DraftIsNotPlayed) {
  using libfreenect2::Frame;
  const TemporaryFolder recording;
  for (const auto& [stream, name] :
       {std::pair(Frame::Color, "color/1.png"), std::pair(Frame::Color, "color/1.jpg"),
        std::pair(Frame::Ir, "ir/1.tiff"), std::pair(Frame::Depth, "depth/1.png")}) {
    const fs::path file = recording.path() / name;
    write_text(draft_of(file), "half");
    EXPECT_TRUE(virtual_kinect::stream_files(recording.path(), stream).empty()) << name;
    fs::rename(draft_of(file), file);
    EXPECT_EQ(virtual_kinect::stream_files(recording.path(), stream).size(), 1U) << name;
    fs::remove(file);
  }
}

TEST(WholeFile, SaysWhyItCannotBeWritten) {
  const TemporaryFolder folder;
  EXPECT_EQ(write_draft(folder.path() / "missing/file", "a", 1), "No such file or directory");
  EXPECT_EQ(publish_draft(folder.path() / "never written"), "No such file or directory");
}

}  // namespace
}  // namespace halcyra::record
