#include "ui/Palette.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace pictures {

namespace {

/// A run of `order`, the pixels sorted so that each box lies in one piece.
struct Box {
  std::size_t first = 0;
  std::size_t last = 0;  ///< one behind
  std::size_t channel = 0;
  int width = 0;  ///< of the widest channel

  /// How much there is to gain from a cut: small steps matter over large areas, as in a ramp.
  double Spread() const {
    return static_cast<double>(width) * width * std::sqrt(static_cast<double>(last - first));
  }
};

Box Measured(const std::vector<Rgb>& pixels, const std::vector<std::size_t>& order,
             std::size_t first, std::size_t last) {
  Box box{first, last, 0, 0};
  for (std::size_t c = 0; c < 3; ++c) {
    int low = 255;
    int high = 0;
    for (std::size_t i = first; i < last; ++i) {
      low = std::min<int>(low, pixels[order[i]][c]);
      high = std::max<int>(high, pixels[order[i]][c]);
    }
    if (high - low > box.width) {
      box.width = high - low;
      box.channel = c;
    }
  }
  return box;
}

/// Where the widest channel of the box is cut: between two different values, near the median.
std::size_t Cut(const std::vector<Rgb>& pixels, std::vector<std::size_t>& order, const Box& box) {
  const auto value = [&](std::size_t i) {
    return pixels[order[i]][box.channel];
  };
  const auto begin = order.begin();
  std::sort(begin + static_cast<std::ptrdiff_t>(box.first),
            begin + static_cast<std::ptrdiff_t>(box.last), [&](std::size_t a, std::size_t b) {
              return pixels[a][box.channel] < pixels[b][box.channel];
            });
  std::size_t cut = (box.first + box.last) / 2;
  while (cut < box.last && value(cut) == value(box.first)) { ++cut; }
  while (value(cut - 1) == value(cut)) { --cut; }
  return cut;
}

Rgb MeanOf(const std::vector<Rgb>& pixels, const std::vector<std::size_t>& order, const Box& box) {
  Rgb mean{};
  for (std::size_t c = 0; c < 3; ++c) {
    std::size_t sum = 0;
    for (std::size_t i = box.first; i < box.last; ++i) { sum += pixels[order[i]][c]; }
    mean[c] = static_cast<std::uint8_t>(sum / (box.last - box.first));
  }
  return mean;
}

}  // namespace

Reduced ReduceColours(const std::vector<Rgb>& pixels, int count) {
  std::vector<std::size_t> order(pixels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::vector<Box> boxes{Measured(pixels, order, 0, order.size())};
  while (boxes.size() < static_cast<std::size_t>(count)) {
    const auto widest =
        std::max_element(boxes.begin(), boxes.end(),
                         [](const Box& a, const Box& b) { return a.Spread() < b.Spread(); });
    if (widest->width == 0) { break; }  // fewer colours than were asked for
    const Box box = *widest;
    const std::size_t cut = Cut(pixels, order, box);
    *widest = Measured(pixels, order, box.first, cut);
    boxes.push_back(Measured(pixels, order, cut, box.last));
  }

  Reduced reduced;
  reduced.index.resize(pixels.size());
  for (const Box& box : boxes) {
    const int entry = static_cast<int>(reduced.palette.size());
    for (std::size_t i = box.first; i < box.last; ++i) { reduced.index[order[i]] = entry; }
    reduced.palette.push_back(MeanOf(pixels, order, box));
  }
  reduced.palette.resize(static_cast<std::size_t>(count));
  return reduced;
}

}  // namespace pictures
