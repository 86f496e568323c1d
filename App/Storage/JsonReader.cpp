// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Storage/JsonReader.h"

#include <cstdint>
#include <new>
#include <string>
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
    json::value inner;
    if (!readJsonKey(field)) return false;
    if (field.value().get(inner) != simdjson::SUCCESS) return false;
    if (!readJsonValue(inner, depth + 1)) return false;
  }
  return true;
}

std::string_view trimmedToken(json::value value) {
  const std::string_view token = value.raw_json_token();
  return token.substr(0, token.find_last_not_of(" \t\r\n") + 1);
}

/// Whether this is a number as JSON writes them, of any size: digits with a point and an exponent.
bool isNumber(std::string_view text) {
  const auto skip = [&text](std::string_view any) {
    const bool there = !text.empty() && any.find(text.front()) != std::string_view::npos;
    if (there) text.remove_prefix(1);
    return there;
  };
  const auto skipDigits = [&] {
    bool some = false;
    while (skip("0123456789")) some = true;
    return some;
  };
  skip("-");
  if (!skip("0") && !skipDigits()) return false;
  if (skip(".") && !skipDigits()) return false;
  if (skip("eE")) {
    skip("+-");
    if (!skipDigits()) return false;
  }
  return text.empty();
}

/// Whether what stands between quotes is JSON: its escapes are. All else the parser has checked.
bool isText(std::string_view written) {
  constexpr std::string_view kHex = "0123456789abcdefABCDEF";
  constexpr std::size_t kHexDigits = 4;
  for (auto escape = written.find('\\'); escape != written.npos; escape = written.find('\\')) {
    written.remove_prefix(escape + 1);
    if (written.empty() || std::string_view("\"\\/bfnrtu").find(written[0]) == written.npos) {
      return false;
    }
    const bool isCode = written[0] == 'u';
    written.remove_prefix(1);
    if (!isCode) continue;
    const auto digits = written.substr(0, kHexDigits);
    if (digits.size() < kHexDigits || digits.find_first_not_of(kHex) != digits.npos) return false;
  }
  return true;
}

std::string_view withoutQuotes(std::string_view written) {
  return written.substr(1, written.size() - 2);
}

/// With its quotes. The parser has seen that it ends.
std::string_view written(json::raw_json_string text) {
  const char* end = text.raw();
  while (*end != '"') end += *end == '\\' ? 2 : 1;
  return {text.raw() - 1, end + 1};
}

std::optional<JsonValue> readString(json::value value) {
  const std::string_view token = trimmedToken(value);
  std::string_view text;
  if (value.get_string().get(text) == simdjson::SUCCESS) return std::string(text);
  if (isText(withoutQuotes(token))) return std::optional<JsonValue>{std::in_place};
  return std::nullopt;
}

std::optional<JsonValue> readNumber(json::value value) {
  std::int64_t integer = 0;
  if (value.get_int64().get(integer) == simdjson::SUCCESS) return integer;
  double number = 0;
  if (value.get_double().get(number) == simdjson::SUCCESS) return number;
  if (isNumber(trimmedToken(value))) return std::optional<JsonValue>{std::in_place};
  return std::nullopt;
}

/// The parser's own answer throws for what only begins like null.
bool isNull(json::value value) { return trimmedToken(value) == "null"; }

}  // namespace

std::optional<JsonValue> readJsonValue(json::value value, int depth) {
  json::json_type type{};
  if (depth > kDeepest || value.type().get(type) != simdjson::SUCCESS) return std::nullopt;
  const std::optional<JsonValue> untyped{std::in_place};
  bool boolean = false;
  switch (type) {
    case json::json_type::array:
      return readArray(value, depth) ? untyped : std::nullopt;
    case json::json_type::object:
      return readObject(value, depth) ? untyped : std::nullopt;
    case json::json_type::number:
      return readNumber(value);
    case json::json_type::string:
      return readString(value);
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

std::string_view writtenJsonKey(JsonField& field) {
  json::raw_json_string key;
  return field.key().get(key) == simdjson::SUCCESS ? written(key) : std::string_view();
}

std::optional<std::string_view> unreadableJsonKey(json::raw_json_string key) {
  const std::string_view text = withoutQuotes(written(key));
  return isText(text) ? std::optional(text) : std::nullopt;
}

simdjson::error_code beginReading(std::string& text, json::parser& parser,
                                  json::document& document) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
  const auto error = parser.iterate(text).get(document);
  // Nothing is wrong with the text.
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  return error;
}

}  // namespace lumora
