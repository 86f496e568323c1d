// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/LinkButton.h"

#include "Views/Controls/Keys.h"
#include "Views/Controls/Labels.h"
#include "Views/Theme/Colors.h"

#include <QPainter>

namespace lumora {
namespace {

// Room for the ring that marks the focus.
constexpr int kSideMargin = 4;
constexpr int kTopMargin = 2;
constexpr double kRadius = 4;

}  // namespace

LinkButton::LinkButton(TextRole role, const QString& text) {
  setText(text);
  setFontRole(this, role);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.horizontalAdvance(text()) + 2 * kSideMargin, metrics.height() + 2 * kTopMargin};
}

void LinkButton::enterEvent(QEnterEvent* event) {
  update();
  QAbstractButton::enterEvent(event);
}

void LinkButton::leaveEvent(QEvent* event) {
  update();
  QAbstractButton::leaveEvent(event);
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
  if (!pressForReturn(*this, *event)) QAbstractButton::keyPressEvent(event);
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QFont shown = font();
  shown.setUnderline(underMouse());
  painter.setFont(shown);
  painter.setPen(textColor(TextColor::link, palette()));
  painter.drawText(rect(), Qt::AlignCenter, text());
  if (!hasFocus()) return;
  painter.setPen(focusPen(palette()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRadius, kRadius);
}

}  // namespace lumora
