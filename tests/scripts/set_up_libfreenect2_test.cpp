// What scripts/set-up-libfreenect2 builds, when, and what it leaves behind when it fails.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/e2e/waiting.hpp"
#include "tests/scripts/script_stage.hpp"
#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kScript = "scripts/set-up-libfreenect2";
const std::string kCommit = "fd64c5d9b214df6f6a55b4419357e51083f15d93";

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class SetUpLibfreenect2 : public ::testing::Test {
 protected:
  fs::path prefix() const { return stage_.path("checkout/build/libfreenect2"); }
  std::string library() const { return read_text(prefix() / "lib/libfreenect2.so"); }

  // One sentence on standard error, and nothing left beside the log.
  void expect_failure(const std::string& reason, const std::vector<std::string>& arguments = {}) {
    const ScriptResult result = stage_.run(kScript, arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              "libfreenect2 was not set up: " + reason + ". Log: " + prefix().string() + ".log\n");
    expect_nothing_beside_the_log();
  }

  void expect_nothing_beside_the_log() const {
    for (const auto& entry : fs::directory_iterator(prefix().parent_path())) {
      const std::string name = entry.path().filename();
      EXPECT_TRUE(name == "libfreenect2.log" || name == "libfreenect2.lock") << name;
    }
  }

  // An empty repository, but for one commit.
  std::string other_repository() {
    stage_.use_real_command("git");
    stage_.write_program("make-repository",
                         "#!/bin/sh\n"
                         "export GIT_AUTHOR_NAME=n GIT_AUTHOR_EMAIL=e GIT_COMMITTER_NAME=n"
                         " GIT_COMMITTER_EMAIL=e\n"
                         "git init --quiet \"$1\" && cd \"$1\" &&\n"
                         "git commit --quiet --allow-empty --message something &&\n"
                         "git bundle create --quiet \"$1.bundle\" --all\n");
    const std::string repository = stage_.path("other repository");
    EXPECT_EQ(stage_.run("../make-repository", {repository}).status, 0);
    return repository;
  }

  ScriptStage stage_;
};

TEST_F(SetUpLibfreenect2, BuildsTheFixedCommitOfThePublicRepository) {
  const ScriptResult result = stage_.run(kScript);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(library(), "library\n");
  const std::string calls = stage_.calls();
  EXPECT_TRUE(contains(calls, "https://github.com/OpenKinect/libfreenect2.git")) << calls;
  EXPECT_TRUE(contains(calls, "checkout " + kCommit)) << calls;
  EXPECT_TRUE(contains(result.output, "Log: " + prefix().string() + ".log")) << result.output;
}

TEST_F(SetUpLibfreenect2, TakesAnotherSource) {
  stage_.run(kScript, {"--from", "https://mirror.example/driver"});
  EXPECT_TRUE(contains(stage_.calls(), "https://mirror.example/driver"));
  fs::remove_all(prefix());
  stage_.environment["HALCYRA_LIBFREENECT2"] = "https://elsewhere.example/driver";
  stage_.run(kScript);
  EXPECT_TRUE(contains(stage_.calls(), "https://elsewhere.example/driver"));
}

TEST_F(SetUpLibfreenect2, IsQuickOnceItIsDone) {
  stage_.run(kScript);
  stage_.calls();
  const ScriptResult result = stage_.run(kScript);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "libfreenect2 is set up in " + prefix().string() + ".\n");
  EXPECT_EQ(stage_.calls(), "");
}

