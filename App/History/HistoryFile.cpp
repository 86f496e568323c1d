// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"

#include "Platform/JsonValue.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <string_view>

namespace lumora {
namespace {

namespace json = simdjson::ondemand;

// 17 significant digits and an exponent fit with room to spare, as do 15 digits and a point.
constexpr std::size_t kLongestSample = 96;
// Between these, digits without an exponent are short, and what people expect to read.
constexpr double kLeastReadable = 1;
constexpr double kMostReadable = 1e15;

char* append(char* out, std::string_view text) { return text.copy(out, text.size()) + out; }

/// Whether `appendDecimal` knows the time: it lies between 1987 and 2242.
bool isUsual(double time) { return time >= 0x1p29 && time < 0x1p33; }

/// The shortest decimal that is read as `time` again, as std::to_chars has it, only sooner. Usual
/// times lie between 2^-23 and 2^-20 apart, so that at most one decimal of six places is read as
/// one of them, and always one of seven. All steps are exact.
char* appendDecimal(char* out, double time) {
  const auto whole = static_cast<std::uint64_t>(time);
  const double fraction = time - static_cast<double>(whole);
  const double apart = 0x1p-52 * static_cast<double>(std::bit_floor(whole));

  int places = 6;
  double parts = 1e6;
  const double off = std::abs(std::nearbyint(fraction * parts) - fraction * parts);
  if (2 * off >= apart * parts) {
    places = 7;
    parts = 1e7;
  }
  const auto digits = whole * static_cast<std::uint64_t>(parts) +
                      static_cast<std::uint64_t>(std::nearbyint(fraction * parts));
  char* last = std::to_chars(out, out + 20, digits).ptr;
  char* const point = last - places;
  std::copy_backward(point, last, last + 1);
  *point = '.';
  while (*last == '0') --last;
  return last == point ? point : last + 1;
}

char* appendTime(char* out, double time) {
  if (isUsual(time)) return appendDecimal(out, time);
  const double size = std::abs(time);
  const bool readable = size >= kLeastReadable && size < kMostReadable;
  const auto format = readable ? std::chars_format::fixed : std::chars_format::scientific;
  return std::to_chars(out, out + 32, time, format).ptr;
}

char* appendSample(char* out, const Sample& sample) {
  out = appendTime(append(out, R"({"t":)"), sample.t);
  out = append(out, R"(,"p":)");
  out = std::to_chars(out, out + 24, sample.p).ptr;
  out = append(out, sample.c ? R"(,"c":true)" : R"(,"c":false)");
  return append(out, sample.a ? R"(,"a":true})" : R"(,"a":false})");
}

bool readInteger(json::value value, std::int64_t& integer) {
  const auto number = readJsonValue(value);
  const auto whole = number ? asInteger(*number) : std::nullopt;
  integer = whole.value_or(0);
  return whole.has_value();
}

bool readSample(json::object object, Sample& sample) {
  enum Key : unsigned { t = 1, p = 2, c = 4, a = 8, all = 15 };
  unsigned seen = 0;
  for (auto field : object) {
    std::string_view key;
    json::value value;
    if (field.unescaped_key().get(key) != simdjson::SUCCESS) return false;
    if (field.value().get(value) != simdjson::SUCCESS) return false;
    if (key == "t") {
      if (value.get_double().get(sample.t) != simdjson::SUCCESS) return false;
      seen |= Key::t;
    } else if (key == "p") {
      if (!readInteger(value, sample.p)) return false;
      seen |= Key::p;
    } else if (key == "c") {
      if (value.get_bool().get(sample.c) != simdjson::SUCCESS) return false;
      seen |= Key::c;
    } else if (key == "a") {
      if (value.get_bool().get(sample.a) != simdjson::SUCCESS) return false;
      seen |= Key::a;
    } else if (!readJsonValue(value)) {
      return false;
    }
  }
  return seen == Key::all;
}

}  // namespace

std::optional<std::string> encodeSamples(std::span<const Sample> samples) {
  std::string text = "[";
  text.reserve(samples.size() * 56 + 2);
  char buffer[kLongestSample];
  for (const Sample& sample : samples) {
    if (!std::isfinite(sample.t)) return std::nullopt;
    if (text.size() > 1) text += ',';
    text.append(buffer, appendSample(buffer, sample));
  }
  text += ']';
  return text;
}

std::optional<std::vector<Sample>> decodeSamples(std::string& text) {
  text.reserve(text.size() + simdjson::SIMDJSON_PADDING);
  json::parser parser;
  json::document document;
  json::array array;
  if (parser.iterate(text).get(document) != simdjson::SUCCESS) return std::nullopt;
  if (document.get_array().get(array) != simdjson::SUCCESS) return std::nullopt;

  std::vector<Sample> samples;
  for (auto element : array) {
    json::object object;
    Sample sample;
    if (element.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;
    if (!readSample(object, sample)) return std::nullopt;
    samples.push_back(sample);
  }
  // Nothing may follow the array: past the last token there is no location.
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) return std::nullopt;
  return samples;
}

}  // namespace lumora
