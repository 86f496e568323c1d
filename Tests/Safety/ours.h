// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Which files are Lumora's own, to what is preloaded.
#pragma once

#include <stdio.h>
#include <string.h>
#include <unistd.h>

static int isOurs(const char* path) { return strstr(path, "/Lumora/") != NULL; }

static int isOursOpen(int descriptor) {
  char link[64], path[4096];
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length < 0) return 0;
  path[length] = 0;
  return isOurs(path);
}
