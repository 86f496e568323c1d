// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Storage/JsonValue.h"

#include <optional>
#include <string>
#include <string_view>

#include <simdjson.h>

namespace lumora {

/// Reads a value whole. The parser checks only what is read, so this is also how to check one that
/// nobody needs. Absent when the text is no JSON there or nests deeper than a thousand levels. A
/// number beyond what a double can hold is `std::monostate`, and so is a text with half a surrogate
/// pair, which JSON allows and UTF-8 does not.
///
/// Only units that parse include this: they alone need the parser's library.
std::optional<JsonValue> readJsonValue(simdjson::ondemand::value value, int depth = 0);

/// A field of an object as it is iterated over.
using JsonField = simdjson::simdjson_result<simdjson::ondemand::field>;

/// The key of a field as it is written, with its quotes; empty where there is none. Like the next,
/// it is valid for as long as the parser and the text are.
std::string_view writtenJsonKey(JsonField& field);

/// What stands between the quotes of a key whose text cannot be had; absent when it is no JSON.
std::optional<std::string_view> unreadableJsonKey(simdjson::ondemand::raw_json_string key);

/// Reads the key of a field; one with half a surrogate pair is read as it is written. Absent when
/// it is no JSON. A history has hundreds of thousands: hence inline.
inline std::optional<std::string_view> readJsonKey(JsonField& field) {
  simdjson::ondemand::raw_json_string written;
  if (field.key().get(written) != simdjson::SUCCESS) return std::nullopt;
  std::string_view key;
  if (field.unescaped_key().get(key) == simdjson::SUCCESS) return key;
  return unreadableJsonKey(written);
}

/// Begins to read a text of JSON, which the parser keeps for as long as it reads; a byte-order mark
/// before it is taken away. Throws `std::bad_alloc` where there is too little memory for it.
simdjson::error_code beginReading(std::string& text, simdjson::ondemand::parser& parser,
                                  simdjson::ondemand::document& document);

}  // namespace lumora
