// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Observable.h"
#include "Storage/JsonValue.h"
#include "Storage/PersistedFile.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

/// The user's settings on disk: one JSON object in a file that other programs may edit too. Keys
/// that are not ours survive our writes. A key the user never set, or one that holds a value of
/// another type than asked for, is answered from the registered values.
class DefaultsStore {
 public:
  using Value = JsonValue;
  using Values = std::map<std::string, Value, std::less<>>;

  /// `files` must outlive the store. A file that is missing or cannot be decoded counts as empty;
  /// one that the system fails to read does until it can be read.
  DefaultsStore(Files& files, const std::filesystem::path& path);

  /// Adds to the values that answer for keys the user never set. Nothing is written.
  void registerDefaults(const Values& values);

  /// Reads the file again if another program changed it, and writes what could not be written.
  /// While the file cannot be decoded, what was known before still holds.
  void synchronize();

  /// Writes what could not be written, if there is any; at the end of the program.
  void save();

  /// False where nothing answers.
  bool boolForKey(std::string_view key) const;

  /// 0 where nothing answers. A number without a fraction is an integer, however it is written.
  std::int64_t integerForKey(std::string_view key) const;

  /// Absent where nothing answers.
  std::optional<std::string> stringForKey(std::string_view key) const;

  /// 0 where nothing answers.
  double doubleForKey(std::string_view key) const;

  /// Stores the value and writes the file; when that fails the value holds, and the next
  /// `synchronize` tries again.
  void set(std::string_view key, const Value& value);

  /// `didChange` runs after each change: our own, or another program's when it comes to light.
  [[nodiscard]] Subscription subscribe(std::function<void()> didChange);

 private:
  struct Entry {
    std::string json;  // Key and value as they stand in the file.
    Value value;
  };
  using Entries = std::map<std::string, Entry, std::less<>>;

  static std::optional<Entries> decode(std::string& json);
  static std::string encode(const Entries& entries);

  bool reload();
  void writeUnsaved();
  template <typename T>
  std::optional<T> read(std::string_view key, std::optional<T> (*as)(const Value&)) const;

  PersistedFile file_;
  Entries entries_;
  // Set since the last write that succeeded.
  Entries unsaved_;
  Values registered_;
  Announcement didChange_;
};

}  // namespace lumora
