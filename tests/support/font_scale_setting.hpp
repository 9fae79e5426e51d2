// A font scale that holds while a test runs and is taken back at its end.
#pragma once

#include "dashboard/font_scale.hpp"

namespace halcyra {

class FontScaleSetting {
 public:
  explicit FontScaleSetting(double scale) : before_(g_font_scale) { g_font_scale = scale; }
  FontScaleSetting(const FontScaleSetting&) = delete;
  FontScaleSetting& operator=(const FontScaleSetting&) = delete;
  ~FontScaleSetting() { g_font_scale = before_; }

 private:
  double before_;
};

}  // namespace halcyra
