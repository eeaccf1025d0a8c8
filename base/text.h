#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

// Numbers as text, the same in every locale.

// The shortest decimal that reads back as `value` ("600", "0.5"), without an exponent below 1e15.
std::string ShortestDecimal(float value);
// A decimal number with optional blanks around it, a leading sign and an exponent (E or D, either case);
// nothing else, and no infinity, NaN, hexadecimal or overflow.
std::optional<double> ParseNumber(std::string_view text);
// The whole number in `text`, or nothing where it is no whole number or does not fit.
std::optional<int> ParseWhole(std::string_view text);

// "##0.00" and "##0.000": fixed decimals, at least one digit before the point.
std::string FixedDecimals(double value, int decimals);
// "#,###": thousands set off by commas, no decimals.
std::string Grouped(double value);
// "0.000E+00".
std::string Scientific(double value);

// Printable ASCII; every other character of the UTF-8 text becomes "?".
std::string PrintableAscii(std::string_view text);

}  // namespace corvane
