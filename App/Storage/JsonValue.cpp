// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Storage/JsonValue.h"

#include <cmath>

namespace lumora {

std::optional<std::int64_t> asInteger(const JsonValue& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return *integer;
  constexpr double kTwoTo63 = 9223372036854775808.0;
  const auto* number = std::get_if<double>(&value);
  if (number == nullptr || *number != std::trunc(*number)) return std::nullopt;
  if (*number < -kTwoTo63 || *number >= kTwoTo63) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

}  // namespace lumora
