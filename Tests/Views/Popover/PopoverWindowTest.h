// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Children.h"
#include "Views/FakeHost.h"
#include "Views/Popover/PopoverWindow.h"

#include <QCursor>

namespace lumora::test {

/// A machine with a battery and a week of history.
struct Machine {
  Machine() {
    // Away from the edges, where a pointer would be the one that clicked.
    QCursor::setPos(400, 400);
    host.setBattery(73);
    host.setHistory(minuteSamples(host.now(), 7 * 1440));
    host.model().refresh(AppModel::Reason::change);
  }

  FakeHost host;
};

/// Its popover.
struct Popover : Machine {
  PopoverWindow window{host};
};

/// All that a battery may tell beside its charge.
inline const Dictionary kEverything = {{"CycleCount", 412},     {"DesignCapacity", 50'000},
                                       {"MaxCapacity", 43'500}, {"Temperature", 3140},
                                       {"Voltage", 12'000},     {"Amperage", -2100}};

}  // namespace lumora::test
