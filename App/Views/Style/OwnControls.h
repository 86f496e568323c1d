// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QSize>
#include <QStyleOptionButton>

namespace lumora {

// What Qt has no name for, and no desktop's own style draws.

void drawSwitch(QPainter& painter, const QStyleOptionButton& button);
void drawSegment(QPainter& painter, const QStyleOptionButton& button);
void drawDisclosure(QPainter& painter, const QStyleOptionButton& button);
void drawLink(QPainter& painter, const QStyleOptionButton& button);
void drawDecrease(QPainter& painter, const QStyleOptionButton& button);
void drawIncrease(QPainter& painter, const QStyleOptionButton& button);
/// What segments lie in.
void drawWell(QPainter& painter, const QStyleOptionButton& area);
/// What the buttons that decrease and increase lie in.
void drawStepper(QPainter& painter, const QStyleOptionButton& area);

// With their text, where they have one.
QSize switchSize(const QStyleOptionButton& button);
QSize segmentSize(const QStyleOptionButton& button);
QSize disclosureSize(const QStyleOptionButton& button);
QSize linkSize(const QStyleOptionButton& button);
QSize stepSize(const QStyleOptionButton& button);
QSize stepperSize(const QStyleOptionButton& area);

}  // namespace lumora
