#include "a2ltool/difference_output.h"

#include <cstddef>
#include <string>
#include <tuple>

#include "a2ltool/json_writer.h"
#include "a2ltool/palette.h"
#include "quillmark/version.h"

namespace quillmark::a2ltool {
namespace {

std::string_view wordOf(DifferenceKind kind) {
    return differenceKinds()[static_cast<std::size_t>(kind)].word;
}

/// The values behind a line: both, or the only one of what came or went. The sentences about what
/// can't be compared and about names have them already.
void appendValues(const ModelDifference& difference, std::string& line) {
    const auto& [oldValue, newValue] = std::tie(difference.oldValue, difference.newValue);
    switch (difference.kind) {
        case DifferenceKind::Incomparable:
        case DifferenceKind::Name:
            return;
        case DifferenceKind::Removed:
        case DifferenceKind::Added:
            if (oldValue || newValue) {
                line.append(": ").append(oldValue ? *oldValue : *newValue);
            }
            return;
        default:
            break;
    }
    if (oldValue || newValue) {
        line.append(": ").append(oldValue.value_or("nothing"));
        line.append(" -> ").append(newValue.value_or("nothing"));
    }
}

/// One line for each difference, `kind: signal name: old -> new`.
class TextDifferences final : public DifferenceOutput {
  public:
    explicit TextDifferences(const DifferenceOutputSetting& setting)
        : sink_(setting.sink), palette_(setting.colored) {}

    void tell(const ModelDifference& difference) override {
        std::string line(colorOf(difference.kind));
        line.append(wordOf(difference.kind)).append(":").append(palette_.plain()).append(" ");
        if (difference.text.empty()) {
            line.append(difference.of).append(" ").append(difference.name);
        } else {
            line.append(difference.text);
        }
        appendValues(difference, line);
        sink_.write(line.append("\n"));
    }

  private:
    std::string_view colorOf(DifferenceKind kind) const {
        switch (kind) {
            case DifferenceKind::Removed:
            case DifferenceKind::Incomparable:
                return palette_.error();
            case DifferenceKind::Added:
                return palette_.good();
            default:
                return palette_.note();
        }
    }

    OutputSink& sink_;
    Palette palette_;
};

/// One document; docs/diff.schema.json tells its form.
class JsonDifferences final : public DifferenceOutput {
  public:
    explicit JsonDifferences(const DifferenceOutputSetting& setting) : json_(setting.sink) {
        json_.startObject();
        json_.textMember("generator", productName());
        json_.textMember("old", setting.oldFile);
        json_.textMember("new", setting.newFile);
        json_.startArray("differences");
    }

    void tell(const ModelDifference& difference) override {
        json_.startObject();
        json_.textMember("kind", wordOf(difference.kind));
        json_.textMember("of", difference.of);
        writeIfAny("module", difference.module);
        writeIfAny("name", difference.name);
        if (difference.oldValue) {
            json_.textMember("old", *difference.oldValue);
        }
        if (difference.newValue) {
            json_.textMember("new", *difference.newValue);
        }
        writeIfAny("text", difference.text);
        json_.endObject();
    }

    void end() override {
        json_.endArray();
        json_.endObject();
        json_.endDocument();
    }

  private:
    void writeIfAny(std::string_view name, std::string_view text) {
        if (!text.empty()) {
            json_.textMember(name, text);
        }
    }

    JsonWriter json_;
};

template <typename Output>
std::unique_ptr<DifferenceOutput> make(const DifferenceOutputSetting& setting) {
    return std::make_unique<Output>(setting);
}

}  // namespace

std::span<const DifferenceFormatRow> differenceFormats() {
    static constexpr DifferenceFormatRow kFormats[] = {
        {"text", &make<TextDifferences>},
        {"json", &make<JsonDifferences>},
    };
    return kFormats;
}

}  // namespace quillmark::a2ltool
