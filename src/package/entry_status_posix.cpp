#include <archive_entry.h>
#include <sys/stat.h>

#include "package/entry_status.h"

namespace quillmark {

bool copyStatus(std::FILE* file, archive_entry* entry) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0) {
        return false;
    }
    archive_entry_copy_stat(entry, &status);
    return true;
}

}  // namespace quillmark
