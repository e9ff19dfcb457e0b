// The light of a patch of a picture, and the two things about it that the definitions of flashes
// ask for: its relative luminance and its colour.
#pragma once

#include "host/screen/canvas.h"

namespace kavo::film {

// Linear, each 0 to 1.
struct Light {
  float red = 0;
  float green = 0;
  float blue = 0;
};

// Of a square, as far as it lies on the picture; its corner must.
Light mean_light(const host::Canvas& picture, int x, int y, int side);

// 0 of black to 1 of white, as the Web Content Accessibility Guidelines define it for sRGB.
float relative_luminance(const Light& light);

// At least four fifths of it are red, however dark it is.
bool is_saturated_red(const Light& light);

// A place in the CIE 1976 UCS diagram.
struct Chromaticity {
  float u = 0;
  float v = 0;
};

// Black has the one of white.
Chromaticity chromaticity(const Light& light);

float distance(Chromaticity one, Chromaticity other);

} // namespace kavo::film
