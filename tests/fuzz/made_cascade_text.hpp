// A cascade file generated from a fuzzer's input: well-formed XML with the layout of a cascade. Any
// number may be wild, and most elements may be missing or replaced; for valid cascades, see
// made_cascade.hpp. Only the counts that OpenCV relies on without a check are always right. An
// empty input gives a small usable cascade.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstring>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

namespace halcyra {

class MadeCascadeText {
 public:
  explicit MadeCascadeText(FuzzedDataProvider& input) : input_(input) {}

  std::string document() {
    // An empty input gives the smallest value of each range.
    window_ = 4 + input_.ConsumeIntegralInRange(0, 9);
    all_usual_ = input_.ConsumeBool();
    return "<?xml version=\"1.0\"?>\n<opencv_storage>\n" + element("cascade", cascade()) +
           "</opencv_storage>\n";
  }

 private:
  bool seldom() { return !all_usual_ && input_.ConsumeIntegralInRange(0, 63) == 63; }

  template <typename Number>
  static std::string written(Number number) {
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<float>::max_digits10) << number << ' ';
    return text.str();
  }

  std::string any_float() {
    const auto bits = input_.ConsumeIntegral<std::uint32_t>();
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return written(value);
  }

  std::string wild_number() {
    switch (input_.ConsumeIntegralInRange(0, 2)) {
      case 0:
        return written(input_.ConsumeIntegral<std::int32_t>());
      case 1:
        return any_float();
      default:
        return "1e400 ";
    }
  }

  // Something where something else is expected.
  std::string oddity() {
    switch (input_.ConsumeIntegralInRange(0, 2)) {
      case 0:
        return "";
      case 1:
        return "word ";
      default:
        return wild_number();
    }
  }

  std::string whole(int least, int most) {
    return seldom() ? wild_number() : written(input_.ConsumeIntegralInRange(least, most));
  }

  std::string real(double reach) {
    if (seldom()) return wild_number();
    return written(reach * input_.ConsumeIntegralInRange(-100, 100) / 100);
  }

  static std::string sure_element(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">\n";
  }

  std::string element(const std::string& name, const std::string& content) {
    if (seldom()) return "";
    return sure_element(name, seldom() ? oddity() : content);
  }

  // A list of 1 to `most` elements, each of which may be missing or odd.
  template <typename Each>
  std::string list(const std::string& name, int most, Each each) {
    std::string content;
    for (int count = input_.ConsumeIntegralInRange(1, most); count > 0; --count) {
      content += element("_", each());
    }
    return element(name, content);
  }

  std::string rect(int least_weight, int most_weight) {
    const int half = window_ / 2;
    std::string numbers = whole(0, half) + whole(0, half) + whole(1, half) + whole(1, half);
    numbers += seldom() ? real(5000) : whole(least_weight, most_weight);
    return seldom() ? numbers + whole(0, 1) : numbers;
  }

  // Never more than three rectangles: OpenCV would write a fourth past the end of the feature.
  std::string feature() {
    std::string rects = element("_", rect(-2, -1)) + element("_", rect(1, 2));
    if (input_.ConsumeBool()) rects += element("_", rect(-1, 3));
    return element("rects", rects) + element("tilted", seldom() ? "1" : "0");
  }

  // OpenCV does not check that a tree has four numbers for each node and one leaf more than nodes,
  // and otherwise reads past the end of its lists.
  std::string stump() {
    const bool two_nodes = seldom();
    std::string nodes = "0 -1 " + whole(0, 1) + real(0.1);
    if (two_nodes) nodes += "0 -1 " + whole(0, 1) + real(0.1);
    return sure_element("internalNodes", nodes) +
           sure_element("leafValues", real(1) + real(1) + (two_nodes ? real(1) : ""));
  }

  std::string stage() {
    std::string stumps;
    for (int count = input_.ConsumeIntegralInRange(1, 3); count > 0; --count) {
      stumps += sure_element("_", stump());
    }
    return element("stageThreshold", real(0.5)) + element("weakClassifiers", stumps);
  }

  // With a wild number of categories, OpenCV would only fill memory.
  std::string category_count() {
    return sure_element("maxCatCount",
                        written(seldom() ? input_.ConsumeIntegralInRange(-1, 64) : 0));
  }

  std::string cascade() {
    const std::string head =
        element("stageType", "BOOST") + element("featureType", seldom() ? "LBP" : "HAAR") +
        element("height", written(window_)) + element("width", written(window_)) +
        (seldom() ? "" : sure_element("featureParams", category_count()));
    const std::string stages = list("stages", 3, [this] { return stage(); });
    return head + stages + list("features", 4, [this] { return feature(); });
  }

  FuzzedDataProvider& input_;
  int window_ = 0;
  bool all_usual_ = false;  // no oddities, so that the cascade is usable
};

}  // namespace halcyra
