#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <opencv2/core.hpp>

#include "app/run_state/options.hpp"
#include "tests/support/temporary_folder.hpp"
#include "tests/virtual_kinect/room/watched_story.hpp"

namespace halcyra {
namespace {

using virtual_kinect::room::Person;

// Five turns a second are enough: nothing in the story is over sooner.
constexpr std::uint64_t kStep = 6;
// The share of turns in which the cascades may see a face in folds, hands or furniture, as they do
// in any living room.
constexpr double kFewFalseHits = 0.03;
constexpr double kDwellSeconds = 1.25;  // how long a view mode must be wanted before it is shown

// Everybody who watches the story sees the same, so it is watched once.
class RoomStoryTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    const TemporaryFolder samples;
    turns_ = new std::vector<StoryTurn>(watch_story(samples.path(), kStep));
  }
  static void TearDownTestSuite() { delete turns_; }

  static std::vector<StoryTurn> between(double from, double to) {
    std::vector<StoryTurn> some;
    std::copy_if(turns_->begin(), turns_->end(), std::back_inserter(some),
                 [&](const StoryTurn& turn) { return turn.time >= from && turn.time < to; });
    return some;
  }

  static std::vector<SeenFace> faces_of(Person person) {
    std::vector<SeenFace> faces;
    for (const StoryTurn& turn : *turns_) {
      std::copy_if(turn.faces.begin(), turn.faces.end(), std::back_inserter(faces),
                   [&](const SeenFace& seen) { return seen.whose == person; });
    }
    return faces;
  }

  static std::set<std::string> all(const std::function<std::string(const FaceInfo&)>& word) {
    std::set<std::string> words;
    for (const StoryTurn& turn : *turns_) {
      for (const SeenFace& seen : turn.faces) words.insert(word(seen.face));
    }
    return words;
  }

  static std::vector<StoryTurn>* turns_;
};

std::vector<StoryTurn>* RoomStoryTest::turns_ = nullptr;

bool is_confirmed(const SeenFace& seen) { return seen.face.label == "ConfirmedDorran"; }

TEST_F(RoomStoryTest, LeavesTheRoomEmptyForAWhileAndScansIt) {
  for (const auto& [from, to] : {std::pair(0.0, 2.5), std::pair(59.0, 60.0)}) {
    for (const StoryTurn& turn : between(from, to)) {
      EXPECT_TRUE(turn.faces.empty()) << turn.time;
      EXPECT_EQ(turn.room.view_mode, "scan") << turn.time;
    }
  }
}

TEST_F(RoomStoryTest, FollowsTheOwnerWhileHeIsAlone) {
  for (const StoryTurn& turn : between(8.0, 13.0)) {
    EXPECT_EQ(turn.room.view_mode, "follow") << turn.time;
  }
}

TEST_F(RoomStoryTest, ConfirmsTheOwnerWhileHeIsAlone) {
  std::size_t confirmed = 0;
  for (const StoryTurn& turn : between(5.0, 14.0)) {
    ASSERT_EQ(turn.heads_in_view, 1U) << turn.time;
    if (turn.room.owner_visible) {
      ++confirmed;
      EXPECT_EQ(turn.room.target, "Dorran") << turn.time;
    }
  }
  EXPECT_GE(confirmed, 8U);  // more than three of the nine seconds
}

TEST_F(RoomStoryTest, ConfirmsTheOwnerFromTheFrontAndFromBothSides) {
  std::map<std::string, int> confirmed;
  for (const SeenFace& seen : faces_of(Person::kOwner)) {
    if (is_confirmed(seen)) ++confirmed[seen.face.detector_type];
  }
  EXPECT_GT(confirmed["frontal"], 0);
  EXPECT_GT(confirmed["profile_left"], 0);
  EXPECT_GT(confirmed["profile_right"], 0);
}

TEST_F(RoomStoryTest, ConfirmsTheOwnerAmongOthers) {
  const std::vector<StoryTurn> turns = between(49.0, 55.0);
  EXPECT_TRUE(std::any_of(turns.begin(), turns.end(), [](const StoryTurn& turn) {
    return turn.faces.size() >= 2 && turn.room.owner_visible;
  }));
}

