#include "tests/e2e/command_line_cases.hpp"

namespace halcyra {
namespace {

using Cases = std::vector<CommandLineCase>;

void append(Cases& cases, const Cases& more) {
  cases.insert(cases.end(), more.begin(), more.end());
}

// Appended to a limit of one turn and no sensor.
CommandLineCase short_run(const std::string& name, const std::vector<std::string>& arguments,
                          const std::map<std::string, std::string>& summary = {}) {
  CommandLineCase result{name, {"--no-camera", "--frames", "1"}, summary};
  result.arguments.insert(result.arguments.end(), arguments.begin(), arguments.end());
  return result;
}

std::map<std::string, std::string> sized(const std::string& size, const std::string& font_scale) {
  return {{"size", size}, {"font_scale", font_scale}};
}

std::map<std::string, std::string> share_of_screen(const std::string& percent,
                                                   const std::string& size,
                                                   const std::string& font_scale) {
  return {{"screen_percent", percent}, {"size", size}, {"font_scale", font_scale}};
}

Cases frame_cases() {
  return {
      {"FramesWithTrailingText", {"--no-camera", "--frames", "2abc"}, {{"frames", "2"}}},
      {"FramesWithBlankAndSign", {"--no-camera", "--frames", " +3"}, {{"frames", "3"}}},
      {"LastFramesWin", {"--no-camera", "--frames", "5", "--frames", "2"}, {{"frames", "2"}}},
      {"Smoke", {"--no-camera", "--smoke"}, {{"frames", "90"}}},
      {"SmokeKeepsFrames", {"--no-camera", "--frames", "5", "--smoke"}, {{"frames", "5"}}},
      {"FramesAfterSmoke", {"--no-camera", "--smoke", "--frames", "4"}, {{"frames", "4"}}},
      {"SmokeAfterZeroFrames", {"--no-camera", "--frames", "0", "--smoke"}, {{"frames", "90"}}},
      {"LayoutTest", {"--layout-test"}, {{"frames", "30"}, {"current_view", "room_overview"}}},
      {"LayoutTestKeepsFrames",
       {"--frames", "2", "--layout-test"},
       {{"frames", "2"}, {"current_view", "room_overview"}}},
      {"ViewAfterLayoutTest",
       {"--layout-test", "--frames", "1", "--view", "ir"},
       {{"frames", "1"}, {"current_view", "ir"}}},
      {"LayoutTestAfterView",
       {"--view", "ir", "--frames", "1", "--layout-test"},
       {{"frames", "1"}, {"current_view", "room_overview"}}},
      {"SmokeThenLayoutTest",
       {"--smoke", "--layout-test"},
       {{"frames", "90"}, {"current_view", "room_overview"}}},
  };
}

// On 1920 x 1080: font scale = min(height / 810, width / 1440) x 1.1, held within 0.9 and 1.35.
Cases size_cases() {
  return {
      short_run("Defaults", {}),
      short_run("LeastWidth", {"--width", "800"}, sized("800x480", "0.9")),
      short_run("GreatestWidth", {"--width", "7680"}, sized("1920x1080", "1.35")),
      short_run("WidthAlone", {"--width", "1000"}, sized("1000x563", "0.9")),
      short_run("WidthWithTrailingText", {"--width", "1000px"}, sized("1000x563", "0.9")),
      short_run("LeastHeight", {"--height", "480"}, sized("853x480", "0.9")),
      short_run("GreatestHeight", {"--height", "4320"}, sized("1920x1080", "1.35")),
      short_run("HeightAlone", {"--height", "720"}, sized("1280x720", "0.977778")),
      short_run("WidthAndHeight", {"--width", "1200", "--height", "700"},
                sized("1200x700", "0.916667")),
      short_run("LeastShare", {"--screen-percent", "0.35"},
                share_of_screen("0.35", "800x480", "0.9")),
      short_run("WholeScreen", {"--screen-percent", "1.0"},
                share_of_screen("1", "1920x1080", "1.35")),
      short_run("HalfScreen", {"--screen-percent", "0.5"},
                share_of_screen("0.5", "960x540", "0.9")),
      short_run("CompactPreset", {"--preset", "compact"},
                share_of_screen("0.6", "1152x648", "0.9")),
      short_run("NormalPreset", {"--preset", "normal"}),
      short_run("LargePreset", {"--preset", "large"}, share_of_screen("0.9", "1728x972", "1.32")),
      short_run("ShareAfterPreset", {"--preset", "large", "--screen-percent", "0.5"},
                share_of_screen("0.5", "960x540", "0.9")),
      short_run("PresetAfterShare", {"--screen-percent", "0.5", "--preset", "large"},
                share_of_screen("0.9", "1728x972", "1.32")),
      short_run("ShareBesideSize",
                {"--screen-percent", "0.5", "--width", "1200", "--height", "700"},
                share_of_screen("0.5", "1200x700", "0.916667")),
  };
}

Cases window_cases() {
  return {
      short_run("SmallestText", {"--font-scale", "0.7"}, {{"font_scale", "0.7"}}),
      short_run("LargestText", {"--font-scale", "2.4"}, {{"font_scale", "2.4"}}),
      short_run("SixDigitsOfText", {"--font-scale", "1.23456789"}, {{"font_scale", "1.23457"}}),
      short_run("Fullscreen", {"--fullscreen"},
                {{"window", "fullscreen"}, {"size", "1920x1080"}, {"font_scale", "1.35"}}),
      short_run("FullscreenKeepsWidth", {"--fullscreen", "--width", "1000"},
                {{"window", "fullscreen"}, {"size", "1000x1080"}, {"font_scale", "0.9"}}),
      short_run("FullscreenKeepsHeight", {"--fullscreen", "--height", "4320"},
                {{"window", "fullscreen"}, {"size", "1920x4320"}, {"font_scale", "1.35"}}),
      short_run("WindowedAfterFullscreen", {"--fullscreen", "--windowed"}),
      short_run("FullscreenAfterWindowed", {"--windowed", "--fullscreen"},
                {{"window", "fullscreen"}, {"size", "1920x1080"}, {"font_scale", "1.35"}}),
      short_run("SamplesFolder", {"--samples-dir", "no/such/folder"},
                {{"model_path", "trained_in_memory_from_no/such/folder"}}),
      short_run("MissingCascade", {"--cascade", "no-such.xml"}),
      short_run("MissingProfileCascade", {"--profile-cascade", "no-such.xml"}),
      short_run("LastViewWins", {"--view", "ir", "--view", "depth"}, {{"current_view", "depth"}}),
  };
}

// Every view word, through both options.
Cases view_cases() {
  const std::vector<std::pair<std::string, std::string>> words = {
      {"rgb", "rgb"},
      {"face", "rgb"},
      {"ir", "ir"},
      {"depth", "depth"},
      {"skeletal", "skeletal"},
      {"skeleton", "skeletal"},
      {"SKELETON", "skeletal"},
      {"combo", "combo"},
      {"auto", "combo"},
      {"audio", "combo"},
      {"debug", "combo"},
      {"DEBUG", "combo"},
      {"room", "room_overview"},
      {"room_overview", "room_overview"},
      {"overview", "room_overview"},
      {"Follow", "follow"}};
  Cases cases;
  for (const auto& [word, view] : words) {
    // Another view first, since "combo" is the default.
    cases.push_back(
        short_run("View_" + word, {"--view", "ir", "--view", word}, {{"current_view", view}}));
    cases.push_back(short_run("OverlayMode_" + word, {"--view", "ir", "--overlay-mode", word},
                              {{"current_view", view}}));
  }
  return cases;
}

Cases detector_cases() {
  Cases cases;
  for (const std::string type :
       {"frontal", "profile_left", "profile_right", "frontal_or_profile"}) {
    cases.push_back(short_run("DetectorType_" + type, {"--detector-type", type}));
    cases.push_back(short_run("DetectionStyle_" + type, {"--detection-style", type}));
  }
  return cases;
}

Cases missing_value_cases() {
  Cases cases;
  for (const std::string option : {"frames", "detector-type", "detection-style", "screen-percent",
                                   "width", "height", "font-scale", "preset", "overlay-mode",
                                   "view", "samples-dir", "cascade", "profile-cascade"}) {
    std::string name = "NoValueFor_" + option;
    for (char& character : name) character = character == '-' ? '_' : character;
    cases.push_back({name, {"--" + option}});
  }
  return cases;
}

Cases value_cases() {
  return {
      {"NegativeFrames", {"--frames", "-1"}},
      {"UnknownDetectorType", {"--detector-type", "profile"}},
      {"UpperCaseDetectorType", {"--detector-type", "FRONTAL"}},
      {"EmptyDetectionStyle", {"--detection-style", ""}},
      {"ShareTooSmall", {"--screen-percent", "0.34"}},
      {"ShareTooLarge", {"--screen-percent", "1.01"}},
      {"ShareNotANumber", {"--screen-percent", "nan"}},
      {"WidthTooSmall", {"--width", "799"}},
      {"WidthTooLarge", {"--width", "7681"}},
      {"WidthWithExponent", {"--width", "1e3"}},
      {"WidthZero", {"--width", "0"}},
      {"HeightTooSmall", {"--height", "479"}},
      {"HeightTooLarge", {"--height", "4321"}},
      {"TextTooSmall", {"--font-scale", "0.69"}},
      {"TextTooLarge", {"--font-scale", "2.41"}},
      {"TextNotANumber", {"--font-scale", "nan"}},
      {"TextInfinite", {"--font-scale", "inf"}},
      {"UnknownPreset", {"--preset", "huge"}},
      {"UpperCasePreset", {"--preset", "Large"}},
      {"UnknownView", {"--view", "xyz"}},
      {"EmptyView", {"--view", ""}},
      {"ViewLabel", {"--view", "room overview"}},
      {"UnknownOverlayMode", {"--overlay-mode", "xyz"}},
      {"EmptyOverlayMode", {"--overlay-mode", ""}},
      {"BadValueBeforeHelp", {"--frames", "-1", "--help"}},
      {"BadValueAfterGoodOnes", {"--no-camera", "--frames", "1", "--view", "xyz"}},
  };
}

CommandLineCase unknown(const std::string& name, const std::vector<std::string>& arguments,
                        const std::string& named) {
  return {name, arguments, {}, "unknown argument: " + named + "\n"};
}

Cases unknown_argument_cases() {
  return {
      unknown("UnknownOption", {"--bogus"}, "--bogus"),
      unknown("UnknownWord", {"rgb"}, "rgb"),
      unknown("EmptyArgument", {""}, ""),
      unknown("EqualsForm", {"--view=ir"}, "--view=ir"),
      unknown("EqualsFormOfFrames", {"--frames=3"}, "--frames=3"),
      unknown("Bundle", {"-hv"}, "-hv"),
      unknown("UpperCaseOption", {"--HELP"}, "--HELP"),
      unknown("PartOfAnOption", {"--full"}, "--full"),
      unknown("UnknownAfterGoodOnes", {"--no-camera", "--frames", "1", "--bogus"}, "--bogus"),
      unknown("UnknownBeforeHelp", {"--bogus", "--help"}, "--bogus"),
      unknown("OnlyTheFirstUnknown", {"--one", "--two"}, "--one"),
      unknown("LeftoverOfASecondValue", {"--view", "ir", "depth"}, "depth"),
  };
}

}  // namespace

std::vector<CommandLineCase> accepted_lines() {
  Cases cases = frame_cases();
  append(cases, size_cases());
  append(cases, window_cases());
  append(cases, view_cases());
  append(cases, detector_cases());
  return cases;
}

std::vector<CommandLineCase> rejected_lines() {
  Cases cases = missing_value_cases();
  append(cases, value_cases());
  append(cases, unknown_argument_cases());
  return cases;
}

std::vector<CommandLineCase> help_lines() {
  return {
      {"Help", {"--help"}},
      {"ShortHelp", {"-h"}},
      {"HelpAfterOptions", {"--no-camera", "--view", "ir", "-h"}},
      {"HelpBeforeAnUnknown", {"--help", "--bogus"}},
  };
}

std::vector<CommandLineCase> aborting_lines() {
  return {
      {"FramesNoNumber", {"--frames", "abc"}},
      {"FramesEmpty", {"--frames", ""}},
      {"FramesOutOfRange", {"--frames", "99999999999"}},
      {"FramesTakesTheNextOption", {"--frames", "--help"}},
      {"WidthNoNumber", {"--width", "wide"}},
      {"WidthOutOfRange", {"--width", "99999999999"}},
      {"HeightNoNumber", {"--height", "."}},
      {"HeightOutOfRange", {"--height", "-99999999999"}},
      {"ShareNoNumber", {"--screen-percent", "x"}},
      {"ShareOutOfRange", {"--screen-percent", "1e999"}},
      {"ShareBelowEveryDouble", {"--screen-percent", "1e-999"}},
      {"TextNoNumber", {"--font-scale", "x"}},
      {"TextOutOfRange", {"--font-scale", "1e999"}},
  };
}

}  // namespace halcyra
