// A listener that hands out frames in sets, one frame of each subscribed type.
#pragma once

#include <map>
#include <memory>

#include <libfreenect2/frame_listener.hpp>

namespace halcyra::virtual_kinect {
class Delivery;
}

namespace libfreenect2 {

using FrameMap = std::map<Frame::Type, Frame*>;

class SyncMultiFrameListener : public FrameListener {
 public:
  // `frame_types` is a sum of Frame::Type values. Frames of other types are refused.
  SyncMultiFrameListener(unsigned int frame_types);
  ~SyncMultiFrameListener() override;

  // True when a set is complete and the set handed out before it was released.
  bool hasNewFrame() const;

  // Waits for a set and hands it out. The caller owns its frames until release; no other set is
  // handed out before that. False when `milliseconds` pass without a set. Where config.h does not
  // define LIBFREENECT2_THREADING_STDLIB, the timeout is ignored.
  bool waitForNewFrame(FrameMap& frame, int milliseconds);
  void waitForNewFrame(FrameMap& frame);

  // Deletes the frames of a set that was handed out and clears the map.
  void release(FrameMap& frame);

  // A newer frame replaces one of its type that nobody took.
  bool onNewFrame(Frame::Type type, Frame* frame) override;

 private:
  friend class halcyra::virtual_kinect::Delivery;

  // onNewFrame for all frames of `set` at one moment, so that no reader gets some of them together
  // with others of the set before. Leaves the map empty; frames of types that are not subscribed
  // are deleted.
  void onNewSet(FrameMap& set);

  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace libfreenect2
