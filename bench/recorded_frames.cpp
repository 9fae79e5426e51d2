#include "bench/recorded_frames.hpp"

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "virtual_kinect/room_source.hpp"

namespace halcyra {
namespace {

using libfreenect2::Frame;

constexpr std::uint64_t kOwnerAlone = 3 * 30;
constexpr std::uint64_t kEmptyRoom = 56 * 30;
constexpr std::uint64_t kThreePeople = 50 * 30;

const virtual_kinect::FrameSource& room_source() {
  static const virtual_kinect::FrameSource kSource = virtual_kinect::open_room();
  return kSource;
}

// Scaled to the frame's height; the rest of the width is filled with its reflection.
cv::Mat in_color_frame(const cv::Mat& picture) {
  constexpr int kWidth = 1920;
  constexpr int kHeight = 1080;
  cv::Mat scaled;
  cv::resize(picture, scaled, {kHeight * picture.cols / picture.rows, kHeight}, 0, 0,
             cv::INTER_LINEAR);
  const int left = (kWidth - scaled.cols) / 2;
  cv::Mat frame;
  cv::copyMakeBorder(scaled, frame, 0, 0, left, kWidth - scaled.cols - left, cv::BORDER_REFLECT);
  cv::cvtColor(frame, frame, cv::COLOR_BGR2BGRA);
  return frame;
}

RecordedFrames photograph_frames() {
  RecordedFrames frames = room_frames(kOwnerAlone);
  frames.color = in_color_frame(cv::imread(HALCYRA_TEST_DATA "/astronaut.png"));
  return frames;
}

}  // namespace

RecordedFrames room_frames(std::uint64_t set) {
  const virtual_kinect::FrameSource& room = room_source();
  return {room.image(Frame::Color, set).pixels.clone(), room.image(Frame::Ir, set).pixels.clone(),
          room.image(Frame::Depth, set).pixels.clone()};
}

const std::vector<NamedFrames>& measured_frames() {
  static const std::vector<NamedFrames> kAll = {{"empty room", room_frames(kEmptyRoom)},
                                                {"room, one person", room_frames(kOwnerAlone)},
                                                {"room, three people", room_frames(kThreePeople)},
                                                {"photograph", photograph_frames()}};
  return kAll;
}

}  // namespace halcyra
