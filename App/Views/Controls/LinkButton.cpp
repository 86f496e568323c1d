// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/LinkButton.h"

#include "Views/Controls/Labels.h"
#include "Views/Style/OwnControls.h"

namespace lumora {

LinkButton::LinkButton(TextRole role, const QString& text) : DrawnButton(drawLink, linkSize) {
  setText(text);
  setFontRole(this, role);
  setCursor(Qt::PointingHandCursor);
}

}  // namespace lumora
