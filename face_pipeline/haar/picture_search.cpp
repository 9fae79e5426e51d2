#include "face_pipeline/haar/picture_search.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <opencv2/core/utility.hpp>

#include "face_pipeline/haar/search_task.hpp"

namespace halcyra::haar {
namespace {

struct PassTask {
  std::size_t pass = 0;
  SearchTask task;
};

using PassLayers = std::vector<std::vector<const PyramidLayer*>>;

// Parts of the same layer next to each other, from the largest layer on and from top to bottom. The
// tasks of each pass stay in their order.
std::vector<PassTask> tasks_by_place(const std::vector<SearchPass>& passes,
                                     const PassLayers& layers) {
  std::vector<PassTask> all;
  for (std::size_t i = 0; i < passes.size(); ++i) {
    for (SearchTask& task : passes[i].cascade->tasks(layers[i], passes[i].facing)) {
      all.push_back({i, std::move(task)});
    }
  }
  std::stable_sort(all.begin(), all.end(), [](const PassTask& a, const PassTask& b) {
    return std::make_pair(a.task.layer->scale, a.task.rows.first_row) <
           std::make_pair(b.task.layer->scale, b.task.rows.first_row);
  });
  return all;
}

}  // namespace

std::vector<std::vector<cv::Rect>> search_picture(ImagePyramid& pyramid,
                                                  const std::vector<SearchPass>& passes) {
  PassLayers layers;
  for (const SearchPass& pass : passes) layers.push_back(pyramid.layers(pass.scales));
  // All passes before the first task is made: two may share a cascade, and tasks point to its
  // plans.
  for (std::size_t i = 0; i < passes.size(); ++i) {
    passes[i].cascade->prepare(layers[i], passes[i].facing);
  }
  std::vector<PassTask> all = tasks_by_place(passes, layers);
  cv::parallel_for_(cv::Range(0, static_cast<int>(all.size())), [&](const cv::Range& range) {
    for (int i = range.start; i < range.end; ++i) {
      PassTask& one = all[static_cast<std::size_t>(i)];
      passes[one.pass].cascade->run(one.task);
    }
  });
  std::vector<std::vector<cv::Rect>> found(passes.size());
  for (const PassTask& one : all) {
    found[one.pass].insert(found[one.pass].end(), one.task.found.begin(), one.task.found.end());
  }
  return found;
}

}  // namespace halcyra::haar
