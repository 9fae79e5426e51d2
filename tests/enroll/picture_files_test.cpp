#include "enroll/picture_files.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "tests/enroll/sample_set.hpp"
#include "tests/support/photograph.hpp"
#include "tests/support/same_pixels.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;
using Listed = std::vector<std::pair<std::string, std::string>>;

// ---- Which files.

class ListPictures : public ::testing::Test {
 protected:
  std::string at(const std::string& name) const { return (folder_.path() / name).string(); }
  void add(const std::string& name) const { write_text(at(name), "x"); }
  // Paths from the folder, with obstacles.
  Listed list(const std::vector<std::string>& names) const {
    std::vector<std::string> places;
    for (const std::string& name : names) places.push_back(at(name));
    Listed listed;
    for (const PictureFile& file : list_pictures(places)) {
      listed.emplace_back(file.path.lexically_relative(folder_.path()).string(), file.obstacle);
    }
    return listed;
  }

  TemporaryFolder folder_;
};

TEST_F(ListPictures, TakesNamesInTheirOrderAndFoldersInPathOrder) {
  for (const char* name : {"b.png", "a.png", "in/z.jpg", "in/deep/a.bmp", "in/deep.txt"}) add(name);
  EXPECT_EQ(list({"b.png", "in", "a.png"}), (Listed{{"b.png", ""},
                                                    {"in/deep/a.bmp", ""},
                                                    {"in/deep.txt", ""},
                                                    {"in/z.jpg", ""},
                                                    {"a.png", ""}}));
}

TEST_F(ListPictures, SaysWhatItLeavesOutOfAFolder) {
  add("in/.hidden.png");
  add("in/.thumbs/a.png");
  add("other/b.png");
  fs::create_directory_symlink("../other", at("in/link"));
  fs::create_symlink("missing", at("in/nowhere"));
  fs::create_symlink("round", at("in/round"));
  ASSERT_EQ(mkfifo(at("in/pipe").c_str(), 0600), 0);
  EXPECT_EQ(list({"in"}),
            (Listed{{"in/.hidden.png", "hidden"},
                    {"in/.thumbs", "hidden"},
                    {"in/link", "a link to a folder"},
                    {"in/nowhere", "cannot be opened: No such file or directory"},
                    {"in/pipe", "not a file"},
                    {"in/round", "cannot be opened: Too many levels of symbolic links"}}));
}

TEST_F(ListPictures, FollowsLinksToFiles) {
  add("real.png");
  fs::create_directories(at("in"));
  fs::create_symlink("../real.png", at("in/link.png"));
  EXPECT_EQ(list({"in"}), (Listed{{"in/link.png", ""}}));
}

TEST_F(ListPictures, TakesHiddenAndLinkedNamesThatAreAskedFor) {
  add(".in/a.png");
  fs::create_directory_symlink(".in", at("link"));
  EXPECT_EQ(list({".in", "link", ".in/a.png"}),
            (Listed{{".in/a.png", ""}, {"link/a.png", ""}, {".in/a.png", ""}}));
}

TEST_F(ListPictures, TellsNamesThatWereAskedFor) {
  add("in/a.png");
  fs::create_symlink("nowhere", at("in/b.png"));
  const std::vector<PictureFile> files = list_pictures({at("missing"), at("in")});
  ASSERT_EQ(files.size(), 3U);
  EXPECT_EQ(files[0].obstacle, "cannot be opened: No such file or directory");
  EXPECT_TRUE(files[0].asked_for);
  EXPECT_FALSE(files[1].asked_for);
  EXPECT_FALSE(files[2].asked_for);
}

TEST_F(ListPictures, SaysThatAFolderCannotBeRead) {
  if (geteuid() == 0) GTEST_SKIP() << "every folder can be read by root";
  add("in/locked/a.png");
  fs::permissions(at("in/locked"), fs::perms::none);
  const std::string refusal = "cannot be opened: Permission denied";
  EXPECT_EQ(list({"in"}), (Listed{{"in/locked", refusal}}));
  EXPECT_FALSE(list_pictures({at("in")}).front().asked_for);
  EXPECT_TRUE(list_pictures({at("in/locked")}).front().asked_for);
  fs::permissions(at("in/locked"), fs::perms::owner_all);
}

// ---- What is in them.

class ReadPhotograph : public ::testing::Test {
 protected:
  std::string at(const std::string& name) const { return (folder_.path() / name).string(); }
  cv::Mat read(const std::string& name) {
    obstacle_ = "";
    return read_photograph(at(name), obstacle_);
  }
  std::string obstacle_to(const std::string& bytes) {
    write_text(at("file.png"), bytes);
    EXPECT_TRUE(read("file.png").empty());
    return obstacle_;
  }

  TemporaryFolder folder_;
  std::string obstacle_;
};

TEST_F(ReadPhotograph, MakesGreyOfColoursAsTheDashboardDoes) {
  const cv::Mat colored = color_photograph();
  ASSERT_TRUE(cv::imwrite(at("a.png"), colored));
  cv::Mat frame;
  cv::cvtColor(colored, frame, cv::COLOR_BGR2BGRA);
  cv::Mat grey;
  cv::cvtColor(frame, grey, cv::COLOR_BGRA2GRAY);
  EXPECT_TRUE(same_pixels(read("a.png"), grey));
  EXPECT_EQ(obstacle_, "");
}

TEST_F(ReadPhotograph, KeepsGreyPictures) {
  ASSERT_TRUE(cv::imwrite(at("a.pgm"), photograph()));
  EXPECT_TRUE(same_pixels(read("a.pgm"), photograph()));
}

TEST_F(ReadPhotograph, ReadsTheUsualFormatsWhateverTheirNames) {
  for (const char* ending : {".png", ".jpg", ".bmp", ".tiff", ".webp", ".jp2", ".pgm"}) {
    std::vector<unsigned char> bytes;
    ASSERT_TRUE(cv::imencode(ending, photograph(), bytes)) << ending;
    write_text(at("picture"), std::string(bytes.begin(), bytes.end()));
    EXPECT_EQ(read("picture").size(), photograph().size()) << ending << ": " << obstacle_;
  }
}

// A JPEG file whose camera noted that it was turned by a quarter.
TEST_F(ReadPhotograph, TurnsPicturesUpright) {
  std::vector<unsigned char> bytes;
  cv::imencode(".jpg", photograph()(cv::Rect(0, 0, 64, 32)), bytes);
  const std::string exif(
      "\xFF\xE1\x00\x22"
      "Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
      36);
  std::string file(bytes.begin(), bytes.end());
  write_text(at("turned.jpg"), file.substr(0, 2) + exif + file.substr(2));
  EXPECT_EQ(read("turned.jpg").size(), cv::Size(32, 64));
}

TEST_F(ReadPhotograph, SaysWhyThereIsNoPicture) {
  EXPECT_EQ(obstacle_to(""), "not a picture");
  EXPECT_EQ(obstacle_to("P"), "not a picture");
  EXPECT_EQ(obstacle_to("A letter to a friend."), "not a picture");
  EXPECT_EQ(obstacle_to("RIFF____WAVEfmt "), "not a picture");
  EXPECT_EQ(obstacle_to("\xFF\xD8\xFF and no more"), "cannot be decoded");
  EXPECT_EQ(obstacle_to(huge_header()), "too large");
  EXPECT_TRUE(read("missing").empty());
  EXPECT_EQ(obstacle_, "cannot be opened: No such file or directory");
}

}  // namespace
}  // namespace halcyra
