// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Controls/DrawnButton.h"
#include "Views/Theme/Fonts.h"

#include <QString>

namespace lumora {

/// A button that looks like a link.
class LinkButton : public DrawnButton {
 public:
  LinkButton(TextRole role, const QString& text);
};

}  // namespace lumora
