// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QComboBox>
#include <functional>
#include <string>

namespace lumora {

/// The menu that chooses the sound of a reminder. Return chooses an entry and leaves the menu open,
/// so that one can listen to the next; on the chosen entry it closes the menu, as a click does.
class SoundPicker : public QComboBox {
 public:
  using Picked = std::function<void(const std::string& sound)>;

  /// `picked` hears of each choice of the user that changes something, "default", "none" or a name.
  explicit SoundPicker(Picked picked, QWidget* parent = nullptr);

  /// Shows what is stored. A name that is not in the menu stands there without being chosen.
  void show(const std::string& sound);

  void showPopup() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// The wheel is left to the form unless the picker has the focus.
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::string shown_;
};

}  // namespace lumora
