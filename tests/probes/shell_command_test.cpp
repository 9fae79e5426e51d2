#include "probes/shell_command.hpp"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/working_folder.hpp"

namespace halcyra {
namespace {

using std::string_literals::operator""s;

TEST(RunCapture, GivesWhatTheCommandPrinted) {
  EXPECT_EQ(run_capture("echo active"), "active\n");
  EXPECT_EQ(run_capture("printf '  a\\r\\n\\n b \\n\\n'"), "  a\r\n\n b \n\n");
  EXPECT_EQ(run_capture("printf unended"), "unended");
  EXPECT_EQ(run_capture("true"), "");
}

TEST(RunCapture, KeepsNulBytesAndInvalidText) {
  EXPECT_EQ(run_capture("printf 'a\\000b\\n\\000\\377\\303\\nc'"), "a\0b\n\0\xFF\xC3\nc"s);
  EXPECT_EQ(run_capture("printf '\\000'"), "\0"s);
}

TEST(RunCapture, JoinsLinesOfAnyLength) {
  for (const int length : {254, 255, 256, 257, 511, 512, 513}) {
    const std::string line(static_cast<std::size_t>(length), 'x');
    EXPECT_EQ(run_capture("printf '%s\\nrest\\n' " + line), line + "\nrest\n");
    EXPECT_EQ(run_capture("printf '%s' " + line), line);
  }
}

TEST(RunCapture, TakesMegabytesInOneLine) {
  const std::string output = run_capture("head -c 3000000 /dev/zero | tr '\\000' x");
  EXPECT_TRUE(output == std::string(3000000, 'x')) << output.size();
  EXPECT_TRUE(run_capture("head -c 3000000 /dev/zero") == std::string(3000000, '\0'));
}

TEST(RunCapture, IsEmptyForAMissingCommandAndSaysNothing) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(run_capture("halcyra-no-such-command --verb"), "");
  EXPECT_EQ(run_capture("./halcyra/no/such/command"), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RunCapture, DiscardsStandardError) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(run_capture("sh -c 'echo told; echo complaint >&2'"), "told\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(RunCapture, IgnoresTheExitStatus) {
  EXPECT_EQ(run_capture("sh -c 'echo kept; exit 3'"), "kept\n");
  EXPECT_EQ(run_capture("sh -c 'echo kept; kill -9 $$'"), "kept\n");
}

TEST(RunCapture, PassesTheLineToTheShell) {
  EXPECT_EQ(run_capture("echo one; echo \"$((1 + 1))\" | tr 2 3"), "one\n3\n");
}

TEST(RunAction, WaitsForTheCommand) {
  const WorkingFolder folder;
  run_action("sh -c 'sleep 0.05; echo done > result'");
  std::string result;
  std::getline(std::ifstream("result") >> std::ws, result);
  EXPECT_EQ(result, "done");
}

TEST(RunAction, DiscardsAllOutput) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  run_action("sh -c 'echo told; echo complaint >&2'");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(RunAction, IgnoresFailures) {
  testing::internal::CaptureStderr();
  EXPECT_NO_THROW(run_action("exit 7"));
  EXPECT_NO_THROW(run_action("halcyra-no-such-command"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace halcyra
