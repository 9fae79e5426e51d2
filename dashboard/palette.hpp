// Every colour that the dashboard draws with, apart from those that belong to a face.
#pragma once

#include <opencv2/core/types.hpp>

namespace halcyra {

// cv::Scalar has no constexpr constructor; this stands in for it, so that no colour depends on the
// order in which source files are initialised.
struct Bgr {
  double blue;
  double green;
  double red;

  operator cv::Scalar() const { return {blue, green, red}; }
};

namespace palette {

constexpr Bgr kBackground{14, 18, 25};

constexpr Bgr kHeaderFill{20, 26, 36};
constexpr Bgr kHeaderTitle{238, 244, 252};
constexpr Bgr kHeaderSubtitle{134, 148, 167};
constexpr Bgr kKeyHints{150, 162, 180};

constexpr Bgr kFooterFill{34, 31, 20};
constexpr Bgr kSafetySentence{92, 206, 245};

// The side panels and the frame of the preview.
constexpr Bgr kPanelFill{22, 28, 38};
constexpr Bgr kPanelOutline{52, 64, 80};
constexpr Bgr kPanelTitle{222, 230, 240};
constexpr Bgr kRowKey{128, 142, 160};
constexpr Bgr kRowValue{225, 232, 242};
constexpr Bgr kPanelText{176, 187, 202};
constexpr Bgr kFaintText{142, 153, 170};  // the overflow notice and the impact of a card

constexpr Bgr kCardFill{29, 35, 45};
constexpr Bgr kCardOutline{52, 62, 76};
constexpr Bgr kCardTitle{230, 236, 244};
constexpr Bgr kCardDetail{184, 194, 208};

// The picture area of the preview and what lies over it.
constexpr Bgr kPictureGround{8, 11, 16};  // where a picture is missing, and behind a note
constexpr Bgr kPictureLabel{245, 250, 255};
constexpr Bgr kNoCameraHeading{96, 110, 130};
constexpr Bgr kMissingPictureDetail{170, 182, 198};
constexpr Bgr kSkeletalNote{210, 220, 232};
constexpr Bgr kNobodyDetected{215, 224, 236};
constexpr Bgr kFaceLabelFill{9, 13, 20};

// The microphone strip.
constexpr Bgr kSegmentFill{42, 49, 59};
constexpr Bgr kSegmentOutline{82, 94, 110};
constexpr Bgr kLitSegmentOutline{230, 240, 250};
constexpr Bgr kUntrustedVoice{105, 112, 124};
constexpr Bgr kAmbiguousVoice{80, 190, 230};
constexpr Bgr kUnmatchedVoice{80, 160, 245};  // trusted, but of nobody in view

// How something is: green, orange, yellow and red.
constexpr Bgr kGood{80, 210, 120};
constexpr Bgr kDegraded{70, 180, 245};
constexpr Bgr kFallback{60, 200, 220};
constexpr Bgr kUnavailable{90, 95, 245};

}  // namespace palette
}  // namespace halcyra
