// Random texts that resemble what the probes read, most of them broken.
#pragma once

#include <random>
#include <string>
#include <vector>

namespace halcyra {

// Texts made of `pieces`, white space and stray bytes. The same seed gives the same texts.
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

// Pieces of what the display tools and the voice service print.
std::vector<std::string> display_pieces();
std::vector<std::string> report_pieces();
std::vector<std::string> event_pieces();

}  // namespace halcyra
