// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

// A monitor that is on and stays on, for a program that cannot do without one: the virtual
// displays have no DPMS extension. To be preloaded; the functions are those of X11/extensions/dpms.h.

#include <X11/Xlib.h>
#include <X11/extensions/dpms.h>

Bool DPMSQueryExtension(Display *display, int *event, int *error) { return *event = *error = 0, True; }

Bool DPMSCapable(Display *display) { return True; }

Status DPMSInfo(Display *display, CARD16 *level, BOOL *enabled) { return *level = DPMSModeOn, *enabled = False, 1; }

Bool DPMSGetTimeouts(Display *display, CARD16 *standby, CARD16 *suspend, CARD16 *off) {
  return *standby = *suspend = *off = 0, True;
}

Status DPMSSetTimeouts(Display *display, CARD16 standby, CARD16 suspend, CARD16 off) { return 1; }

Status DPMSEnable(Display *display) { return 1; }

Status DPMSDisable(Display *display) { return 1; }

Status DPMSForceLevel(Display *display, CARD16 level) { return 1; }
