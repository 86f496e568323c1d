// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <QFont>
#include <QString>
#include <array>

class QPainter;
class QRectF;
class QTextLayout;

namespace lumora {

/// Lines of text in which all digits are as wide as the widest of them, so that numbers stand below
/// each other digit by digit. Many fonts have such digits only as a feature that not every Qt can
/// turn on, and some have none: they are measured, and given room.
class EvenDigits {
 public:
  /// The digits are the locale's.
  explicit EvenDigits(const QFont& font);

  const QFont& font() const { return font_; }

  /// How wide a line is, in pixels.
  double width(const QString& text) const;

  /// Draws a line in the painter's pen, in the middle of the rectangle's height and at its left or
  /// right edge, whichever the absolute alignment says.
  void draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment,
            const QString& text) const;

 private:
  bool areEven() const;
  double lackOf(QChar character) const;
  double before(const QString& text) const;
  void layOut(QTextLayout& layout) const;

  QFont font_;
  QChar zero_;
  std::array<double, 10> lacks_{};  // Pixels to the widest.
};

}  // namespace lumora
