// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Glide.h"

#include <QEasingCurve>
#include <QStyle>

namespace lumora {
namespace {

bool isAllowed = true;

int timeFor(const QWidget& widget) {
  if (!isAllowed || !widget.isVisible()) return 0;
  return widget.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &widget);
}

}  // namespace

Glide::Glide(QWidget& widget) : widget_(widget), way_(&widget) {
  way_.setEasingCurve(QEasingCurve::OutCubic);
  QObject::connect(&way_, &QVariantAnimation::valueChanged, &widget, [this](const QVariant& now) {
    value_ = now.toDouble();
    widget_.update();
  });
}

void Glide::allow(bool motion) { isAllowed = motion; }

void Glide::set(double value) {
  way_.stop();
  value_ = goal_ = value;
  widget_.update();
}

void Glide::moveTo(double goal) {
  if (goal == goal_) return;
  const int time = timeFor(widget_);
  if (time <= 0) return set(goal);
  goal_ = goal;
  way_.stop();
  way_.setStartValue(value_);
  way_.setEndValue(goal);
  way_.setDuration(time);
  way_.start();
}

}  // namespace lumora
