// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFont>
#include <functional>
#include <string>

namespace lumora {

/// The roles of text, from the desktop's own font.
enum class TextRole { headline, body, callout, caption, caption2 };

/// The desktop's font in the weight and size of a role.
QFont fontFor(TextRole role);

/// The font of a role, made smaller pixel by pixel until it fits, to one pixel at the least.
QFont fontThatFits(TextRole role, const std::function<bool(const QFont&)>& fits);

/// A font as Pango describes it, "Cantarell 11", with its size times `scale`. What the description
/// does not say is the desktop's own.
QFont fontOf(const std::string& description, double scale);

}  // namespace lumora
