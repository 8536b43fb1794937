#include "a2ltool/difference_output.h"

#include <string>

#include "a2ltool/json_writer.h"
#include "a2ltool/palette.h"
#include "quillmark/version.h"

namespace quillmark::a2ltool {
namespace {

/// One line for each difference, `kind: signal name: old -> new`.
class TextDifferences final : public DifferenceOutput {
  public:
    explicit TextDifferences(const DifferenceOutputSetting& setting)
        : sink_(setting.sink), palette_(setting.colored) {}

    void tell(const ModelDifference& difference) override {
        std::string line(colorOf(difference.kind()));
        line.append(textOf(difference.kind())).append(":").append(palette_.plain()).append(" ");
        sink_.write(line.append(difference.summary()).append("\n"));
    }

  private:
    std::string_view colorOf(DiffKind kind) const {
        switch (kind) {
            case DiffKind::Removed:
            case DiffKind::Incomparable:
                return palette_.error();
            case DiffKind::Added:
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
        json_.textMember("kind", textOf(difference.kind()));
        json_.textMember("of", textOf(difference.object()));
        writeIfAny("module", difference.module());
        writeIfAny("name", difference.name());
        if (const auto value = difference.oldValue()) {
            json_.textMember("old", *value);
        }
        if (const auto value = difference.newValue()) {
            json_.textMember("new", *value);
        }
        writeIfAny("text", difference.sentence());
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
