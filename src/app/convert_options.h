#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "app/options.h"
#include "cfginclude/convert_request.h"
#include "platform/console.h"

namespace quillmark {

/// Reads the arguments that follow the word `convert` into the request, which must be empty, and
/// checks their combinations. Returns false for the first mistake, after printing its message,
/// which the usage text should follow; the request is then not to be used. A flag that is repeated
/// only earns a warning at that moment.
bool parseConvertOptions(std::span<const char* const> arguments, ConvertRequest& request,
                         Console& console);

/// The options, in the order of the usage text.
std::vector<Option> convertOptions();

/// Cuts a list at its commas. Empty items are kept, except one behind a comma that ends the list:
/// "a,,b," gives "a", "", "b".
std::vector<std::string> splitUserFiles(std::string_view list);

}  // namespace quillmark
