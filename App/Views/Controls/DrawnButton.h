// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Style/OwnControls.h"

#include <QAbstractButton>
#include <QPainter>
#include <QSize>

namespace lumora {

// Widgets that are drawn as Style/OwnControls.h has it, whatever style the others have.

using Draw = void (*)(QPainter& painter, const ControlOption& option);
using Measure = QSize (*)(const ControlOption& option);

/// For what `on` is, see `ControlOption`.
void drawAs(Draw draw, QWidget& widget, double on = 0);
QSize sizeAs(Measure measure, const QWidget& widget);

/// A button that is drawn so. Return and Enter press it, too, which Qt leaves to the desktop.
class DrawnButton : public QAbstractButton {
 public:
  DrawnButton(Draw draw, Measure measure, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Draw draw_;
  Measure measure_;
};

}  // namespace lumora
