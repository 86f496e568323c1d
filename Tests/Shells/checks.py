# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What is looked at on every desktop, in the order in which it is done and told."""

import contextlib
import time

from colors import colors, contrast_to, has_hue, luminance, most_frequent, share_of_light_grey
from desktop import Box, NotSeen
from lumora_testing.remote import wait_for

CHECKS = {}
# Of text on its ground, as the Web Content Accessibility Guidelines count it.
LEGIBLE = 4.5
# So far from the item that the panel ends.
BEYOND = 12
# A popover that is centred on its item may be so far off: trays tell of an item's corner, too.
ASIDE = 24
# In MiB, proportional: without what drawing by the graphics card takes.
MOST_MEMORY = 50
# The least share of a window on the dark that its letters take.
LETTERS = 0.005
# As long as something may take that does not happen.
SECONDS_OF_NOTHING = 3


def check(title):
    """A check by its name, with the title of its line in the table."""

    def kept(function):
        CHECKS[function.__name__.replace("_", "-")] = title, function
        return function

    return kept


@check("Item there after every start")
def starts(tour):
    for _ in range(tour.times):
        tour.end_lumora()
        tour.start_lumora()
        tour.wait_for_item()
    tour.keep_item("item")
    return f"{tour.times} of {tour.times}"


@check("Item there after every restart of the shell or its panel")
def restarts(tour):
    for _ in range(tour.times):
        tour.desktop.restart_shell()
        tour.wait_for_item()
    return f"{tour.times} of {tour.times}"


@check("Item there after every unlock")
def locks(tour):
    for _ in range(tour.times):
        tour.desktop.lock()
        tour.desktop.unlock()
        tour.wait_for_item()
    by = tour.desktop.locks_by
    return f"{tour.times} of {tour.times}" + (f", {by}" if by else "")


@check("Percent in the item")
def percent(tour):
    tour.battery(53, charging=False)
    tour.still()
    box = tour.wait_for_item()
    before = tour.desktop.picture().area(*box.corners)
    tour.battery(54, charging=False)
    wait_for(lambda: tour.desktop.picture().area(*box.corners) != before, "another percent", 10)
    return "beside the symbol" if is_wide(box) else "in the symbol"


def is_wide(item):
    """Whether there is room for a text beside the symbol."""
    return item.width > 1.5 * item.height


def legible_on(tour, dark):
    """The strongest contrast in the item against its ground."""
    tour.desktop.set_panel_dark(dark)
    try:
        tour.still()
        name = f"panel-{'dark' if dark else 'light'}"
        picture, box = tour.keep_item(name), tour.desktop.item()
        # In its corner it is empty: a symbol may have more of another colour than there is of the panel's.
        panel = luminance(picture.pixel(box.left, box.top))
        ratio = min(strongest_contrast(colors(picture, part), panel) for part in symbol_and_percent(box))
        if (panel < 0.2) != dark:
            raise NotSeen(f"the panel's luminance is {panel:.2f}")
        if ratio < LEGIBLE:
            raise NotSeen(f"contrast {ratio:.1f}")
        return f"contrast {ratio:.1f}"
    finally:
        tour.desktop.set_panel_dark(True)


