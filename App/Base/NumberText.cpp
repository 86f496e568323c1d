// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/NumberText.h"

#include "Base/Texts.h"

#include <array>
#include <climits>
#include <cstdio>
#include <cwchar>
#include <cwctype>

namespace lumora {
namespace {

/// Some locales have digits that their language's desktops do not use.
bool nativeDigits() {
  // TRANSLATORS: Not shown. "native" where desktops write numbers with the digits of your script
  // (and the locale has them), as they do in Persian, else "western": 0 to 9.
  return std::string_view(translatedIn("digits", "western")) == "native";
}

template <typename... Values>
std::string printed(const char* format, Values... values) {
  std::array<char, 512> text{};  // The largest double has 309 digits.
  const int length = std::snprintf(text.data(), text.size(), format, values...);
  return length < 0 ? std::string() : std::string(text.data());
}

/// The decimal point that goes with the locale's digits.
std::string nativePoint() {
  const auto point =
      static_cast<wchar_t>(std::towctrans(std::wint_t{L'.'}, std::wctrans("to_outpunct")));
  std::array<char, MB_LEN_MAX> bytes{};
  std::mbstate_t state{};
  const std::size_t length = std::wcrtomb(bytes.data(), point, &state);
  return length > bytes.size() ? "." : std::string(bytes.data(), length);
}

}  // namespace

std::string numberText(std::int64_t number) {
  const long long value = number;
  // The flag I of the C library, for the locale's digits, is not known to every compiler.
  return nativeDigits() ? printed("%Illd", value) : printed("%lld", value);
}

std::string twoDigitText(std::int64_t number) {
  // A width would count bytes, not digits.
  return (number < 10 ? numberText(0) : "") + numberText(number);
}

std::string decimalText(double number, int decimals) {
  std::string text = printed("%.*f", decimals, number);
  if (!nativeDigits()) return text;
  // Digit by digit: the flag I writes none of a number with decimals in glibc 2.41.
  std::string native;
  for (const char character : text) {
    if (character >= '0' && character <= '9') {
      native += numberText(character - '0');
    } else if (character == '.') {
      native += nativePoint();
    } else {
      native += character;
    }
  }
  return native;
}

std::string percentText(std::int64_t percent) { return percentText(numberText(percent)); }

std::string percentText(std::string_view numbers) {
  // TRANSLATORS: A percentage, alone or within a sentence; %1$s is a number ("80") or a range of
  // them ("41–80"), and %% is the percent sign. Put it where your language has it, with its blank
  // (one that does not break: U+00A0 or U+202F).
  return filled(translatedIn("percentage", "%1$s%%"), {numbers});
}

std::string joined(std::string_view first, std::string_view second) {
  // TRANSLATORS: Two facts side by side, such as "80% · 2:05" or "87% · Good".
  return filled(translatedIn("two facts", "%1$s · %2$s"), {first, second});
}

}  // namespace lumora
