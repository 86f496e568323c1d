// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Preloaded, writes down what is done to Lumora's own files, in order, into the file LUMORA_RECORD:
// a line for each call that changes a file or a name, "CALL INODE ...", and behind that of a write
// its bytes.
#define _GNU_SOURCE
#include "ours.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#define REAL(name) ((__typeof__(&name))dlsym(RTLD_NEXT, #name))

static unsigned long inode(int descriptor) {
  struct stat status;
  return fstat(descriptor, &status) == 0 ? status.st_ino : 0;
}

static void note(const void* bytes, size_t count, const char* format, ...) {
  char line[9000];
  va_list values;
  va_start(values, format);
  const int length = vsnprintf(line, sizeof line, format, values);
  va_end(values);
  const int record = REAL(open)(getenv("LUMORA_RECORD"), O_WRONLY | O_CREAT | O_APPEND, 0600);
  if (REAL(write)(record, line, (size_t)length) != length) abort();
  if (count > 0 && REAL(write)(record, bytes, count) != (ssize_t)count) abort();
  close(record);
}

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  const int isNew = (flags & O_CREAT) && access(path, F_OK) != 0;
  const int descriptor = REAL(open)(path, flags, mode);
  if (descriptor < 0 || !isOurs(path)) return descriptor;
  if (isNew) note(NULL, 0, "create %lu %s\n", inode(descriptor), path);
  if (flags & O_TRUNC) note(NULL, 0, "truncate %lu\n", inode(descriptor));
  return descriptor;
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

ssize_t write(int descriptor, const void* bytes, size_t count) {
  const ssize_t put = REAL(write)(descriptor, bytes, count);
  if (put > 0 && isOursOpen(descriptor)) {
    note(bytes, (size_t)put, "write %lu %ld %zd\n", inode(descriptor),
         (long)lseek(descriptor, 0, SEEK_CUR) - (long)put, put);
  }
  return put;
}

static int flushed(int descriptor, int result) {
  if (result == 0 && isOursOpen(descriptor)) note(NULL, 0, "flush %lu\n", inode(descriptor));
  return result;
}

int fsync(int descriptor) { return flushed(descriptor, REAL(fsync)(descriptor)); }

int fdatasync(int descriptor) { return flushed(descriptor, REAL(fdatasync)(descriptor)); }

int rename(const char* from, const char* to) {
  const int result = REAL(rename)(from, to);
  if (result == 0 && isOurs(to)) note(NULL, 0, "rename 0 %s\t%s\n", from, to);
  return result;
}

int link(const char* from, const char* to) {
  const int result = REAL(link)(from, to);
  if (result == 0 && isOurs(to)) note(NULL, 0, "link 0 %s\t%s\n", from, to);
  return result;
}

int unlink(const char* path) {
  const int result = REAL(unlink)(path);
  if (result == 0 && isOurs(path)) note(NULL, 0, "unlink 0 %s\n", path);
  return result;
}
