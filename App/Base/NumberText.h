// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lumora {

/// How numbers are written wherever they are part of a text: with the decimal mark of the user's
/// locale, its digits if the language of the texts wants them (Persian does, Hindi does not), and
/// the percent sign where the language has it. No number is grouped.

std::string numberText(std::int64_t number);

/// With at least two digits: "05". Not below zero.
std::string twoDigitText(std::int64_t number);

/// Halves are rounded by the digits that the number really has.
std::string decimalText(double number, int decimals);

/// "80%"
std::string percentText(std::int64_t percent);

/// The percent sign to numbers that are a text already: "41–80%".
std::string percentText(std::string_view numbers);

/// Two things told one after the other: "80% · 2:05".
std::string joined(std::string_view first, std::string_view second);

}  // namespace lumora
