// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Gallery/Scenes.h"

#include <QAbstractButton>

namespace lumora::test {

QWidget* withName(const QWidget& window, const QString& name) {
  for (auto* widget : window.findChildren<QWidget*>()) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const bool isIt =
        widget->accessibleName() == name || (button != nullptr && button->text() == name);
    if (isIt && widget->isVisible()) return widget;
  }
  return nullptr;
}

void focus(QWidget& window, const QString& name) {
  window.setAttribute(Qt::WA_KeyboardFocusChange);
  window.activateWindow();
  if (QWidget* widget = withName(window, name)) widget->setFocus(Qt::TabFocusReason);
}

}  // namespace lumora::test
