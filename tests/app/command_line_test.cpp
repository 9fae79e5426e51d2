#include "app/command_line.hpp"

#include <unistd.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/app/same_options.hpp"

namespace halcyra {
namespace {

using Words = std::vector<std::string>;
using Change = std::function<void(Options&)>;

bool parse_into(Options& options, const Words& words) {
  std::vector<const char*> argv = {"halcyra-control-center"};
  for (const std::string& word : words) argv.push_back(word.c_str());
  argv.push_back(nullptr);
  return parse_args(static_cast<int>(argv.size()) - 1, argv.data(), options);
}

struct Parsed {
  bool accepted = false;
  Options options;
  std::string output;
  std::string errors;
};

Parsed parse(const Words& words) {
  Parsed parsed;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  parsed.accepted = parse_into(parsed.options, words);
  parsed.errors = testing::internal::GetCapturedStderr();
  parsed.output = testing::internal::GetCapturedStdout();
  return parsed;
}

std::string joined(const Words& words) {
  std::string line;
  for (const std::string& word : words) line += " '" + word + "'";
  return line;
}

// The line is taken, says nothing and makes exactly this change.
void expect_change(const Words& words, const Change& change) {
  SCOPED_TRACE(joined(words));
  const Parsed parsed = parse(words);
  EXPECT_TRUE(parsed.accepted);
  EXPECT_EQ(parsed.output + parsed.errors, "");
  Options expected;
  change(expected);
  expect_same_options(parsed.options, expected);
}

void expect_silent_rejection(const Words& words) {
  const Parsed parsed = parse(words);
  EXPECT_FALSE(parsed.accepted) << joined(words);
  EXPECT_EQ(parsed.output + parsed.errors, "") << joined(words);
}

const Words& value_options() {
  static const Words options = {
      "--frames",      "--detector-type", "--detection-style", "--screen-percent", "--width",
      "--height",      "--font-scale",    "--preset",          "--overlay-mode",   "--view",
      "--samples-dir", "--cascade",       "--profile-cascade"};
  return options;
}

std::string usage_text(const std::string& program) {
  return "Usage: " + program +
         " [--frames N] [--no-camera] [--smoke] [--detector-type TYPE]"
         " [--screen-percent P] [--width PX] [--height PX] [--font-scale S]"
         " [--fullscreen] [--windowed] [--preset compact|normal|large] [--view VIEW]"
         " [--overlay-mode MODE] [--layout-test]\n"
         "  Professional local Halcyra Control Center dashboard.\n"
         "  Default: detect the display, open a resizable window at about 75% of the screen, and "
         "render text at the active dashboard size.\n"
         "  Views: rgb, ir, depth, skeletal, combo, room_overview, follow. --overlay-mode remains "
         "accepted for older scripts.\n"
         "  Keys: q/Esc quit, 1 RGB, 2 IR, 3 Depth, 4 Skeletal, 5 Combo, 6 Room Overview, 7 "
         "Follow, m mic HUD, b debug, Tab target, v refresh, k start voice, t stop voice.\n";
}

TEST(ParseArgs, KeepsTheDefaultsWithoutArguments) {
  expect_change({}, [](Options&) {});
  Options options;
  const char* const none[] = {nullptr};
  EXPECT_TRUE(parse_args(0, none, options));
  expect_same_options(options, Options());
}

TEST(ParseArgs, TakesTheSwitches) {
  expect_change({"--no-camera"}, [](Options& o) { o.no_camera = true; });
  expect_change({"--fullscreen"}, [](Options& o) { o.fullscreen = true; });
  expect_change({"--windowed"}, [](Options&) {});
  expect_change({"--fullscreen", "--windowed"}, [](Options&) {});
  expect_change({"--windowed", "--fullscreen"}, [](Options& o) { o.fullscreen = true; });
}

TEST(ParseArgs, LimitsASmokeRunTo90FramesUnlessALimitIsGiven) {
  const auto smoke = [](int frames) {
    return [frames](Options& o) {
      o.smoke = true;
      o.frames = frames;
    };
  };
  expect_change({"--smoke"}, smoke(90));
  expect_change({"--frames", "5", "--smoke"}, smoke(5));
  expect_change({"--smoke", "--frames", "5"}, smoke(5));
  expect_change({"--smoke", "--frames", "0"}, smoke(0));
  expect_change({"--frames", "0", "--smoke"}, smoke(90));
}

TEST(ParseArgs, LimitsALayoutTestTo30FramesUnlessALimitIsGiven) {
  const auto layout = [](int frames) {
    return [frames](Options& o) {
      o.layout_test = true;
      o.no_camera = true;
      o.view = "room_overview";
      o.overlay_mode = "room_overview";
      o.frames = frames;
    };
  };
  expect_change({"--layout-test"}, layout(30));
  expect_change({"--frames", "7", "--layout-test"}, layout(7));
  expect_change({"--layout-test", "--frames", "0"}, layout(0));
  expect_change({"--view", "ir", "--layout-test"}, layout(30));
  const Parsed after_smoke = parse({"--smoke", "--layout-test"});
  EXPECT_EQ(after_smoke.options.frames, 90);
  const Parsed then_view = parse({"--layout-test", "--view", "ir"});
  EXPECT_EQ(then_view.options.view, "ir");
}

TEST(ParseArgs, TakesAFrameLimitFromZeroOn) {
  for (const auto& [text, frames] : std::vector<std::pair<std::string, int>>{
           {"0", 0}, {"1", 1}, {"90", 90}, {"2147483647", 2147483647}, {"-0", 0}}) {
    const int value = frames;
    expect_change({"--frames", text}, [value](Options& o) { o.frames = value; });
  }
  expect_silent_rejection({"--frames", "-1"});
  expect_silent_rejection({"--frames", "-2147483648"});
}

TEST(ParseArgs, KnowsTheDetectorTypes) {
  for (const std::string option : {"--detector-type", "--detection-style"}) {
    for (const std::string type :
         {"frontal", "profile_left", "profile_right", "frontal_or_profile"}) {
      expect_change({option, type}, [type](Options& o) { o.detector_type = type; });
    }
    for (const std::string type : {"", "Frontal", "profile", "frontal ", "any"}) {
      expect_silent_rejection({option, type});
    }
  }
  expect_change({"--detector-type", "frontal", "--detection-style", "profile_left"},
                [](Options& o) { o.detector_type = "profile_left"; });
}

TEST(ParseArgs, TakesWindowSizesInTheirRanges) {
  for (const int width : {800, 801, 1440, 7679, 7680}) {
    expect_change({"--width", std::to_string(width)}, [=](Options& o) { o.width = width; });
  }
  for (const int height : {480, 481, 810, 4319, 4320}) {
    expect_change({"--height", std::to_string(height)}, [=](Options& o) { o.height = height; });
  }
  for (const std::string width : {"799", "7681", "0", "-800", "2147483647"}) {
    expect_silent_rejection({"--width", width});
  }
  for (const std::string height : {"479", "4321", "0", "-480", "-2147483648"}) {
    expect_silent_rejection({"--height", height});
  }
}

TEST(ParseArgs, TakesSharesOfTheScreenInTheirRange) {
  for (const auto& [text, share] : std::vector<std::pair<std::string, double>>{
           {"0.35", 0.35}, {"0.5", 0.5}, {"1.0", 1.0}, {"1", 1.0}, {"75e-2", 0.75}}) {
    const double value = share;
    expect_change({"--screen-percent", text}, [value](Options& o) { o.screen_percent = value; });
  }
  for (const std::string text :
       {"0.34", "0.3499999", "1.0000001", "75", "0", "-0.5", "nan", "-nan", "inf", "-inf"}) {
    expect_silent_rejection({"--screen-percent", text});
  }
}

TEST(ParseArgs, TakesFontScalesInTheirRange) {
  for (const auto& [text, scale] : std::vector<std::pair<std::string, double>>{
           {"0.7", 0.7}, {"1", 1.0}, {"1.35", 1.35}, {"2.4", 2.4}}) {
    const double value = scale;
    expect_change({"--font-scale", text}, [value](Options& o) { o.font_scale = value; });
  }
  for (const std::string text : {"0.69", "0.6999999", "2.4000001", "0", "-1", "nan", "inf"}) {
    expect_silent_rejection({"--font-scale", text});
  }
}

TEST(ParseArgs, KnowsThePresets) {
  for (const auto& [name, share] : std::vector<std::pair<std::string, double>>{
           {"compact", 0.6}, {"normal", 0.75}, {"large", 0.9}}) {
    const std::string preset = name;
    const double value = share;
    expect_change({"--preset", name}, [preset, value](Options& o) {
      o.preset = preset;
      o.screen_percent = value;
    });
  }
  for (const std::string name : {"", "huge", "Large", "normal "}) {
    expect_silent_rejection({"--preset", name});
  }
}

TEST(ParseArgs, LetsTheLaterOfPresetAndShareWin) {
  const auto large = [](double share) {
    return [share](Options& o) {
      o.preset = "large";
      o.screen_percent = share;
    };
  };
  expect_change({"--preset", "large", "--screen-percent", "0.5"}, large(0.5));
  expect_change({"--screen-percent", "0.5", "--preset", "large"}, large(0.9));
}

TEST(ParseArgs, SelectsAView) {
  const auto view = [](const std::string& name) {
    return [name](Options& o) {
      o.view = name;
      o.overlay_mode = name;
    };
  };
  expect_change({"--view", "SKELETON"}, view("skeletal"));
  expect_change({"--view", "face"}, view("rgb"));
  expect_change({"--view", "auto"}, view("combo"));
  expect_change({"--view", "room"}, view("room_overview"));
  expect_change({"--view", "follow"}, view("follow"));
  expect_change({"--view", "DEBUG"}, view("combo"));
  expect_change({"--view", "audio"}, view("combo"));
  expect_change({"--view", "debug"}, [&](Options& o) {
    view("combo")(o);
    o.debug = true;
  });
}

TEST(ParseArgs, KeepsTheOverlayModeOfOlderScriptsAsGiven) {
  expect_change({"--overlay-mode", "SKELETON"}, [](Options& o) {
    o.view = "skeletal";
    o.overlay_mode = "SKELETON";
  });
  expect_change({"--overlay-mode", "debug"}, [](Options& o) {
    o.overlay_mode = "debug";
    o.debug = true;
  });
  expect_change({"--overlay-mode", "IR", "--view", "depth"}, [](Options& o) {
    o.view = "depth";
    o.overlay_mode = "depth";
  });
}

TEST(ParseArgs, RejectsUnknownViewsSilently) {
  for (const std::string option : {"--view", "--overlay-mode"}) {
    for (const std::string word : {"xyz", "", " rgb", "--smoke"}) {
      expect_silent_rejection({option, word});
    }
  }
}

TEST(ParseArgs, TakesPathsUnchecked) {
  for (const std::string path : {"some/folder", "", "--smoke", "-h", "--help"}) {
    expect_change({"--samples-dir", path}, [path](Options& o) { o.samples_dir = path; });
    expect_change({"--cascade", path}, [path](Options& o) { o.cascade_path = path; });
    expect_change({"--profile-cascade", path},
                  [path](Options& o) { o.profile_cascade_path = path; });
  }
}

TEST(ParseArgs, LetsTheLastOccurrenceWin) {
  expect_change({"--frames", "3", "--frames", "4"}, [](Options& o) { o.frames = 4; });
  expect_change({"--width", "900", "--width", "1000"}, [](Options& o) { o.width = 1000; });
  expect_change({"--cascade", "a", "--no-camera", "--cascade", "b"}, [](Options& o) {
    o.no_camera = true;
    o.cascade_path = "b";
  });
  expect_silent_rejection({"--width", "1", "--width", "1000"});
}

TEST(ParseArgs, RejectsAMissingValueSilently) {
  for (const std::string& option : value_options()) {
    expect_silent_rejection({option});
    expect_silent_rejection({"--no-camera", option});
  }
}

TEST(ParseArgs, NamesAnUnknownArgument) {
  for (const std::string word : {"--frob", "", "-x", "extra", "--frames=5", "--Frames", "-hq",
                                 "--helpful", "--smoke ", "-", "--", "-H", "--HELP"}) {
    const Parsed parsed = parse({"--no-camera", word, "--also-unknown"});
    EXPECT_FALSE(parsed.accepted) << word;
    EXPECT_EQ(parsed.errors, "unknown argument: " + word + "\n");
    EXPECT_EQ(parsed.output, "");
  }
}

TEST(ParseArgs, ReadsTheNumberAtTheStartOfAValue) {
  expect_change({"--frames", "12abc"}, [](Options& o) { o.frames = 12; });
  expect_change({"--frames", " \t\n\v\f\r+7"}, [](Options& o) { o.frames = 7; });
  expect_change({"--frames", "0x10"}, [](Options&) {});
  expect_change({"--frames", "010"}, [](Options& o) { o.frames = 10; });
  expect_change({"--width", "1000.9"}, [](Options& o) { o.width = 1000; });
  expect_change({"--screen-percent", " 0.5x"}, [](Options& o) { o.screen_percent = 0.5; });
  expect_change({"--screen-percent", "0x1p-1"}, [](Options& o) { o.screen_percent = 0.5; });
  expect_change({"--font-scale", "1,5"}, [](Options& o) { o.font_scale = 1.0; });
}

TEST(ParseArgs, LetsTheConversionThrowWhenThereIsNoNumber) {
  for (const std::string option :
       {"--frames", "--width", "--height", "--screen-percent", "--font-scale"}) {
    for (const std::string value : {"", "x", "--smoke", "-", "+ 5", "e5"}) {
      Options options;
      EXPECT_THROW(parse_into(options, {option, value}), std::invalid_argument) << option << value;
    }
  }
}

TEST(ParseArgs, LetsTheConversionThrowWhenTheNumberIsOutOfRange) {
  for (const std::string option : {"--frames", "--width", "--height"}) {
    for (const std::string value : {"2147483648", "-2147483649", "99999999999999999999"}) {
      Options options;
      EXPECT_THROW(parse_into(options, {option, value}), std::out_of_range) << option << value;
    }
  }
  for (const std::string option : {"--screen-percent", "--font-scale"}) {
    for (const std::string value : {"1e999", "-1e999", "1e-999"}) {
      Options options;
      EXPECT_THROW(parse_into(options, {option, value}), std::out_of_range) << option << value;
    }
  }
}

// The death test sees standard error only.
void parse_with_output_on_standard_error(const Words& words) {
  dup2(STDERR_FILENO, STDOUT_FILENO);
  Options options;
  parse_into(options, words);
}

TEST(ParseArgs, EndsTheProcessWithTheUsageWhenAskedForHelp) {
  const std::string text = usage_text("halcyra-control-center");
  for (const Words& words : {Words{"--help"}, Words{"-h"}, Words{"--smoke", "-h"},
                             Words{"--frames", "3", "--help", "--frob"}, Words{"-h", "--width"}}) {
    EXPECT_EXIT(parse_with_output_on_standard_error(words), testing::ExitedWithCode(0),
                testing::Eq(text))
        << joined(words);
  }
}

TEST(ParseArgs, IsStoppedByAnInvalidArgumentBeforeHelp) {
  const Parsed parsed = parse({"--frob", "--help"});
  EXPECT_FALSE(parsed.accepted);
  EXPECT_EQ(parsed.errors, "unknown argument: --frob\n");
  EXPECT_EQ(parsed.output, "");
  expect_silent_rejection({"--frames", "-1", "-h"});
}

TEST(Usage, IsWrittenToStandardOutput) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  usage("./some path/program");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), usage_text("./some path/program"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace halcyra
