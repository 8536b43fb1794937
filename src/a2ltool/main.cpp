#include <new>

#include "a2ltool/complaint.h"
#include "a2ltool/tool.h"
#include "a2ltool/tool_status.h"
#include "platform/output_signals.h"

int main(int argumentCount, char* arguments[]) {
    using namespace quillmark;
    turnOutputSignalsIntoErrors();
    try {
        return a2ltool::runTool(argumentCount, arguments);
    } catch (const std::bad_alloc&) {
        a2ltool::complain("not enough memory");
        return static_cast<int>(a2ltool::ToolStatus::Trouble);
    }
}
