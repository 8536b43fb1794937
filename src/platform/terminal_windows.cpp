#include <windows.h>

#include "platform/terminal.h"

namespace quillmark {

bool standardOutputShowsColors() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(output, &mode) != FALSE &&
           SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

}  // namespace quillmark
