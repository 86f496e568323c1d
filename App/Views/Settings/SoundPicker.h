// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>
#include <functional>
#include <string>

namespace lumora {

/// The menu that chooses the sound of a reminder.
class SoundPicker : public QComboBox {
 public:
  using Picked = std::function<void(const std::string& sound)>;

  /// `picked` hears of each choice of the user that changes something, "default", "none" or a name.
  explicit SoundPicker(Picked picked, QWidget* parent = nullptr);

  /// Shows what is stored. A name that is not in the menu stands there without being chosen.
  void show(const std::string& sound);

 protected:
  /// The wheel is left to the form unless the picker has the focus.
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::string shown_;
};

}  // namespace lumora
