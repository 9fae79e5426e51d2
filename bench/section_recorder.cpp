#include "bench/section_recorder.hpp"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <utility>

namespace halcyra {
namespace {

double milliseconds(std::chrono::steady_clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

// With namespaces and arguments. Empty for a function that is not exported.
std::string function_at(void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_sname == nullptr) return "";
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> demangled(
      abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), &std::free);
  return demangled == nullptr ? info.dli_sname : demangled.get();
}

bool starts_with(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

std::string without_arguments(const std::string& function) {
  const std::string call_operator = "operator()";
  const std::size_t found = function.find(call_operator);
  const std::size_t from = found == std::string::npos ? 0 : found + call_operator.size();
  return function.substr(0, function.find('(', from));
}

// Without the namespaces, which are in lower case, but with the class, if any.
std::string short_name(const std::string& function) {
  std::string name = without_arguments(function);
  for (const std::string space : {"halcyra::", "haar::", "cv::", "hal::"}) {
    if (starts_with(name, space)) name.erase(0, space.size());
  }
  return name;
}

std::string name_of_caller() {
  std::array<void*, 64> addresses{};
  const int count = backtrace(addresses.data(), static_cast<int>(addresses.size()));
  std::string library;
  for (int i = 0; i < count; ++i) {
    const std::string function = function_at(addresses[static_cast<std::size_t>(i)]);
    if (starts_with(function, "halcyra::SectionRecorder::")) continue;
    if (starts_with(function, "halcyra::")) return short_name(function) + library;
    if (starts_with(function, "cv::") && !starts_with(function, "cv::parallel_for_")) {
      library = ", " + short_name(function);
    }
  }
  return "unknown";
}

void number_repeated(std::vector<std::string>& names) {
  const std::vector<std::string> plain = names;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto here = plain.begin() + static_cast<std::ptrdiff_t>(i);
    const auto before = std::count(plain.begin(), here, plain[i]);
    if (before > 0) names[i] += " (" + std::to_string(before + 1) + ")";
  }
}

}  // namespace

void SectionRecorder::start(int threads) {
  threads_ = threads;
  run_ = {};
  last_end_ = Clock::now();
}

RecordedRun SectionRecorder::stop() {
  run_.serial_after = milliseconds(Clock::now() - last_end_);
  return std::exchange(run_, {});
}

void SectionRecorder::start_naming(int threads) {
  start(threads);
  naming_ = true;
}

std::vector<std::string> SectionRecorder::stop_naming() {
  naming_ = false;
  number_repeated(names_);
  return std::exchange(names_, {});
}

void SectionRecorder::parallel_for(int tasks, FN_parallel_for_body_cb_t body, void* data) {
  Section section;
  section.serial_before = milliseconds(Clock::now() - last_end_);
  section.tasks.reserve(static_cast<std::size_t>(tasks));
  if (naming_) names_.push_back(name_of_caller());
  Clock::time_point start = Clock::now();
  for (int task = 0; task < tasks; ++task) {
    body(task, task + 1, data);
    const Clock::time_point end = Clock::now();
    section.tasks.push_back(milliseconds(end - start));
    start = end;
  }
  run_.sections.push_back(std::move(section));
  last_end_ = Clock::now();
}

int SectionRecorder::setNumThreads(int threads) { return std::exchange(threads_, threads); }

}  // namespace halcyra
