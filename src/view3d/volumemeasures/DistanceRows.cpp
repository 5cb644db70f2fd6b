#include "view3d/volumemeasures/DistanceRows.h"

#include "base/ColourValues.h"

#include <cmath>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace measure {

namespace {

double Square(const DistanceField& field, std::size_t i) {
  const double x = field.x[i];
  const double y = field.y[i];
  const double z = field.z[i];
  return (x * x + y * y) + z * z;
}

std::uint8_t Shade(double distance, const SideShade& side, const DistanceShades& shades) {
  const double steps = distance * shades.range / side.divisor;
  return LowByte(steps <= shades.limit ? shades.base + side.sign * steps : side.beyond);
}

/// Voxel by voxel, for the ends of rows and for machines without vectors of doubles.
Bytes ShadeEach(const DistanceField& field, std::size_t first, int count, Bytes side,
                const DistanceShades& shades) {
  Bytes colours{};
  for (int i = 0; i < count; ++i) {
    const double distance = field.Length(first + static_cast<std::size_t>(i));
    colours[i] = Shade(distance, shades.sides[side[i] != 0 ? 1 : 0], shades);
  }
  return colours;
}

double LargestOfEach(const DistanceField& field, std::size_t first, int count, Bytes mask) {
  double largest = 0.0;
  for (int i = 0; i < count; ++i) {
    const double square = Square(field, first + static_cast<std::size_t>(i));
    if (mask[i] != 0 && largest < square) { largest = square; }
  }
  return largest;
}

#ifdef __SSE2__

/// Squared lengths of two voxels.
__m128d SquaresOf(__m128 x, __m128 y, __m128 z) {
  const __m128d dx = _mm_cvtps_pd(x);
  const __m128d dy = _mm_cvtps_pd(y);
  const __m128d dz = _mm_cvtps_pd(z);
  return _mm_add_pd(_mm_add_pd(_mm_mul_pd(dx, dx), _mm_mul_pd(dy, dy)), _mm_mul_pd(dz, dz));
}

__m128 HighHalf(__m128 four) { return _mm_movehl_ps(four, four); }

/// Squared lengths of four voxels from an element on.
struct FourSquares {
  __m128d low;
  __m128d high;

  FourSquares(const DistanceField& field, std::size_t i) {
    const __m128 x = _mm_loadu_ps(field.x + i);
    const __m128 y = _mm_loadu_ps(field.y + i);
    const __m128 z = _mm_loadu_ps(field.z + i);
    low = SquaresOf(x, y, z);
    high = SquaresOf(HighHalf(x), HighHalf(y), HighHalf(z));
  }
};

/// A mask of 16 bytes as eight masks of two doubles.
struct PairMasks {
  __m128d pairs[8];

  explicit PairMasks(Bytes mask) {
    const auto bytes = reinterpret_cast<__m128i>(mask);
    const __m128i halves[2] = {_mm_unpacklo_epi8(bytes, bytes), _mm_unpackhi_epi8(bytes, bytes)};
    for (int i = 0; i < 4; ++i) {
      const __m128i half = halves[i / 2];
      const __m128i four =
          i % 2 == 0 ? _mm_unpacklo_epi16(half, half) : _mm_unpackhi_epi16(half, half);
      pairs[2 * i] = _mm_castsi128_pd(_mm_unpacklo_epi32(four, four));
      pairs[2 * i + 1] = _mm_castsi128_pd(_mm_unpackhi_epi32(four, four));
    }
  }
};

/// Two values by side.
class PairBySide {
public:
  PairBySide(double clear, double set)
      : whereClear(_mm_set1_pd(clear)), whereSet(_mm_set1_pd(set)) {}
  __m128d Of(__m128d side) const {
    return _mm_or_pd(_mm_and_pd(side, whereSet), _mm_andnot_pd(side, whereClear));
  }

private:
  __m128d whereClear;
  __m128d whereSet;
};

class PairShader {
public:
  explicit PairShader(const DistanceShades& shades)
      : base(_mm_set1_pd(shades.base)), range(_mm_set1_pd(shades.range)),
        limit(_mm_set1_pd(shades.limit)), divisor(shades.sides[0].divisor, shades.sides[1].divisor),
        sign(shades.sides[0].sign, shades.sides[1].sign),
        beyond(shades.sides[0].beyond, shades.sides[1].beyond) {}

