// Opens the Kinect v2, starts its streams and closes it again.
#pragma once

#include "app/run_state/options.hpp"
#include "capture/kinect_session.hpp"

namespace halcyra {

struct RuntimeStatus;

// Finds, opens and starts the sensor unless `options.no_camera`. The outcome is told in the status
// sentences and in the event log. Nothing is retried, so a run that starts without a sensor stays
// without one; what a failed start has left running is ended.
void open_kinect(KinectSession& session, const Options& options, RuntimeStatus& status);

// Stops the streams if they had started, and closes the device if there is one. Failures are
// ignored. The context and the listener stay until the session is destroyed.
void close_kinect(KinectSession& session);

}  // namespace halcyra
