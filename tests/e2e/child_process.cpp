#include "tests/e2e/child_process.hpp"

#include <fcntl.h>
#include <linux/capability.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "tests/e2e/waiting.hpp"

namespace halcyra {
namespace {

// The null-terminated array that execve takes; points into `texts`.
std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

void redirect(const std::filesystem::path& file, int flags, int descriptor) {
  const int opened = open(file.c_str(), flags, 0644);
  if (opened < 0 || dup2(opened, descriptor) < 0) _exit(126);
  close(opened);
}

void let_reader_go(int descriptor) {
  int ends[2];
  if (pipe(ends) != 0 || dup2(ends[1], descriptor) < 0) _exit(126);
  close(ends[0]);
  close(ends[1]);
}

void make_odd(const OddStreams& streams) {
  for (const int descriptor : streams.full) redirect("/dev/full", O_WRONLY, descriptor);
  for (const int descriptor : streams.without_reader) let_reader_go(descriptor);
  for (const int descriptor : streams.closed) close(descriptor);
}

// Only root has these privileges; for anyone else dropping them fails and is not needed.
void give_up_file_privileges() {
  const bool given_up = prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0) == 0 &&
                        prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0) == 0;
  if (!given_up && geteuid() == 0) _exit(126);
}

// Runs in the child, between fork and exec.
[[noreturn]] void become(const ProcessStart& start, char* const* arguments,
                         char* const* environment) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (chdir(start.working_folder.c_str()) != 0) _exit(126);
  redirect("/dev/null", O_RDONLY, STDIN_FILENO);
  redirect(start.stdout_file, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
  redirect(start.stderr_file, O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
  make_odd(start.streams);
  if (start.bound_by_modes) give_up_file_privileges();
  signal(SIGPIPE, SIG_DFL);
  if (start.inherited_descriptor >= 0) fcntl(start.inherited_descriptor, F_SETFD, 0);
  execvpe(start.executable.c_str(), arguments, environment);
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const ProcessStart& start) {
  std::vector<std::string> arguments{start.executable};
  arguments.insert(arguments.end(), start.arguments.begin(), start.arguments.end());
  std::vector<std::string> environment;
  for (const auto& [name, value] : start.environment) environment.push_back(name + "=" + value);
  const std::vector<char*> argument_pointers = pointers(arguments);
  const std::vector<char*> environment_pointers = pointers(environment);
  id_ = fork();
  if (id_ < 0) throw std::runtime_error("cannot start " + start.executable);
  if (id_ == 0) become(start, argument_pointers.data(), environment_pointers.data());
}

ChildProcess::~ChildProcess() {
  if (running()) {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
}

bool ChildProcess::running() {
  if (end_) return false;
  int status = 0;
  if (waitpid(id_, &status, WNOHANG) != id_) return true;
  end_ = ProcessEnd{};
  if (WIFEXITED(status)) {
    end_->exit_status = WEXITSTATUS(status);
  } else {
    end_->signal = WTERMSIG(status);
  }
  return false;
}

std::optional<ProcessEnd> ChildProcess::wait_for_end() {
  wait_until([this] { return !running(); });
  return end_;
}

}  // namespace halcyra
