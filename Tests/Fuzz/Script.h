// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Value.h"
#include "Linux/Bus/Variants.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::test {

/// Cuts a text at a character, piece by piece.
class Pieces {
 public:
  Pieces(std::string_view text, char separator) : rest_(text), separator_(separator) {}

  bool empty() const { return !rest_.has_value(); }

  /// Empty once there is none left.
  std::string_view next();

 private:
  std::optional<std::string_view> rest_;
  char separator_;
};

/// The words of a line, each followed by one blank: two blanks have an empty word between them.
class Words : public Pieces {
 public:
  explicit Words(std::string_view line) : Pieces(line, ' ') {}

  /// The next word, as text that D-Bus can carry.
  Glib::ustring text();

  /// The next word as a number; 0 where it is none.
  std::int64_t integer();
};

/// Reads a value of any type that D-Bus knows: first the type, then the words of the value, where
/// an array begins with how many elements it has. "d 51.5", "as 2 body actions",
/// "a{sv} 1 Watts i 65". What is missing or of no use is 0, empty or false, so there is always a
/// value; without a type that there is, a text.
Glib::VariantBase variantFrom(Words& words);

/// The same as the arguments of a message.
Glib::VariantContainerBase argumentsFrom(Words& words);

/// As the core has values; a type that it has no value for is a text.
Value valueFrom(const Glib::VariantBase& variant);

/// A part of a script: a line "[name]" and the lines "key=value" below.
struct Section {
  std::string name;
  std::map<std::string, Glib::VariantBase> values;
};

/// At most 32 of them. Lines above the first name belong to a section without one.
std::vector<Section> sectionsFrom(std::string_view script);

}  // namespace lumora::test
