// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Labels.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QStaticText>
#include <QStyle>
#include <QTextLayout>
#include <QTextOption>
#include <QVariant>
#include <algorithm>
#include <limits>

namespace lumora {
namespace {

constexpr const char* kRole = "textRole";

/// With blanks at which no line ends between a number and its unit, and behind a word of a letter.
QString heldTogether(QString text) {
  static const QRegularExpression inner("(?<=\\p{Nd}) (?=\\p{L})|(?<=\\s\\p{L}) ");
  return text.replace(inner, QString(QChar::Nbsp));
}

constexpr int kEvenEnough = 4;  // pixels
constexpr int kTooNarrow = std::numeric_limits<int>::max();

/// How many lines a text takes that is so wide; `kTooNarrow` where one of its words is wider.
int linesOf(QTextLayout& text, int width) {
  int count = 0;
  double widest = 0;
  text.beginLayout();
  for (QTextLine line = text.createLine(); line.isValid(); line = text.createLine()) {
    line.setLineWidth(width);
    widest = std::max(widest, line.naturalTextWidth());
    ++count;
  }
  text.endLayout();
  return widest <= width ? count : kTooNarrow;
}

struct Evened {
  QString text;
  int width = 0;
};

/// A text as narrow as it gets without a further line, so that none has a single word left over for
/// it.
Evened evenedOut(const QString& text, const QFont& font, int width) {
  QTextLayout plain(text, font);
  const int count = linesOf(plain, width);
  if (count == kTooNarrow) return {text, width};
  QTextLayout held(heldTogether(text), font);
  QTextLayout& taken = linesOf(held, width) <= count ? held : plain;
  int least = width / 2;
  int most = width;
  while (most - least > kEvenEnough) {
    const int middle = (least + most) / 2;
    linesOf(taken, middle) <= count ? most = middle : least = middle + 1;
  }
  return {taken.text(), most};
}

}  // namespace

void setFontRole(QWidget* widget, TextRole role) {
  widget->setFont(fontFor(role));
  widget->setProperty(kRole, static_cast<int>(role));
}

void renewFonts(const QWidget* whole) {
  for (auto* widget : whole->findChildren<QWidget*>()) {
    const QVariant role = widget->property(kRole);
    if (role.isValid()) widget->setFont(fontFor(static_cast<TextRole>(role.toInt())));
  }
}

Label::Label(TextRole role, const QString& text) : QLabel(text) {
  setFontRole(this, role);
  setTextFormat(Qt::PlainText);
}

void Label::setColor(TextColor color) {
  color_ = color;
  applyColor();
}

void Label::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) applyColor();
  QLabel::changeEvent(event);
}

void Label::paintEvent(QPaintEvent* event) {
  const bool isOneLine = height() < 2 * fontMetrics().height();
  if (!wordWrap() || isOneLine) {
    QLabel::paintEvent(event);
    return;
  }
  const Evened evened = evenedOut(text(), font(), width());
  // Qt 6.4 moves a line from right to left by the blank at which it ends, but not here.
  QTextOption option(QStyle::visualAlignment(layoutDirection(), alignment()));
  option.setTextDirection(layoutDirection());
  QStaticText lines(evened.text);
  lines.setTextFormat(Qt::PlainText);
  lines.setTextOption(option);
  lines.setTextWidth(evened.width);
  lines.prepare({}, font());
  const QSize size(evened.width, qRound(lines.size().height()));
  const QRect place = QStyle::alignedRect(layoutDirection(), alignment(), size, rect());
  QPainter(this).drawStaticText(place.topLeft(), lines);
}

void Label::applyColor() {
  if (color_ == TextColor::primary) return;
  // Not of its own palette, which has the colour that was set before.
  const QColor wanted = textColor(color_, QApplication::palette());
  if (palette().color(QPalette::Active, QPalette::WindowText) == wanted) return;
  // This one colour; all others go on following the desktop's.
  QPalette own;
  own.setColor(QPalette::WindowText, wanted);
  setPalette(own);
}

Label* makeLabel(TextRole role, const QString& text) { return new Label(role, text); }

Label* makeWrapping(TextRole role, const QString& text) {
  Label* label = makeLabel(role, text);
  label->setWordWrap(true);
  return label;
}

int longestWord(const QString& text, const QFont& font) {
  const QFontMetrics metrics(font);
  int longest = 0;
  for (const QString& word : text.split(' ')) {
    longest = std::max(longest, metrics.horizontalAdvance(word));
  }
  return longest;
}

QFont fontThatFits(TextRole role, const QString& text, int width) {
  return fontThatFits(role, [&](const QFont& font) { return longestWord(text, font) <= width; });
}

void layOutPair(QBoxLayout& row, const QLabel& first, QWidget& second, int width) {
  const int taken = first.minimumSizeHint().width() + row.spacing();
  const bool fits = taken + second.sizeHint().width() <= width;
  row.setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  row.setAlignment(&second, fits ? Qt::AlignBottom : Qt::AlignRight);
}

}  // namespace lumora
