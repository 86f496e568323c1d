// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include <simdjson.h>

namespace lumora {

/// What one value of a JSON text is: a bool, a number (integer where it is written as one that
/// fits), a text, or `std::monostate` for null, an array or an object.
using JsonValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

/// Reads a value whole. The parser checks only what is read, so this is also how to check one that
/// nobody needs. Absent when the text is no JSON there, nests deeper than a thousand levels or
/// holds a number beyond what a double can hold.
std::optional<JsonValue> readJsonValue(simdjson::ondemand::value value, int depth = 0);

/// 80.0 and 8e1 are integers, 80.5 is not; absent for what is no integer of 64 bits.
std::optional<std::int64_t> asInteger(const JsonValue& value);

}  // namespace lumora
