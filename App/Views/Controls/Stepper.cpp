// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Stepper.h"

#include "Base/Texts.h"
#include "Views/Theme/Colors.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QToolButton>
#include <utility>

namespace lumora {
namespace {

constexpr double kRadius = 6;
constexpr std::int64_t kPage = 10;

}  // namespace

Stepper::Stepper(StepRange range, Changed changed, QWidget* parent)
    : QSlider(Qt::Horizontal, parent),
      range_(range),
      changed_(std::move(changed)),
      // TRANSLATORS: What a screen reader says of the buttons − and +.
      down_(makeButton(QStringLiteral("−"), translated("Decrease"), &Stepper::stepDown)),
      up_(makeButton("+", translated("Increase"), &Stepper::stepUp)) {
  setRange(static_cast<int>(range.least), static_cast<int>(range.most));
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // What a screen reader sets.
  connect(this, &QSlider::valueChanged, this, [this](int value) { changed_(value); });
}

QToolButton* Stepper::makeButton(const QString& sign, const QString& name,
                                 void (Stepper::*step)()) {
  auto* button = new QToolButton(this);
  button->setText(sign);
  button->setAccessibleName(name);
  button->setAutoRaise(true);
  button->setAutoRepeat(true);
  // The keys belong to the whole.
  button->setFocusPolicy(Qt::NoFocus);
  connect(button, &QToolButton::clicked, this, step);
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

QSize Stepper::sizeHint() const {
  const int height = fontMetrics().height() + 8;
  return {2 * (height + 6), height};
}

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

void Stepper::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fieldColor(palette()));
  painter.drawRoundedRect(rect(), kRadius, kRadius);
  painter.setPen(hairlineColor(palette()));
  painter.drawLine(QPointF(width() / 2.0, 5), QPointF(width() / 2.0, height() - 5.0));
  if (!hasFocus()) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(focusPen(palette()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
}

}  // namespace lumora
