// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace lumora {

/// Presses a button for Return and Enter. Qt leaves it to the desktop whether they do; the space
/// bar always does. Whether it was one of them.
inline bool pressForReturn(QAbstractButton& button, const QKeyEvent& event) {
  if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) return false;
  button.click();
  return true;
}

}  // namespace lumora
