// The sample study: smooth bodies in a grey volume, outlined by two users three times each.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sample {

constexpr int kDimX = 128;
constexpr int kDimY = 128;
constexpr int kDimZ = 64;
constexpr float kSpacing[3] = {0.9F, 0.9F, 2.0F};  // millimetres
constexpr int kUsers = 2;
constexpr int kRepeats = 3;

/// Grey values of 16 bits, x fastest, then y, then z.
std::vector<std::uint16_t> GreyVolume();

/// Labels of one outline, the same order: 1 touches the border of the volume, 5 lies in 2.
std::vector<std::uint8_t> LabelVolume(int user, int repeat);

/// Writes grey.gipl, the six outlines and study.tlx (with full paths) into `folder`.
/// Returns: an empty text, or what went wrong.
std::string WriteStudy(const std::string& folder);

}  // namespace sample
