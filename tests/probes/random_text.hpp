// Random texts that are like what the probes read, but mostly broken.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace halcyra {

// Texts put together from `pieces`, white space and stray bytes; the same seed gives the same
// texts.
class RandomText {
 public:
  RandomText(unsigned seed, std::vector<std::string> pieces);

  // At most `most` pieces.
  std::string next(int most);

 private:
  int below(int limit);
  std::string piece();

  std::mt19937 random_;
  std::vector<std::string> pieces_;
};

// What display tools and the voice service's reports and events are made of.
std::vector<std::string> display_pieces();
std::vector<std::string> report_pieces();
std::vector<std::string> event_pieces();

}  // namespace halcyra
