// The distance transform's sweep four voxels at a time, with SSE2.
#include "view3d/volumemeasures/DistanceSweep.h"

#ifdef __SSE2__

#include <emmintrin.h>

namespace measure {

namespace {

struct Floats {
  struct Mask {
    __m128 lanes;

    friend Mask operator|(Mask a, Mask b) { return {_mm_or_ps(a.lanes, b.lanes)}; }
    bool Any() const { return _mm_movemask_ps(lanes) != 0; }
    Floats Pick(Floats yes, Floats no) const {
      return {_mm_or_ps(_mm_and_ps(lanes, yes.four), _mm_andnot_ps(lanes, no.four))};
    }
  };
  using Element = float;
  static constexpr int kLanes = 4;

  __m128 four;

  static Floats All(float number) { return {_mm_set1_ps(number)}; }
  static Floats Load(const float* from) { return {_mm_loadu_ps(from)}; }
  static Floats OfInts(const float* from) {
    return {_mm_cvtepi32_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)))};
  }
  void Store(float* to) const { _mm_storeu_ps(to, four); }

  friend Floats operator+(Floats a, Floats b) { return {_mm_add_ps(a.four, b.four)}; }
  friend Floats operator*(Floats a, Floats b) { return {_mm_mul_ps(a.four, b.four)}; }
  friend Mask operator<(Floats a, Floats b) { return {_mm_cmplt_ps(a.four, b.four)}; }
  friend Floats Min(Floats a, Floats b) { return {_mm_min_ps(a.four, b.four)}; }
};

struct Doubles {
  struct Mask {
    __m128d low;
    __m128d high;

    friend Mask operator|(Mask a, Mask b) {
      return {_mm_or_pd(a.low, b.low), _mm_or_pd(a.high, b.high)};
    }
    bool Any() const { return _mm_movemask_pd(_mm_or_pd(low, high)) != 0; }
    Floats Pick(Floats yes, Floats no) const {
      const __m128 lanes =
          _mm_shuffle_ps(_mm_castpd_ps(low), _mm_castpd_ps(high), _MM_SHUFFLE(2, 0, 2, 0));
      return Floats::Mask{lanes}.Pick(yes, no);
    }
  };
  using Element = double;

  __m128d low;
  __m128d high;

  Doubles(__m128d lowHalf, __m128d highHalf) : low(lowHalf), high(highHalf) {}
  explicit Doubles(Floats floats)
      : low(_mm_cvtps_pd(floats.four)),
        high(_mm_cvtps_pd(_mm_movehl_ps(floats.four, floats.four))) {}

  static Doubles Load(const double* from) { return {_mm_loadu_pd(from), _mm_loadu_pd(from + 2)}; }
  void Store(double* to) const {
    _mm_storeu_pd(to, low);
    _mm_storeu_pd(to + 2, high);
  }

  friend Doubles operator+(Doubles a, Doubles b) {
    return {_mm_add_pd(a.low, b.low), _mm_add_pd(a.high, b.high)};
  }
  friend Doubles operator*(Doubles a, Doubles b) {
    return {_mm_mul_pd(a.low, b.low), _mm_mul_pd(a.high, b.high)};
  }
  friend Mask operator<(Doubles a, Doubles b) {
    return {_mm_cmplt_pd(a.low, b.low), _mm_cmplt_pd(a.high, b.high)};
  }
  friend Doubles Min(Doubles a, Doubles b) {
    return {_mm_min_pd(a.low, b.low), _mm_min_pd(a.high, b.high)};
  }
};

}  // namespace

PlaneSweeps Sse2Sweeps() { return {RunSweep<Floats, Doubles>, RunSweep<Floats, Floats>}; }

}  // namespace measure

#else

measure::PlaneSweeps measure::Sse2Sweeps() { return {nullptr, nullptr}; }

#endif
