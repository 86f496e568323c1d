// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"

#include "Storage/JsonReader.h"

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

/// The shortest decimal that is read as `time` again.
char* appendTime(char* out, double time) {
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
    json::value value;
    const auto key = readJsonKey(field);
    if (!key) return false;
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
  json::parser parser;
  json::document document;
  json::array array;
  if (beginReading(text, parser, document) != simdjson::SUCCESS) return std::nullopt;
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
