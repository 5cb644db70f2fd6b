// A list of distances, addressed by positions that count from 1.
#pragma once

#include <cstddef>
#include <vector>

class FloatList {
public:
  bool sorted = false;  ///< set by Sort; a caller that appends clears it

  void Append(float value);
  /// The value at `position`, or 0.0 where the position does not exist.
  float GetValue(int position) const;
  /// Replaces a value and clears `sorted`; a position that does not exist is ignored.
  void SetValue(int position, float value);
  /// Position of the smallest value from `position` to the end; on ties the first.
  int IndexOfMinimum(int position) const;
  int Size() const { return static_cast<int>(values.size()); }
  /// Ascending; does nothing when the list is sorted already.
  void Sort();
  void Clear();

private:
  std::vector<float> values;  // contiguous, so that a sort costs n log n and access one step
};
