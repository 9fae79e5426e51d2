// What the driver has to say to the person who runs it.
#pragma once

#include <string>

namespace halcyra::virtual_kinect {

// Prints "virtual Kinect: MESSAGE" on standard error, as one line whatever the message quotes:
// control characters become question marks.
void complain(std::string message);

}  // namespace halcyra::virtual_kinect
