// Recordings that run into the end of their disk.
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include <gtest/gtest.h>

#include "record/recording_folder.hpp"
#include "tests/record/recorded_sets.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra::record {
namespace {

namespace fs = std::filesystem;

constexpr StreamChoice kAll = {true, true, true};
constexpr int kNotPermitted = 77;

// While it lives, no file can grow beyond this.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    rlimit limit = before_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
};

// What is wrong with the recording: it must have these sets and nothing of another.
std::string fault_of(const fs::path& folder, std::uint32_t sets) {
  for (const char* const stream : kStreamNames) {
    std::uint32_t files = 0;
    for (const auto& file : fs::directory_iterator(folder / stream)) {
      if (file.path().extension() == ".part") return file.path().string() + " was left";
      ++files;
    }
    if (files != sets) return std::to_string(files) + " files in " + stream;
  }
  const std::string table = read_text(folder / "sets.csv");
  if (table.empty() || table.back() != '\n') return "half a line: " + table;
  const auto lines = std::count(table.begin(), table.end(), '\n');
  return lines == std::ptrdiff_t{sets} + 1 ? "" : "other lines: " + table;
}

TEST(FullDisk, LeavesTheSetsBefore) {
  const TemporaryFolder parent;
  RecordingFolder folder(parent.path() / "room", kAll);
  ASSERT_EQ(folder.prepare(), "");
  ASSERT_TRUE(folder.commit(encoded_set(1)));
  RecordedSet large = encoded_set(2);
  large.files[kDepth].bytes.resize(10'000);
  {
    const FileSizeLimit limit(5000);
    EXPECT_FALSE(folder.commit(large));
  }
  EXPECT_EQ(folder.failure(),
            "cannot write to \"" + (parent.path() / "room").string() + "\": File too large");
  EXPECT_EQ(fault_of(parent.path() / "room", 1), "");
}

TEST(FullDisk, LeavesWholeLinesInTheTable) {
  const TemporaryFolder parent;
  RecordingFolder folder(parent.path() / "room", kAll);
  ASSERT_EQ(folder.prepare(), "");
  {
    const FileSizeLimit limit(200);
    std::uint32_t number = 1;
    while (number < 100 && folder.commit(set_without_data(number))) ++number;
    EXPECT_LT(number, 100U);
    EXPECT_GT(number, 1U);
  }
  EXPECT_EQ(fault_of(parent.path() / "room", folder.sets()), "");
}

// The first picture does not fit, while device.yml and the head of the table do.
TEST(FullDisk, FromTheStartLeavesNothing) {
  const TemporaryFolder parent;
  RecordingFolder folder(parent.path() / "room", kAll);
  ASSERT_EQ(folder.prepare(), "");
  RecordedSet large = encoded_set(1);
  large.files[kDepth].bytes.resize(10'000);
  {
    const FileSizeLimit limit(2000);
    EXPECT_FALSE(folder.commit(large));
  }
  EXPECT_TRUE(fs::exists(parent.path() / "room/device.yml"));
  EXPECT_EQ(folder.sets(), 0U);
  folder.clear();
  EXPECT_TRUE(fs::is_empty(parent.path()));
}

// Fills a real disk of 256 KiB; the exit status of a process of its own, which alone sees the disk.
int fill_small_disk(const fs::path& mount_point) {
  if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return kNotPermitted;
  mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
  if (mount("tmpfs", mount_point.c_str(), "tmpfs", 0, "size=256k") != 0) return kNotPermitted;
  RecordingFolder folder(mount_point / "room", kAll);
  if (!folder.prepare().empty()) return 1;
  RecordedSet set = encoded_set(1);
  set.files[kInfrared].bytes.resize(30'000);
  while (set.number < 100 && folder.commit(set)) ++set.number;
  const bool is_full = folder.failure().find("No space left on device") != std::string::npos;
  if (!is_full || folder.sets() < 2 || !folder.finish()) return 2;
  return fault_of(mount_point / "room", folder.sets()).empty() ? 0 : 3;
}

TEST(FullDisk, OfARealSmallDiskLeavesTheSetsBefore) {
  const TemporaryFolder mount_point;
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(fill_small_disk(mount_point.path()));
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  if (WEXITSTATUS(status) == kNotPermitted) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace halcyra::record
