#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillmark/bytes.h"
#include "quillmark/description.h"
#include "quillmark/export.h"
#include "quillmark/finding.h"

namespace quillmark {

struct ConvertOptionsData;
struct ConvertResultData;
struct VerbAccess;

/// How an include file is made. Options are a value: copies are independent of each other. What is
/// not set is as with a call of the program without options.
class QUILLMARK_API ConvertOptions {
  public:
    ConvertOptions();
    ConvertOptions(const ConvertOptions& other);
    ConvertOptions(ConvertOptions&& other) noexcept;
    ConvertOptions& operator=(ConvertOptions other) noexcept;
    ~ConvertOptions();

    /// Name of the station; empty: made from project, module and number.
    ConvertOptions& setStationName(std::string name);

    /// Put directly before every name of a signal or conversion.
    ConvertOptions& setNamePrefix(std::string prefix);

    /// Conversions and signals as a compressed section.
    ConvertOptions& setCompress(bool compress);
    ConvertOptions& setIndent(bool indent);

    /// The library of the logger, such as "sigTrak=1.5.4"; empty: the oldest ones, 1.4.4 to 1.5.4.
    ConvertOptions& setLibrary(std::string selection);

    /// The file that tells the versions of that library; by default "sigtrakVersions.xml" in the
    /// current directory.
    ConvertOptions& setVersionFile(std::string path);

    /// The same as its content. A path is not looked at then.
    ConvertOptions& setVersions(std::string content);

    /// The time of generation: seconds since 1970-01-01T00:00:00 UTC, in a time zone so many
    /// seconds (less than a day) ahead of UTC. The year is one of 0 to 9999. By default now, in the
    /// zone of the process.
    ConvertOptions& setTime(std::int64_t secondsSinceEpoch, std::int32_t utcOffset);

    /// Who generates; by default the login name of the process's user.
    ConvertOptions& setUser(std::string name);

    /// Files that a package gets beside the include file.
    ConvertOptions& setUserFiles(std::vector<std::string> files);

    /// Whether the EPK is put before their names.
    ConvertOptions& setEpkFilePrefix(bool prefix);

    /// Is told each finding at once. With a handler, the result keeps none.
    ConvertOptions& setFindingHandler(FindingHandler handler);

  private:
    friend struct VerbAccess;
    std::unique_ptr<ConvertOptionsData> data_;
};

/// What became of a conversion.
enum class ConvertStatus : std::uint8_t {
    Done,
    NoOutput,  ///< the description or the version file lacks what an include file must tell;
               ///< nothing was written
    Refused,   ///< the selection of the library cannot be met; nothing was written
    OutputNotOpened,
    CutOff,     ///< not all of it could be written, or no more was wanted
    NotPacked,  ///< the include file is written, or cut off; the package is not made
};

/// What a conversion has to say.
class QUILLMARK_API ConvertResult {
  public:
    [[nodiscard]] ConvertStatus status() const noexcept;
    [[nodiscard]] bool isDone() const noexcept { return status() == ConvertStatus::Done; }

    /// Errors tell why it is not done, but of an output that was cut off only the status tells.
    /// Empty where a handler was told.
    [[nodiscard]] const Findings& findings() const& noexcept;
    [[nodiscard]] Findings findings() &&;

    /// For the library itself.
    explicit ConvertResult(std::shared_ptr<const ConvertResultData> data) noexcept;

  private:
    std::shared_ptr<const ConvertResultData> data_;
};

/// Makes the include file of a complete description and hands it to the sink, in pieces of some
/// 256 KiB. The pieces are made while they are taken: an array can ask for an output without end,
/// which a sink that answers false cuts off.
QUILLMARK_API ConvertResult convert(const Description& description, const ConvertOptions& options,
                                    const ByteSink& sink);

/// Appends it to a text.
QUILLMARK_API ConvertResult convert(const Description& description, const ConvertOptions& options,
                                    std::string& text);

/// Does all that comes before the first byte: says whether the description can be converted.
QUILLMARK_API ConvertResult checkConversion(const Description& description,
                                            const ConvertOptions& options);

/// Writes it to a file, which is emptied first, though not before it is known what will be in it.
QUILLMARK_API ConvertResult convertToFile(const Description& description,
                                          const ConvertOptions& options,
                                          const std::string& outputFile);

/// Writes it to a file, packs that with the user files and removes it. Tells its progress in notes.
QUILLMARK_API ConvertResult convertToPackage(const Description& description,
                                             const ConvertOptions& options,
                                             const std::string& outputFile,
                                             const std::string& packageFile);

}  // namespace quillmark
