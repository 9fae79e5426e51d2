#include "face_pipeline/haar/image_pyramid.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

namespace halcyra::haar {
namespace {

// The search loads whole vectors, which reach less than this many entries beyond the last window.
constexpr int kMargin = 64;

// From this scale on, the search visits every column and row.
constexpr float kFirstCoarseScale = 2.0F;

// One row of the three planes.
struct PlaneRow {
  PlaneRow(PyramidLayer& layer, int row)
      : pitch(layer.layout.pitch),
        sums(layer.sums.data() + row * static_cast<std::ptrdiff_t>(pitch)),
        squares(layer.square_sums.data() + row * static_cast<std::ptrdiff_t>(pitch)),
        low_sums(layer.low_sums.data() + row * static_cast<std::ptrdiff_t>(pitch)) {}

  int pitch;
  std::int32_t* sums;
  std::int32_t* squares;
  std::uint16_t* low_sums;
};

void clear(const PlaneRow& row) {
  std::fill_n(row.sums, row.pitch, 0);
  std::fill_n(row.squares, row.pitch, 0);
  std::fill_n(row.low_sums, row.pitch, std::uint16_t{0});
}

// The sums along one row of pixels, from its start to some column. `put` adds those of the row
// above and stores the result. Unsigned, as sums of squares wrap around. Rows are passed by value,
// so that nothing points to these sums and they stay in registers.
struct RunningSums {
  std::uint32_t sum = 0;
  std::uint32_t squares = 0;

  void add(std::uint32_t pixel) {
    sum += pixel;
    squares += pixel * pixel;
  }

  void put(const PlaneRow row, int place) const {
    const auto above = static_cast<std::uint32_t>(row.sums[place - row.pitch]);
    const auto squares_above = static_cast<std::uint32_t>(row.squares[place - row.pitch]);
    row.sums[place] = static_cast<std::int32_t>(above + sum);
    row.squares[place] = static_cast<std::int32_t>(squares_above + squares);
  }
};

void store_low_sums(const PlaneRow& row, int entries) {
  for (int i = 0; i < entries; ++i) row.low_sums[i] = static_cast<std::uint16_t>(row.sums[i]);
}

void add_pixels(const PlaneRow row, const std::uint8_t* pixels, int width) {
  RunningSums running;
  running.put(row, 0);
  for (int x = 0; x < width; ++x) {
    running.add(pixels[x]);
    running.put(row, x + 1);
  }
  store_low_sums(row, width + 1);
}

// For layers with step 2: even and odd columns apart.
void add_pixels_apart(const PlaneRow row, const std::uint8_t* pixels, int width, int odd_start) {
  RunningSums running;
  running.put(row, 0);
  for (int pair = 0; pair < width / 2; ++pair) {
    running.add(pixels[2 * pair]);
    running.put(row, odd_start + pair);
    running.add(pixels[2 * pair + 1]);
    running.put(row, pair + 1);
  }
  if (width % 2 != 0) {
    running.add(pixels[width - 1]);
    running.put(row, odd_start + width / 2);
  }
  store_low_sums(row, odd_start + (width + 1) / 2);
}

void sum_up(PyramidLayer& layer) {
  const cv::Mat& shrunken = layer.shrunken;
  const std::size_t entries =
      static_cast<std::size_t>(shrunken.rows + 1) * static_cast<std::size_t>(layer.layout.pitch) +
      kMargin;
  if (layer.sums.size() < entries) {
    layer.sums.resize(entries);
    layer.square_sums.resize(entries);
    layer.low_sums.resize(entries);
  }
  clear(PlaneRow(layer, 0));
  for (int y = 0; y < shrunken.rows; ++y) {
    const PlaneRow row(layer, y + 1);
    const auto* pixels = shrunken.ptr<std::uint8_t>(y);
    if (layer.step == 1) {
      add_pixels(row, pixels, shrunken.cols);
    } else {
      add_pixels_apart(row, pixels, shrunken.cols, layer.layout.odd_start);
    }
  }
}

void make_layer(const cv::Mat& picture, PyramidLayer& layer) {
  cv::resize(picture, layer.shrunken, layer.size, 0, 0, cv::INTER_LINEAR_EXACT);
  layer.layout = plane_layout(picture.cols, layer.size.width);
  sum_up(layer);
}

}  // namespace

// A row has an odd number of blocks of 32 entries, so that entries above each other do not compete
// for the same sets of the cache. Rows have room for the picture's width, or for that divided by
// the root of 2, by 2, and so on to a quarter.
PlaneLayout plane_layout(int picture_width, int layer_width) {
  constexpr int kBlock = 32;
  constexpr int kLayouts = 5;
  int width = picture_width;
  for (int i = 1; i < kLayouts; ++i) {
    const int narrower = cvCeil(picture_width / std::exp2(0.5 * i));
    if (narrower < layer_width) break;
    width = narrower;
  }
  const int half = width / 2 + 1;
  const int blocks = (2 * half + kBlock - 1) / kBlock;
  const int pitch = kBlock * (blocks + 1 - blocks % 2);
  return {pitch, pitch / 2};
}

void ImagePyramid::set_picture(const cv::Mat& picture) {
  picture_ = picture;
  made_ = 0;
}

PyramidLayer* ImagePyramid::find(float scale) const {
  for (std::size_t i = 0; i < made_; ++i) {
    if (layers_[i]->scale == scale) return layers_[i].get();
  }
  return nullptr;
}

std::vector<const PyramidLayer*> ImagePyramid::layers(const std::vector<float>& scales) {
  const std::size_t first_missing = made_;
  std::vector<const PyramidLayer*> wanted;
  for (const float scale : scales) {
    PyramidLayer* layer = find(scale);
    if (layer == nullptr) {
      if (made_ == layers_.size()) layers_.push_back(std::make_unique<PyramidLayer>());
      layer = layers_[made_++].get();
      layer->scale = scale;
      layer->size = {cvRound(static_cast<float>(picture_.cols) / scale),
                     cvRound(static_cast<float>(picture_.rows) / scale)};
      layer->step = scale >= kFirstCoarseScale ? 1 : 2;
    }
    wanted.push_back(layer);
  }
  cv::parallel_for_(cv::Range(static_cast<int>(first_missing), static_cast<int>(made_)),
                    [this](const cv::Range& range) {
                      for (int i = range.start; i < range.end; ++i) {
                        make_layer(picture_, *layers_[static_cast<std::size_t>(i)]);
                      }
                    });
  return wanted;
}

}  // namespace halcyra::haar
