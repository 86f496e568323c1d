// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QList>
#include <QString>
#include <QWidget>

namespace lumora::test {

/// All widgets of that class below another one, also of a class that Qt cannot tell by itself.
template <typename Widget>
QList<Widget*> childrenOf(const QWidget& parent) {
  QList<Widget*> found;
  for (auto* child : parent.findChildren<QWidget*>()) {
    if (auto* widget = dynamic_cast<Widget*>(child)) found << widget;
  }
  return found;
}

/// The window's button of that text, or null.
inline QAbstractButton* button(const QWidget& window, const QString& text) {
  for (auto* found : window.findChildren<QAbstractButton*>()) {
    if (found->text() == text) return found;
  }
  return nullptr;
}

}  // namespace lumora::test
