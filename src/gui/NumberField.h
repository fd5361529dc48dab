// Numbers as users type and read them.
#pragma once

#include <string>
#include <string_view>

namespace orv::gui {

/// The number with at least so many digits behind the point, and as many more as its shortest exact
/// form has: what a user or a document has set is shown whole. A value with more than nine
/// significant digits was worked out by a machine; of such a one at least six are shown.
std::string ShownNumber(double value, int decimals);

/// Reads what a user has typed: a full stop or a comma before the decimals, blanks around, a minus
/// of any shape, `unit` behind it. False for all else, such as both separators at once.
bool ReadNumber(std::string_view text, std::string_view unit, double& value);

/// `from` moved by so many steps, without the noise that adding makes of decimal numbers.
double AddSteps(double from, double step, double steps);

}  // namespace orv::gui
