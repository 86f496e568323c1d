// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Labels.h"

namespace lumora {

QLabel* makeLabel(TextRole role, const QString& text) {
  auto* label = new QLabel(text);
  label->setFont(fontFor(role));
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* makeWrapping(TextRole role, const QString& text) {
  QLabel* label = makeLabel(role, text);
  label->setWordWrap(true);
  return label;
}

void setTextColor(QLabel* label, const QColor& color) {
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, color);
  label->setPalette(palette);
}

}  // namespace lumora
