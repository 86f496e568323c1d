// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/FormSection.h"
#include "Views/SettingsContent.h"
#include "Views/SoundPicker.h"
#include "Views/Switch.h"
#include "Views/ViewsModule.h"

#include <functional>
#include <vector>

namespace lumora {

/// Makes controls that are bound to keys of the defaults store: each shows what is stored, and
/// writes when the user changes it and at no other time.
class StoredControls {
 public:
  /// Where controls go, the switch that must be on for them, and what they are for; null for none.
  struct Group {
    FormSection* section = nullptr;
    const char* enabledKey = nullptr;
    const char* title = nullptr;
  };
  struct Number {
    const char* before = "";
    const char* after = "";
    const char* key = "";
    StepRange range;
  };

  /// The host must outlive this.
  explicit StoredControls(ViewsHost& host);
  StoredControls(const StoredControls&) = delete;
  StoredControls& operator=(const StoredControls&) = delete;

  Switch* addSwitch(const Group& group, const char* label, const char* key);

  /// The label goes around the number as it stands.
  void addNumber(const Group& group, const Number& number);

  /// Plays a sound once when it is chosen.
  void addSound(const Group& group, const char* key);

  /// A time of day, stored as minutes after midnight.
  void addTime(const Group& group, const char* label, const char* key);

  /// Shows what is stored now.
  void update() const;

 private:
  QLabel* add(const Group& group, const QString& label, QWidget* control);

  ViewsHost& host_;
  DefaultsStore& store_;
  std::vector<std::function<void()>> updates_;
};

}  // namespace lumora
