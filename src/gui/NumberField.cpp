#include "gui/NumberField.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "util/NumberText.h"
#include "util/xml/Names.h"

namespace orv::gui {

namespace {

/// From here on, and below its inverse, numbers are written with an exponent.
constexpr double kLargest = 1e15;
constexpr double kSmallest = 1e-9;
constexpr int kMostDecimals = 20;

std::string Fixed(double value, int decimals) {
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  return {buffer, result.ptr};
}

struct Digits {
  int significant = 0;
  int decimals = 0;
};

/// Of the shortest text that reads back as the same number, which is finite.
Digits Count(double value) {
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
  const std::string_view text(buffer, result.ptr - buffer);
  const std::size_t e = text.find('e');
  int exponent = 0;
  util::parseNumber(text.substr(e + 1), exponent);
  Digits digits;
  digits.significant = static_cast<int>(
      std::count_if(text.begin(), text.begin() + e, [](char c) { return c >= '0' && c <= '9'; }));
  digits.decimals = std::max(0, digits.significant - 1 - exponent);
  return digits;
}

}  // namespace

std::string ShownNumber(double value, int decimals) {
  if (!std::isfinite(value)) return util::shortText(value);
  if (value == 0.0) return Fixed(0.0, std::clamp(decimals, 0, kMostDecimals));
  const double size = std::fabs(value);
  if (size >= kLargest || size < kSmallest) return util::shortText(value);
  const Digits digits = Count(value);
  int shown = digits.decimals;
  if (digits.significant > 9) shown = 5 - static_cast<int>(std::floor(std::log10(size)));
  shown = std::clamp(std::max(shown, decimals), 0, kMostDecimals);
  std::string text = Fixed(value, shown);
  // Zeros that only the six digits brought say nothing.
  while (shown > std::max(decimals, 0) && text.back() == '0') {
    text.pop_back();
    --shown;
  }
  if (text.back() == '.') text.pop_back();
  return text;
}

bool ReadNumber(std::string_view text, std::string_view unit, double& value) {
  const auto trim = [&] {
    while (!text.empty() && util::xml::isSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && util::xml::isSpace(text.back())) text.remove_suffix(1);
  };
  trim();
  if (!unit.empty() && text.size() > unit.size() &&
      text.substr(text.size() - unit.size()) == unit) {
    text.remove_suffix(unit.size());
    trim();
  }
  std::string number;
  constexpr std::string_view kMinus = "\u2212";
  if (text.substr(0, kMinus.size()) == kMinus) {
    number = "-";
    text.remove_prefix(kMinus.size());
  }
  number += text;
  std::replace(number.begin(), number.end(), ',', '.');
  return util::parseNumber(number, value);
}

double AddSteps(double from, double step, double steps) {
  const double sum = from + steps * step;
  if (!std::isfinite(sum) || sum == 0.0 || std::fabs(sum) >= kLargest) return sum;
  const Digits start = Count(from), each = Count(step);
  // A start that was worked out keeps its own digits.
  if ((from != 0.0 && start.significant > 15) || each.significant > 15) return sum;
  const int decimals = std::max(from == 0.0 ? 0 : start.decimals, each.decimals);
  if (decimals > kMostDecimals) return sum;
  double rounded = sum;
  util::parseNumber(Fixed(sum, decimals), rounded);
  return rounded;
}

}  // namespace orv::gui
