#include "ui/Artwork.h"

#include <algorithm>
#include <cmath>

namespace artwork {

namespace {

struct Stroke {
  double x1, y1, x2, y2;
};

/// The letters T, L, V, E, X as strokes in a box of 1 by 1; O is a ring.
constexpr Stroke kT[] = {{0.0, 0.0, 1.0, 0.0}, {0.5, 0.0, 0.5, 1.0}};
constexpr Stroke kL[] = {{0.1, 0.0, 0.1, 1.0}, {0.1, 1.0, 0.95, 1.0}};
constexpr Stroke kV[] = {{0.0, 0.0, 0.5, 1.0}, {0.5, 1.0, 1.0, 0.0}};
constexpr Stroke kE[] = {
    {0.1, 0.0, 0.1, 1.0}, {0.1, 0.0, 0.95, 0.0}, {0.1, 0.5, 0.8, 0.5}, {0.1, 1.0, 0.95, 1.0}};
constexpr Stroke kX[] = {{0.05, 0.0, 0.95, 1.0}, {0.05, 1.0, 0.95, 0.0}};

double DistanceTo(const Stroke& stroke, double x, double y, double w, double h) {
  const double ax = stroke.x1 * w;
  const double ay = stroke.y1 * h;
  const double dx = stroke.x2 * w - ax;
  const double dy = stroke.y2 * h - ay;
  const double t = std::clamp(((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy), 0.0, 1.0);
  return std::hypot(x - ax - t * dx, y - ay - t * dy);
}

template <std::size_t N>
double DistanceToLetter(const Stroke (&strokes)[N], double x, double y, double w, double h) {
  double nearest = 1e9;
  for (const Stroke& stroke : strokes) {
    nearest = std::min(nearest, DistanceTo(stroke, x, y, w, h));
  }
  return nearest;
}

double DistanceToRing(double x, double y, double w, double h) {
  const double u = (x - w / 2) / (w / 2);
  const double v = (y - h / 2) / (h / 2);
  return std::fabs(std::hypot(u, v) - 1.0) * std::min(w, h) / 2;
}

/// Distance to the name, written from (0, 0) in letters of w by h with gaps between.
double DistanceToName(double x, double y, double w, double h, double gap) {
  const double step = w + gap;
  double nearest = DistanceToLetter(kT, x, y, w, h);
  nearest = std::min(nearest, DistanceToRing(x - step, y, w, h));
  nearest = std::min(nearest, DistanceToLetter(kL, x - 2 * step, y, w, h));
  nearest = std::min(nearest, DistanceToLetter(kV, x - 3 * step, y, w, h));
  nearest = std::min(nearest, DistanceToLetter(kE, x - 4 * step, y, w, h));
  return std::min(nearest, DistanceToLetter(kX, x - 5 * step, y, w, h));
}

Colour Mix(const Colour& a, const Colour& b, double share) {
  return {a.red + (b.red - a.red) * share, a.green + (b.green - a.green) * share,
          a.blue + (b.blue - a.blue) * share};
}

/// 1 inside a line of a thickness, 0 outside, soft over one pixel.
double Line(double distance, double thickness) {
  return std::clamp(thickness / 2 + 0.5 - distance, 0.0, 1.0);
}

/// A wobbly closed outline: below 0 inside, the distance in pixels near it.
double Outline(double x, double y, double radius, double phase) {
  const double angle = std::atan2(y, x);
  const double wobble = 1.0 + 0.10 * std::sin(3 * angle + phase) + 0.05 * std::sin(5 * angle);
  return std::hypot(x, y) - radius * wobble;
}

/// Two outlines of one structure: red and green where one, blue where both claim the place.
Colour Outlines(const Colour& ground, double x, double y, double radius) {
  const double first = Outline(x + radius * 0.14, y, radius, 0.4);
  const double second = Outline(x - radius * 0.14, y - radius * 0.06, radius * 0.96, 1.7);
  Colour colour = ground;
  if (first < 0 && second < 0) {
    colour = Mix(colour, {0.25, 0.45, 1.0}, 0.55);
  } else if (first < 0) {
    colour = Mix(colour, {1.0, 0.25, 0.2}, 0.55);
  } else if (second < 0) {
    colour = Mix(colour, {0.2, 0.9, 0.35}, 0.55);
  }
  colour = Mix(colour, {1.0, 0.75, 0.7}, Line(std::fabs(first), 1.6));
  return Mix(colour, {0.8, 1.0, 0.85}, Line(std::fabs(second), 1.6));
}

const Colour kNight = {0.05, 0.09, 0.20};
const Colour kSea = {0.10, 0.30, 0.45};
const Colour kPaper = {0.96, 0.97, 1.0};

}  // namespace

Colour Banner(double x, double y) {
  Colour colour = Mix(kNight, kSea, x / 306.0);
  colour = Outlines(colour, x - 30.0, y - 20.0, 14.0);
  colour = Outlines(colour, x - 276.0, y - 20.0, 14.0);
  return Mix(colour, kPaper, Line(DistanceToName(x - 66.0, y - 11.0, 19.0, 18.0, 12.0), 3.4));
}

Colour Product(double x, double y) {
  Colour colour = Mix(kNight, kSea, (x + y) / 640.0);
  const bool grid = std::fmod(x, 20.0) < 1.0 || std::fmod(y, 20.0) < 1.0;
  if (grid) { colour = Mix(colour, kPaper, 0.06); }
  colour = Outlines(colour, x - 200.0, y - 98.0, 72.0);
  return Mix(colour, kPaper, Line(DistanceToName(x - 62.0, y - 190.0, 32.0, 30.0, 17.0), 4.6));
}

}  // namespace artwork
