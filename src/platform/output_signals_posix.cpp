#include <csignal>

#include "platform/output_signals.h"

namespace quillmark {

void turnOutputSignalsIntoErrors() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace quillmark
