#include <cstdint>

#include <archive_entry.h>
#include <io.h>
#include <windows.h>

#include "package/entry_status.h"

namespace quillmark {
namespace {

constexpr __LA_MODE_T kMayRead = 0444;
constexpr __LA_MODE_T kMayWrite = 0222;

}  // namespace

bool copyStatus(std::FILE* file, archive_entry* entry) {
    // Not the C library's: how wide its fields are is another matter in the archive library, and
    // its times depend on the variable TZ.
    auto* const handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    BY_HANDLE_FILE_INFORMATION status{};
    if (GetFileInformationByHandle(handle, &status) == FALSE) {
        return false;
    }
    archive_entry_copy_bhfi(entry, &status);
    const bool isReadOnly = (status.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_entry_set_perm(entry, isReadOnly ? kMayRead : kMayRead | kMayWrite);
    return true;
}

}  // namespace quillmark
