#include "virtual_kinect/complaint.hpp"

#include <iostream>

namespace halcyra::virtual_kinect {

void complain(std::string message) {
  for (char& c : message) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x20 || code == 0x7F) c = '?';
  }
  std::cerr << "virtual Kinect: " + message + "\n" << std::flush;
}

}  // namespace halcyra::virtual_kinect
