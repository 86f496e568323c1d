// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>
#include <QProxyStyle>
#include <QString>
#include <QStyleFactory>

namespace lumora {

/// Draws what Qt has a name for in one family with what only Lumora has, by the measures in
/// Theme/Tokens.h and the colours in Theme/Colors.h. What the views have not is drawn as Qt does.
class Style : public QProxyStyle {
 public:
  /// Owns the toolkit's own, on which it is built.
  explicit Style(QStyle* toolkits = QStyleFactory::create("fusion"));

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* answer) const override;
  void polish(QWidget* widget) override;
  void polish(QPalette& palette) override;

  using QProxyStyle::polish;

 private:
  QPalette firstPalette_;  // The toolkit's own when this was made.
};

/// Whether a desktop's own style of this name is good enough to be left alone.
bool isGood(const QString& style);

/// Has the whole of Qt drawn by the style, unless the desktop's own is good. Needs the
/// QApplication.
void installStyle();

}  // namespace lumora
