// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/DefaultsStore.h"

#include "Storage/JsonReader.h"

#include <array>
#include <charconv>
#include <utility>
#include <variant>
#include <vector>

namespace lumora {
namespace {

// Far above any real file of settings: what is larger was not meant for us.
constexpr std::size_t kLargestFile = 1 << 20;

std::string jsonString(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string json = "\"";
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    if (code < 0x20) {
      json += "\\u00";
      json += kHex[code >> 4U];
      json += kHex[code & 0xFU];
      continue;
    }
    if (character == '"' || character == '\\') json += '\\';
    json += character;
  }
  return json += '"';
}

std::string jsonField(std::string_view writtenKey, std::string_view json) {
  return std::string(writtenKey).append(": ").append(json);
}

struct JsonText {
  std::string operator()(std::monostate /*value*/) const { return "null"; }
  std::string operator()(bool value) const { return value ? "true" : "false"; }
  std::string operator()(std::int64_t value) const { return std::to_string(value); }
  /// Absent from JSON are only the numbers that are none: no caller stores them.
  std::string operator()(double value) const {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
  }
  std::string operator()(const std::string& value) const { return jsonString(value); }
};

std::optional<bool> asBool(const DefaultsStore::Value& value) {
  const auto* held = std::get_if<bool>(&value);
  return held == nullptr ? std::nullopt : std::optional(*held);
}

std::optional<double> asDouble(const DefaultsStore::Value& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return double(*integer);
  const auto* number = std::get_if<double>(&value);
  return number == nullptr ? std::nullopt : std::optional(*number);
}

std::optional<std::string> asText(const DefaultsStore::Value& value) {
  const auto* text = std::get_if<std::string>(&value);
  return text == nullptr ? std::nullopt : std::optional(*text);
}

}  // namespace

DefaultsStore::DefaultsStore(Files& files, const std::filesystem::path& path) : file_(files, path) {
  files.createFolders(path.parent_path());
  entries_ = file_.load(decode).value_or(Entries{});
}

void DefaultsStore::registerDefaults(const Values& values) {
  for (const auto& [key, value] : values) registered_.insert_or_assign(key, value);
}

void DefaultsStore::synchronize() {
  const bool changed = file_.isWorthLoading() && reload();
  if (!file_.isWriting()) writeUnsaved();
  if (changed) didChange_.announce();
}

void DefaultsStore::save() {
  if (unsaved_.empty() || file_.isWriting()) return;
  if (file_.changedElsewhere()) reload();
  writeUnsaved();
}

template <typename T>
std::optional<T> DefaultsStore::read(std::string_view key,
                                     std::optional<T> (*as)(const Value&)) const {
  const auto entry = entries_.find(key);
  if (entry != entries_.end()) {
    if (auto value = as(entry->second.value)) return value;
  }
  const auto registered = registered_.find(key);
  return registered == registered_.end() ? std::nullopt : as(registered->second);
}

bool DefaultsStore::boolForKey(std::string_view key) const {
  return read(key, asBool).value_or(false);
}

std::int64_t DefaultsStore::integerForKey(std::string_view key) const {
  return read(key, asInteger).value_or(0);
}

std::optional<std::string> DefaultsStore::stringForKey(std::string_view key) const {
  return read(key, asText);
}

double DefaultsStore::doubleForKey(std::string_view key) const {
  return read(key, asDouble).value_or(0);
}

void DefaultsStore::set(std::string_view key, const Value& value) {
  if (file_.changedElsewhere()) reload();
  const Entry entry{jsonField(jsonString(key), std::visit(JsonText{}, value)), value};
  entries_.insert_or_assign(std::string(key), entry);
  unsaved_.insert_or_assign(std::string(key), entry);
  writeUnsaved();
  didChange_.announce();
}

Subscription DefaultsStore::subscribe(std::function<void()> didChange) {
  return didChange_.subscribe(std::move(didChange));
}

/// False where it cannot be told what the file holds: then what was known before still holds.
bool DefaultsStore::reload() {
  auto loaded = file_.load(decode);
  // A file that is gone means that nothing is set any more; a slip of the hand in it does not.
  if (!loaded && file_.state() != PersistedFile::State::missing) return false;
  entries_ = unsaved_;
  if (loaded) entries_.merge(*loaded);
  return true;
}

void DefaultsStore::writeUnsaved() {
  if (!unsaved_.empty()) file_.replace(encode(entries_), [this] { unsaved_.clear(); });
}

std::optional<DefaultsStore::Entries> DefaultsStore::decode(std::string& json) {
  if (json.size() > kLargestFile) return std::nullopt;
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  simdjson::ondemand::object object;
  if (beginReading(json, parser, document) != simdjson::SUCCESS) return std::nullopt;

  // Once through to read and check the values, and once for each as it stands there.
  std::vector<std::pair<std::string, Entry>> read;
  if (document.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;
  for (auto field : object) {
    simdjson::ondemand::value element;
    const auto key = readJsonKey(field);
    if (!key) return std::nullopt;
    std::string ownKey(*key);
    if (field.value().get(element) != simdjson::SUCCESS) return std::nullopt;
    auto value = readJsonValue(element);
    if (!value) return std::nullopt;
    read.emplace_back(std::move(ownKey), Entry{{}, std::move(*value)});
  }
  // Nothing may follow the object: past the last token there is no location.
  if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) return std::nullopt;

  document.rewind();
  if (document.get_object().get(object) != simdjson::SUCCESS) return std::nullopt;
  auto entry = read.begin();
  for (auto field : object) {
    const std::string_view key = writtenJsonKey(field);
    std::string_view text;
    if (simdjson::to_json_string(field.value()).get(text) != simdjson::SUCCESS) return std::nullopt;
    entry->second.json = jsonField(key, text);
    ++entry;
  }
  Entries entries;
  for (auto& [key, whole] : read) entries.insert_or_assign(std::move(key), std::move(whole));
  return entries;
}

std::string DefaultsStore::encode(const Entries& entries) {
  std::string json = "{";
  for (const auto& [key, entry] : entries) {
    json += json.size() > 1 ? ",\n  " : "\n  ";
    json += entry.json;
  }
  return json += "\n}\n";
}

}  // namespace lumora
