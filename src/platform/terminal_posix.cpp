#include <unistd.h>

#include "platform/terminal.h"

namespace quillmark {

bool standardOutputShowsColors() {
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace quillmark
