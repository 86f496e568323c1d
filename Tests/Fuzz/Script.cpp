// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Script.h"

#include <algorithm>
#include <charconv>

namespace lumora::test {
namespace {

constexpr std::size_t kMostSections = 32;
constexpr std::int64_t kMostElements = 16;
// D-Bus allows more, but only sixty-four in all together with what is around.
constexpr int kDeepest = 8;
constexpr std::size_t kLongestType = 32;

template <typename T>
T numberFrom(std::string_view word) {
  T number{};
  std::from_chars(word.data(), word.data() + word.size(), number);
  return number;
}

/// As D-Bus carries text: valid, and without a null.
Glib::ustring textFrom(std::string_view bytes) {
  return Glib::ustring(std::string(bytes.substr(0, bytes.find('\0')))).make_valid();
}

/// One complete type, of those alone that D-Bus carries without more.
bool isType(const std::string& text) {
  if (text.size() > kLongestType || text.find_first_of("mhr*?@&") != std::string::npos) {
    return false;
  }
  for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
    if (at == 0 || text[at - 1] != 'a') return false;
  }
  return g_variant_type_string_is_valid(text.c_str()) != FALSE;
}

GVariant* build(const GVariantType* type, Words& words, int depth);

GVariant* buildVariant(Words& words, int depth) {
  std::string type(words.next());
  if (depth >= kDeepest || !isType(type)) type = "s";
  return build(G_VARIANT_TYPE(type.c_str()), words, depth + 1);
}

GVariant* buildContainer(const GVariantType* type, Words& words, int depth) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, type);
  if (g_variant_type_is_array(type) != FALSE) {
    const auto count = std::clamp<std::int64_t>(words.integer(), 0, kMostElements);
    for (std::int64_t element = 0; element < count; ++element) {
      g_variant_builder_add_value(&builder, build(g_variant_type_element(type), words, depth));
    }
  } else {
    for (const auto* item = g_variant_type_first(type); item != nullptr;
         item = g_variant_type_next(item)) {
      g_variant_builder_add_value(&builder, build(item, words, depth));
    }
  }
  return g_variant_builder_end(&builder);
}

/// A floating reference.
GVariant* build(const GVariantType* type, Words& words, int depth) {
  switch (*g_variant_type_peek_string(type)) {
    case 'b':
      return g_variant_new_boolean(words.next() == "true");
    case 'y':
      return g_variant_new_byte(static_cast<guchar>(words.integer()));
    case 'n':
      return g_variant_new_int16(static_cast<gint16>(words.integer()));
    case 'q':
      return g_variant_new_uint16(static_cast<guint16>(words.integer()));
    case 'i':
      return g_variant_new_int32(static_cast<gint32>(words.integer()));
    case 'u':
      return g_variant_new_uint32(static_cast<guint32>(words.integer()));
    case 'x':
      return g_variant_new_int64(words.integer());
    case 't':
      return g_variant_new_uint64(static_cast<guint64>(words.integer()));
    case 'd':
      return g_variant_new_double(numberFrom<double>(words.next()));
    case 'o': {
      const auto path = words.text();
      return g_variant_new_object_path(g_variant_is_object_path(path.c_str()) ? path.c_str() : "/");
    }
    case 'g': {
      const std::string signature(words.next());
      return g_variant_new_signature(isType(signature) ? signature.c_str() : "");
    }
    case 'v':
      return g_variant_new_variant(buildVariant(words, depth));
    case 'a':
    case '(':
    case '{':
      return buildContainer(type, words, depth);
    default:
      return g_variant_new_string(words.text().c_str());
  }
}

}  // namespace

std::string_view Pieces::next() {
  if (!rest_) return {};
  const auto end = rest_->find(separator_);
  const auto piece = rest_->substr(0, end);
  if (end == std::string_view::npos) {
    rest_.reset();
  } else {
    rest_->remove_prefix(end + 1);
  }
  return piece;
}

Glib::ustring Words::text() { return textFrom(next()); }

std::int64_t Words::integer() { return numberFrom<std::int64_t>(next()); }

Glib::VariantBase variantFrom(Words& words) {
  return Glib::wrap(g_variant_ref_sink(buildVariant(words, 0)));
}

Glib::VariantContainerBase argumentsFrom(Words& words) {
  const auto value = variantFrom(words);
  if (value.get_type_string().front() != '(') {
    return Glib::VariantContainerBase::create_tuple({value});
  }
  return Glib::VariantBase::cast_dynamic<Glib::VariantContainerBase>(value);
}

Value valueFrom(const Glib::VariantBase& variant) {
  switch (variant.get_type_string().front()) {
    case 'b':
      return valueOr<bool>(variant);
    case 'd':
      return valueOr<double>(variant);
    case 'x':
      return std::int64_t{valueOr<gint64>(variant)};
    case 'i':
      return std::int64_t{valueOr<std::int32_t>(variant)};
    default:
      break;
  }
  if (!variant.is_of_type(Glib::Variant<Properties>::variant_type())) {
    return valueOr<Glib::ustring>(variant, variant.print()).raw();
  }
  Dictionary dictionary;
  for (const auto& [key, value] : valueOr<Properties>(variant)) {
    dictionary.emplace(key.raw(), valueFrom(value));
  }
  return dictionary;
}

std::vector<Section> sectionsFrom(std::string_view script) {
  std::vector<Section> sections(1);
  for (Pieces lines(script, '\n'); !lines.empty();) {
    const auto line = lines.next();
    if (line.starts_with('[')) {
      if (sections.size() == kMostSections) break;
      sections.push_back({.name = std::string(line), .values = {}});
      continue;
    }
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    Words words(line.substr(equals + 1));
    sections.back().values.insert_or_assign(textFrom(line.substr(0, equals)).raw(),
                                            variantFrom(words));
  }
  return sections;
}

}  // namespace lumora::test
