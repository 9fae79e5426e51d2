// The geometry of the dashboard on a canvas of the given size.
#pragma once

#include "dashboard/dashboard_geometry.hpp"

namespace halcyra {

inline DashboardGeometry dashboard_of(int width, int height) {
  Options options;
  options.width = width;
  options.height = height;
  return dashboard_geometry(options);
}

}  // namespace halcyra
