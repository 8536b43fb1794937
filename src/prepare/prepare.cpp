#include "prepare/prepare.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/file_name.h"
#include "platform/file_stream.h"
#include "platform/temporary_file.h"
#include "prepare/byte_search.h"
#include "quillmark/prepare.h"

namespace quillmark {

namespace {

using preparing::FileOutput;
using preparing::LineMap;
using preparing::NoOutput;
using preparing::Report;
using preparing::RewriteOptions;
using preparing::SourceFiles;
using preparing::SourceText;
using preparing::StringOutput;
using preparing::Survey;

constexpr std::string_view kStandardInput = "-";

/// Reads a file that somebody else closes, from its beginning. Others may read it in between: each
/// goes on where it was.
class SharedInput final : public InputFile {
  public:
    explicit SharedInput(std::FILE* file) : file_(file) {
        std::rewind(file);
        isGood_ = std::fgetpos(file, &position_) == 0;
    }

    std::size_t read(char* buffer, std::size_t size) override {
        isGood_ = isGood_ && std::fsetpos(file_, &position_) == 0;
        const std::size_t count = isGood_ ? std::fread(buffer, 1, size, file_) : 0;
        isGood_ = isGood_ && std::ferror(file_) == 0 && std::fgetpos(file_, &position_) == 0;
        return count;
    }

    [[nodiscard]] bool failed() const override { return !isGood_; }

  private:
    std::FILE* file_;
    std::fpos_t position_{};
    bool isGood_ = false;
};

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// An input that can be read only once, kept where it can be read again. nullptr if that cannot be
/// done.
std::unique_ptr<std::FILE, FileCloser> spool(InputFile& input) {
    std::unique_ptr<std::FILE, FileCloser> file(openTemporaryFile());
    std::array<char, 65536> block;
    while (file != nullptr) {
        const std::size_t count = input.read(block.data(), block.size());
        if (count == 0) {
            break;
        }
        if (std::fwrite(block.data(), 1, count, file.get()) != count) {
            return nullptr;
        }
    }
    if (file == nullptr || input.failed() || std::fflush(file.get()) != 0) {
        return nullptr;
    }
    return file;
}

/// The standard input, which stays open.
class StandardInput final : public InputFile {
  public:
    StandardInput() { makeBinary(stdin); }

    std::size_t read(char* buffer, std::size_t size) override {
        return std::fread(buffer, 1, size, stdin);
    }

