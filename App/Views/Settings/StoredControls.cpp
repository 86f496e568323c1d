// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Settings/StoredControls.h"

#include "Base/Texts.h"
#include "Views/Controls/Stepper.h"
#include "Views/Controls/TimeField.h"

#include <QLabel>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <utility>

namespace lumora {
namespace {

constexpr int kMinutesOfHour = 60;

}  // namespace

StoredControls::StoredControls(ViewsHost& host) : host_(host), store_(host.defaults()) {}

void StoredControls::update() const {
  for (const auto& update : updates_) update();
}

QLabel* StoredControls::add(const Group& group, const QString& text, QWidget* control) {
  QLabel* label = group.section->addRow(text, control);
  if (group.enabledKey != nullptr) {
    updates_.emplace_back([this, key = group.enabledKey, label, control] {
      label->setEnabled(store_.boolForKey(key));
      control->setEnabled(store_.boolForKey(key));
    });
  }
  return label;
}

Switch* StoredControls::addSwitch(const Group& group, const QString& label, const char* key) {
  auto* control = new Switch;
  add(group, label, control);
  QObject::connect(control, &Switch::clicked, control,
                   [this, key](bool on) { store_.set(key, on); });
  updates_.emplace_back([this, key, control] { control->setChecked(store_.boolForKey(key)); });
  return control;
}

void StoredControls::addNumber(const Group& group, const Number& number) {
  auto* control = new Stepper(
      number.range, [this, key = number.key](std::int64_t value) { store_.set(key, value); });
  QLabel* label = add(group, {}, control);
  updates_.emplace_back([this, number, label, control] {
    const std::int64_t value = store_.integerForKey(number.key);
    const QString text = QString::fromStdString(number.label(value));
    label->setText(text);
    control->setAccessibleName(text);
    control->show(value);
  });
}

void StoredControls::addSound(const Group& group, AlertKind kind) {
  const std::string_view key = soundKey(kind);
  auto* control = new SoundPicker([this, key](const std::string& sound) {
    store_.set(key, sound);
    if (sound != kDefaultSoundName && sound != kNoSoundName) {
      host_.soundPlayer().play(NamedSound{sound});
    }
  });
  add(group, translated("Sound"), control);
  // There are several; a screen reader says which.
  control->setAccessibleDescription(group.title);
  updates_.emplace_back([this, key, control] {
    control->show(store_.stringForKey(key).value_or(kDefaultSoundName));
  });
}

void StoredControls::addTime(const Group& group, const QString& label, const char* key) {
  auto* control = new TimeField;
  add(group, label, control);
  QObject::connect(control, &QTimeEdit::timeChanged, control, [this, key](QTime time) {
    store_.set(key, std::int64_t{time.hour()} * kMinutesOfHour + time.minute());
  });
  updates_.emplace_back([this, key, control] {
    const auto minutes = static_cast<int>(shownMinutes(store_.integerForKey(key), host_.now()));
    const QTime time(minutes / kMinutesOfHour, minutes % kMinutesOfHour);
    // While the user types, the half of a time is nobody else's.
    if (time == control->time()) return;
    const QSignalBlocker quiet(control);
    control->setTime(time);
  });
}

}  // namespace lumora
