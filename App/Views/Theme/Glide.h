// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace lumora {

/// A number that a widget is drawn by, and that takes a moment to get to a new value: as long as
/// the style has animations last, and none where the widget is not seen or motion is not allowed.
class Glide {
 public:
  /// Starts at 0. The widget is drawn anew whenever the number changes.
  explicit Glide(QWidget& widget);

  double value() const { return value_; }
  /// Asked again for where it is going, it goes on.
  void moveTo(double goal);
  /// Is there at once.
  void set(double value);

  /// Whether anything may move, from the next change on. At first it may.
  static void allow(bool motion);

 private:
  QWidget& widget_;
  double value_ = 0;
  double goal_ = 0;
  QVariantAnimation way_;
};

}  // namespace lumora
