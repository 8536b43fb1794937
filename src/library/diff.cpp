#include "quillmark/diff.h"

#include <array>
#include <bitset>
#include <tuple>
#include <utility>

#include "library/diff_data.h"
#include "library/module_diff.h"
#include "library/text_at.h"
#include "library/verb_access.h"
#include "quillmark/compare.h"

namespace quillmark {
namespace {

constexpr std::array<std::string_view, 9> kKindTexts = {
    "incomparable", "setting", "name", "removed", "added", "address", "type", "conversion", "unit"};
constexpr std::array<std::string_view, 5> kObjectTexts = {"setting", "module", "signal",
                                                          "conversion", "table"};

}  // namespace

struct DiffOptionsData {
    std::bitset<kKindTexts.size()> ignored;
    DiffHandler handler;
};

struct DiffResultData {
    std::size_t count = 0;
    std::vector<ModelDifference> differences;
};

namespace {

std::optional<std::string_view> viewOf(const std::optional<std::string>& text) {
    return text ? std::optional<std::string_view>(*text) : std::nullopt;
}

std::optional<std::string> valueIfAny(std::string_view value) {
    return value.empty() ? std::nullopt : std::optional<std::string>(value);
}

DiffKind kindOf(DifferenceLevel level) {
    switch (level) {
        case DifferenceLevel::CannotCompare:
            return DiffKind::Incomparable;
        case DifferenceLevel::Warning:
            return DiffKind::Name;
        case DifferenceLevel::Error:
            break;
    }
    return DiffKind::Setting;
}

/// What `compare` finds.
void diffSettings(const Description& oldDescription, const Description& newDescription,
                  const DifferenceTaker& take) {
    const CompareResult result = compare(oldDescription, newDescription);
    for (const Difference& difference : result.differences()) {
        take({kindOf(difference.level()),
              DiffObject::Setting,
              {},
              std::string(difference.what()),
              valueIfAny(difference.oldValue()),
              valueIfAny(difference.newValue()),
              std::string(difference.text())});
    }
}

/// The values behind the name of what differs: both, or the only one of what came or went. The
/// sentences about what cannot be compared and about names have them already.
std::string shownValues(const ModelDifferenceData& difference) {
    const auto& [oldValue, newValue] = std::tie(difference.oldValue, difference.newValue);
    if ((!oldValue && !newValue) || difference.kind == DiffKind::Incomparable ||
        difference.kind == DiffKind::Name) {
        return {};
    }
    if (difference.kind == DiffKind::Removed || difference.kind == DiffKind::Added) {
        return ": " + (oldValue ? *oldValue : *newValue);
    }
    constexpr const char* kNothing = "nothing";
    return ": " + oldValue.value_or(kNothing) + " -> " + newValue.value_or(kNothing);
}

}  // namespace

std::string_view textOf(DiffKind kind) noexcept {
    return textAt(kKindTexts, kind);
}

std::string_view textOf(DiffObject object) noexcept {
    return textAt(kObjectTexts, object);
}

ModelDifference::ModelDifference(std::shared_ptr<const ModelDifferenceData> data) noexcept
    : data_(std::move(data)) {}

DiffKind ModelDifference::kind() const noexcept {
    return data_->kind;
}

DiffObject ModelDifference::object() const noexcept {
    return data_->object;
}

std::string_view ModelDifference::module() const noexcept {
    return data_->module;
}

std::string_view ModelDifference::name() const noexcept {
    return data_->name;
}

std::optional<std::string_view> ModelDifference::oldValue() const noexcept {
    return viewOf(data_->oldValue);
}

std::optional<std::string_view> ModelDifference::newValue() const noexcept {
    return viewOf(data_->newValue);
}

std::string_view ModelDifference::sentence() const noexcept {
    return data_->sentence;
}

std::string ModelDifference::summary() const {
    std::string text = data_->sentence;
    if (text.empty()) {
        text.append(textOf(data_->object)).append(" ").append(data_->name);
    }
    return text.append(shownValues(*data_));
}

DiffOptions::DiffOptions() : data_(std::make_unique<DiffOptionsData>()) {}
DiffOptions::DiffOptions(const DiffOptions& other)
    : data_(std::make_unique<DiffOptionsData>(*other.data_)) {}
DiffOptions::DiffOptions(DiffOptions&& other) noexcept = default;
DiffOptions::~DiffOptions() = default;

DiffOptions& DiffOptions::operator=(DiffOptions other) noexcept {
    data_.swap(other.data_);
    return *this;
}

DiffOptions& DiffOptions::setIgnored(DiffKind kind, bool ignored) {
    if (const auto place = static_cast<std::size_t>(kind); place < data_->ignored.size()) {
        data_->ignored[place] = ignored;
    }
    return *this;
}

DiffOptions& DiffOptions::setHandler(DiffHandler handler) {
    data_->handler = std::move(handler);
    return *this;
}

DiffResult::DiffResult(std::shared_ptr<const DiffResultData> data) noexcept
    : data_(std::move(data)) {}

std::size_t DiffResult::count() const noexcept {
    return data_->count;
}

const std::vector<ModelDifference>& DiffResult::differences() const& noexcept {
    return data_->differences;
}

std::vector<ModelDifference> DiffResult::differences() && {
    return data_->differences;
}

DiffResult diff(const Description& oldDescription, const Description& newDescription,
                const DiffOptions& options) {
    const DiffOptionsData& settings = VerbAccess::data(options);
    auto result = std::make_shared<DiffResultData>();
    const DifferenceTaker take = [&](ModelDifferenceData found) {
        if (settings.ignored[static_cast<std::size_t>(found.kind)]) {
            return;
        }
        ++result->count;
        ModelDifference difference(std::make_shared<const ModelDifferenceData>(std::move(found)));
        if (settings.handler) {
            settings.handler(difference);
        } else {
            result->differences.push_back(std::move(difference));
        }
    };
    diffSettings(oldDescription, newDescription, take);
    if (oldDescription.isComplete() && newDescription.isComplete()) {
        diffModules(oldDescription, newDescription, take);
    }
    return DiffResult(std::move(result));
}

}  // namespace quillmark