    [[nodiscard]] bool failed() const override { return std::ferror(stdin) != 0; }
};

/// Whether a file gives its bytes only once, as pipes do.
bool canBeReadOnce(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(toPath(name), error);
    return std::filesystem::is_fifo(status) || std::filesystem::is_character_file(status);
}

/// Opens an input as often as it is asked.
std::function<std::unique_ptr<InputFile>()> openerOf(const std::string& input) {
    std::unique_ptr<InputFile> once;
    if (input == kStandardInput) {
        once = std::make_unique<StandardInput>();
    } else if (canBeReadOnce(input)) {
        once = StandardInputFile::openBinary(input);
    } else {
        return [input] { return StandardInputFile::openBinary(input); };
    }
    const std::shared_ptr<std::FILE> spooled = once == nullptr ? nullptr : spool(*once);
    return [spooled]() -> std::unique_ptr<InputFile> {
        return spooled == nullptr ? nullptr : std::make_unique<SharedInput>(spooled.get());
    };
}

}  // namespace

struct PrepareOptions::Values {
    std::function<bool(const ByteSource&)> reads;
    std::string output;
    std::string map;
    std::vector<std::string> includeDirectories;
    RewriteOptions rewrite;
};

PrepareOptions::PrepareOptions() : values_(std::make_unique<Values>()) {}
PrepareOptions::PrepareOptions(const PrepareOptions& other)
    : values_(std::make_unique<Values>(*other.values_)) {}
PrepareOptions::PrepareOptions(PrepareOptions&& other) noexcept = default;
PrepareOptions& PrepareOptions::operator=(const PrepareOptions& other) {
    values_ = std::make_unique<Values>(*other.values_);
    return *this;
}
PrepareOptions& PrepareOptions::operator=(PrepareOptions&& other) noexcept = default;
PrepareOptions::~PrepareOptions() = default;

PrepareOptions& PrepareOptions::setOutput(std::string name) {
    values_->output = std::move(name);
    return *this;
}

PrepareOptions& PrepareOptions::setIncludeDirectories(std::vector<std::string> names) {
    values_->includeDirectories = std::move(names);
    return *this;
}

PrepareOptions& PrepareOptions::setMap(std::string name) {
    values_->map = std::move(name);
    return *this;
}

PrepareOptions& PrepareOptions::setLatin1(bool latin1) {
    values_->rewrite.latin1 = latin1;
    return *this;
}

PrepareOptions& PrepareOptions::setSeparator(std::string separator) {
    values_->rewrite.expansion.separator = std::move(separator);
    return *this;
}

PrepareOptions& PrepareOptions::setBlobArrays(bool asArrays) {
    values_->rewrite.expansion.blobArrays = asArrays;
    return *this;
}

PrepareOptions& PrepareOptions::setSkipMissing(bool skip) {
    values_->rewrite.expansion.skipsMissing = skip;
    return *this;
}

PrepareOptions& PrepareOptions::setLimit(std::uint64_t limit) {
    values_->rewrite.expansion.limit = limit;
    return *this;
}

PrepareOptions& PrepareOptions::setReader(
    std::function<bool(const ByteSource& description)> reads) {
    values_->reads = std::move(reads);
    return *this;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): all texts of options are taken alike
PrepareOptions& PrepareOptions::setEpk(std::string text, std::string address, std::string module) {
    // Between quotes both of these mean something else.
    std::string quoted;
    for (const char byte : text) {
        quoted += byte == '"' || byte == '\\' ? "\\" : "";
        quoted += byte;
    }
    values_->rewrite.epk = std::move(quoted);
    values_->rewrite.epkAddress = std::move(address);
    values_->rewrite.module = std::move(module);
    return *this;
}

namespace preparing {

namespace {

bool asksForEpk(const RewriteOptions& options) {
    return !options.epk.empty() || !options.epkAddress.empty();
}

/// Makes sure that it is clear which module gets the EPK.
void checkModules(const Survey& survey, const SourceFiles& files, const RewriteOptions& options,
                  Report& report) {
    if (!asksForEpk(options)) {
        return;
    }
    const auto count = std::count_if(
        survey.modules.begin(), survey.modules.end(), [&](const ModuleSurvey& module) {
            return options.module.empty() || module.name == options.module;
        });
    if (count == 0) {
        report.error(files.mainName, options.module.empty() ? "has no module for the EPK"
                                                            : "has no module " + options.module);
    } else if (count > 1 && options.module.empty()) {
        report.error(survey.modules[1].place,
                     "there are several modules: say which one the EPK is for");
    }
}

/// Writes the bytes of the description itself. False, with an error, if it cannot be read.
bool copyDescription(const SourceFiles& files, Report& report, Output& output) {
    const std::unique_ptr<InputFile> input = files.openMain();
    std::array<char, 65536> block;
    output.restart();
    while (input != nullptr) {
        const std::size_t count = input->read(block.data(), block.size());
        if (count == 0) {
            break;
        }
        output.write({block.data(), count});
    }
    if (input == nullptr || input->failed()) {
        report.error(files.mainName, "cannot be read to its end");
        return false;
    }
    return true;
}

/// A description of which nothing had to be changed stays as it is, with the bytes that mean
/// nothing to the reader.
bool keepMeaninglessBytes(const SourceText& source, const SourceFiles& files, Report& report,
                          Output& output) {
    if (!source.hasDroppedBytes() || report.hasFailed()) {
        return !report.hasFailed();
    }
    if (report.hasChanges() || report.hasLosses()) {
        report.note({0, 1}, "took out the bytes FF, which mean nothing");
        return true;
    }
    return copyDescription(files, report, output);
}

/// Whether there may be something that has to be known before the rest can be written. It costs a
/// tenth of finding out what that is.
bool needsSurvey(SourceText& source, const RewriteOptions& options) {
    if (asksForEpk(options)) {
        return true;
    }
    constexpr std::size_t kLongestWord = 8;
    do {
        if (mentionsInstances(source.view())) {
            return true;
        }
        source.discard(source.view().size() - std::min(source.view().size(), kLongestWord));
    } while (source.more());
    return false;
}

/// What has to be known; nothing where nothing has to be.
Survey survey(SourceText& source, Report& report, const RewriteOptions& options) {
    return needsSurvey(source, options) && !report.hasFailed() && source.open()
               ? surveyDescription(source, report, options.expansion.skipsMissing)
               : Survey{};
}

bool rewriteText(const SourceFiles& files, const RewriteOptions& options, Report& report,
                 Output& output, LineMap* map) {
    SourceText source(files, report);
    if (!source.open()) {
        return false;
    }
    Survey known = survey(source, report, options);
    for (ModuleSurvey& module : known.modules) {
        if (!report.hasFailed()) {
            bindTypes(module, options.expansion, report);
        }
        if (!report.hasFailed()) {
            nameSignals(module, options.expansion, report);
        }
    }
    if (!report.hasFailed()) {
        checkModules(known, files, options, report);
    }
    if (!report.hasFailed() && source.open()) {
        Rewriter(source, report, known, options, output, map).run();
        return keepMeaninglessBytes(source, files, report, output);
    }
    return false;
}

/// Copies a description as long as there is nothing to tell of it, as mostly there never is: that
/// takes no knowledge of what is yet to come. False, with nothing done, if there is.
bool needsNothing(const SourceFiles& files, const RewriteOptions& options, Report& report,
                  Output& output, LineMap* map) {
    if (asksForEpk(options)) {
        return false;
    }
    report.beginTrial();
    SourceText source(files, report);
    const Survey nothing;
    if (source.open()) {
        Rewriter(source, report, nothing, options, output, map).run();
    }
    if (!report.endTrial()) {
        output.restart();
        if (map != nullptr) {
            *map = LineMap();
        }
        return false;
    }
    return !source.hasDroppedBytes() || copyDescription(files, report, output);
}

/// Each line of a description that stays as it is comes from itself.
void mapToItself(const SourceFiles& files, Report& report, LineMap& map) {
    const std::unique_ptr<InputFile> input = files.openMain();
    std::string text;
    if (input != nullptr && readToEnd(*input, 0, text)) {
        map = LineMap();
        map.addCopied(text, {report.fileNumber(files.mainName), 1});
    }
}

}  // namespace

bool prepareText(const SourceFiles& files, const RewriteOptions& options, Report& report,
                 Output& output, LineMap* map) {
    if (needsNothing(files, options, report, output, map)) {
        return true;
    }
    const bool isRewritten = rewriteText(files, options, report, output, map);
    if (!report.isReadable()) {
        return isRewritten;
    }
    if (map != nullptr) {
        mapToItself(files, report, *map);
    }
    return copyDescription(files, report, output);
}

}  // namespace preparing

namespace {

/// Writes the map in full or not at all.
bool writeMap(const std::string& name, const LineMap& map, const Report& report) {
    FileOutput file(name);
    if (!file.isOpen()) {
        return false;
    }
    file.write(map.text(report));
    return file.finish();
}

/// Whether the reader takes the description as it is.
bool canBeRead(const SourceFiles& files, const PrepareOptions::Values& values) {
    const std::unique_ptr<InputFile> input = files.openMain();
    return input != nullptr && values.reads([&input](char* buffer, std::size_t size) {
        return input->read(buffer, size);
    });
}

PrepareResult prepareTo(const SourceFiles& files, const PrepareOptions::Values& values,
                        Report& report, preparing::Output& output) {
    const RewriteOptions& rewrite = values.rewrite;
    if (values.reads && rewrite.epk.empty() && rewrite.epkAddress.empty() && !rewrite.latin1) {
        report.setReader([&] { return canBeRead(files, values); });
    }
    std::optional<LineMap> map;
    if (!values.map.empty()) {
        map.emplace();
    }
    if (!prepareText(files, values.rewrite, report, output, map ? &*map : nullptr)) {
        return PrepareResult::Failed;
    }
    if (map && !writeMap(values.map, *map, report)) {
        report.error(values.map, "cannot be written");
    } else if (!output.finish()) {
        report.error(values.output, "cannot be written");
    }
    return report.hasErrors()   ? PrepareResult::Failed
           : report.hasLosses() ? PrepareResult::WithLoss
                                : PrepareResult::Ready;
}

PrepareResult prepareToFile(const SourceFiles& files, const PrepareOptions::Values& values,
                            Report& report) {
    FileOutput output(values.output);
    if (!output.isOpen()) {
        report.error(values.output, "cannot be written");
        return PrepareResult::Failed;
    }
    return prepareTo(files, values, report, output);
}

}  // namespace

PrepareResult prepare(const std::string& input, const PrepareOptions& options,
                      const PrepareFindingHandler& tell) {
    const PrepareOptions::Values& values = options.values();
    Report report(tell);
    const SourceFiles files{input, openerOf(input), values.includeDirectories};
    if (values.output.empty()) {
        NoOutput output;
        return prepareTo(files, values, report, output);
    }
    return prepareToFile(files, values, report);
}

PrepareResult prepareMemory(std::string_view description, const std::string& name,
                            const PrepareOptions& options, std::string& text,
                            const PrepareFindingHandler& tell) {
    const PrepareOptions::Values& values = options.values();
    Report report(tell);
    const SourceFiles files{
        name, [description] { return std::make_unique<MemoryInputFile>(description); },
        values.includeDirectories};
    if (!values.output.empty()) {
        return prepareToFile(files, values, report);
    }
    text.clear();
    StringOutput output(text);
    const PrepareResult result = prepareTo(files, values, report, output);
    if (result == PrepareResult::Failed) {
        text.clear();
    }
    return result;
}

}  // namespace quillmark