def symbol_and_percent(box):
    """The parts of an item that have them: one beside the other, or one around the other."""
    if is_wide(box):
        symbol = Box(box.left, box.top, min(box.height, box.width // 2), box.height)
        return symbol, Box(symbol.right, box.top, box.right - symbol.right, box.height)
    quarter = box.width // 4
    return box, Box(box.left + quarter, box.top, box.width - 2 * quarter, box.height)


def strongest_contrast(found, panel):
    """Of the item's colours against what its text lies on: the panel, or a plate of its own."""
    plate = most_frequent(found)
    ground = luminance(plate) if found[plate] > sum(found.values()) / 3 else panel
    return contrast_to(ground, found)


@check("Legible on a dark panel")
def dark_panel(tour):
    return legible_on(tour, True)


@check("Legible on a light panel")
def light_panel(tour):
    return legible_on(tour, False)


@check("Tooltip")
def tooltip(tour):
    tour.still()
    before = tour.desktop.picture()
    item = tour.desktop.item()
    tour.desktop.hover()

    def beyond_item():
        _, top, _, bottom = tour.desktop.picture().changed_since(before, 0) or item.corners
        return top < item.top - BEYOND or bottom > item.bottom + BEYOND

    # Under the mouse the item itself may change, too.
    wait_for(beyond_item, "a tooltip", 10)
    tour.still()
    tour.keep("tooltip")


def what_comes(tour, button):
    """What opens by a click with that button, closed again."""
    tour.desktop.click(*tour.desktop.item().middle, button=button)
    try:
        found = wait_for(lambda: tour.open_thing(), "something to open", 10)
    except TimeoutError:
        raise NotSeen("nothing opens") from None
    tour.still()
    tour.keep(f"click-{button}")
    tour.close_everything()
    return found


@check("Left click")
def left_click(tour):
    return f"opens the {what_comes(tour, 1)}"


@check("Middle click")
def middle_click(tour):
    return f"opens the {what_comes(tour, 2)}"


@check("Right click")
def right_click(tour):
    found = what_comes(tour, 3)
    if found != "menu":
        raise NotSeen(f"opens the {found}")
    return "opens the menu"


@check("Popover at the tray")
def popover_at_tray(tour):
    box = tour.open_popover()
    require_plain(tour.keep("popover"), box)
    require_at_item(tour, box)
    return f"opened by {tour.desktop.opens_with}"


def require_at_item(tour, box, scale=1, item=None):
    """It is below the item or above it, hardly farther away than the panel is high, and centred on it as far as the
    screen lets it; where the item is, or was. A shadow may lie between them."""
    item = item or tour.desktop.item()
    most = tour.desktop.screen[0] - box.width
    aside = abs(box.left - min(max(item.middle[0] - box.width // 2, 0), most))
    if aside > ASIDE * scale:
        raise NotSeen(f"{aside} pixels to the side of the item")
    gap = max(box.top - item.bottom, item.top - box.bottom)
    if not -BEYOND <= gap <= 60:
        raise NotSeen(f"{gap} pixels from the item, opened by {tour.desktop.opens_with}")


@check("Unfolded it stays on the screen")
def unfolded(tour):
    box = tour.open_unfolded_popover()
    require_on_screen(tour, box, tour.desktop.kept)
    require_at_item(tour, box)


@check("Memory with the popover open")
def memory(tour):
    tour.open_popover()
    taken = round(tour.lumora.memory())
    if taken > MOST_MEMORY:
        raise NotSeen(f"{taken} MiB")
    return f"{taken} MiB"


@check("Popover has the keyboard")
def popover_focused(tour):
    tour.open_popover()
    wait_for(tour.desktop.popover_focused, "the focus", 10)


@check("Esc closes it")
def closes_by_escape(tour):
    tour.open_popover()
    tour.desktop.key("Escape")
    tour.wait_until_closed()


@check("A second click on the item closes it")
def closes_by_second_click(tour):
    tour.open_popover()
    tour.let_double_click_pass()
    tour.desktop.open_popover()
    tour.wait_until_closed()
    time.sleep(SECONDS_OF_NOTHING)
    if tour.desktop.popover():
        raise NotSeen("it comes back")


@check("A click on the wallpaper closes it")
def closes_by_wallpaper(tour):
    tour.open_popover()
    tour.desktop.click(*tour.desktop.wallpaper())
    tour.wait_until_closed()


@check("A click on another item of the panel closes it")
def closes_by_other_item(tour):
    point = tour.desktop.other_item()
    tour.open_popover()
    tour.desktop.click(*point)
    try:
        tour.wait_until_closed()
    finally:
        tour.desktop.key("Escape")


@check("A click on the bare panel closes it")
def closes_by_panel(tour):
    tour.open_popover()
    tour.desktop.click(*tour.desktop.bare_panel())
    tour.wait_until_closed()


@check("A click into another window closes it")
def closes_by_window(tour):
    with tour.other_window() as box:
        popover = tour.open_popover()
        tour.keep("popover-over-window")
        point = box.left + 40 if popover.left > box.left + 60 else box.right - 40, box.bottom - 40
        tour.desktop.move(*point)
        tour.still()
        # Some shells give the focus to what the mouse is over.
        if not tour.desktop.popover():
            raise NotSeen("it closes when the mouse comes there")
        tour.desktop.click(*point)
        tour.wait_until_closed()


# The lines of the menu that can be chosen, counted from the top.
SNOOZE = 2


@check("Menu true after each change of the battery")
def menu_true(tour):
    looks = set()
    changes = (55, False), (19, False), (19, True), (82, True)
    for percent, charging in changes:
        tour.battery(percent, charging)
        looks.add(tour.open_menu())
        tour.wait_for_line(f"{percent}%")
        if charging:
            tour.wait_for_line("harging")
        tour.keep(f"menu-{percent}-{'charging' if charging else 'on-battery'}")
        tour.close_everything()
    if len(looks) < len(changes):
        raise NotSeen("it looks the same")
    return "" if tour.desktop.menu() is not None else "by its looks"


@check("Menu true after “Snooze 1 hour”")
def menu_after_snooze(tour):
    before = tour.open_menu()
    tour.choose("Snooze 1 hour", SNOOZE)
    wait_for(lambda: tour.lumora.settings().get("snoozeUntil"), "the snooze", 10)
    if tour.open_menu() == before:
        raise NotSeen("it looks the same")
    tour.wait_for_line("End snooze")
    tour.keep("snoozed")
    tour.choose("End snooze", SNOOZE)
    wait_for(lambda: not tour.lumora.settings().get("snoozeUntil"), "the end of the snooze", 10)


@check("Settings fit a screen of 1366 × 768")
def settings_fit(tour):
    box = tour.open_settings()
    tour.keep("settings")
    require_on_screen(tour, box)
    return f"{box.width} × {box.height}"


@check("Settings are moved by a title of their own")
def settings_moved(tour):
    before = tour.open_settings()
    start = before.left + 60, before.top + 24
    tour.desktop.drag(start, (start[0] - 40, start[1] + 20))
    # What the mouse goes before the shell takes over is lost.
    wait_for(lambda: before.left - 44 < tour.settings().left < before.left - 20, "another place", 10)
    after = tour.settings()
    if (after.width, after.height) != (before.width, before.height):
        raise NotSeen(f"{before} becomes {after}")


def require_on_screen(tour, box, kept=0):
    """All of it is on the screen, so far from its edges."""
    width, height = tour.desktop.screen
    if min(box.left, box.top, width - box.right, height - box.bottom) < kept:
        raise NotSeen(f"{box} on {width} × {height}")


def require_plain(picture, box):
    """Most of it is of one colour: nothing of what lies behind it shows through."""
    found = colors(picture, box)
    if max(found.values()) < sum(found.values()) / 3:
        raise NotSeen("what lies behind it shows through")


def is_dark(tour, box):
    """Whether the most frequent colour of an area, on which the rest lies, is dark; None for something between, and
    while there is no such area."""
    if box is None:
        return None
    ground = luminance(most_frequent(colors(tour.desktop.picture(), box)))
    return True if ground < 0.1 else False if ground > 0.7 else None


@check("Light and dark followed live")
def dark(tour):
    tour.open_settings()
    try:
        tour.desktop.set_dark(True)
        # GNOME 43 may move the window with a change of its content.
        wait_for(lambda: is_dark(tour, tour.settings()), "a dark window", 20)
        tour.still()
        tour.keep("settings-dark")
        require_text(tour, tour.settings())
        tour.desktop.set_dark(False)
        wait_for(lambda: is_dark(tour, tour.settings()) is False, "a light window", 20)
        tour.close_everything()
        tour.open_popover()
        tour.desktop.set_dark(True)
        wait_for(lambda: is_dark(tour, tour.desktop.popover()), "a dark popover", 20)
        tour.still()
        require_plain(tour.keep("popover-dark"), tour.desktop.popover())
        require_text(tour, tour.desktop.popover())
        height = tour.desktop.popover().height
        tour.desktop.set_text_size(1.5)
        # Whether it is followed is another check.
        with contextlib.suppress(TimeoutError):
            wait_for(lambda: tour.desktop.popover().height > height, "a higher popover", 10)
        tour.still()
        tour.keep("popover-dark-large-text")
        require_text(tour, tour.desktop.popover())
    finally:
        tour.desktop.set_dark(False)
        tour.desktop.set_text_size(1.0)


def require_text(tour, box):
    """As much of it as letters take is as light as text on the dark."""
    share = share_of_light_grey(tour.desktop.picture(), box)
    if share < LETTERS:
        raise NotSeen(f"{100 * share:.1f} % of it is as light as text")


@check("Accent followed live")
def accent(tour):
    tour.open_settings()
    try:
        for number in (0, 1):
            wanted = tour.desktop.set_accent(number)
            wait_for(lambda: has_hue(tour.desktop.picture(), tour.settings(), wanted), "its hue", 20)  # noqa: B023
            tour.keep(f"settings-accent-{number}")
    finally:
        tour.desktop.set_accent(0)


@check("Text size followed live")
def text_size(tour):
    before = tour.open_popover()
    item = tour.desktop.item()
    try:
        tour.desktop.set_text_size(1.5)
        wait_for(lambda: (box := tour.desktop.popover()) and box.height > before.height, "a higher popover", 20)
        tour.still()
        tour.keep("popover-large-text")
        # A panel with larger letters moves what is in it.
        require_at_item(tour, tour.desktop.popover(), item=item)
    finally:
        tour.desktop.set_text_size(1.0)
    wait_for(lambda: tour.desktop.popover().height == before.height, "the popover as it was", 20)


@check("Scale followed live")
def scale(tour):
    before = tour.open_unfolded_popover()
    try:
        factor = tour.desktop.set_scale(1.5)
        if factor == 1:
            raise NotSeen("the screen allows none")
        # Where it scrolls it is wider.
        wanted = factor * before.width
        wait_for(lambda: (box := tour.desktop.popover()) and box.width > wanted - 4, "a larger popover", 20)
        tour.still()
        tour.keep("popover-scaled")
        require_on_screen(tour, tour.desktop.popover(), tour.desktop.kept)
        require_at_item(tour, tour.desktop.popover(), factor)
        tour.close_everything()
        require_at_item(tour, tour.open_popover(), factor)
        return f"at {factor:.2f}"
    finally:
        tour.desktop.set_scale(1)


def shown_with_icon(tour, name):
    shown = tour.shown(name)
    return shown and "umora" in shown.icon and shown


@check("Reminders shown with button, icon and name")
def reminders(tour):
    for name, change in tour.reminders():
        tour.desktop.clear_notifications()
        change()
        # One of them comes with the next of its looks at the clock, which it takes each minute.
        shown = wait_for(lambda: tour.shown(name), f"“{name}”", 100)  # noqa: B023
        # Its icon may come later. A screen that is still may come when it has gone again.
        with contextlib.suppress(TimeoutError):
            shown = wait_for(lambda: shown_with_icon(tour, name), "its icon", 5)  # noqa: B023
        tour.keep("reminder-" + name.lower().replace(" ", "-"))
        if "Snooze 1 hour" not in shown.buttons:
            raise NotSeen(f"“{name}” has the buttons {shown.buttons}")
        if shown.application not in ("Lumora", None):
            raise NotSeen(f"“{name}” is said to be of “{shown.application}”")
        if "umora" not in shown.icon:
            raise NotSeen(f"“{name}” has the icon “{shown.icon}”")
    lacks = [f"the button in {tour.desktop.buttons_in}"] if tour.desktop.buttons_in else []
    if shown.application is None:
        lacks.append("no program's name is shown")
    return ", ".join(lacks)


@check("A reminder replaces the one before")
def replaced(tour):
    tour.desktop.clear_notifications()
    tour.run_low()
    wait_for(lambda: tour.shown("Low battery"), "the reminder", 30)
    time.sleep(SECONDS_OF_NOTHING)
    if not tour.shown("Low battery"):
        raise NotSeen("the first has gone before the second comes")
    tour.run_low()
    time.sleep(SECONDS_OF_NOTHING)
    titles = [each.title for each in tour.desktop.notifications()]
    if titles.count("Low battery") != 1:
        raise NotSeen(f"{titles}")


@check("Snoozed by the button of a reminder")
def snoozed_by_button(tour):
    tour.desktop.clear_notifications()
    tour.reach_limit()
    shown = wait_for(lambda: tour.shown("Charge limit reached"), "the reminder", 30)
    tour.desktop.press(shown, "Snooze 1 hour")
    wait_for(lambda: tour.lumora.settings().get("snoozeUntil"), "the snooze", 10)


@check("Do Not Disturb respected")
def do_not_disturb(tour):
    tour.desktop.clear_notifications()
    tour.battery(70, charging=True)
    tour.desktop.set_do_not_disturb(True)
    try:
        tour.still()
        tour.laptop.clear_sounds()
        tour.battery(85, charging=True)
        time.sleep(SECONDS_OF_NOTHING)
        tour.keep("do-not-disturb")
        if any(each.banner for each in tour.desktop.notifications()):
            raise NotSeen("a reminder of the charge limit is shown")
        told = "silent" if not tour.laptop.sounds() else "with a sound"
        tour.run_low()
        time.sleep(SECONDS_OF_NOTHING)
        low = [each for each in tour.desktop.notifications() if each.banner]
        tour.keep("do-not-disturb-low")
        return f"{told}; a low battery is {'shown all the same' if low else 'not shown either'}"
    finally:
        tour.desktop.set_do_not_disturb(False)


@check("Says nothing on its standard error")
def says_nothing(tour):
    if said := tour.said().splitlines():
        raise NotSeen(said[-1])
