// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/SettingsContent.h"
#include "Preferences/AlertKind.h"
#include "Preferences/DefaultsStore.h"
#include "Views/Controls/Switch.h"
#include "Views/Settings/FormSection.h"
#include "Views/Settings/SoundPicker.h"
#include "Views/ViewsModule.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace lumora {

/// Makes controls that are bound to keys of the defaults store: each shows what is stored, and
/// writes when the user changes it and at no other time.
class StoredControls {
 public:
  /// Where controls go, the switch that must be on for them, and what they are for; null and empty
  /// for none.
  struct Group {
    FormSection* section = nullptr;
    const char* enabledKey = nullptr;
    QString title;
  };
  struct Number {
    std::function<std::string(std::int64_t)> label;
    const char* key = "";
    StepRange range;
  };

  /// The host must outlive this.
  explicit StoredControls(ViewsHost& host);
  StoredControls(const StoredControls&) = delete;
  StoredControls& operator=(const StoredControls&) = delete;

  Switch* addSwitch(const Group& group, const QString& label, const char* key);

  /// The label tells the number as it stands.
  void addNumber(const Group& group, const Number& number);

  /// Plays a sound once when it is chosen.
  void addSound(const Group& group, AlertKind kind);

  /// A time of day, stored as minutes after midnight.
  void addTime(const Group& group, const QString& label, const char* key);

  /// Shows what is stored now.
  void update() const;

 private:
  QLabel* add(const Group& group, const QString& label, QWidget* control);

  ViewsHost& host_;
  DefaultsStore& store_;
  std::vector<std::function<void()>> updates_;
};

}  // namespace lumora
