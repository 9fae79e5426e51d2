// Sets VIRTUAL_KINECT for one test.
#pragma once

#include <cstdlib>
#include <string>

namespace halcyra::virtual_kinect {

class SceneVariable {
 public:
  explicit SceneVariable(const std::string& value) { setenv("VIRTUAL_KINECT", value.c_str(), 1); }
  ~SceneVariable() { unsetenv("VIRTUAL_KINECT"); }
  SceneVariable(const SceneVariable&) = delete;
  SceneVariable& operator=(const SceneVariable&) = delete;
};

}  // namespace halcyra::virtual_kinect
