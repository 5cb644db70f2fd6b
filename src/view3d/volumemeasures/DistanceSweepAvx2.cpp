// The distance transform's sweep eight voxels at a time, with AVX2.
#include "view3d/volumemeasures/DistanceSweep.h"

#ifdef __AVX2__

#include <immintrin.h>

namespace measure {

namespace {

struct Floats {
  struct Mask {
    __m256 lanes;

    friend Mask operator|(Mask a, Mask b) { return {_mm256_or_ps(a.lanes, b.lanes)}; }
    bool Any() const { return _mm256_movemask_ps(lanes) != 0; }
    Floats Pick(Floats yes, Floats no) const {
      return {_mm256_blendv_ps(no.eight, yes.eight, lanes)};
    }
  };
  using Element = float;
  static constexpr int kLanes = 8;

  __m256 eight;

  static Floats All(float number) { return {_mm256_set1_ps(number)}; }
  static Floats Load(const float* from) { return {_mm256_loadu_ps(from)}; }
  static Floats OfInts(const float* from) {
    return {_mm256_cvtepi32_ps(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)))};
  }
  void Store(float* to) const { _mm256_storeu_ps(to, eight); }

  friend Floats operator+(Floats a, Floats b) { return {_mm256_add_ps(a.eight, b.eight)}; }
  friend Floats operator*(Floats a, Floats b) { return {_mm256_mul_ps(a.eight, b.eight)}; }
  friend Mask operator<(Floats a, Floats b) {
    return {_mm256_cmp_ps(a.eight, b.eight, _CMP_LT_OQ)};
  }
  friend Floats Min(Floats a, Floats b) { return {_mm256_min_ps(a.eight, b.eight)}; }
};

struct Doubles {
  struct Mask {
    __m256d low;
    __m256d high;

    friend Mask operator|(Mask a, Mask b) {
      return {_mm256_or_pd(a.low, b.low), _mm256_or_pd(a.high, b.high)};
    }
    bool Any() const { return _mm256_movemask_pd(_mm256_or_pd(low, high)) != 0; }
    Floats Pick(Floats yes, Floats no) const {
      // The even 32-bit lanes of both, by halves of 128 bits, and then the middle two swapped.
      const __m256 turns =
          _mm256_shuffle_ps(_mm256_castpd_ps(low), _mm256_castpd_ps(high), _MM_SHUFFLE(2, 0, 2, 0));
      const __m256d lanes = _mm256_permute4x64_pd(_mm256_castps_pd(turns), _MM_SHUFFLE(3, 1, 2, 0));
      return Floats::Mask{_mm256_castpd_ps(lanes)}.Pick(yes, no);
    }
  };
  using Element = double;

  __m256d low;
  __m256d high;

  Doubles(__m256d lowHalf, __m256d highHalf) : low(lowHalf), high(highHalf) {}
  explicit Doubles(Floats floats)
      : low(_mm256_cvtps_pd(_mm256_castps256_ps128(floats.eight))),
        high(_mm256_cvtps_pd(_mm256_extractf128_ps(floats.eight, 1))) {}

  static Doubles Load(const double* from) {
    return {_mm256_loadu_pd(from), _mm256_loadu_pd(from + 4)};
  }
  void Store(double* to) const {
    _mm256_storeu_pd(to, low);
    _mm256_storeu_pd(to + 4, high);
  }

  friend Doubles operator+(Doubles a, Doubles b) {
    return {_mm256_add_pd(a.low, b.low), _mm256_add_pd(a.high, b.high)};
  }
  friend Doubles operator*(Doubles a, Doubles b) {
    return {_mm256_mul_pd(a.low, b.low), _mm256_mul_pd(a.high, b.high)};
  }
  friend Mask operator<(Doubles a, Doubles b) {
    return {_mm256_cmp_pd(a.low, b.low, _CMP_LT_OQ), _mm256_cmp_pd(a.high, b.high, _CMP_LT_OQ)};
  }
  friend Doubles Min(Doubles a, Doubles b) {
    return {_mm256_min_pd(a.low, b.low), _mm256_min_pd(a.high, b.high)};
  }
};

}  // namespace

PlaneSweeps Avx2Sweeps() { return {RunSweep<Floats, Doubles>, RunSweep<Floats, Floats>}; }

}  // namespace measure

#else

measure::PlaneSweeps measure::Avx2Sweeps() { return {nullptr, nullptr}; }

#endif
