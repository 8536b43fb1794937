#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/bytes.h"
#include "quillmark/export.h"

namespace quillmark {

/// One thing that prepare() did or could not do. The texts are views, gone after the call that
/// tells it.
struct PrepareFinding {
    enum class Kind : std::uint8_t {
        Change,  ///< the description says the same in another form
        Loss,    ///< something could not be carried over
        Error,   ///< nothing is written; no finding follows
    };

    Kind kind;
    std::string_view file;  ///< the description, or a file that it includes, as it was named
    std::uint32_t line;     ///< from 1; 0 where the finding is about no line
    std::string_view text;  ///< what was done, without place and line feed
};

/// Is told each finding, in the order in which the description has them. Must not throw.
using PrepareFindingHandler = std::function<void(const PrepareFinding& finding)>;

/// What prepare() is to do. All names of files are bytes, handed to the system unchanged.
class QUILLMARK_API PrepareOptions {
  public:
    PrepareOptions();
    PrepareOptions(const PrepareOptions& other);
    PrepareOptions(PrepareOptions&& other) noexcept;
    PrepareOptions& operator=(const PrepareOptions& other);
    PrepareOptions& operator=(PrepareOptions&& other) noexcept;
    ~PrepareOptions();

    /// Where the description is written. It is put together beside that file, which is replaced
    /// only when all of it is there. "-" is the standard output. Without a name nothing is written.
    PrepareOptions& setOutput(std::string name);

    /// Directories in which included files are looked for, one after the other, that are not in the
    /// directory of the file that includes them.
    PrepareOptions& setIncludeDirectories(std::vector<std::string> names);

    /// Where to write which line of the output comes from which line of which file: rows of the
    /// first line, the number of lines, the file and its first line, parted by tabulators.
    PrepareOptions& setMap(std::string name);

    /// Texts go out as ISO 8859-1. At first they stay as they are, or become UTF-8.
    PrepareOptions& setLatin1(bool latin1);

    /// What stands between the name of an instance and that of a component. At first ".".
    PrepareOptions& setSeparator(std::string separator);

    /// A BLOB becomes an array of UBYTE. At first it is lost.
    PrepareOptions& setBlobArrays(bool asArrays);

    /// Included files and types that are missing are losses. At first they are errors.
    PrepareOptions& setSkipMissing(bool skip);

    /// The most signals that instances may become, all together. At first ten million.
    PrepareOptions& setLimit(std::uint64_t limit);

    /// The EPK and its address (as written in a description, such as 0x80001000) for a module that
    /// lacks them. `module` may be empty if there is only one.
    PrepareOptions& setEpk(std::string text, std::string address, std::string module = {});

    /// Who is asked, at most once, when something in the description would have to be mended: does
    /// the reader take these bytes as they are? Then they stay so. Without it, mending goes by the
    /// grammar alone, which errs only on descriptions that are odd in many ways at once.
    PrepareOptions& setReader(std::function<bool(const ByteSource& description)> reads);

    /// For the library itself.
    struct Values;
    [[nodiscard]] const Values& values() const { return *values_; }

  private:
    std::unique_ptr<Values> values_;
};

/// What came of it, the status of `quillmark-a2l prepare` too.
enum class PrepareResult : std::uint8_t {
    Ready = 0,     ///< `convert` reads the output
    WithLoss = 1,  ///< written, but something could not be carried over
    Failed = 2,    ///< nothing was written; an error has been told
};

/// Makes of a description one that the reader takes, with all its signals: includes are put in,
/// structures of version 1.7 written out as single signals, and what the reader refuses goes out.
/// All else is copied byte for byte; a description that can be read already does not change.
///
/// `input` is a file or a pipe, or "-" for the standard input. Memory does not grow with the size
/// of the description, but with the number of its types and instances. Has no global state; two
/// threads may work at the same time on different outputs.
QUILLMARK_API PrepareResult prepare(const std::string& input, const PrepareOptions& options,
                                    const PrepareFindingHandler& tell);

/// The same for a description in memory. `name` is what findings call it, and where included files
/// are looked for. Where the options name no output, `text` becomes the prepared description, which
/// is empty after an error; otherwise it stays as it is.
QUILLMARK_API PrepareResult prepareMemory(std::string_view description, const std::string& name,
                                          const PrepareOptions& options, std::string& text,
                                          const PrepareFindingHandler& tell);

}  // namespace quillmark
