// The whole way: the owner is enrolled in the rendered room, and the dashboard then watches a room
// with other noise.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/enrolment/enrolment_run.hpp"
#include "tests/e2e/exit_summary_line.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr int kPicturesOfAScene = 12;

class AnotherRoom : public EnrolmentRun {
 protected:
  void record_scene(const std::string& scene) {
    for (int i = 0; i < kPicturesOfAScene; ++i) {
      record(enrolment_picture(scene + "-" + std::to_string(i)));
    }
  }

  void enrol_owner() {
    for (const std::string scene : {"story-front", "story-left", "story-right"}) {
      record_scene(scene);
    }
    start({"--per-pose", "4"});
    EXPECT_TRUE(shows("Done"));
    ASSERT_TRUE(quit());
    ASSERT_EQ(samples().size(), 12U);
  }

  // What the dashboard sums up after watching the scene once.
  std::map<std::string, std::string> watch(const std::string& scene) {
    fs::remove_all(recording_.folder());
    recording_ = Recording(recording_.folder());
    recording_.set_device("pace: 0\n");
    record_scene(scene);
    ProgramStart dashboard = start_of({"--smoke", "--frames", std::to_string(kPicturesOfAScene)});
    dashboard.executable = HALCYRA_PROGRAM;
    EXPECT_EQ(run_to_end(dashboard).exit_status, 0);
    return summary_values(program_->output());
  }

  // Takes samples from these pictures of a scene.
  void take_from_pictures(const std::string& scene, const std::vector<int>& numbers) {
    std::vector<std::string> arguments = {"--from"};
    for (const int number : numbers) {
      arguments.push_back(HALCYRA_ENROLMENT_PICTURES "/" + scene + "-" + std::to_string(number) +
                          ".png");
    }
    run_to_end(start_of(arguments));
    EXPECT_EQ(program_->errors(), "");
  }
};

TEST_F(AnotherRoom, OwnerIsConfirmedInAllPosesAndNobodyElseEver) {
  enrol_owner();
  for (const std::string pose : {"front", "left", "right"}) {
    SCOPED_TRACE(pose);
    const auto summary = watch("other-" + pose);
    EXPECT_GE(std::stoi(summary.at("cc_confirmed_dorran_predictions")), 4);
    EXPECT_EQ(summary.at("cc_last_label"), "ConfirmedDorran");
    EXPECT_EQ(summary.at("cc_last_stage"), pose);
  }
  for (const std::string stranger : {"visitor", "visitor-left", "guest"}) {
    SCOPED_TRACE(stranger);
    const auto summary = watch("other-" + stranger);
    EXPECT_EQ(summary.at("cc_confirmed_dorran_predictions"), "0");
    EXPECT_EQ(summary.at("cc_candidate_dorran_predictions"), "0");
    EXPECT_GE(std::stoi(summary.at("cc_unknown_predictions")), 8);
  }
}

TEST_F(AnotherRoom, SomebodyElsesSamplesAreNamedByTheReport) {
  take_from_pictures("story-front", {0, 2, 4, 6, 8, 10});
  const std::vector<std::string> owners = samples();
  EXPECT_GE(owners.size(), 4U);  // some may be near-copies
  run_to_end(start_of({"--report"}));
  EXPECT_EQ(program_->output().find("the owner?"), std::string::npos) << program_->output();

  take_from_pictures("other-guest", {5, 9});
  ASSERT_EQ(samples().size(), owners.size() + 2);
  EXPECT_EQ(run_to_end(start_of({"--report"})).exit_status, 1);
  const std::string report = program_->output();
  const std::size_t question = report.find("the owner?");
  ASSERT_NE(question, std::string::npos) << report;
  const std::string named = report.substr(question);
  for (const std::string& name : samples()) {
    const bool is_owner = std::find(owners.begin(), owners.end(), name) != owners.end();
    EXPECT_EQ(named.find(name) == std::string::npos, is_owner) << report;
  }

  // This is why it matters.
  const auto summary = watch("other-guest");
  EXPECT_GT(std::stoi(summary.at("cc_confirmed_dorran_predictions")), 0);
}

}  // namespace
}  // namespace halcyra
