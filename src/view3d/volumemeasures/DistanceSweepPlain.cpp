// The distance transform's sweep one voxel at a time, for every machine.
#include "view3d/volumemeasures/DistanceSweep.h"

namespace measure {

namespace {

struct Mask {
  bool set;

  friend Mask operator|(Mask a, Mask b) { return {a.set || b.set}; }
  bool Any() const { return set; }
  template <class Values>
  Values Pick(Values yes, Values no) const {
    return set ? yes : no;
  }
};

template <class Number>
struct One {
  using Element = Number;
  static constexpr int kLanes = 1;

  Number value;

  One() = default;
  explicit One(float number) : value(number) {}
  template <class Other>
  explicit One(One<Other> other) : value(other.value) {}

  static One All(float number) { return One(number); }
  static One Load(const Number* from) {
    One one;
    one.value = *from;
    return one;
  }
  static One OfInts(const float* from) {
    std::int32_t number = 0;
    std::memcpy(&number, from, sizeof number);
    return One(static_cast<float>(number));
  }
  void Store(Number* to) const { *to = value; }

  friend One operator+(One a, One b) { return Of(a.value + b.value); }
  friend One operator*(One a, One b) { return Of(a.value * b.value); }
  friend Mask operator<(One a, One b) { return {a.value < b.value}; }
  friend One Min(One a, One b) { return a.value < b.value ? a : b; }

private:
  static One Of(Number number) { return Load(&number); }
};

}  // namespace

PlaneSweeps PlainSweeps() {
  return {RunSweep<One<float>, One<double>>, RunSweep<One<float>, One<float>>};
}

}  // namespace measure