TEST_F(RoomStoryTest, NeverTakesSomebodyElseForTheOwner) {
  const double candidate = Options().candidate_threshold;
  for (const Person person : {Person::kVisitor, Person::kGuest}) {
    std::size_t accepted = 0;
    for (const SeenFace& seen : faces_of(person)) {
      EXPECT_EQ(seen.face.label, "Unknown");
      if (seen.face.quality == "accepted") {
        ++accepted;
        EXPECT_GT(seen.face.confidence, candidate + 3.0) << "box at " << seen.face.box;
      }
    }
    EXPECT_GE(accepted, 12U);
  }
}

// A picture that the recogniser was trained with would be at distance 0.
TEST_F(RoomStoryTest, ShowsTheOwnerAsNoSampleDoes) {
  for (const SeenFace& seen : faces_of(Person::kOwner)) {
    if (seen.face.quality == "accepted") {
      EXPECT_GT(seen.face.confidence, 20.0) << "box at " << seen.face.box;
    }
  }
}

TEST_F(RoomStoryTest, FollowsSomebodyUnknown) {
  for (const auto& [from, to] : {std::pair(24.0, 25.6), std::pair(36.0, 37.5)}) {
    for (const StoryTurn& turn : between(from, to)) {
      EXPECT_EQ(turn.room.view_mode, "follow") << turn.time;
      EXPECT_EQ(turn.room.unknown_people, 1) << turn.time;
      EXPECT_FALSE(turn.room.owner_visible) << turn.time;
    }
  }
}

TEST_F(RoomStoryTest, LooksAtTheWholeRoomWhenThereAreSeveral) {
  for (const StoryTurn& turn : between(18.5, 19.4)) {
    EXPECT_EQ(turn.room.view_mode, "room_overview") << turn.time;
  }
  const std::vector<StoryTurn> turns = between(51.0, 54.5);
  EXPECT_TRUE(std::all_of(turns.begin(), turns.end(), [](const StoryTurn& turn) {
    return turn.room.view_mode == "room_overview";
  }));
  EXPECT_TRUE(std::any_of(turns.begin(), turns.end(),
                          [](const StoryTurn& turn) { return turn.faces.size() == 3; }));
}

TEST_F(RoomStoryTest, ShowsFacesToAllDetectors) {
  EXPECT_EQ(all([](const FaceInfo& face) { return face.detector_type; }),
            (std::set<std::string>{"frontal", "profile_left", "profile_right"}));
}

TEST_F(RoomStoryTest, ShowsFacesOfEveryQuality) {
  EXPECT_EQ(all([](const FaceInfo& face) { return face.quality; }),
            (std::set<std::string>{"accepted", "low_contrast", "too_blurry", "too_bright",
                                   "too_dark", "too_small"}));
}

TEST_F(RoomStoryTest, HardlyEverShowsAFaceWhereNobodyIs) {
  std::size_t turns_with_false_hits = 0;
  std::ostringstream places;
  for (const StoryTurn& turn : *turns_) {
    bool false_hit = false;
    for (const SeenFace& seen : turn.faces) {
      if (!seen.whose) {
        false_hit = true;
        places << ' ' << seen.face.detector_type << seen.face.box << " at " << turn.time << " s;";
      }
    }
    turns_with_false_hits += false_hit ? 1 : 0;
  }
  EXPECT_LT(static_cast<double>(turns_with_false_hits),
            kFewFalseHits * static_cast<double>(turns_->size()))
      << places.str();
}

TEST_F(RoomStoryTest, DoesNotPassOnePersonForTwo) {
  double since = 0.0;
  for (const StoryTurn& turn : *turns_) {
    if (turn.heads_in_view > 1 || turn.faces.size() < 2) since = turn.time;
    EXPECT_LT(turn.time - since, kDwellSeconds) << turn.time;
  }
}

}  // namespace
}  // namespace halcyra
