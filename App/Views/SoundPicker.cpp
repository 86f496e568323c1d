// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SoundPicker.h"

#include "Views/SettingsContent.h"

#include <utility>

namespace lumora {

SoundPicker::SoundPicker(Picked picked, QWidget* parent) : QComboBox(parent) {
  addItem("Default", kDefaultSoundName);
  addItem("None", kNoSoundName);
  insertSeparator(count());
  for (const char* name : kSoundNames) addItem(name, name);
  setMaxVisibleItems(count());
  connect(this, &QComboBox::activated, this, [this, picked = std::move(picked)](int index) {
    const std::string sound = itemData(index).toString().toStdString();
    if (sound != shown_) picked(sound);
  });
}

void SoundPicker::show(const std::string& sound) {
  shown_ = sound;
  const QString stored = QString::fromStdString(sound);
  setPlaceholderText(stored);
  setCurrentIndex(findData(stored));
}

}  // namespace lumora
