// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Preloaded, makes one system call on Lumora's own files fail. LUMORA_FAULT is "CALL NUMBER ERRNO": the
// how manieth of open, write, fsync or rename, from 1, and with what; LUMORA_FAULT_HIT is a file that is
// made when that happened.
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/types.h>
#include <unistd.h>

static int (*realOpen)(const char*, int, ...);
static int counted;

static int isOurs(const char* path) { return strstr(path, "/Lumora/") != NULL; }

static int isOursOpen(int descriptor) {
  char link[64], path[4096];
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  if (length < 0) return 0;
  path[length] = 0;
  return isOurs(path);
}

/// Whether this is the one.
static int fails(const char* call) {
  char wanted[16];
  int number, error;
  const char* fault = getenv("LUMORA_FAULT");
  if (fault == NULL || sscanf(fault, "%15s %d %d", wanted, &number, &error) != 3) return 0;
  if (strcmp(wanted, call) != 0 || ++counted != number) return 0;
  const int hit = realOpen(getenv("LUMORA_FAULT_HIT"), O_WRONLY | O_CREAT, 0600);
  if (hit >= 0) close(hit);
  errno = error;
  return 1;
}

__attribute__((constructor)) static void begin(void) { realOpen = dlsym(RTLD_NEXT, "open"); }

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  return isOurs(path) && fails("open") ? -1 : realOpen(path, flags, mode);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

ssize_t write(int descriptor, const void* bytes, size_t count) {
  static ssize_t (*real)(int, const void*, size_t);
  if (real == NULL) real = dlsym(RTLD_NEXT, "write");
  if (!isOursOpen(descriptor) || !fails("write")) return real(descriptor, bytes, count);
  // A disk that fills up takes the first half.
  const int error = errno;
  if (count > 1) real(descriptor, bytes, count / 2);
  errno = error;
  return -1;
}

int fsync(int descriptor) {
  static int (*real)(int);
  if (real == NULL) real = dlsym(RTLD_NEXT, "fsync");
  return isOursOpen(descriptor) && fails("fsync") ? -1 : real(descriptor);
}

int rename(const char* from, const char* to) {
  static int (*real)(const char*, const char*);
  if (real == NULL) real = dlsym(RTLD_NEXT, "rename");
  return isOurs(to) && fails("rename") ? -1 : real(from, to);
}