TEST_F(SetUpLibfreenect2, BuildsAgainWithOtherOptions) {
  stage_.run(kScript);
  write_text(prefix() / "lib/left-over", "");
  const ScriptResult result = stage_.run(kScript, {"-DENABLE_CXX11=OFF"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(contains(stage_.calls(), "-DENABLE_CXX11=OFF"));
  EXPECT_FALSE(fs::exists(prefix() / "lib/left-over"));
}

TEST_F(SetUpLibfreenect2, BuildsForTheGraphicsCardsOfTheMachine) {
  stage_.write_command("dpkg-query", "echo installed\n");
  stage_.run(kScript);
  std::string calls = stage_.calls();
  for (const char* name : {"OPENGL", "OPENCL", "VAAPI", "CUDA"}) {
    EXPECT_TRUE(contains(calls, "-DENABLE_" + std::string(name) + "=OFF")) << name;
  }
  for (const char* package : {"libglfw3-dev", "libva-dev"}) {
    EXPECT_FALSE(contains(calls, package)) << package;
  }
  write_text(stage_.path("system/dev/dri/renderD128"), "");
  stage_.run(kScript);
  calls = stage_.calls();
  for (const char* name : {"OPENGL", "VAAPI"}) {
    EXPECT_TRUE(contains(calls, "-DENABLE_" + std::string(name) + "=ON")) << name;
  }
  for (const char* package : {"libglfw3-dev", "libva-dev"}) {
    EXPECT_TRUE(contains(calls, package)) << package;
  }
}

TEST_F(SetUpLibfreenect2, DoesNotTrustAnInterruptedRun) {
  write_text(prefix() / "lib/libfreenect2.so", "half");
  write_text(prefix().string() + ".partial.1/source/CMakeLists.txt", "");
  EXPECT_EQ(stage_.run(kScript).status, 0);
  EXPECT_EQ(library(), "library\n");
  EXPECT_FALSE(fs::exists(prefix().string() + ".partial.1"));
}

TEST_F(SetUpLibfreenect2, DoesNotTrustAFolderWithoutItsLibrary) {
  stage_.run(kScript);
  fs::remove(prefix() / "lib/libfreenect2.so");
  EXPECT_EQ(stage_.run(kScript).status, 0);
  EXPECT_EQ(library(), "library\n");
}

TEST_F(SetUpLibfreenect2, DoesNotTrustAMovedFolder) {
  stage_.run(kScript);
  const fs::path elsewhere = stage_.path("elsewhere");
  fs::rename(prefix(), elsewhere);
  stage_.calls();
  EXPECT_EQ(stage_.run(kScript, {"--prefix", elsewhere}).status, 0);
  EXPECT_TRUE(contains(stage_.calls(), "-DCMAKE_INSTALL_PREFIX=" + elsewhere.string()));
}

TEST_F(SetUpLibfreenect2, LeavesFilesOfOthersAlone) {
  const fs::path somebodys = stage_.path("somebody's");
  write_text(somebodys / "letter", "dear");
  const ScriptResult result = stage_.run(kScript, {"--prefix", somebodys});
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(contains(result.errors, "holds files that did not come from here")) << result.errors;
  EXPECT_EQ(read_text(somebodys / "letter"), "dear");
}

TEST_F(SetUpLibfreenect2, WaitsForAnotherRun) {
  write_text(stage_.path("pause"), "");
  const ProcessStart first = stage_.start_of(kScript);
  ProcessStart second = first;
  second.stdout_file = stage_.path("second-output");
  second.stderr_file = stage_.path("second-errors");
  ChildProcess first_process(first);
  EXPECT_TRUE(
      wait_until([&] { return contains(read_text(stage_.path("calls")), "cmake --build"); }));
  ChildProcess second_process(second);
  EXPECT_TRUE(wait_until(
      [&] { return contains(read_text(second.stdout_file), "Waiting for another set-up"); }));
  fs::remove(stage_.path("pause"));
  EXPECT_EQ(ScriptStage::end_of(first, first_process).status, 0);
  EXPECT_EQ(ScriptStage::end_of(second, second_process).status, 0);
  const std::string calls = stage_.calls();
  EXPECT_EQ(calls.find("git init"), calls.rfind("git init")) << calls;
}

TEST_F(SetUpLibfreenect2, FailsWithoutARepository) {
  stage_.use_real_command("git");
  expect_failure(
      "its source could not be fetched from /nowhere (fatal: '/nowhere' does not appear to be a "
      "git "
      "repository)",
      {"--from", "/nowhere"});
}

TEST_F(SetUpLibfreenect2, FailsWhereTheCommitIsNot) {
  const std::string repository = other_repository();
  for (const std::string& from : {repository, repository + ".bundle"}) {
    expect_failure(from + " does not have its commit " + kCommit, {"--from", from});
  }
}

TEST_F(SetUpLibfreenect2, FailsWhereAnotherCommitIsCheckedOut) {
  stage_.write_command("git", "case \"$*\" in *HEAD) echo 0123456789 ;; esac\n");
  expect_failure("https://github.com/OpenKinect/libfreenect2.git does not have its commit " +
                 kCommit);
}

TEST_F(SetUpLibfreenect2, FailsOnACompilerError) {
  write_text(stage_.path("compile-error"), "");
  expect_failure("it could not be compiled (usb.cpp:7:1: error: 'libusb' was not declared)");
  fs::remove(stage_.path("compile-error"));
  EXPECT_EQ(stage_.run(kScript).status, 0);
  EXPECT_EQ(library(), "library\n");
}

TEST_F(SetUpLibfreenect2, KeepsWhatItHasWhenItFails) {
  stage_.run(kScript);
  write_text(stage_.path("compile-error"), "");
  EXPECT_EQ(stage_.run(kScript, {"-DENABLE_CXX11=OFF"}).status, 1);
  EXPECT_EQ(library(), "library\n");
}

TEST_F(SetUpLibfreenect2, FailsWithoutRootForItsPackages) {
  stage_.packages_are_missing();
  expect_failure("packages that it needs could not be installed (sudo: a password is required)");
}

TEST_F(SetUpLibfreenect2, FailsInAReadOnlyFolder) {
  fs::permissions(stage_.path("checkout"), fs::perms::owner_read | fs::perms::owner_exec);
  stage_.bound_by_modes = true;
  const ScriptResult result = stage_.run(kScript);
  fs::permissions(stage_.path("checkout"), fs::perms::owner_all);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "libfreenect2 was not set up: " + prefix().parent_path().string() +
                               " cannot be written to.\n");
}

TEST_F(SetUpLibfreenect2, RefusesAnUnknownArgument) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--form", "here"}, {"--from"}, {"--prefix", ""}, {"here"}}) {
    EXPECT_EQ(stage_.run(kScript, arguments).status, 2) << arguments.front();
  }
  EXPECT_EQ(stage_.calls(), "");
}

}  // namespace
}  // namespace halcyra
