#pragma once

#include <string>
#include <string_view>

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "model/module_model.h"
#include "platform/input_file.h"
#include "support/collecting_console.h"
#include "support/dump.h"

namespace quillmark {

/// What reading a text gave.
struct Parsed {
    int status = 0;
    std::string console;  ///< all messages; the file is called a.a2l
    std::string model;    ///< dump after resolution
};

/// Switches of the reader that tests turn.
struct ReaderSwitches {
    bool verbose = false;
    bool traceDefaultValues = false;
    ModelParts parts{.formats = false};  ///< that of them has tests of its own
};

inline Parsed parseText(std::string_view text, ReaderSwitches switches = {}) {
    CollectingConsole console;
    PhRoot root;
    Parsed result;
    {
        PhA2l reader(console, "a.a2l");
        reader.setVerbose(switches.verbose);
        reader.setTraceDefaultValues(switches.traceDefaultValues);
        reader.setParts(switches.parts);
        MemoryInputFile input(text);
        result.status = reader.parse(root, input);
    }
    if (result.status == 0) {
        resolve(root);
    }
    result.console = console.out;
    result.model = dump(root);
    return result;
}

/// A description whose one module, Ecu of project P, has this content. The content begins on
/// line 1.
inline std::string moduleText(std::string_view content) {
    return "/begin PROJECT P \"\" /begin MODULE Ecu \"\" " + std::string(content) +
           "\n/end MODULE /end PROJECT\n";
}

inline Parsed parseModule(std::string_view content, ReaderSwitches switches = {}) {
    return parseText(moduleText(content), switches);
}

/// Dump of the module's content alone, not indented; the messages instead when there were any.
inline std::string moduleDump(std::string_view content) {
    const Parsed parsed = parseModule(content);
    if (parsed.status != 0 || !parsed.console.empty()) {
        return parsed.console;
    }
    constexpr std::string_view kModuleLine = "module Ecu longIdentifier=\"\"\n";
    constexpr std::size_t kIndent = 6;
    std::string result;
    std::string_view rest = parsed.model;
    const std::size_t start = rest.find(kModuleLine);
    rest.remove_prefix(start == std::string_view::npos ? rest.size() : start + kModuleLine.size());
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n') + 1;
        result += rest.substr(kIndent, end - kIndent);
        rest.remove_prefix(end);
    }
    return result;
}

/// The messages that a module's content gives, without the "-: " and the file name: "Error 1:
/// text". Appends " [status]" when the status is not the one that the messages call for.
inline std::string messages(std::string_view content) {
    const Parsed parsed = parseModule(content);
    std::string result;
    std::string_view rest = parsed.console;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n') + 1;
        std::string line(rest.substr(0, end));
        rest.remove_prefix(end);
        if (const std::size_t name = line.find(" (a.a2l:"); line.starts_with("-: ")) {
            line.replace(name, 8, " ");
            line.erase(line.find(')'), 1);
            line.erase(0, 3);
        }
        result += line;
    }
    const bool hasError = result.find("Error ") != std::string::npos;
    if (parsed.status != (hasError ? -1 : 0)) {
        result += "[" + std::to_string(parsed.status) + "]";
    }
    return result;
}

}  // namespace quillmark
