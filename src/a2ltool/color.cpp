#include "a2ltool/color.h"

#include <cstdlib>
#include <string_view>

#include "platform/terminal.h"

namespace quillmark::a2ltool {
namespace {

constexpr const char* kAuto = "auto";
constexpr const char* kAlways = "always";
constexpr const char* kNever = "never";

/// A variable of the environment; an unset one is empty.
std::string_view variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

void declareColor(CommandOptions& options, std::string& when) {
    when = kAuto;
    options.addChoice({"--color", "WHEN", "colour the text: auto, always or never"}, when,
                      {kAuto, kAlways, kNever});
}

bool isColored(const std::string& when, const std::string& output) {
    if (when != kAuto) {
        return when == kAlways;
    }
    return output == "-" && variable("NO_COLOR").empty() && variable("TERM") != "dumb" &&
           standardOutputShowsColors();
}

}  // namespace quillmark::a2ltool
