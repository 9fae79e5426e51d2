// The line that a finished run says about itself.
#pragma once

#include <map>
#include <string>

namespace halcyra {

// The summary line with its line feed, wherever it stands in the output; "" without one.
std::string summary_line(const std::string& output);

// Its values by name ("frames", "kinect", ...); empty without a summary line.
std::map<std::string, std::string> summary_values(const std::string& output);

}  // namespace halcyra
