// Rewrites the golden pictures with what the dashboard draws now. Look at each changed picture
// before committing it, because from then on the tests expect it.

#include <cstdlib>
#include <iostream>

#include <opencv2/imgcodecs.hpp>

#include "tests/golden/golden_pictures.hpp"

int main() {
  for (const halcyra::GoldenPicture& picture : halcyra::golden_pictures()) {
    const std::string path =
        std::string(HALCYRA_GOLDEN_PICTURES) + "/" + halcyra::file_name(picture);
    if (!cv::imwrite(path, halcyra::draw(picture), {cv::IMWRITE_PNG_COMPRESSION, 9})) {
      std::cerr << "cannot write " << path << "\n";
      return EXIT_FAILURE;
    }
    std::cout << path << "\n";
  }
}
