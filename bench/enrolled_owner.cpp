#include "bench/enrolled_owner.hpp"

#include <unistd.h>

#include <string>
#include <vector>

#include "app/run_state/runtime_status.hpp"
#include "demo/owner_samples.hpp"
#include "face_pipeline/owner_recognition.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

class Scratch {
 public:
  Scratch() : path_(fs::temp_directory_path() / ("halcyra-bench-" + std::to_string(getpid()))) {
    write_owner_samples(path_ / "owner");
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_ / "owner")) {
      if (entry.is_regular_file()) pictures_.push_back(entry.path());
    }
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  fs::path folder_of(int count) const {
    fs::path folder = path_ / std::to_string(count);
    if (fs::exists(folder)) return folder;
    fs::create_directories(folder / "front");
    for (int i = 0; i < count; ++i) {
      const fs::path& picture = pictures_[static_cast<std::size_t>(i) % pictures_.size()];
      fs::copy(picture, folder / "front" / (std::to_string(i) + ".png"));
    }
    return folder;
  }

 private:
  fs::path path_;
  std::vector<fs::path> pictures_;
};

}  // namespace

fs::path samples_folder(int count) {
  static const Scratch kScratch;
  return kScratch.folder_of(count);
}

RecognitionState enrolled_owner(int count) {
  Options options;
  options.samples_dir = samples_folder(count).string();
  RecognitionState state;
  RuntimeStatus status;
  train_recognizer(state, options, status);
  return state;
}

}  // namespace halcyra
