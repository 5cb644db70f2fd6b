#include "VoxData/MetaImageFiles.h"

#include <string_view>
#include <sys/stat.h>

namespace metaimage {

namespace {

constexpr int kMostWidth = 255;  // a longer name than any file has

bool IsOneOf(const std::string& text, std::size_t at, std::string_view these) {
  return at < text.size() && these.find(text[at]) != std::string_view::npos;
}

/// The digits at `at`, which moves behind them; more than kMostWidth for any larger number.
int NumberAt(const std::string& text, std::size_t& at) {
  int number = 0;
  for (; IsOneOf(text, at, "0123456789"); ++at) {
    if (number <= kMostWidth) { number = 10 * number + (text[at] - '0'); }
  }
  return number;
}

}  // namespace

File OpenFile(const std::string& name) {
  struct stat status {};
  if (stat(name.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) { return nullptr; }
  return File(std::fopen(name.c_str(), "r+b"));
}

std::int64_t SizeOf(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : 0;
}

std::string DirectoryOf(const std::string& path) {
  const std::size_t at = path.find_last_of("/\\");
  return at == std::string::npos ? std::string() : path.substr(0, at + 1);
}

bool SlicePattern::Parse(const std::string& folder, const std::string& name) {
  const std::size_t percent = name.find('%');
  if (percent == std::string::npos) { return false; }
  std::size_t at = percent + 1;
  if (!ParseConversion(name, at)) { return false; }
  before = folder + name.substr(0, percent);
  behind = name.substr(at);
  return behind.find('%') == std::string::npos;
}

bool SlicePattern::ParseConversion(const std::string& name, std::size_t& at) {
  for (; IsOneOf(name, at, "-0+ "); ++at) {
    left = left || name[at] == '-';
    zeros = zeros || name[at] == '0';
    plus = plus || name[at] == '+';
    blank = blank || name[at] == ' ';
  }
  width = NumberAt(name, at);
  if (IsOneOf(name, at, ".")) { precision = NumberAt(name, ++at); }
  if (width > kMostWidth || precision > kMostWidth || !IsOneOf(name, at, "diuoxX")) {
    return false;
  }
  letter = name[at];
  ++at;
  return true;
}

std::string SlicePattern::Digits(int number) const {
  if (number == 0 && precision == 0) { return {}; }
  char digits[32];
  const char* format = letter == 'o' ? "%o" : letter == 'x' ? "%x" : letter == 'X' ? "%X" : "%u";
  std::snprintf(digits, sizeof digits, format, static_cast<unsigned>(number));
  return digits;
}

std::string SlicePattern::NameOf(int number) const {
  const bool isSigned = letter == 'd' || letter == 'i';
  const std::string sign = isSigned && plus ? "+" : isSigned && blank ? " " : "";
  std::string digits = Digits(number);
  const auto fill = [](std::size_t held, int wanted) {
    const auto most = static_cast<std::size_t>(wanted > 0 ? wanted : 0);
    return most > held ? most - held : 0;
  };
  digits.insert(0, fill(digits.size(), precision), '0');
  const std::size_t missing = fill(sign.size() + digits.size(), width);
  if (left) { return before + sign + digits + std::string(missing, ' ') + behind; }
  const bool withZeros = zeros && precision < 0;
  if (withZeros) { return before + sign + std::string(missing, '0') + digits + behind; }
  return before + std::string(missing, ' ') + sign + digits + behind;
}

}  // namespace metaimage
