// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Stepper.h"

#include "Base/Texts.h"
#include "Views/Style/OwnControls.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <utility>

namespace lumora {
namespace {

constexpr std::int64_t kPage = 10;

}  // namespace

Stepper::Stepper(StepRange range, Changed changed, QWidget* parent)
    : QSlider(Qt::Horizontal, parent),
      range_(range),
      changed_(std::move(changed)),
      // TRANSLATORS: What a screen reader says of the buttons − and +.
      down_(makeButton(drawDecrease, translated("Decrease"), &Stepper::stepDown)),
      up_(makeButton(drawIncrease, translated("Increase"), &Stepper::stepUp)) {
  setRange(static_cast<int>(range.least), static_cast<int>(range.most));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // What a screen reader sets.
  connect(this, &QSlider::valueChanged, this, [this](int value) { changed_(value); });
}

QAbstractButton* Stepper::makeButton(Draw sign, const QString& name, void (Stepper::*step)()) {
  auto* button = new DrawnButton(sign, stepSize, this);
  button->setAccessibleName(name);
  button->setAutoRepeat(true);
  // The keys belong to the whole.
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QAbstractButton::clicked, this, step);
  return button;
}

void Stepper::show(std::int64_t value) {
  value_ = value;
  up_->setEnabled(range_.canStepUp(value));
  down_->setEnabled(range_.canStepDown(value));
  const QSignalBlocker quiet(this);
  // A slider keeps to its range by itself.
  setValue(static_cast<int>(range_.nearest(value)));
}

QSize Stepper::sizeHint() const { return sizeAs(stepperSize, *this); }

void Stepper::changeTo(std::int64_t value) {
  if (value != value_) changed_(value);
}

void Stepper::keyPressEvent(QKeyEvent* event) {
  const bool more = event->key() == (isRightToLeft() ? Qt::Key_Left : Qt::Key_Right);
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      return more ? stepUp() : stepDown();
    case Qt::Key_Up:
    case Qt::Key_Plus:
      return stepUp();
    case Qt::Key_Down:
    case Qt::Key_Minus:
      return stepDown();
    case Qt::Key_PageUp:
      return changeTo(range_.stepBy(value_, kPage));
    case Qt::Key_PageDown:
      return changeTo(range_.stepBy(value_, -kPage));
    case Qt::Key_Home:
      return changeTo(range_.least);
    case Qt::Key_End:
      return changeTo(range_.most);
    default:
      event->ignore();
  }
}

// The buttons take the clicks; a slider would move to the mouse, and with the wheel when the form
// is scrolled.
void Stepper::mousePressEvent(QMouseEvent* event) { event->ignore(); }
void Stepper::wheelEvent(QWheelEvent* event) { event->ignore(); }

void Stepper::resizeEvent(QResizeEvent* /*event*/) {
  const int half = width() / 2;
  const QRect left(0, 0, half, height());
  const QRect right(half, 0, width() - half, height());
  down_->setGeometry(isRightToLeft() ? right : left);
  up_->setGeometry(isRightToLeft() ? left : right);
}

void Stepper::paintEvent(QPaintEvent* /*event*/) { drawAs(drawStepper, *this); }

}  // namespace lumora
