#include "view3d/volumemeasures/FloatList.h"

#include <algorithm>

void FloatList::Append(float value) { values.push_back(value); }

float FloatList::GetValue(int position) const {
  if (position < 1 || position > Size()) { return 0.0F; }
  return values[static_cast<std::size_t>(position - 1)];
}

void FloatList::SetValue(int position, float value) {
  sorted = false;
  if (position < 1 || position > Size()) { return; }
  values[static_cast<std::size_t>(position - 1)] = value;
}

int FloatList::IndexOfMinimum(int position) const {
  if (position < 1 || position > Size()) { return position; }
  const auto from = values.begin() + (position - 1);
  return static_cast<int>(std::min_element(from, values.end()) - values.begin()) + 1;
}

void FloatList::Sort() {
  if (sorted) { return; }
  // Stable, as a repeated search for the first minimum finds equal values: the sign of the first
  // zero shows in a table.
  std::stable_sort(values.begin(), values.end());
  sorted = true;
}

void FloatList::Clear() {
  values.clear();
  sorted = false;
}
