// Writes sample pictures of the rendered room's owner, by which the program recognises him.
#include <exception>
#include <iostream>

#include "demo/owner_samples.hpp"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " FOLDER\n";
    return 2;
  }
  try {
    halcyra::write_owner_samples(argv[1]);
  } catch (const std::exception& error) {
    std::cerr << argv[0] << ": " << error.what() << "\n";
    return 1;
  }
  return 0;
}
