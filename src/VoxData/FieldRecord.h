// One key of a MetaImage header while it is parsed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// How a value is read behind the separator.
enum class FieldType : std::int32_t {
  None = 0,  ///< no separator; one character, not kept
  Character = 1,
  Integer = 2,
  Real = 3,
  Text = 4,      ///< to the end of the line
  Integers = 5,  ///< `length` numbers
  Reals = 6,
};

struct FieldRecord {
  const char* name = "";
  FieldType type = FieldType::None;
  bool required = false;
  int dependsOn = -1;  ///< record that gives the length, or -1
  bool defined = false;
  int length = 0;
  std::vector<float> numbers;  ///< at most 255
  std::string text;            ///< at most 800 characters
};
