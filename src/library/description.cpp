#include "quillmark/description.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "a2l/ph_a2l.h"
#include "a2l/resolution.h"
#include "library/description_data.h"
#include "library/finding_data.h"
#include "library/view_access.h"
#include "platform/console.h"
#include "platform/input_file.h"

namespace quillmark {
namespace {

/// Readers want a console for what they tell nobody else; with a logger there is no such thing.
class SilentConsole final : public Console {
  public:
    void print(std::string_view) override {}
    void printError(std::string_view) override {}
    void flush() override {}
};

/// Makes findings of what a reader reports.
class FindingLogger final : public PhLogger {
  public:
    explicit FindingLogger(FindingReceiver& receiver) : receiver_(receiver) {}

    void message(std::string_view text) override {
        FindingData data;
        data.text = text.substr(0, text.find_last_not_of('\n') + 1);
        data.consoleText = std::string(kConsoleMark).append(text);
        receiver_.take(std::move(data));
    }
    void warning(const char*, std::string_view fileName, std::int32_t line,
                 std::string_view message) override {
        takeFinding(Severity::Warning, fileName, line, message);
    }
    void error(const char*, std::string_view fileName, std::int32_t line,
               std::string_view message) override {
        takeFinding(Severity::Error, fileName, line, message);
    }

  private:
    void takeFinding(Severity severity, std::string_view fileName, std::int32_t line,
                     std::string_view message) {
        FindingData data;
        data.severity = severity;
        data.line = line;
        data.column = column();
        data.file = fileName;
        data.text = message;
        data.consoleText = kConsoleMark;
        data.consoleText +=
            findingText(severity == Severity::Error, fileName, line, message).view();
        receiver_.take(std::move(data));
    }

    FindingReceiver& receiver_;
};

/// The bytes of a caller.
class SourceInput final : public InputFile {
  public:
    explicit SourceInput(const ByteSource& source) : source_(source) {}

    std::size_t read(char* buffer, std::size_t size) override { return source_(buffer, size); }

  private:
    const ByteSource& source_;
};

ReadStatus statusOf(int parseResult) {
    constexpr int kNotOpened = -2;
    if (parseResult == kNotOpened) {
        return ReadStatus::NotOpened;
    }
    return parseResult == 0 ? ReadStatus::Complete : ReadStatus::Failed;
}

/// The reader's limit, which is 1 for reading as the program does.
std::int32_t readerLimit(const ReadOptionsData& options) {
    constexpr std::size_t kLargest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp<std::size_t>(options.errorLimit, 1, kLargest));
}

/// Fills `data`, whose name is set. `parse` starts the reader.
template <typename Parse>
void read(DescriptionData& data, const ReadOptionsData& options, Parse parse) {
    const ModelArena::Use use(data.arena);
    FindingReceiver receiver(options.findingHandler, data.findings);
    FindingLogger logger(receiver);
    SilentConsole console;
    PhA2l reader(console, data.name);
    reader.setLogger(&logger);
    reader.setParts({.signals = options.keepSignals,
                     .arrays = options.keepArrays,
                     .members = options.keepMembers,
                     .limits = options.keepLimits,
                     .formats = options.keepFormats,
                     .longIdentifiers = options.keepTexts});
    reader.setErrorLimit(readerLimit(options));
    data.status = statusOf(parse(reader));
    data.reachedEnd = reader.reachedEnd();
    if (data.status == ReadStatus::Complete) {
        resolve(data.root);
    }
}

}  // namespace

ReadOptions::ReadOptions() : data_(std::make_unique<ReadOptionsData>()) {}
ReadOptions::ReadOptions(const ReadOptions& other)
    : data_(std::make_unique<ReadOptionsData>(*other.data_)) {}
ReadOptions::ReadOptions(ReadOptions&& other) noexcept = default;
ReadOptions::~ReadOptions() = default;

ReadOptions& ReadOptions::operator=(ReadOptions other) noexcept {
    data_.swap(other.data_);
    return *this;
}

ReadOptions& ReadOptions::setKeepTexts(bool keep) {
    data_->keepTexts = keep;
    return *this;
}

ReadOptions& ReadOptions::setKeepSignals(bool keep) {
    data_->keepSignals = keep;
    return *this;
}

ReadOptions& ReadOptions::setKeepArrays(bool keep) {
    data_->keepArrays = keep;
    return *this;
}

ReadOptions& ReadOptions::setKeepMembers(bool keep) {
    data_->keepMembers = keep;
    return *this;
}

ReadOptions& ReadOptions::setKeepLimits(bool keep) {
    data_->keepLimits = keep;
    return *this;
}

ReadOptions& ReadOptions::setKeepFormats(bool keep) {
    data_->keepFormats = keep;
    return *this;
}

ReadOptions& ReadOptions::setErrorLimit(std::size_t limit) {
    data_->errorLimit = limit;
    return *this;
}

ReadOptions& ReadOptions::setFindingHandler(FindingHandler handler) {
    data_->findingHandler = std::move(handler);
    return *this;
}

Description::Description() noexcept = default;
Description::Description(Description&& other) noexcept = default;
Description& Description::operator=(Description&& other) noexcept = default;
Description::~Description() = default;

Description Description::readFile(const std::string& path, const ReadOptions& options) {
    Description description;
    description.data_ = std::make_unique<DescriptionData>();
    DescriptionData& data = *description.data_;
    data.name = path;
    read(data, *options.data_, [&](PhA2l& reader) { return reader.parse(data.root); });
    return description;
}

Description Description::readMemory(std::string_view bytes, const std::string& name,
                                    const ReadOptions& options) {
    MemoryInputFile input(bytes);
    const ByteSource source = [&](char* buffer, std::size_t size) {
        return input.read(buffer, size);
    };
    return readStream(source, name, options);
}

Description Description::readStream(const ByteSource& source, const std::string& name,
                                    const ReadOptions& options) {
    Description description;
    description.data_ = std::make_unique<DescriptionData>();
    DescriptionData& data = *description.data_;
    data.name = name;
    SourceInput input(source);
    read(data, *options.data_, [&](PhA2l& reader) { return reader.parse(data.root, input); });
    return description;
}

ReadStatus Description::status() const noexcept {
    return data_ == nullptr ? ReadStatus::NotOpened : data_->status;
}

bool Description::reachedEnd() const noexcept {
    return data_ != nullptr && data_->reachedEnd;
}

std::string_view Description::name() const noexcept {
    return data_ == nullptr ? std::string_view() : std::string_view(data_->name);
}

Findings Description::findings() && {
    return data_ == nullptr ? Findings() : std::move(data_->findings);
}

const Findings& Description::findings() const& noexcept {
    static const Findings kNone;
    return data_ == nullptr ? kNone : data_->findings;
}

bool Description::hasUtf8Mark() const noexcept {
    constexpr std::int32_t kUtf8 = 6;
    return data_ != nullptr && data_->root.textEncoding == kUtf8;
}

List<Project> Description::projects() const& noexcept {
    return data_ == nullptr ? List<Project>() : ViewAccess::list<Project>(&data_->root.documents);
}

}  // namespace quillmark
