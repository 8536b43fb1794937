// Fills the template of a page (the man page, a completion) with what the tables of options say,
// and prints the page.
//
//   fill_page TEMPLATE
//
// A placeholder is {{COMMAND PART}}, as {{convert synopsis}}. It gives way to the text of that part
// for each option of the command. Where these are lines they are indented like the line of the
// placeholder.

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/compare_options.h"
#include "app/convert_options.h"
#include "app/options.h"
#include "platform/text.h"

namespace quillmark {
namespace {

std::string word(const Option& option) {
    return std::string(option.word);
}

/// The option and its argument for mdoc(7), which writes the hyphen itself.
std::string flag(const Option& option) {
    return joined(
        {"Fl ", option.word.substr(1), option.argument.empty() ? "" : " Ar ", option.argument});
}

std::string synopsisLine(const Option& option) {
    return ".Op " + flag(option);
}

std::string listItem(const Option& option) {
    return joined({".It ", flag(option), "\n", option.manual});
}

/// What each shell calls for an argument.
struct OfferRow {
    Offer offer;
    std::string_view bash;
    std::string_view zsh;
};

constexpr OfferRow kOffers[] = {
    {Offer::Nothing, "return", ""},
    {Offer::Libraries, "_quillmark_library \"$current\" && return", "_quillmark_library"},
    {Offer::FileList, "_quillmark_file_list \"$current\" && return", "_quillmark_file_list"},
    {Offer::Packages, "_quillmark_files \"$current\" '*.zpki' && return", "_files -g \"*.zpki\""},
};

const OfferRow& offerOf(const Option& option) {
    return *std::ranges::find(kOffers, option.offer, &OfferRow::offer);
}

/// A branch of the `case` over the word before the cursor.
std::string bashBranch(const Option& option) {
    return joined({option.word, ") ", offerOf(option).bash, " ;;"});
}

/// A line of _arguments.
std::string zshArgument(const Option& option) {
    std::string argument;
    if (!option.argument.empty()) {
        argument = joined({":", option.argument, ":", offerOf(option).zsh});
    }
    return joined({"'", option.repetition == Repetition::Replaces ? "*" : "", option.word, "[",
                   option.summary, "]", argument, "' \\"});
}

struct CommandRow {
    std::string_view name;
    std::vector<Option> (*options)();
};

constexpr CommandRow kCommands[] = {{"convert", &convertOptions}, {"compare", &compareOptions}};

struct PartRow {
    std::string_view name;
    std::string (*text)(const Option& option);
    std::string_view separator;
    bool onlyWithArgument = false;
};

constexpr PartRow kParts[] = {
    {"synopsis", &synopsisLine, "\n"},
    {"list", &listItem, "\n"},
    {"words", &word, " "},
    {"words with arguments", &word, " | ", true},
    {"offers", &bashBranch, "\n", true},
    {"arguments", &zshArgument, "\n"},
};

std::string textOf(const PartRow& part, const std::vector<Option>& options) {
    std::string result;
    for (const Option& option : options) {
        if (!part.onlyWithArgument || !option.argument.empty()) {
            result.append(result.empty() ? "" : part.separator).append(part.text(option));
        }
    }
    return result;
}

/// What a placeholder stands for; nothing if there is no such command or part.
std::optional<std::string> replacement(std::string_view placeholder) {
    const std::size_t blank = std::min(placeholder.find(' '), placeholder.size() - 1);
    const auto* command =
        std::ranges::find(kCommands, placeholder.substr(0, blank), &CommandRow::name);
    const auto* part = std::ranges::find(kParts, placeholder.substr(blank + 1), &PartRow::name);
    if (command == std::end(kCommands) || part == std::end(kParts)) {
        return std::nullopt;
    }
    return textOf(*part, command->options());
}

/// A line of a template without its placeholder, if it has one.
std::optional<std::string> filled(const std::string& line) {
    const std::size_t begin = line.find("{{");
    const std::size_t end = line.find("}}", begin);
    if (end == std::string::npos) {
        return line;
    }
    std::optional<std::string> text = replacement(line.substr(begin + 2, end - begin - 2));
    if (!text) {
        return std::nullopt;
    }
    const std::string indentation = line.substr(0, line.find_first_not_of(' '));
    for (std::size_t at = 0; (at = text->find('\n', at)) != std::string::npos;) {
        text->insert(++at, indentation);
    }
    return line.substr(0, begin) + *text + line.substr(end + 2);
}

int fillPage(const char* name) {
    std::ifstream page(name);
    std::string line;
    while (std::getline(page, line)) {
        const std::optional<std::string> text = filled(line);
        if (!text) {
            std::fprintf(stderr, "%s: no such placeholder: %s\n", name, line.c_str());
            return 1;
        }
        std::printf("%s\n", text->c_str());
    }
    if (!page.eof()) {
        std::fprintf(stderr, "%s cannot be read\n", name);
        return 1;
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace
}  // namespace quillmark

int main(int argumentCount, char* arguments[]) {
    if (argumentCount != 2) {
        std::fputs("fill_page TEMPLATE\n", stderr);
        return 1;
    }
    return quillmark::fillPage(arguments[1]);
}
