#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "prepare/source_text.h"
#include "prepare/token_reader.h"

namespace quillmark::preparing {

/// A part of a description: what a file, a project and a module are made of.
struct Part {
    enum class Kind : std::uint8_t {
        Version,       ///< ASAP2_VERSION or A2ML_VERSION with its two numbers
        ProjectBegin,  ///< up to the project's text
        ModuleBegin,   ///< up to the module's text
        Block,         ///< from `/begin` to the keyword behind `/end`
        ProjectEnd,
        ModuleEnd,
        Stray,  ///< a token that may not stand there
        EndOfDescription,
        Refused,  ///< an error was told
    };

    /// In what a part stands; of the begin of a project or module, itself.
    enum class Level : std::uint8_t { File, Project, Module };

    Kind kind = Kind::Refused;
    Level level = Level::File;
    /// Its bytes in the window, which begins where the last part ended: before them are blanks and
    /// comments. Both are 0 for a block that was not to be kept.
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string keyword;  ///< of a block or a version
    std::string name;     ///< of a project or a module
};

/// Takes a description apart into what its files, projects and modules are made of. Includes are
/// put in on the way, and words that run together are parted.
class DescriptionScanner {
  public:
    struct Options {
        bool skipsMissing = false;  ///< files that are missing are losses, not errors
        bool tells = false;         ///< what is done on the way; else only errors are told
    };

    DescriptionScanner(SourceText& source, Report& report, Options options)
        : source_(source), report_(report), options_(options) {}

    /// The next part; of a block only `/begin` and its keyword.
    Part next();

    /// Goes to the end of a block that has begun. `keeps` tells whether its bytes are wanted;
    /// others are read over more quickly. False after an error.
    bool readBlock(Part& part, bool keeps);

    /// Gives the last part and what stood before it away.
    void discard(std::size_t count) { source_.discard(count); }

  private:
    using Level = Part::Level;

    Part endDescription(const Token& token);
    Part beginOrdinary(const Token& token);
    Part beginOpened(const Token& begin);
    Part beginVersion(const Token& keyword);
    Part beginOtherVersion(const Token& keyword);
    Part endLevel(const Token& end);
    Part beginProject(const Token& begin, const Token& keyword);
    Part beginModule(const Token& begin, const Token& keyword);
    Part open(Part::Kind kind, const Token& begin, const Token& last, std::string name);
    Part refuse(const Token& token, std::string_view text);

    void skipInside(std::size_t& position, std::size_t& depth) const;
    bool skipToMark(std::size_t& position) const;
    void skipInterface(std::size_t& position, const Part& part);
    void skipUnknownInterface(std::size_t& position);
    bool readBlockItem(std::size_t& position, std::size_t& depth, Part& part);

    Token tokenAt(std::size_t position);
    Token unusualTokenAt(std::size_t position);
    Token rawTokenAt(std::size_t position);
    bool closeOpen(const Token& token);
    bool include(const Token& token);
    void partWords(Token& token);
    /// A view into the window, until that changes.
    [[nodiscard]] std::string_view textOf(const Token& token) const {
        return source_.view().substr(token.begin, token.end - token.begin);
    }
    [[nodiscard]] bool isName(const Token& token) const;

    SourceText& source_;
    Report& report_;
    Options options_;
    Level level_ = Level::File;
    Place levelBegin_;
    bool isEmpty_ = true;
};

}  // namespace quillmark::preparing
