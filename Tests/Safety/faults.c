// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Preloaded, makes system calls on Lumora's own files fail. LUMORA_FAULT is "CALL NUMBER ERRNO":
// the how manieth of open, read, fstat, write, fsync, close or rename, from 1, or each one, 0, and
// with what. With the errno 0 a read or write fails not, but takes a thousand bytes at most.
// LUMORA_FAULT_HIT is a file that is made when that happened. While the file LUMORA_FAULT_GATE
// exists, no fsync gets done; one that waits for that makes another beside it, ".waiting".
#define _GNU_SOURCE
#include "ours.h"

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

static int (*realOpen)(const char*, int, ...);
static atomic_int counted;
static const size_t kShort = 1000;

static int (*realClose)(int);

/// Whether this is the one.
static int fails(const char* call) {
  char wanted[16];
  int number, error;
  const char* fault = getenv("LUMORA_FAULT");
  if (fault == NULL || sscanf(fault, "%15s %d %d", wanted, &number, &error) != 3) return 0;
  if (strcmp(wanted, call) != 0 || (++counted != number && number != 0)) return 0;
  const int hit = realOpen(getenv("LUMORA_FAULT_HIT"), O_WRONLY | O_CREAT, 0600);
  if (hit >= 0) realClose(hit);
  errno = error;
  return 1;
}

__attribute__((constructor)) static void begin(void) {
  realOpen = dlsym(RTLD_NEXT, "open");
  realClose = dlsym(RTLD_NEXT, "close");
}

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
  if (error == 0) return real(descriptor, bytes, count < kShort ? count : kShort);
  if (count > 1) real(descriptor, bytes, count / 2);
  errno = error;
  return -1;
}

ssize_t read(int descriptor, void* bytes, size_t count) {
  static ssize_t (*real)(int, void*, size_t);
  if (real == NULL) real = dlsym(RTLD_NEXT, "read");
  if (!isOursOpen(descriptor) || !fails("read")) return real(descriptor, bytes, count);
  return errno == 0 ? real(descriptor, bytes, count < kShort ? count : kShort) : -1;
}

int fstat(int descriptor, struct stat* status) {
  static int (*real)(int, struct stat*);
  if (real == NULL) real = dlsym(RTLD_NEXT, "fstat");
  return isOursOpen(descriptor) && fails("fstat") ? -1 : real(descriptor, status);
}

int close(int descriptor) {
  const int failed = isOursOpen(descriptor) && fails("close");
  const int error = errno;
  const int closed = realClose(descriptor);
  if (!failed) return closed;
  errno = error;
  return -1;
}

static void waitAtGate(void) {
  const char* gate = getenv("LUMORA_FAULT_GATE");
  if (gate == NULL || access(gate, F_OK) != 0) return;
  char waiting[4096];
  snprintf(waiting, sizeof waiting, "%s.waiting", gate);
  realClose(realOpen(waiting, O_WRONLY | O_CREAT, 0600));
  while (access(gate, F_OK) == 0) usleep(5000);
}

int fsync(int descriptor) {
  static int (*real)(int);
  if (real == NULL) real = dlsym(RTLD_NEXT, "fsync");
  if (isOursOpen(descriptor)) waitAtGate();
  return isOursOpen(descriptor) && fails("fsync") ? -1 : real(descriptor);
}

int rename(const char* from, const char* to) {
  static int (*real)(const char*, const char*);
  if (real == NULL) real = dlsym(RTLD_NEXT, "rename");
  return isOurs(to) && fails("rename") ? -1 : real(from, to);
}
