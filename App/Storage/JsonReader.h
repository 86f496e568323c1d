// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Storage/JsonValue.h"

#include <optional>
#include <string>

#include <simdjson.h>

namespace lumora {

/// Reads a value whole. The parser checks only what is read, so this is also how to check one that
/// nobody needs. Absent when the text is no JSON there or nests deeper than a thousand levels. A
/// number beyond what a double can hold is `std::monostate`.
///
/// Only units that parse include this: they alone need the parser's library.
std::optional<JsonValue> readJsonValue(simdjson::ondemand::value value, int depth = 0);

/// Begins to read a text of JSON, which the parser keeps for as long as it reads; a byte-order mark
/// before it is taken away. Throws `std::bad_alloc` where there is too little memory for it.
simdjson::error_code beginReading(std::string& text, simdjson::ondemand::parser& parser,
                                  simdjson::ondemand::document& document);

}  // namespace lumora
