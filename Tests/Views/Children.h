// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
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

}  // namespace lumora::test
