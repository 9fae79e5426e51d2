#include "enroll/report_findings.hpp"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include <opencv2/core.hpp>

#include "enroll/pose.hpp"
#include "enroll/quality_text.hpp"
#include "enroll/report_text.hpp"
#include "enroll/sample_groups.hpp"
#include "enroll/sample_limits.hpp"

namespace halcyra {
namespace {

// With two samples that are unlike each other, nobody can say which of them is the odd one.
constexpr std::size_t kLeastForOutliers = 3;

bool is_pose(const std::string& stage) {
  return std::any_of(kPoses.begin(), kPoses.end(),
                     [&](Pose pose) { return stage_name(pose) == stage; });
}

SampleGroup decodable_samples(const SampleReport& report, const std::string& stage) {
  SampleGroup members;
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    const ReportedSample& sample = report.samples[index];
    if (sample.stage == stage && !sample.image.empty()) members.push_back(index);
  }
  return members;
}

Finding outliers(const std::string& stage, SampleGroup members) {
  std::sort(members.begin(), members.end());
  const std::string unlike = " unlike the others of " + stage + ". ";
  const std::string sentence =
      members.size() == 1
          ? "Is this the owner? It is" + unlike + "Take more like it, or remove it."
          : "Are these the owner? They are" + unlike + "Take more like them, or remove them.";
  return {FindingKind::kOutlier, sentence, members};
}

Finding all_unlike(const std::string& stage, const SampleGroup& members) {
  return {FindingKind::kDivided,
          "Are all of these the owner? The samples of " + stage + " are all unlike each other.",
          members};
}

// One finding for each group; the first `count` groups are equally large.
void find_division(const std::string& stage, const std::vector<SampleGroup>& groups,
                   std::size_t count, std::vector<Finding>& findings) {
  for (std::size_t i = 0; i < count; ++i) {
    findings.push_back({FindingKind::kDivided,
                        "Are these the owner? The samples of " + stage + " fall into " +
                            std::to_string(count) + " groups, and this is one of them.",
                        groups[i]});
  }
}

// The poses are full of the owner from one side, so whoever is not in the largest group is
// doubtful. Other stages may hold anything of the owner.
void find_strangers(const std::string& stage, const std::vector<SampleGroup>& groups,
                    std::vector<Finding>& findings) {
  const std::size_t largest = groups.front().size();
  const auto ties = static_cast<std::size_t>(
      std::count_if(groups.begin(), groups.end(),
                    [&](const SampleGroup& group) { return group.size() == largest; }));
  if (largest == 1) {
    SampleGroup all;
    for (const SampleGroup& group : groups) all.push_back(group.front());
    findings.push_back(all_unlike(stage, all));
    return;
  }
  if (is_pose(stage) && ties > 1) find_division(stage, groups, ties, findings);
  SampleGroup doubtful;
  for (std::size_t i = ties; i < groups.size(); ++i) {
    if (!is_pose(stage) && groups[i].size() > 1) continue;
    doubtful.insert(doubtful.end(), groups[i].begin(), groups[i].end());
  }
  if (!doubtful.empty()) findings.push_back(outliers(stage, doubtful));
}

void find_strangers(const SampleReport& report, const DistanceTable& distances,
                    std::vector<Finding>& findings) {
  const auto linked = [&](std::size_t a, std::size_t b) {
    return std::min(distances[a][b], distances[b][a]) <= report.confirmed_threshold;
  };
  for (const StageSummary& stage : report.stages) {
    const SampleGroup members = decodable_samples(report, stage.stage);
    if (members.size() < kLeastForOutliers) continue;
    find_strangers(stage.stage, connected_groups(members, linked), findings);
  }
}

void find_undecodable(const SampleReport& report, std::vector<Finding>& findings) {
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    const ReportedSample& sample = report.samples[index];
    if (sample.too_large) {
      findings.push_back({FindingKind::kTooLarge,
                          "This picture is too large to be read, and the dashboard may not start "
                          "with it. Remove it.",
                          {index}});
    } else if (sample.image.empty()) {
      findings.push_back({FindingKind::kUndecodable,
                          "The dashboard leaves this file out: it cannot be decoded. Remove or "
                          "replace it.",
                          {index}});
    }
  }
}

