#include "tests/scripts/script_stage.hpp"

#include <optional>

#include "tests/support/text_file.hpp"

namespace halcyra {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNote = "#!/bin/sh\necho \"${0##*/} $*\" >>\"$STAGE/calls\"\n";

constexpr const char* kFakeGit = R"(
for word in "$@"; do last=$word; done
case "$*" in
  init*) mkdir -p "$last" ;;
  *" checkout "*) echo "$last" >"$STAGE/commit" ;;
  *" rev-parse HEAD") cat "$STAGE/commit" ;;
esac
)";

constexpr const char* kFakeCmake = R"(
make_program() {
  mkdir -p "${1%/*}"
  printf '#!/bin/sh\necho "%s with pipeline $LIBFREENECT2_PIPELINE and <$*>"\n' "$2" >"$1"
  chmod +x "$1"
}
case "$*" in
  --preset*)
    mkdir -p build
    driver=virtual
    if [ -e build/libfreenect2/lib/libfreenect2.so ]; then driver=libfreenect2; fi
    if [ -e "$STAGE/system-driver" ]; then driver=libfreenect2; fi
    echo "$driver" >build/kinect-driver
    cp "$STAGE/cache" build/CMakeCache.txt 2>/dev/null || : >build/CMakeCache.txt ;;
  -S*)
    for word in "$@"; do
      case $word in -DCMAKE_INSTALL_PREFIX=*) echo "${word#*=}" >"$STAGE/prefix" ;; esac
    done ;;
  --build*/objects)
    while [ -e "$STAGE/pause" ]; do sleep 0.05; done
    if [ -e "$STAGE/compile-error" ]; then
      echo "usb.cpp:7:1: error: 'libusb' was not declared"
      exit 1
    fi ;;
  --install*)
    installed=$DESTDIR$(cat "$STAGE/prefix")
    mkdir -p "$installed/lib/cmake/freenect2"
    echo library >"$installed/lib/libfreenect2.so"
    echo "    PATHS $(cat "$STAGE/prefix")/lib" >"$installed/lib/cmake/freenect2/freenect2Config.cmake" ;;
  --build*)
    for word in "$@"; do
      case $word in
        halcyra-control-center) make_program "$2/$word" program ;;
        halcyra-*) make_program "$2/$word" "$word" ;;
        demonstration)
          make_program "$2/demonstration/halcyra-control-center" demonstration
          : >"$2/demonstration/.halcyra-demonstration" ;;
      esac
    done ;;
esac
)";

}  // namespace

ScriptStage::ScriptStage() {
  const fs::path project = HALCYRA_PROJECT;
  for (const char* name : {"scripts", "demo", "packaging/udev"}) {
    fs::create_directories(path("checkout") / name);
    fs::copy(project / name, path("checkout") / name, fs::copy_options::recursive);
  }
  fs::copy(project / "run", path("checkout/run"));
  for (const char* name : {"here", "person", "system/etc", "usb/1-1"}) {
    fs::create_directories(path(name));
  }
  write_program("bin/dpkg-query", "#!/bin/sh\necho installed\n");
  write_program("bin/id", "#!/bin/sh\necho 0\n");
  write_command("git", kFakeGit);
  write_command("cmake", kFakeCmake);
  write_command("udevadm", "");
  attach("1d6b", "0003");
  environment = {{"PATH", path("bin").string() + ":/usr/bin:/bin"},
                 {"HOME", path("person").string()},
                 {"STAGE", folder_.path().string()},
                 {"DISPLAY", ":none"},
                 {"HALCYRA_USB_DEVICES", path("usb").string()},
                 {"HALCYRA_SYSTEM", path("system").string()}};
}

void ScriptStage::write_program(const std::string& name, const std::string& script) const {
  write_text(path(name), script);
  fs::permissions(path(name), fs::perms::owner_all);
}

void ScriptStage::write_command(const std::string& name, const std::string& script) const {
  write_program("bin/" + name, kNote + script);
}

void ScriptStage::use_real_command(const std::string& name) const {
  fs::remove(path("bin/" + name));
}

void ScriptStage::packages_are_missing() const {
  write_program("bin/dpkg-query", "#!/bin/sh\nexit 1\n");
  root_is_refused();
}

void ScriptStage::root_is_refused() const {
  write_program("bin/id", "#!/bin/sh\necho 1000\n");
  write_command("sudo", "echo 'sudo: a password is required' >&2\nexit 1\n");
}

void ScriptStage::attach(const std::string& vendor, const std::string& product,
                         const std::string& speed) const {
  const std::map<std::string, std::string> files = {{"idVendor", vendor},
                                                    {"idProduct", product},
                                                    {"speed", speed},
                                                    {"busnum", "2"},
                                                    {"devnum", "7"}};
  for (const auto& [name, value] : files) write_text(path("usb/1-1") / name, value + "\n");
}

ProcessStart ScriptStage::start_of(const std::string& script,
                                   const std::vector<std::string>& arguments) const {
  ProcessStart start;
  start.executable = path("checkout") / script;
  start.arguments = arguments;
  start.environment = environment;
  start.working_folder = path("here");
  start.stdout_file = path("output");
  start.stderr_file = path("errors");
  start.bound_by_modes = bound_by_modes;
  return start;
}

ScriptResult ScriptStage::end_of(const ProcessStart& start, ChildProcess& process) {
  const std::optional<ProcessEnd> end = process.wait_for_end();
  return {end ? end->exit_status : -1, read_text(start.stdout_file), read_text(start.stderr_file)};
}

ScriptResult ScriptStage::run(const std::string& script,
                              const std::vector<std::string>& arguments) const {
  const ProcessStart start = start_of(script, arguments);
  ChildProcess process(start);
  return end_of(start, process);
}

std::string ScriptStage::calls() const {
  const std::string noted = read_text(path("calls"));
  fs::remove(path("calls"));
  return noted;
}

}  // namespace halcyra
