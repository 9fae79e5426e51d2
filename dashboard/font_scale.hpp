// The one factor by which all text of the dashboard grows and shrinks.
#pragma once

namespace halcyra {

// Set by the program before each picture is drawn; the drawing functions only read it.
extern double g_font_scale;

}  // namespace halcyra
