// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/DrawnButton.h"

#include <QKeyEvent>

namespace lumora {
namespace {

ControlOption optionOf(const QWidget& widget) {
  ControlOption option;
  option.initFrom(&widget);
  const auto* button = qobject_cast<const QAbstractButton*>(&widget);
  if (button == nullptr) return option;
  option.text = button->text();
  option.state.setFlag(QStyle::State_On, button->isChecked());
  option.state.setFlag(QStyle::State_Sunken, button->isDown());
  return option;
}

}  // namespace

void drawAs(Draw draw, QWidget& widget, double on) {
  QPainter painter(&widget);
  ControlOption option = optionOf(widget);
  option.on = on;
  draw(painter, option);
}

QSize sizeAs(Measure measure, const QWidget& widget) { return measure(optionOf(widget)); }

DrawnButton::DrawnButton(Draw draw, Measure measure, QWidget* parent)
    : QAbstractButton(parent), draw_(draw), measure_(measure) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize DrawnButton::sizeHint() const { return sizeAs(measure_, *this); }

void DrawnButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

void DrawnButton::paintEvent(QPaintEvent* /*event*/) { drawAs(draw_, *this); }

}  // namespace lumora
