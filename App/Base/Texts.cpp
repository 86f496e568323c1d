// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/Texts.h"

#include <algorithm>
#include <clocale>

#include <langinfo.h>
#include <libintl.h>

namespace lumora {
namespace {

constexpr const char* kEncoding = "UTF-8";
// First strong isolate, and the end of an isolate.
constexpr std::string_view kIsolate = "\u2068";
constexpr std::string_view kEndOfIsolate = "\u2069";

/// Which of the values the text begins with a place for; none for what is no place.
const std::string_view* valueOfPlace(std::string_view text,
                                     std::initializer_list<std::string_view> values) {
  if (text.size() < 4 || text[0] != '%' || text.substr(2, 2) != "$s") return nullptr;
  const auto index = static_cast<std::size_t>(text[1] - '1');
  return text[1] >= '1' && index < values.size() ? values.begin() + index : nullptr;
}

/// Numbers need no isolate, and keep their percent sign only without one; what is itself made of
/// the language's words goes on in its direction.
bool hasLatinLetters(std::string_view value) {
  return std::any_of(value.begin(), value.end(), [](char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
  });
}

}  // namespace

void useCatalogues(const std::filesystem::path& folder) {
  bindtextdomain(kCatalogueName, folder.c_str());
  bind_textdomain_codeset(kCatalogueName, kEncoding);
  keepToUtf8();
}

void keepToUtf8() {
  const auto isUtf8 = [](nl_item item) { return std::string_view(nl_langinfo(item)) == kEncoding; };
  if (!isUtf8(_NL_TIME_CODESET)) std::setlocale(LC_TIME, "C");
  if (!isUtf8(_NL_NUMERIC_CODESET)) std::setlocale(LC_NUMERIC, "C");
}

const char* translated(const char* text) { return dgettext(kCatalogueName, text); }

const char* translatedIn(const char* context, const char* text) {
  // How catalogues key a text with a context.
  const std::string key = std::string(context) + '\004' + text;
  const char* found = dgettext(kCatalogueName, key.c_str());
  return found == key.c_str() ? text : found;
}

const char* translatedFor(std::int64_t count, const char* one, const char* many) {
  return dngettext(kCatalogueName, one, many, static_cast<unsigned long>(count));
}

std::string filled(std::string_view text, std::initializer_list<std::string_view> values) {
  const bool rightToLeft = isRightToLeft();
  std::string whole;
  while (!text.empty()) {
    if (const std::string_view* value = valueOfPlace(text, values)) {
      const bool isolated = rightToLeft && hasLatinLetters(*value);
      if (isolated) whole += kIsolate;
      whole += *value;
      if (isolated) whole += kEndOfIsolate;
      text.remove_prefix(4);
    } else {
      whole += text[0];
      text.remove_prefix(text.starts_with("%%") ? 2 : 1);
    }
  }
  return whole;
}

bool isRightToLeft() {
  // TRANSLATORS: Not shown. The direction in which the language is written: "rtl" for right to
  // left as Arabic is, else "ltr".
  return std::string_view(translatedIn("direction of the script", "ltr")) == "rtl";
}

}  // namespace lumora
