#include "a2l/ph_a2l.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>

#include "a2l/core_blocks.h"
#include "platform/input_file.h"

namespace quillmark {

using namespace kw::core;

int PhA2l::parse(PhRoot& root) {
    startOver();
    reachedEnd_ = false;
    const std::optional<std::string>& name = fileName();
    if (!name) {
        return -1;
    }
    const auto input = StandardInputFile::open(*name);
    return input == nullptr ? -2 : parseProjects(root, *input);
}

int PhA2l::parse(PhRoot& root, InputFile& input) {
    startOver();
    return parseProjects(root, input);
}

int PhA2l::parseProjects(PhRoot& root, InputFile& input) {
    constexpr int kVersionNumbers = 2;
    start(input);
    root.textEncoding = detectEncoding();
    int kind = next();
    do {
        if (kind == ASAP2_VERSION) {
            kind = drop(kVersionNumbers);
        } else if (kind != BEGIN || (kind = next()) != PROJECT) {
            kind = unexpectedToken(kind);
        } else {
            kind = parseProject(*this, root);
        }
    } while (kind != TOK_EOF && kind != TOK_ERROR);
    reachedEnd_ = kind == TOK_EOF || endFollows();
    finish();
    return kind == TOK_ERROR || errorCount() != 0 || hasGoneOn() ? -1 : 0;
}

namespace {

/// A real as printf's "%lf" writes it.
std::string fixedReal(double value) {
    constexpr int kDecimals = 6;
    std::array<char, 400> digits;  // the longest real has 309 digits before the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, kDecimals);
    return {digits.data(), end.ptr};
}

}  // namespace

int PhA2l::print_tokens() {
    startOver();
    trace("print_tokens ()\n");
    const std::optional<std::string>& name = fileName();
    if (!name) {
        return -1;
    }
    const auto input = StandardInputFile::open(*name);
    if (input == nullptr) {
        return -2;
    }
    start(*input);
    for (int kind = next(); kind != TOK_EOF; kind = next()) {
        switch (kind) {
            case TOK_ERROR:  // a comment that the end of the file cut off
                PhReader::trace("t=%d\n", {kind});
                PhReader::trace("EOF\n");
                finish();
                return 0;
            case TOK_STRING:
                trace("\"%s\"\n", {token().text});
                break;
            case TOK_IDENT:
                trace("'%s'\n", {token().text});
                break;
            case TOK_INTEGER:
                trace("%d\n", {token().intValue});
                break;
            case TOK_FLOAT:
                trace("%s\n", {std::string_view(fixedReal(token().floatValue()))});
                break;
            default:
                if (!quillmark::keywordName(kCoreKeywords, kind).empty()) {
                    trace("[%s]\n", {keywordName(kind)});
                } else {
                    trace("t=%d\n", {kind});
                }
                break;
        }
    }
    trace("EOF\n");
    finish();
    return 0;
}

}  // namespace quillmark
