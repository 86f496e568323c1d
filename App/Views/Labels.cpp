// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Labels.h"

namespace lumora {
namespace {

constexpr const char* kRole = "textRole";

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

QLabel* makeLabel(TextRole role, const QString& text) {
  auto* label = new QLabel(text);
  setFontRole(label, role);
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
