// What makes a sample worth having beside the quality gate.
#pragma once

namespace halcyra {

// A face nearer than this to a sample shows the recogniser nothing new. In LBPH distance: the
// rendered room's owner is 24 to 50, mostly 34, from his own picture of the frame before, where
// little more than the noise has changed, and mostly more than 50 from others of the same pose.
constexpr double kNearCopyDistance = 30.0;

}  // namespace halcyra
