// The quick tests of stages, computed from their plan for one window at a time.
#include "face_pipeline/haar/quick_plan.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "face_pipeline/haar/cascade_file.hpp"
#include "face_pipeline/haar/cascade_plan.hpp"
#include "face_pipeline/haar/image_pyramid.hpp"
#include "face_pipeline/haar/single_window.hpp"
#include "tests/face_pipeline/haar/classifier_comparison.hpp"
#include "tests/face_pipeline/haar/sample_pictures.hpp"

namespace halcyra::haar {
namespace {

struct NoLanes;

struct Counts {
  int passed = 0;       // stages that windows pass
  int missed = 0;       // stages that windows miss
  int not_noticed = 0;  // of these, the ones whose quick test they pass
};

// The first layer of a picture, and one cascade over it.
class SearchedLayer {
 public:
  SearchedLayer(const StumpCascade& cascade, const cv::Mat& picture) {
    pyramid_.set_picture(picture);
    layer_ = pyramid_.layers({1.0F})[0];
    plan_ = place_plan(plan_cascade(cascade), layer_->layout, {layer_->step, 0}, {16, 0.3});
    view_ = plan_.view();
  }

  // Looks at every stage after the first of every window with enough contrast.
  void count(Counts& counts) const {
    for (int y = 0; y + plan_.window.height <= layer_->size.height; y += layer_->step) {
      for (int x = 0; x + plan_.window.width <= layer_->size.width; x += layer_->step) {
        count(y * layer_->layout.pitch + x / layer_->step, counts);
      }
    }
  }

 private:
  void count(std::int32_t place, Counts& counts) const {
    const LayerView planes{layer_->sums.data(), layer_->square_sums.data(), layer_->low_sums.data(),
                           layer_->layout.pitch};
    const SingleWindow<NoLanes> window(view_, planes, place);
    const float norm = window.norm();
    if (!(norm <= view_.largest_norm)) return;
    const auto deviation = static_cast<std::int32_t>(std::lround(view_.deviation_unit / norm));
    for (std::int32_t stage = 1; stage < view_.stage_count; ++stage) {
      const QuickStage& quick = view_.quick_stages[stage];
      const std::int32_t sum = quick_sum(quick, layer_->low_sums.data() + place, deviation);
      const bool may_pass = sum > quick.open_limit && window.may_pass(quick, sum, deviation);
      if (window.passes_exactly(view_.stages[stage], norm)) {
        ++counts.passed;
        EXPECT_TRUE(may_pass) << "stage " << stage;
      } else {
        ++counts.missed;
        counts.not_noticed += may_pass ? 1 : 0;
      }
    }
  }

  std::int32_t quick_sum(const QuickStage& stage, const std::uint16_t* entries,
                         std::int32_t deviation) const {
    std::int32_t sum = kQuickStart;
    std::int32_t i = stage.first;
    for (int shape = 0; shape < kAnyShape; ++shape) {
      for (; i < stage.ends[shape]; ++i) {
        const QuickStump& stump = view_.quick_stumps[i];
        const auto threshold = static_cast<std::int16_t>(stump.threshold);
        const int value = value_of(static_cast<FeatureShape>(shape), stump.offsets, entries);
        if (value <= (deviation * threshold) >> 16) sum += static_cast<std::uint16_t>(stump.gain);
      }
    }
    return sum;
  }

  // By the definition of the shapes, cut to 16 bits. Parts of it fit into 16 bits.
  static int value_of(FeatureShape shape, const std::int32_t* o, const std::uint16_t* entries) {
    const auto at = [&](int i) { return static_cast<unsigned>(entries[o[i]]); };
    const auto pair = [&](int i) { return at(2 * i) - at(2 * i + 1); };
    const auto plain = [](unsigned part) { return static_cast<int>(part & 0xFFFFU); };
    const auto with_sign = [](unsigned part) {
      return static_cast<int>(static_cast<std::int16_t>(part));
    };
    int value = 0;
    if (shape == kHalves) {
      value = plain(pair(0) - pair(1)) - plain(pair(1) - pair(2));
    } else if (shape == kThirds) {
      const unsigned middle = pair(2) - pair(1);
      value = with_sign(middle - (pair(1) - pair(0))) + with_sign(middle - (pair(3) - pair(2)));
    } else {
      const unsigned sides = at(3) + at(5) - 2 * at(4);
      value = with_sign(at(0) + at(2) - 2 * at(1) - sides) +
              with_sign(at(6) + at(8) - 2 * at(7) - sides);
      if (shape == kInverseChecks) value = -value;
    }
    return std::clamp(value, -32768, 32767);
  }

  ImagePyramid pyramid_;
  const PyramidLayer* layer_ = nullptr;
  ScanPlan plan_;
  PlanView view_{};
};

StumpCascade stock(const std::string& name) {
  const cv::FileStorage file(stock_cascade(name), cv::FileStorage::READ);
  return read_stump_cascade(file).value();
}

// Of photographs and of pictures with even areas, where many values are 0 or nearly so.
Counts count_stages(const StumpCascade& cascade) {
  cv::RNG random(31);
  Counts counts;
  SearchedLayer(cascade, portrait()).count(counts);
  SearchedLayer(cascade, checkerboard({100, 80}, 9)).count(counts);
  SearchedLayer(cascade, clouds({100, 80}, random)).count(counts);
  SearchedLayer(cascade, gradient({60, 60})).count(counts);
  return counts;
}

TEST(QuickTest, IsPassedByAllWindowsThatPassTheStage) {
  for (const std::string name :
       {"frontalface_default", "profileface", "frontalface_alt", "eye", "frontalcatface"}) {
    SCOPED_TRACE(name);
    EXPECT_GT(count_stages(stock(name)).passed, 5000);
  }
}

// Where it lets too many pass, the search is slow.
TEST(QuickTest, IsPassedByFewOthers) {
  for (const std::string name : {"frontalface_default", "profileface"}) {
    const Counts counts = count_stages(stock(name));
    EXPECT_GT(counts.missed, 50000) << name;
    EXPECT_LT(counts.not_noticed, counts.missed / 50) << name << ": " << counts.not_noticed;
  }
}

}  // namespace
}  // namespace halcyra::haar
