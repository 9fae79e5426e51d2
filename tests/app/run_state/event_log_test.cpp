#include "app/run_state/event_log.hpp"

#include <time.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <deque>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "app/run_state/runtime_status.hpp"
#include "tests/support/environment_variable.hpp"
#include "tests/support/event_messages.hpp"

namespace halcyra {
namespace {

using WallClock = std::chrono::system_clock;

// The local time zone of one test, as a POSIX zone text.
class TimeZone {
 public:
  explicit TimeZone(const std::string& zone) {
    variable_.emplace("TZ", zone);
    tzset();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
  ~TimeZone() {
    variable_.reset();
    tzset();
  }

 private:
  std::optional<EnvironmentVariable> variable_;
};

std::time_t seconds_now() {
  return std::chrono::floor<std::chrono::seconds>(WallClock::now()).time_since_epoch().count();
}

std::string logged_time(const RuntimeStatus& status) { return status.events.front().substr(0, 8); }

std::string local_time(std::time_t moment) {
  std::tm fields{};
  localtime_r(&moment, &fields);
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", fields.tm_hour, fields.tm_min, fields.tm_sec);
  return text;
}

// The time of day at so many seconds east of Greenwich.
std::string time_of_day(std::time_t moment, std::time_t seconds_east) {
  const auto second = static_cast<int>((moment + seconds_east) % 86400);
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", second / 3600, second / 60 % 60, second % 60);
  return text;
}

TEST(AddEvent, PutsTwoBlanksBetweenTimeAndMessage) {
  RuntimeStatus status;
  add_event(status, "Control Center launched");
  ASSERT_EQ(status.events.size(), 1U);
  EXPECT_EQ(status.events.front().substr(8), "  Control Center launched");
}

TEST(AddEvent, SaysTheLocalTime) {
  RuntimeStatus status;
  const std::time_t before = seconds_now();
  add_event(status, "now");
  const std::time_t after = seconds_now();
  std::vector<std::string> possible;
  for (std::time_t moment = before; moment <= after; ++moment) {
    possible.push_back(local_time(moment));
  }
  EXPECT_NE(std::find(possible.begin(), possible.end(), logged_time(status)), possible.end())
      << logged_time(status) << " is not between " << possible.front() << " and "
      << possible.back();
}

TEST(AddEvent, FollowsTheTimeZoneOfTheProcess) {
  struct Zone {
    const char* name;
    std::time_t seconds_east;
  };
  for (const Zone& zone : {Zone{"UTC0", 0}, Zone{"EAST-5:30", 19800}, Zone{"WEST11", -39600},
                           Zone{"FAR-13:45", 49500}}) {
    const TimeZone local(zone.name);
    RuntimeStatus status;
    std::time_t before = 0;
    do {
      before = seconds_now();
      add_event(status, "now");
    } while (seconds_now() != before);
    EXPECT_EQ(logged_time(status), time_of_day(before, zone.seconds_east)) << zone.name;
  }
}

// Late in a second, a rounded time would be the next second's.
TEST(AddEvent, CutsTheTimeToWholeSeconds) {
  const TimeZone local("UTC0");
  RuntimeStatus status;
  std::time_t second = 0;
  do {
    const auto next = std::chrono::ceil<std::chrono::seconds>(WallClock::now());
    std::this_thread::sleep_until(next - std::chrono::milliseconds(200));
    second = next.time_since_epoch().count() - 1;
    add_event(status, "late");
  } while (seconds_now() != second);
  EXPECT_EQ(logged_time(status), time_of_day(second, 0));
}

TEST(AddEvent, KeepsTheElevenNewestWithTheNewestInFront) {
  RuntimeStatus status;
  std::vector<std::string> expected;
  for (int i = 1; i <= 11; ++i) {
    add_event(status, "message " + std::to_string(i));
    expected.push_back("message " + std::to_string(i));
    EXPECT_EQ(event_messages(status), expected);
  }
  add_event(status, "message 12");
  EXPECT_EQ(status.events.size(), 11U);
  EXPECT_EQ(event_messages(status).front(), "message 2");
  EXPECT_EQ(status.events.front().substr(10), "message 12");
}

TEST(AddEvent, ShortensALogThatIsTooLong) {
  RuntimeStatus status;
  status.events.assign(20, "00:00:00  earlier");
  add_event(status, "newest");
  EXPECT_EQ(status.events.size(), 11U);
  EXPECT_EQ(status.events.front().substr(10), "newest");
}

TEST(AddEvent, TakesAnyMessageAsItIs) {
  const std::vector<std::string> messages = {"",
                                             "  blanks  ",
                                             "two\nlines",
                                             std::string("nul\0byte", 8),
                                             std::string(100000, 'x'),
                                             "100% %s %H"};
  RuntimeStatus status;
  for (const std::string& message : messages) add_event(status, message);
  EXPECT_EQ(event_messages(status), messages);
}

TEST(AddEvent, LogsTheSameMessageTwice) {
  RuntimeStatus status;
  add_event(status, "again");
  add_event(status, "again");
  EXPECT_EQ(event_messages(status), (std::vector<std::string>{"again", "again"}));
}

}  // namespace
}  // namespace halcyra
