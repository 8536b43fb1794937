#include "a2ltool/command_table.h"

#include "a2ltool/check_command.h"
#include "a2ltool/diff_command.h"
#include "a2ltool/json_command.h"
#include "a2ltool/prepare_command.h"

namespace quillmark::a2ltool {

// A new command is a file of its own and a row here.
std::span<const CommandRow> commandTable() {
    static constexpr CommandRow kCommands[] = {
        {"check", "tell what is wrong with descriptions, and whether they convert", &declareCheck},
        {"json", "write a description as JSON", &declareJson},
        {"diff", "tell in what two descriptions differ", &declareDiff},
        {"prepare", "make a description that can be converted", &declarePrepare},
    };
    return kCommands;
}

}  // namespace quillmark::a2ltool
