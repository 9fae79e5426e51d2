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

// All tasks of each pass.
using PassTasks = std::vector<std::vector<SearchTask>>;

std::vector<CascadeSearch*> cascades_of(const std::vector<SearchPass>& passes) {
  std::vector<CascadeSearch*> cascades;
  for (const SearchPass& pass : passes) {
    if (std::find(cascades.begin(), cascades.end(), pass.cascade) == cascades.end()) {
      cascades.push_back(pass.cascade);
    }
  }
  return cascades;
}

// Plans for a first picture take about as long as its search, so cascades plan side by side.
PassTasks tasks_of(ImagePyramid& pyramid, const std::vector<SearchPass>& passes) {
  std::vector<std::vector<const PyramidLayer*>> layers;
  layers.reserve(passes.size());
  for (const SearchPass& pass : passes) layers.push_back(pyramid.layers(pass.scales));
  PassTasks tasks(passes.size());
  const std::vector<CascadeSearch*> cascades = cascades_of(passes);
  cv::parallel_for_(cv::Range(0, static_cast<int>(cascades.size())), [&](const cv::Range& range) {
    for (int number = range.start; number < range.end; ++number) {
      CascadeSearch* const cascade = cascades[static_cast<std::size_t>(number)];
      // All of its passes before its first task is made, as tasks point to its plans.
      for (std::size_t i = 0; i < passes.size(); ++i) {
        if (passes[i].cascade == cascade) cascade->prepare(layers[i], passes[i].facing);
      }
      for (std::size_t i = 0; i < passes.size(); ++i) {
        if (passes[i].cascade == cascade) tasks[i] = cascade->tasks(layers[i], passes[i].facing);
      }
    }
  });
  return tasks;
}

// Parts of the same layer next to each other, from the largest layer on and from top to bottom. The
// tasks of each pass stay in their order.
std::vector<PassTask> by_place(PassTasks tasks) {
  std::vector<PassTask> all;
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    for (SearchTask& task : tasks[i]) all.push_back({i, std::move(task)});
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
  std::vector<PassTask> all = by_place(tasks_of(pyramid, passes));
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
