#include "ui/windows/IdleMemory.h"

#include <cstddef>
#include <cstdint>
#include <span>

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace cindertop::ui {

namespace {

/// Read-only segments equal the file, so dropping them only costs reading them again.
void releaseSegment(const dl_phdr_info& library, const ElfW(Phdr) & segment) {
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) {
        return;
    }
    const auto pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto begin = (library.dlpi_addr + segment.p_vaddr) & ~(pageSize - 1);
    const auto end = library.dlpi_addr + segment.p_vaddr + segment.p_memsz;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader tells addresses as numbers
    ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);
}

int releaseLibrary(dl_phdr_info* library, std::size_t /*size*/, void* /*data*/) {
    for (const auto& segment : std::span(library->dlpi_phdr, library->dlpi_phnum)) {
        releaseSegment(*library, segment);
    }
    return 0;
}

} // namespace

void returnIdleMemory() {
    ::malloc_trim(0);
    ::dl_iterate_phdr(releaseLibrary, nullptr);
}

} // namespace cindertop::ui
