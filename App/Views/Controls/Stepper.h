// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/SettingsContent.h"
#include "Views/Controls/DrawnButton.h"

#include <QSlider>
#include <cstdint>
#include <functional>

namespace lumora {

/// Two buttons that step a number down and up, also with the arrow keys; Page Up and Page Down step
/// by ten, Home and End go to the ends of the range. It is a slider to screen readers.
class Stepper : public QSlider {
 public:
  using Changed = std::function<void(std::int64_t)>;

  Stepper(StepRange range, Changed changed, QWidget* parent = nullptr);

  /// Shows a value, which may lie outside the range, and tells nobody.
  void show(std::int64_t value);

  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  QAbstractButton* makeButton(Draw sign, const QString& name, void (Stepper::*step)());
  void changeTo(std::int64_t value);
  void stepDown() { changeTo(range_.stepDown(value_)); }
  void stepUp() { changeTo(range_.stepUp(value_)); }

  StepRange range_;
  Changed changed_;
  std::int64_t value_ = 0;
  QAbstractButton* down_;
  QAbstractButton* up_;
};

}  // namespace lumora
