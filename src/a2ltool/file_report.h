#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/enumerations.h"
#include "quillmark/finding.h"

namespace quillmark::a2ltool {

struct MessageRow;

/// One thing that is wrong with a description.
struct ReportedFinding {
    Severity severity = Severity::Error;
    std::int32_t line = 0;    ///< counted from 1; 0 if it belongs to no line
    std::int32_t column = 0;  ///< in bytes, counted from 1; 0 if it is not known
    std::string text;
    const MessageRow* message = nullptr;  ///< what is known about it; nullptr for nothing
    std::string sourceLine;               ///< without its end; empty if it can't be had
};

/// What the include file would have for a module that the logger can reach.
struct ReportedStation {
    std::string module;
    ProtocolKind protocol = ProtocolKind::Undefined;
};

/// All that is to be told about one description.
struct FileReport {
    std::string file;  ///< as findings name it
    std::vector<ReportedFinding> findings;
    bool opened = true;
    bool reachedEnd = true;                 ///< nothing was left unread behind the last finding
    bool convertible = true;                ///< `convert` would make an include file of it
    std::vector<ReportedStation> stations;  ///< of a convertible one
};

}  // namespace quillmark::a2ltool
