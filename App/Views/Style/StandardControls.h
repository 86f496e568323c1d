// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPainter>
#include <QRect>
#include <QStyle>
#include <QStyleOption>

namespace lumora {

// What Qt has a name for: how each is drawn, and where its parts are.

void drawButton(QPainter& painter, const QStyleOptionButton& button, const QWidget* widget);

void drawChoice(QPainter& painter, const QStyleOptionComboBox& box);
void drawChoiceText(QPainter& painter, const QStyleOptionComboBox& box);
QRect choiceTextArea(const QStyleOptionComboBox& box);

/// A field for a number or a time, with its steps beside each other.
void drawNumberField(QPainter& painter, const QStyleOptionSpinBox& field);
QRect numberFieldPart(const QStyleOptionSpinBox& field, QStyle::SubControl part);

/// Thin, without arrows and without a ground of its own.
void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar);
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);

/// An entry of a list or a menu.
void drawEntry(QPainter& painter, const QStyleOptionMenuItem& entry);

/// A list, a menu or a tip, square where the display knows no transparency.
void drawPopup(QPainter& painter, const QStyleOption& popup, const QColor& color,
               const QWidget* widget);

/// A line across.
void drawDivider(QPainter& painter, const QStyleOption& divider);

/// With a text of this size, where it has one.
QSize buttonSize(const QStyleOption& button, const QSize& text);
QSize choiceSize(const QStyleOption& box, const QSize& text);
QSize numberFieldSize(const QStyleOption& field, const QSize& text);
QSize entrySize(const QStyleOptionMenuItem& entry, const QSize& text);

}  // namespace lumora
