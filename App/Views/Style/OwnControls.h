// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QSize>
#include <QStyleOptionButton>

namespace lumora {

// What Qt has no name for, and no desktop's own style draws.

/// What is drawn, and how far between off and on it is.
struct ControlOption : QStyleOptionButton {
  double on = 0;  ///< 0 off, 1 on; of what takes its time from one to the other.
};

void drawSwitch(QPainter& painter, const ControlOption& button);
void drawSegment(QPainter& painter, const ControlOption& button);
void drawDisclosure(QPainter& painter, const ControlOption& button);
void drawLink(QPainter& painter, const ControlOption& button);
void drawDecrease(QPainter& painter, const ControlOption& button);
void drawIncrease(QPainter& painter, const ControlOption& button);
/// What closes a window.
void drawClose(QPainter& painter, const ControlOption& button);
/// What segments lie in.
void drawWell(QPainter& painter, const ControlOption& area);
/// What the buttons that decrease and increase lie in.
void drawStepper(QPainter& painter, const ControlOption& area);

// With their text, where they have one.
QSize switchSize(const ControlOption& button);
QSize segmentSize(const ControlOption& button);
QSize disclosureSize(const ControlOption& button);
QSize linkSize(const ControlOption& button);
QSize stepSize(const ControlOption& button);
QSize stepperSize(const ControlOption& area);
QSize closeSize(const ControlOption& button);

}  // namespace lumora
