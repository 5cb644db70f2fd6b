// Ratios of user and system time between a piece of work and its plain reference, in one run.
#pragma once

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <vector>

namespace bench {

/// User and system seconds of this process so far.
inline double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + 1e-6 * static_cast<double>(t.tv_usec);
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// User seconds alone: without the pages that the system makes for new memory.
inline double UserSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) +
         1e-6 * static_cast<double>(usage.ru_utime.tv_usec);
}

inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

inline double SecondsOf(const std::function<void()>& work) {
  const double before = CpuSeconds();
  work();
  return CpuSeconds() - before;
}

/// Runs both in turn `rounds` times after one warm-up and returns the median of the ratios.
inline double MedianRatio(const std::function<void()>& work, const std::function<void()>& plain,
                          int rounds = 5) {
  work();
  plain();
  std::vector<double> ratios;
  for (int i = 0; i < rounds; ++i) {
    const double reference = SecondsOf(plain);
    ratios.push_back(SecondsOf(work) / reference);
  }
  return Median(ratios);
}

/// The ratio of the user times of `rounds` runs of both in turn.
inline double UserRatio(const std::function<void()>& work, const std::function<void()>& plain,
                        int rounds) {
  double times[2] = {0.0, 0.0};
  for (int i = 0; i < rounds; ++i) {
    const double begin = UserSeconds();
    plain();
    const double middle = UserSeconds();
    work();
    times[0] += middle - begin;
    times[1] += UserSeconds() - middle;
  }
  return times[1] / times[0];
}

}  // namespace bench
