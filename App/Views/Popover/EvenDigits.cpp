// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/EvenDigits.h"

#include "Base/NumberText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

namespace lumora {

EvenDigits::EvenDigits(const QFont& font)
    : font_(font), zero_(QString::fromStdString(numberText(0)).at(0)) {
  // It would move digits closer to each other.
  font_.setKerning(false);
  const QFontMetricsF metrics(font_);
  for (std::size_t digit = 0; digit < lacks_.size(); ++digit) {
    lacks_.at(digit) =
        metrics.horizontalAdvance(QChar(zero_.unicode() + static_cast<char16_t>(digit)));
  }
  const double widest = *std::max_element(lacks_.begin(), lacks_.end());
  for (double& lack : lacks_) lack = widest - lack;
}

bool EvenDigits::areEven() const {
  return std::all_of(lacks_.begin(), lacks_.end(), [](double lack) { return lack == 0; });
}

double EvenDigits::lackOf(QChar character) const {
  const int digit = character.unicode() - zero_.unicode();
  return digit < 0 || digit > 9 ? 0 : lacks_.at(static_cast<std::size_t>(digit));
}

/// What belongs before a line: nothing within it can be given room there.
double EvenDigits::before(const QString& text) const {
  return text.isEmpty() ? 0 : lackOf(text.front()) / 2;
}

/// Half of what a digit lacks goes before it, half behind.
void EvenDigits::layOut(QTextLayout& layout) const {
  const QString text = layout.text();
  QList<QTextLayout::FormatRange> formats;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const double next = i + 1 < text.size() ? lackOf(text[i + 1]) : 0;
    const double added = (lackOf(text[i]) + next) / 2;
    if (added <= 0) continue;
    QTextLayout::FormatRange format;
    format.start = static_cast<int>(i);
    format.length = 1;
    format.format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
    format.format.setFontLetterSpacing(added);
    formats.push_back(format);
  }
  layout.setFormats(formats);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
}

double EvenDigits::width(const QString& text) const {
  if (areEven()) return QFontMetricsF(font_).horizontalAdvance(text);
  QTextLayout layout(text, font_);
  layOut(layout);
  return before(text) + layout.lineAt(0).naturalTextWidth();
}

void EvenDigits::draw(QPainter& painter, const QRectF& rect, Qt::Alignment alignment,
                      const QString& text) const {
  const QFontMetricsF metrics(font_);
  const double left = alignment.testFlag(Qt::AlignRight) ? rect.right() - width(text) : rect.left();
  const double top = rect.center().y() - metrics.height() / 2;
  if (areEven()) {
    painter.setFont(font_);
    painter.drawText(QPointF(left, top + metrics.ascent()), text);
    return;
  }
  QTextLayout layout(text, font_);
  layOut(layout);
  layout.draw(&painter, {left + before(text), top});
}

}  // namespace lumora
