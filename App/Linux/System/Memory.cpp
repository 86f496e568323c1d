// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/Memory.h"

#include <cstdint>
#include <string_view>

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace lumora {
namespace {

/// The segments of one library that are never written to; those that are hold relocations.
int giveBack(dl_phdr_info* library, std::size_t /*size*/, void* /*data*/) {
  // The kernel's own lies in no file.
  if (std::string_view(library->dlpi_name).starts_with("linux-vdso")) return 0;
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < library->dlpi_phnum; ++i) {
    const auto& segment = library->dlpi_phdr[i];
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) continue;
    const std::uintptr_t begin = (library->dlpi_addr + segment.p_vaddr) & ~(page - 1);
    const std::uintptr_t end = library->dlpi_addr + segment.p_vaddr + segment.p_memsz;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an address is what the loader tells.
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
  }
  return 0;
}

}  // namespace

void giveLargeBlocksBack() {
  constexpr int kLargeBlock = 128 * 1024;
  mallopt(M_MMAP_THRESHOLD, kLargeBlock);
}

void giveBackMemory() {
  malloc_trim(0);
  dl_iterate_phdr(giveBack, nullptr);
}

}  // namespace lumora
