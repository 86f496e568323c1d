// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <variant>

namespace lumora {

struct Value;

/// What the system reports about one thing, key by key.
using Dictionary = std::map<std::string, Value, std::less<>>;

/// A value as the system reports it: a bool, a number (integer or floating), a text or a nested
/// dictionary. A bool is never a number, nor a number a bool.
struct Value {
  std::variant<bool, std::int64_t, double, std::string, Dictionary> held;

  Value(bool value) : held(value) {}                      // NOLINT(google-explicit-constructor)
  Value(int value) : held(std::int64_t{value}) {}         // NOLINT(google-explicit-constructor)
  Value(std::int64_t value) : held(value) {}              // NOLINT(google-explicit-constructor)
  Value(double value) : held(value) {}                    // NOLINT(google-explicit-constructor)
  Value(const char* value) : held(std::string(value)) {}  // NOLINT(google-explicit-constructor)
  Value(std::string value) : held(std::move(value)) {}    // NOLINT(google-explicit-constructor)
  Value(Dictionary value) : held(std::move(value)) {}     // NOLINT(google-explicit-constructor)

  bool operator==(const Value&) const = default;
};

}  // namespace lumora
