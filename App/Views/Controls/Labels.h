// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme/Colors.h"
#include "Views/Theme/Fonts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QString>
#include <QWidget>

namespace lumora {

/// Gives a widget the role's font.
void setFontRole(QWidget* widget, TextRole role);

/// Gives everything within that has a role the role's font again, after the desktop's changed.
void renewFonts(const QWidget* whole);

/// A plain text in the font of its role, primary at first. Its colour follows the desktop's.
class Label : public QLabel {
 public:
  explicit Label(TextRole role, const QString& text = {});

  /// Gives the text another colour than the primary one.
  void setColor(TextColor color);

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void applyColor();

  TextColor color_ = TextColor::primary;
};

/// A line of text.
Label* makeLabel(TextRole role, const QString& text = {});

/// A text that goes on in the next line where it does not fit.
Label* makeWrapping(TextRole role, const QString& text = {});

/// The width of the longest part of a text that no line break divides.
int longestWord(const QString& text, const QFont& font);

/// The font of a role, smaller where a word of the text would be wider than `width` pixels.
QFont fontThatFits(TextRole role, const QString& text, int width);

/// Has a row of two, the first of which wraps, go below each other where `width` pixels are not
/// enough for them side by side.
void layOutPair(QBoxLayout& row, const QLabel& first, QWidget& second, int width);

}  // namespace lumora
