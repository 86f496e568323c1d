// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/OwnControls.h"

#include "Views/Style/Shapes.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/Tokens.h"

namespace lumora {
namespace {

constexpr double kKnobInset = 2;
constexpr double kSwitchProportion = 1.75;
constexpr int kSegmentInset = 2;
constexpr int kDisclosureGap = 6;
constexpr int kTextsMargin = 3;       // above and below a text that is a button
constexpr double kArrowShare = 0.55;  // of the font's height

bool isRightToLeft(const QStyleOption& option) { return option.direction == Qt::RightToLeft; }

int arrowSide(const QStyleOption& option) {
  return qRound(option.fontMetrics.height() * kArrowShare);
}

void drawStepButton(QPainter& painter, const ControlOption& button, Step step) {
  const Painting painting(painter, button);
  drawStep(painter, button.rect, step, touchOf(button), button.palette);
}

}  // namespace

QSize switchSize(const ControlOption& button) {
  const int track = button.fontMetrics.height() + 4;
  return {qRound(track * kSwitchProportion) + 2 * kFocusRoom,
          std::max(kControlHeight, track + 2 * kFocusRoom)};
}

void drawSwitch(QPainter& painter, const ControlOption& button) {
  const Painting painting(painter, button);
  const QSizeF size(button.rect.width() - 2.0 * kFocusRoom, button.fontMetrics.height() + 4.0);
  QRectF track({}, size);
  track.moveCenter(QRectF(button.rect).center());
  const double radius = track.height() / 2;
  const QColor on = markColor(Tint::accent, button.palette);
  const QColor off = neutralMarkColor(button.palette);
  painter.setPen(Qt::NoPen);
  painter.setBrush(mixed(on, off, button.on));
  painter.drawRoundedRect(track, radius, radius);
  if (const Touch touch = touchOf(button); touch != Touch::none) {
    painter.setBrush(fieldColor(button.palette, touch));
    painter.drawRoundedRect(track, radius, radius);
  }

  const double side = track.height() - 2 * kKnobInset;
  const double way = track.width() - track.height();
  const double gone = way * (isRightToLeft(button) ? 1 - button.on : button.on);
  painter.setBrush(knobColor(button.on > 0.5 ? on : off));
  painter.drawEllipse(
      QRectF(track.left() + kKnobInset + gone, track.top() + kKnobInset, side, side));
  if (!showsFocus(button)) return;
  const QRectF ring = track.adjusted(-kFocusRoom, -kFocusRoom, kFocusRoom, kFocusRoom);
  drawRing(painter, ring, ring.height() / 2, focusColor(button.palette));
}

QSize segmentSize(const ControlOption& button) {
  return {button.fontMetrics.horizontalAdvance(button.text) + 2 * kControlPadding,
          controlHeight(button.fontMetrics)};
}

void drawSegment(QPainter& painter, const ControlOption& button) {
  const Painting painting(painter, button);
  const QRectF area =
      QRectF(button.rect).adjusted(kSegmentInset, kSegmentInset, -kSegmentInset, -kSegmentInset);
  const double radius = kControlRadius - kSegmentInset;
  if (button.state.testFlag(QStyle::State_On)) {
    drawPanel(painter, area, radius, raisedColor(button.palette), neutralMarkColor(button.palette));
  } else if (const Touch touch = touchOf(button); touch != Touch::none) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(wellColor(button.palette));
    painter.drawRoundedRect(area, radius, radius);
  }
  painter.setPen(primaryColor(button));
  painter.drawText(button.rect, Qt::AlignCenter, button.text);
  if (showsFocus(button)) drawRing(painter, area, radius, focusColor(button.palette));
}

void drawWell(QPainter& painter, const ControlOption& area) {
  const Painting painting(painter, area);
  drawGround(painter, area.rect, kControlRadius, wellColor(area.palette), area.palette);
}

QSize disclosureSize(const ControlOption& button) {
  return {arrowSide(button) + kDisclosureGap + button.fontMetrics.horizontalAdvance(button.text) +
              kFocusRoom,
          button.fontMetrics.height() + 2 * kTextsMargin};
}

void drawDisclosure(QPainter& painter, const ControlOption& button) {
  const Painting painting(painter, button);
  const bool rightToLeft = isRightToLeft(button);
  const QRect& area = button.rect;
  const int side = arrowSide(button);
  const double middle = rightToLeft ? area.width() - side / 2.0 : side / 2.0;
  const double closed = rightToLeft ? kPointsLeft : kPointsRight;
  const double degrees = closed + (kPointsDown - closed) * button.on;
  drawAngle(painter, {middle, area.height() / 2.0}, side * 0.8, degrees,
            touchOf(button) == Touch::none ? textColor(TextColor::secondary, button.palette)
                                           : primaryColor(button));

  const int before = side + kDisclosureGap;
  const QRect text = rightToLeft ? area.adjusted(0, 0, -before, 0) : area.adjusted(before, 0, 0, 0);
  painter.setPen(primaryColor(button));
  painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeading, button.text);
  if (!showsFocus(button)) return;
  drawRing(painter,
           rightToLeft ? text.adjusted(0, 0, kFocusRoom, 0) : text.adjusted(-kFocusRoom, 0, 0, 0),
           kInnerRadius, focusColor(button.palette));
}

QSize linkSize(const ControlOption& button) {
  return {button.fontMetrics.horizontalAdvance(button.text) + 2 * kFocusRoom,
          button.fontMetrics.height() + 2 * kTextsMargin};
}

void drawLink(QPainter& painter, const ControlOption& button) {
  const Painting painting(painter, button);
  QFont shown = painter.font();
  shown.setUnderline(touchOf(button) != Touch::none);
  painter.setFont(shown);
  painter.setPen(textColor(TextColor::link, button.palette));
  painter.drawText(button.rect, Qt::AlignCenter, button.text);
  if (showsFocus(button)) drawRing(painter, button.rect, kInnerRadius, focusColor(button.palette));
}

QSize stepSize(const ControlOption& button) {
  const int height = controlHeight(button.fontMetrics);
  return {height + 4, height};
}

QSize stepperSize(const ControlOption& area) {
  const QSize step = stepSize(area);
  return {2 * step.width(), step.height()};
}

void drawStepper(QPainter& painter, const ControlOption& area) {
  const Painting painting(painter, area);
  drawGround(painter, area.rect, kControlRadius, fieldColor(area.palette), area.palette);
  drawParting(painter, area.rect.center().x(), area.rect, area.palette);
  if (showsFocus(area)) drawRing(painter, area.rect, kControlRadius, focusColor(area.palette));
}

void drawDecrease(QPainter& painter, const ControlOption& button) {
  drawStepButton(painter, button, Step::less);
}

void drawIncrease(QPainter& painter, const ControlOption& button) {
  drawStepButton(painter, button, Step::more);
}

QSize closeSize(const ControlOption& /*button*/) {
  constexpr int kSide = 24;
  return {kSide, kSide};
}

void drawClose(QPainter& painter, const ControlOption& button) {
  const Painting painting(painter, button);
  painter.setPen(Qt::NoPen);
  painter.setBrush(fieldColor(button.palette, touchOf(button)));
  painter.drawEllipse(button.rect);
  constexpr double kCrossSide = 8;
  drawCross(painter, QRectF(button.rect).center(), kCrossSide, primaryColor(button));
}

}  // namespace lumora
