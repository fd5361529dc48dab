/// Numbers as text and back, the same in every locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orv::util {

/// The shortest text that reads back as the same double, such as "0.1", "1e+300", "-0", "nan".
std::string shortText(double value);
/// 17 significant digits, as "%.17g" gives in the C locale.
std::string exactText(double value);

/// "1 row", "2 rows", "0 meshes". `many` where it is not `one` and an s.
std::string counted(std::int64_t count, std::string_view one, std::string_view many = {});

/// Whether "inf", "nan" and the like pass as numbers.
enum class NonFinite { kRefuse, kAccept };

/// Reads a decimal number that is the whole of `text` (no blanks; one leading sign). False, with
/// `value` untouched, for anything else and for what no double can hold.
bool parseNumber(std::string_view text, double& value, NonFinite nonFinite = NonFinite::kRefuse);
/// As above for whole numbers; false also when out of range.
bool parseNumber(std::string_view text, int& value);
bool parseNumber(std::string_view text, std::int64_t& value);

}  // namespace orv::util
