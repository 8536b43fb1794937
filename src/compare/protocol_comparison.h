#pragma once

#include "compare/compare_report.h"
#include "compare/comparison.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// Compare the acquisition settings of two modules that both speak the protocol. Every value that
/// differs and everything that the new module lost becomes a finding of level kLevelError. Only the
/// first communication parameters of a module are looked at, and nothing is made by looking.
void compareCcpModules(CompareReport& report, bool verbose, const PhGroup& oldModule,
                       const PhGroup& newModule, Console& console);
void compareXcpModules(CompareReport& report, bool verbose, const PhGroup& oldModule,
                       const PhGroup& newModule, Console& console);

}  // namespace quillmark
