// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Disclosure.h"

#include "Views/Controls/Labels.h"
#include "Views/Style/OwnControls.h"

namespace lumora {

Disclosure::Disclosure(TextRole role, const QString& text)
    : DrawnButton(drawDisclosure, disclosureSize) {
  setText(text);
  setFontRole(this, role);
  setCheckable(true);
  connect(this, &Disclosure::toggled, this, [this](bool on) { on_.moveTo(on ? 1 : 0); });
}

void Disclosure::paintEvent(QPaintEvent* /*event*/) { drawAs(drawDisclosure, *this, on_.value()); }

}  // namespace lumora
