// The dashboard's geometry for a canvas of a size.
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
