// Whether the demonstration's voices come from where the people in the rendered room are.
#include <cmath>
#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "virtual_kinect/room/pinhole.hpp"
#include "virtual_kinect/room/story.hpp"

namespace halcyra {
namespace {

namespace room = virtual_kinect::room;

constexpr double kMatch = 18.0;         // degrees within which the dashboard joins voice and face
constexpr double kEnough = 0.45;        // confidence from which it trusts a direction
constexpr double kInView = 52.0;        // degrees; farther out a head is cut by the picture's edge
constexpr int kMinute = 60000;          // milliseconds
constexpr int kComingIntoPlace = 1500;  // milliseconds in which people may still be walking

struct Voice {
  int from;
  int until;
  double angle;
  double confidence;
  bool low_confidence;
  std::string who;
};

std::vector<Voice> voices() {
  std::vector<Voice> voices;
  std::ifstream file(HALCYRA_DEMO "/install/voice-directions.txt");
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    Voice voice{};
    std::istringstream(line) >> std::boolalpha >> voice.from >> voice.angle >> voice.confidence >>
        voice.low_confidence >> voice.who;
    if (!voices.empty()) voices.back().until = voice.from;
    voice.until = kMinute;
    voices.push_back(voice);
  }
  return voices;
}

bool trusted(const Voice& voice) { return voice.confidence >= kEnough && !voice.low_confidence; }

// The angle at which the dashboard places a face here: linear from -55 degrees at the left edge of
// the picture to 55 at the right.
double face_angle(const room::Posture& posture) {
  const double column = room::kColorCamera.column({posture.x, 0.0F, posture.z});
  return (column / room::kColorCamera.width - 0.5) * 2 * 55;
}

std::map<std::string, double> heads_in_view(int milliseconds) {
  static const std::map<room::Person, std::string> kNames = {{room::Person::kOwner, "owner"},
                                                             {room::Person::kGuest, "guest"},
                                                             {room::Person::kVisitor, "visitor"}};
  std::map<std::string, double> heads;
  const std::uint64_t delivered =
      static_cast<std::uint64_t>(milliseconds) * room::kSetsPerSecond / 1000;
  for (const room::Presence& presence : room::moment_at(room::kOpeningSet + delivered).people) {
    const double angle = face_angle(presence.posture);
    if (std::fabs(angle) <= kInView) heads[kNames.at(presence.person)] = angle;
  }
  return heads;
}

std::vector<std::string> heads_at(const std::map<std::string, double>& heads, double angle) {
  std::vector<std::string> matching;
  for (const auto& [name, head] : heads) {
    if (std::fabs(head - angle) <= kMatch - 1) matching.push_back(name);  // estimates waver
  }
  return matching;
}

TEST(VoiceDirections, ComeInOrderWithinOneMinute) {
  const std::vector<Voice> all = voices();
  ASSERT_FALSE(all.empty());
  EXPECT_EQ(all.front().from, 0);
  for (const Voice& voice : all) EXPECT_LT(voice.from, voice.until);
}

TEST(VoiceDirections, AreOfEveryKind) {
  std::map<std::string, int> kinds;
  for (const Voice& voice : voices()) ++kinds[voice.who];
  for (const char* kind : {"owner", "guest", "visitor", "both", "elsewhere", "unsure"}) {
    EXPECT_GT(kinds[kind], 0) << kind;
  }
}

TEST(VoiceDirections, AreDoubtfulWhereTheySaySo) {
  for (const Voice& voice : voices()) {
    EXPECT_EQ(trusted(voice), voice.who != "unsure") << "from " << voice.from;
  }
}

TEST(VoiceDirections, PointAtWhomTheyName) {
  for (const Voice& voice : voices()) {
    if (voice.who == "unsure") continue;
    const std::vector<std::string> expected = voice.who == "elsewhere" ? std::vector<std::string>{}
                                              : voice.who == "both"
                                                  ? std::vector<std::string>{"guest", "owner"}
                                                  : std::vector<std::string>{voice.who};
    for (int at = voice.from + kComingIntoPlace; at < voice.until; at += 200) {
      EXPECT_EQ(heads_at(heads_in_view(at), voice.angle), expected)
          << "voice from " << voice.from << " at " << at << " ms";
    }
  }
}

}  // namespace
}  // namespace halcyra
