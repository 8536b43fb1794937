#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "quillmark/bytes.h"
#include "quillmark/export.h"
#include "quillmark/finding.h"
#include "quillmark/list.h"
#include "quillmark/model.h"

namespace quillmark {

struct DescriptionData;
struct ReadOptionsData;
struct ViewAccess;

/// How a description is read. Options are a value: copies are independent of each other.
class QUILLMARK_API ReadOptions {
  public:
    ReadOptions();
    ReadOptions(const ReadOptions& other);
    ReadOptions(ReadOptions&& other) noexcept;
    ReadOptions& operator=(ReadOptions other) noexcept;
    ~ReadOptions();

    /// Whether long identifiers are kept, which are a sixth of a description's memory. They are,
    /// unless told otherwise, and checked in either case.
    ReadOptions& setKeepTexts(bool keep);

    /// Whether signals, conversions, units, groups and frames are kept; without them only modules
    /// with their protocols and memory segments are. They are, unless told otherwise, and checked
    /// in either case.
    ReadOptions& setKeepSignals(bool keep);

    /// Whether characteristics that are arrays are kept: curves, maps, cuboids and blocks of
    /// values, which no include file shows. They are, unless told otherwise, and checked in either
    /// case. Without them, a group that names one names a signal that nothing defines.
    ReadOptions& setKeepArrays(bool keep);

    /// Whether the names are kept, and looked up, of the signals and groups that belong to a group,
    /// a function, a frame or a virtual signal. They are, unless told otherwise, and checked in
    /// either case.
    ReadOptions& setKeepMembers(bool keep);

    /// Whether the limits of signals are kept. They are, unless told otherwise, and checked in
    /// either case.
    ReadOptions& setKeepLimits(bool keep);

    /// Whether the display formats of signals and conversions are kept, and formulas. They are,
    /// unless told otherwise, and checked in either case.
    ReadOptions& setKeepFormats(bool keep);

    /// 0, the default: as the program reads, up to the first error. Otherwise reading goes on
    /// behind the block of the module in which an error stood, where that is possible, and ends
    /// with this many errors.
    ReadOptions& setErrorLimit(std::size_t limit);

    /// Is told each finding while the description is read. With a handler, the description keeps
    /// none.
    ReadOptions& setFindingHandler(FindingHandler handler);

  private:
    friend class Description;
    std::unique_ptr<ReadOptionsData> data_;
};

/// What became of reading.
enum class ReadStatus : std::uint8_t {
    Complete,   ///< read without an error, though perhaps with warnings
    NotOpened,  ///< the file cannot be opened; there is no finding
    Failed,     ///< an error; what was read before it can be walked all the same
};

/// An A2L description (ASAM MCD-2 MC) in memory. It owns all that it holds; everything that is
/// reached from it is a view, valid as long as the description lives.
///
/// Each description is independent of all others: any number of threads may work at the same time,
/// each with its own. One description is for one thread at a time; it may be handed from thread to
/// thread, also to be destroyed. While nothing but walking is done (projects() and all that is
/// reached from there, apart from the functions whose name begins with `find`), several threads may
/// walk one description together.
class QUILLMARK_API Description {
  public:
    /// An empty description, ReadStatus::NotOpened.
    Description() noexcept;
    Description(Description&& other) noexcept;
    Description& operator=(Description&& other) noexcept;
    ~Description();

    /// Reads a file. The name is handed to the system as it stands (on Windows in UTF-8 where the
    /// process has set that code page). Throws std::bad_alloc for want of memory, like everything
    /// here, and nothing else.
    static Description readFile(const std::string& path, const ReadOptions& options = {});

    /// Reads a description in memory; the bytes are needed only during the call. `name` is what
    /// findings and include files call it.
    static Description readMemory(std::string_view bytes, const std::string& name,
                                  const ReadOptions& options = {});

    /// Reads a description from wherever the source has it, in pieces of some 64 KiB.
    static Description readStream(const ByteSource& source, const std::string& name,
                                  const ReadOptions& options = {});

    [[nodiscard]] ReadStatus status() const noexcept;
    [[nodiscard]] bool isComplete() const noexcept { return status() == ReadStatus::Complete; }

    /// Whether the whole text was looked at: false where an error or the limit of findings ended
    /// the reading.
    [[nodiscard]] bool reachedEnd() const noexcept;

    /// The name under which it was read.
    [[nodiscard]] std::string_view name() const noexcept;

    /// What was found while it was read; empty where a handler was told.
    [[nodiscard]] const Findings& findings() const& noexcept;
    [[nodiscard]] Findings findings() &&;

    /// Whether the text began with the mark of UTF-8. All texts are bytes as they stand in the
    /// description; without the mark they usually are Latin-1.
    [[nodiscard]] bool hasUtf8Mark() const noexcept;

    /// Most descriptions have one project.
    [[nodiscard]] List<Project> projects() const& noexcept;
    List<Project> projects() const&& = delete;

  private:
    friend struct ViewAccess;
    std::unique_ptr<DescriptionData> data_;
};

}  // namespace quillmark