// "Too blurry" for "too_blurry".
std::string plain_words(const std::string& verdict) {
  std::string words = verdict;
  std::replace(words.begin(), words.end(), '_', ' ');
  words.front() = static_cast<char>(words.front() - 'a' + 'A');
  return words;
}

void find_refused(const SampleReport& report, std::vector<Finding>& findings) {
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    const ReportedSample& sample = report.samples[index];
    if (sample.image.empty() || sample.quality == "accepted") continue;
    findings.push_back({FindingKind::kRefused,
                        plain_words(sample.quality) + " (" +
                            measure_at_fault(sample.quality, sample.size, sample.measures) +
                            "). Replace it. " + advice_for(sample.quality),
                        {index}});
  }
}

// The first other sample with the same pixels, if there is one.
std::optional<std::size_t> same_picture(const SampleReport& report, const DistanceTable& distances,
                                        std::size_t index) {
  for (std::size_t other = 0; other < report.samples.size(); ++other) {
    // The same pixels have exactly the same distance, which is quicker to compare.
    if (other == index || distances[index][other] != distances[index][index]) continue;
    const bool same =
        cv::norm(report.samples[index].image, report.samples[other].image, cv::NORM_INF) == 0;
    if (same) return other;
  }
  return std::nullopt;
}

// In both directions: a sample that an enrolment has taken was far enough from those before it, but
// they may be a little nearer to it.
bool are_near_copies(const DistanceTable& distances, std::size_t a, std::size_t b) {
  return distances[a][b] < kNearCopyDistance && distances[b][a] < kNearCopyDistance;
}

void find_near_copies(const SampleReport& report, const DistanceTable& distances,
                      std::vector<Finding>& findings) {
  std::set<std::pair<std::size_t, std::size_t>> named;
  const auto name_once = [&](std::size_t a, std::size_t b, const std::string& sentence) {
    const std::pair<std::size_t, std::size_t> pair = std::minmax(a, b);
    if (!named.insert(pair).second) return;
    findings.push_back({FindingKind::kNearCopy, sentence, {pair.first, pair.second}});
  };
  for (std::size_t index = 0; index < report.samples.size(); ++index) {
    const ReportedSample& sample = report.samples[index];
    if (sample.image.empty()) continue;
    if (const auto other = same_picture(report, distances, index)) {
      name_once(*other, index, "These samples are the same picture. Keep one of them.");
    } else if (sample.nearest && are_near_copies(distances, index, sample.nearest->index)) {
      name_once(index, sample.nearest->index,
                "These samples are almost the same (distance " +
                    decimal_text(sample.nearest->distance, 1) + "). Keep one of them.");
    }
  }
}

void find_lacking_poses(const SampleReport& report, std::vector<Finding>& findings) {
  for (const StageSummary& stage : report.stages) {
    if (!is_pose(stage.stage) || stage.samples >= report.per_pose) continue;
    findings.push_back({FindingKind::kTooFew,
                        "The pose " + stage.stage + " has " + std::to_string(stage.samples) +
                            " of " + std::to_string(report.per_pose) + " samples. Take " +
                            std::to_string(report.per_pose - stage.samples) + " more.",
                        {}});
  }
}

}  // namespace

std::vector<Finding> find_faults(const SampleReport& report, const DistanceTable& distances) {
  std::vector<Finding> findings;
  find_strangers(report, distances, findings);
  find_undecodable(report, findings);
  find_refused(report, findings);
  find_near_copies(report, distances, findings);
  find_lacking_poses(report, findings);
  return findings;
}

}  // namespace halcyra
