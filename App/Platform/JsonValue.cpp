// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/JsonValue.h"

#include <cmath>
#include <string_view>

namespace lumora {
namespace {

namespace json = simdjson::ondemand;

constexpr int kDeepest = 1000;

bool readArray(json::value value, int depth) {
  json::array elements;
  if (value.get_array().get(elements) != simdjson::SUCCESS) return false;
  for (auto element : elements) {
    json::value inner;
    if (element.get(inner) != simdjson::SUCCESS || !readJsonValue(inner, depth + 1)) return false;
  }
  return true;
}

bool readObject(json::value value, int depth) {
  json::object fields;
  if (value.get_object().get(fields) != simdjson::SUCCESS) return false;
  for (auto field : fields) {
    std::string_view key;
    json::value inner;
    if (field.unescaped_key().get(key) != simdjson::SUCCESS) return false;
    if (field.value().get(inner) != simdjson::SUCCESS) return false;
    if (!readJsonValue(inner, depth + 1)) return false;
  }
  return true;
}

std::optional<JsonValue> readNumber(json::value value) {
  std::int64_t integer = 0;
  if (value.get_int64().get(integer) == simdjson::SUCCESS) return integer;
  double number = 0;
  if (value.get_double().get(number) == simdjson::SUCCESS) return number;
  return std::nullopt;
}

/// The parser's own answer throws for what only begins like null.
bool isNull(json::value value) {
  std::string_view token = value.raw_json_token();
  token = token.substr(0, token.find_last_not_of(" \t\r\n") + 1);
  return token == "null";
}

}  // namespace

std::optional<JsonValue> readJsonValue(json::value value, int depth) {
  json::json_type type{};
  if (depth > kDeepest || value.type().get(type) != simdjson::SUCCESS) return std::nullopt;
  const std::optional<JsonValue> untyped{std::in_place};
  bool boolean = false;
  std::string_view text;
  switch (type) {
    case json::json_type::array:
      return readArray(value, depth) ? untyped : std::nullopt;
    case json::json_type::object:
      return readObject(value, depth) ? untyped : std::nullopt;
    case json::json_type::number:
      return readNumber(value);
    case json::json_type::string:
      if (value.get_string().get(text) != simdjson::SUCCESS) return std::nullopt;
      return std::string(text);
    case json::json_type::boolean:
      if (value.get_bool().get(boolean) != simdjson::SUCCESS) return std::nullopt;
      return boolean;
    case json::json_type::null:
      return isNull(value) ? untyped : std::nullopt;
    default:
      // Newer releases of the library have a name for what is none of these.
      return std::nullopt;
  }
}

std::optional<std::int64_t> asInteger(const JsonValue& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return *integer;
  constexpr double kTwoTo63 = 9223372036854775808.0;
  const auto* number = std::get_if<double>(&value);
  if (number == nullptr || *number != std::trunc(*number)) return std::nullopt;
  if (*number < -kTwoTo63 || *number >= kTwoTo63) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

}  // namespace lumora
