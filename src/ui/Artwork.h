// The product's pictures as functions of a pixel.
#pragma once

namespace artwork {

/// Channels 0.0 to 1.0.
struct Colour {
  double red = 0.0;
  double green = 0.0;
  double blue = 0.0;
};

Colour Banner(double x, double y);   ///< 306 by 40
Colour Product(double x, double y);  ///< 401 by 241

}  // namespace artwork
