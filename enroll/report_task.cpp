#include "enroll/report_task.hpp"

#include <iostream>
#include <string>

#include "enroll/contact_sheet.hpp"
#include "enroll/report_json.hpp"
#include "enroll/report_table.hpp"
#include "enroll/report_text.hpp"
#include "enroll/sample_report.hpp"

namespace halcyra {
namespace {

void write_report(const SampleReport& report, bool json) {
  if (json) {
    write_report_json(std::cout, report);
  } else if (report.complaint.empty()) {
    write_report_table(std::cout, report);
  }
  std::cout.flush();
}

}  // namespace

int report_on_folder(const EnrollOptions& options) {
  const SampleReport report = report_on_samples(options.pipeline, options.per_pose);
  write_report(report, options.json);
  std::string complaint = report.complaint;
  if (complaint.empty() && !options.sheet.empty()) {
    write_contact_sheet(report, options.sheet, complaint);
  }
  if (!complaint.empty()) std::cerr << printable(complaint) << "\n";
  return is_good(report) && complaint.empty() ? 0 : 1;
}

}  // namespace halcyra
