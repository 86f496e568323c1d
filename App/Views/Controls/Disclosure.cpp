// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Disclosure.h"

#include "Views/Controls/Keys.h"
#include "Views/Controls/Labels.h"
#include "Views/Theme/Colors.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

namespace lumora {
namespace {

// Room for the ring that marks the focus.
constexpr int kSideMargin = 4;
constexpr int kTopMargin = 3;
constexpr int kGap = 6;
constexpr double kRadius = 4;
// Of the font's height.
constexpr double kArrowShare = 0.55;

int arrowSide(const QFont& font) { return qRound(QFontMetrics(font).height() * kArrowShare); }

/// An angle that points to the side of the text, or down.
QPainterPath arrow(QPointF centre, double side, bool down, bool toLeft) {
  const double reach = side / 2;
  const double depth = side / 4;
  QPainterPath path;
  if (down) {
    path.moveTo(centre + QPointF(-reach, -depth));
    path.lineTo(centre + QPointF(0, depth));
    path.lineTo(centre + QPointF(reach, -depth));
  } else {
    const double tip = toLeft ? -depth : depth;
    path.moveTo(centre + QPointF(-tip, -reach));
    path.lineTo(centre + QPointF(tip, 0));
    path.lineTo(centre + QPointF(-tip, reach));
  }
  return path;
}

}  // namespace

Disclosure::Disclosure(TextRole role, const QString& title) {
  setText(title);
  setFontRole(this, role);
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Disclosure::sizeHint() const {
  const QFontMetrics metrics(font());
  return {arrowSide(font()) + kGap + metrics.horizontalAdvance(text()) + kSideMargin,
          metrics.height() + 2 * kTopMargin};
}

void Disclosure::keyPressEvent(QKeyEvent* event) {
  if (!pressForReturn(*this, *event)) QAbstractButton::keyPressEvent(event);
}

void Disclosure::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool rightToLeft = isRightToLeft();
  const int side = arrowSide(font());
  const double middle = rightToLeft ? width() - side / 2.0 : side / 2.0;
  painter.setPen(QPen(textColor(TextColor::secondary, palette()), 1.75, Qt::SolidLine, Qt::RoundCap,
                      Qt::RoundJoin));
  painter.drawPath(arrow({middle, height() / 2.0}, side * 0.8, isChecked(), rightToLeft));

  const int before = side + kGap;
  painter.setPen(textColor(TextColor::primary, palette()));
  painter.drawText(
      rightToLeft ? rect().adjusted(0, 0, -before, 0) : rect().adjusted(before, 0, 0, 0),
      Qt::AlignVCenter | Qt::AlignLeading, text());
  if (!hasFocus()) return;
  painter.setPen(focusPen(palette()));
  const QRectF title = rightToLeft ? rect().adjusted(0, 0, -before + kSideMargin, 0)
                                   : rect().adjusted(before - kSideMargin, 0, 0, 0);
  painter.drawRoundedRect(title.adjusted(1, 1, -1, -1), kRadius, kRadius);
}

}  // namespace lumora
