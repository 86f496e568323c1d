// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/StyleKeeper.h"

#include "Views/Style/Style.h"

#include <QApplication>
#include <QEvent>

namespace lumora {

StyleKeeper::StyleKeeper() {
  installStyle();
  qApp->installEventFilter(this);
}

bool StyleKeeper::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::StyleChange && !isAboutToInstall_ &&
      dynamic_cast<Style*>(QApplication::style()) == nullptr) {
    // Once all windows have been told of the other one.
    isAboutToInstall_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
          isAboutToInstall_ = false;
          installStyle();
        },
        Qt::QueuedConnection);
  }
  return QObject::eventFilter(object, event);
}

}  // namespace lumora
