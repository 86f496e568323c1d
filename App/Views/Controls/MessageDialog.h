// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/Notifier.h"

#include <QDialogButtonBox>
#include <QWidget>
#include <cstddef>
#include <functional>

namespace lumora {

/// Asks in a window that belongs to `parent` and comes to the front; `answer` gets the index of the
/// button, of the last one when the dialog is closed otherwise. Returns at once.
void showDialog(const Dialog& dialog, QDialogButtonBox::ButtonRole firstButton, QWidget* parent,
                const std::function<void(std::size_t)>& answer);

}  // namespace lumora
