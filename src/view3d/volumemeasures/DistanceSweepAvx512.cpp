// The distance transform's sweep sixteen voxels at a time, with AVX-512.
#include "view3d/volumemeasures/DistanceSweep.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

namespace measure {

namespace {

struct Floats {
  struct Mask {
    __mmask16 lanes;

    friend Mask operator|(Mask a, Mask b) { return {static_cast<__mmask16>(a.lanes | b.lanes)}; }
    bool Any() const { return lanes != 0; }
    Floats Pick(Floats yes, Floats no) const {
      return {_mm512_mask_blend_ps(lanes, no.sixteen, yes.sixteen)};
    }
  };
  using Element = float;
  static constexpr int kLanes = 16;

  __m512 sixteen;

  static Floats All(float number) { return {_mm512_set1_ps(number)}; }
  static Floats Load(const float* from) { return {_mm512_loadu_ps(from)}; }
  static Floats OfInts(const float* from) { return {_mm512_cvtepi32_ps(_mm512_loadu_si512(from))}; }
  void Store(float* to) const { _mm512_storeu_ps(to, sixteen); }

  friend Floats operator+(Floats a, Floats b) { return {_mm512_add_ps(a.sixteen, b.sixteen)}; }
  friend Floats operator*(Floats a, Floats b) { return {_mm512_mul_ps(a.sixteen, b.sixteen)}; }
  friend Mask operator<(Floats a, Floats b) {
    return {_mm512_cmp_ps_mask(a.sixteen, b.sixteen, _CMP_LT_OQ)};
  }
  friend Floats Min(Floats a, Floats b) { return {_mm512_min_ps(a.sixteen, b.sixteen)}; }
};

struct Doubles {
  using Mask = Floats::Mask;
  using Element = double;

  __m512d low;
  __m512d high;

  Doubles(__m512d lowHalf, __m512d highHalf) : low(lowHalf), high(highHalf) {}
  explicit Doubles(Floats floats)
      : low(_mm512_cvtps_pd(_mm512_castps512_ps256(floats.sixteen))),
        high(_mm512_cvtps_pd(_mm512_extractf32x8_ps(floats.sixteen, 1))) {}

  static Doubles Load(const double* from) {
    return {_mm512_loadu_pd(from), _mm512_loadu_pd(from + 8)};
  }
  void Store(double* to) const {
    _mm512_storeu_pd(to, low);
    _mm512_storeu_pd(to + 8, high);
  }

  friend Doubles operator+(Doubles a, Doubles b) {
    return {_mm512_add_pd(a.low, b.low), _mm512_add_pd(a.high, b.high)};
  }
  friend Doubles operator*(Doubles a, Doubles b) {
    return {_mm512_mul_pd(a.low, b.low), _mm512_mul_pd(a.high, b.high)};
  }
  friend Mask operator<(Doubles a, Doubles b) {
    return {_mm512_kunpackb(_mm512_cmp_pd_mask(a.high, b.high, _CMP_LT_OQ),
                            _mm512_cmp_pd_mask(a.low, b.low, _CMP_LT_OQ))};
  }
  friend Doubles Min(Doubles a, Doubles b) {
    return {_mm512_min_pd(a.low, b.low), _mm512_min_pd(a.high, b.high)};
  }
};

}  // namespace

PlaneSweeps Avx512Sweeps() { return {RunSweep<Floats, Doubles>, RunSweep<Floats, Floats>}; }

}  // namespace measure

#else

measure::PlaneSweeps measure::Avx512Sweeps() { return {nullptr, nullptr}; }

#endif
