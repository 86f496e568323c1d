// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Controls/DrawnButton.h"
#include "Views/Theme/Fonts.h"
#include "Views/Theme/Glide.h"

#include <QString>

namespace lumora {

/// The title of something that unfolds below it while it is checked.
class Disclosure : public DrawnButton {
 public:
  Disclosure(TextRole role, const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Glide on_{*this};  // 0 off, 1 on.
};

}  // namespace lumora