  /// Two colour values, whose low bytes count. The conversion gives 0 there for what no integer
  /// holds, as LowByte does.
  __m128i Shade(__m128d squares, __m128d side) const {
    const __m128 rounded = _mm_cvtpd_ps(_mm_sqrt_pd(squares));
    const __m128d distance = _mm_cvtps_pd(rounded);
    const __m128d steps = _mm_div_pd(_mm_mul_pd(distance, range), divisor.Of(side));
    const __m128d value = _mm_add_pd(base, _mm_mul_pd(sign.Of(side), steps));
    const __m128d within = _mm_cmple_pd(steps, limit);
    return _mm_cvttpd_epi32(
        _mm_or_pd(_mm_and_pd(within, value), _mm_andnot_pd(within, beyond.Of(side))));
  }

private:
  __m128d base;
  __m128d range;
  __m128d limit;
  PairBySide divisor;
  PairBySide sign;
  PairBySide beyond;
};

Bytes ShadeSixteen(const DistanceField& field, std::size_t first, const PairMasks& side,
                   const PairShader& shader) {
  const __m128i lowByte = _mm_set1_epi32(255);
  __m128i fours[4];
  for (int i = 0; i < 4; ++i) {
    const FourSquares squares(field, first + static_cast<std::size_t>(4 * i));
    const __m128i low = shader.Shade(squares.low, side.pairs[2 * i]);
    const __m128i high = shader.Shade(squares.high, side.pairs[2 * i + 1]);
    fours[i] = _mm_and_si128(_mm_unpacklo_epi64(low, high), lowByte);
  }
  return reinterpret_cast<Bytes>(
      _mm_packus_epi16(_mm_packs_epi32(fours[0], fours[1]), _mm_packs_epi32(fours[2], fours[3])));
}

double LargestOfSixteen(const DistanceField& field, std::size_t first, const PairMasks& mask) {
  __m128d largest = _mm_setzero_pd();
  for (int i = 0; i < 4; ++i) {
    const FourSquares squares(field, first + static_cast<std::size_t>(4 * i));
    // With not-a-number first, the maximum is its second operand: as a comparison that fails.
    largest = _mm_max_pd(_mm_and_pd(squares.low, mask.pairs[2 * i]), largest);
    largest = _mm_max_pd(_mm_and_pd(squares.high, mask.pairs[2 * i + 1]), largest);
  }
  const double low = _mm_cvtsd_f64(largest);
  const double high = _mm_cvtsd_f64(_mm_unpackhi_pd(largest, largest));
  return low < high ? high : low;
}

class RowShader {
public:
  explicit RowShader(const DistanceShades& all) : shades(all), pairs(all) {}
  Bytes Shade(const DistanceField& field, std::size_t first, int count, Bytes side) const {
    if (count >= kBlock) { return ShadeSixteen(field, first, PairMasks(side), pairs); }
    return ShadeEach(field, first, count, side, shades);
  }

private:
  const DistanceShades& shades;
  PairShader pairs;
};

#else

class RowShader {
public:
  explicit RowShader(const DistanceShades& all) : shades(all) {}
  Bytes Shade(const DistanceField& field, std::size_t first, int count, Bytes side) const {
    return ShadeEach(field, first, std::min(count, kBlock), side, shades);
  }

private:
  const DistanceShades& shades;
};

#endif

}  // namespace

double LargestSquare(const DistanceField& field, std::size_t first, int count, Bytes mask) {
#ifdef __SSE2__
  if (count >= kBlock) { return LargestOfSixteen(field, first, PairMasks(mask)); }
#endif
  return LargestOfEach(field, first, count, mask);
}

void ShadeSlab(const DistanceField& field, const SlabPlace& at, const DistanceShades& shades,
               Slab& sideThenColours) {
  constexpr int kRowsAhead = 4;
  const RowShader shader(shades);
  for (int z = 0; z < at.countZ; ++z) {
    const std::size_t first = field.Index(at.x, at.y, at.z + z);
    const std::size_t ahead =
        field.Index(at.x, at.y, at.z + std::min(z + kRowsAhead, at.countZ - 1));
    for (int i = 0; i < at.BlocksX(); ++i) {
      // Each row lies in pages of its own, where the processor fetches nothing ahead by itself.
      const std::size_t next = ahead + static_cast<std::size_t>(i * kBlock);
      __builtin_prefetch(field.x + next);
      __builtin_prefetch(field.y + next);
      __builtin_prefetch(field.z + next);
      Bytes& row = sideThenColours.blocks[i][z / kBlock].rows[z % kBlock];
      row = shader.Shade(field, first + static_cast<std::size_t>(i * kBlock),
                         at.countX - i * kBlock, row);
    }
  }
  sideThenColours.Turn(at);
}

}  // namespace measure
