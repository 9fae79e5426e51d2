// The picture files that samples are to be taken from.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

namespace halcyra {

struct PictureFile {
  std::filesystem::path path;
  std::string obstacle;  // why nothing is read from it, without a full stop; "" if it is a file
  bool asked_for;        // it was named itself, and not found in a folder
};

// The files named, and all files in and below the folders named: in the order of the names, those
// of a folder in path order. What is not read is listed as well, with the obstacle: hidden files
// and folders below a folder named, links to folders there, what is no file, and what cannot be
// opened.
std::vector<PictureFile> list_pictures(const std::vector<std::string>& names);

// The picture in the file, 8-bit grey as the dashboard makes it of a colour frame, upright as the
// camera noted it. Empty, with a reason without a full stop in `obstacle`, if there is none. Only
// files that begin like PNG, JPEG, BMP, TIFF, WebP, JPEG 2000 or PNM are decoded: with others
// OpenCV tries libraries that some of them make end the process.
cv::Mat read_photograph(const std::filesystem::path& file, std::string& obstacle);

}  // namespace halcyra
