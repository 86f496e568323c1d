// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace lumora {

/// What one value of a JSON text is: a bool, a number (integer where it is written as one that
/// fits), a text, or `std::monostate` for null, an array or an object.
using JsonValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

/// 80.0 and 8e1 are integers, 80.5 is not; absent for what is no integer of 64 bits.
std::optional<std::int64_t> asInteger(const JsonValue& value);

}  // namespace lumora
