// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

namespace lumora {

/// Has the whole of Qt drawn by the style (see `installStyle`), and again when the desktop sets
/// another one, as LXQt does with each change of its looks. Needs the QApplication.
class StyleKeeper : public QObject {
 public:
  StyleKeeper();

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool isAboutToInstall_ = false;
};

}  // namespace lumora
