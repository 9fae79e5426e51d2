#include "enroll/program.hpp"

#include <iostream>
#include <string>

#include "app/standard_streams.hpp"
#include "enroll/command_line.hpp"
#include "enroll/live_enrolment.hpp"
#include "enroll/picture_enrolment.hpp"
#include "enroll/report_task.hpp"

namespace halcyra {
namespace {

constexpr int kUsageError = 2;

int carry_out(const EnrollOptions& options) {
  switch (options.task) {
    case EnrollTask::kLive:
      return enroll_live(options);
    case EnrollTask::kFromPictures:
      return enroll_from_pictures(options);
    case EnrollTask::kReport:
      break;
  }
  return report_on_folder(options);
}

}  // namespace

int run_enroll(int argc, const char* const* argv) {
  secure_standard_streams();
  EnrollOptions options;
  std::string complaint;
  const std::optional<EnrollRequest> request = parse_enroll_args(argc, argv, options, complaint);
  if (!request) {
    std::cerr << complaint << "\n";
    write_enroll_usage(std::cerr, argv[0]);
    return kUsageError;
  }
  switch (*request) {
    case EnrollRequest::kShowHelp:
      write_enroll_usage(std::cout, argv[0]);
      return 0;
    case EnrollRequest::kShowVersion:
      write_enroll_version(std::cout);
      return 0;
    case EnrollRequest::kRun:
      break;
  }
  return carry_out(options);
}

}  // namespace halcyra
