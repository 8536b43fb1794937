#include "prepare/instance_writer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/signal_text.h"

namespace quillmark::preparing {

namespace {

/// Writes what an instance becomes.
class InstanceWriter final : public LeafTaker {
  public:
    InstanceWriter(PartWriter& writer, Report& report, const Part& part, const Member& instance,
                   const ExpansionOptions& options, InstanceText& text)
        : writer_(writer),
          report_(report),
          begin_(part.begin),
          name_(instance.name),
          place_(writer.placeIn(part, 0)),
          between_(writer.indentation(part)),
          signal_(options, instance, text) {}

    void take(const Leaf& leaf) override {
        if (const WrittenPart* encoding = leaf.type.find("ENCODING");
            encoding != nullptr && valueOf(encoding->text) != "UTF8") {
            tell(leaf.name.suffix, "its ENCODING " + std::string(valueOf(encoding->text)));
        }
        if (count_ > 0) {
            writer_.make(between_, place_);
        } else {
            writer_.copy(0, begin_);
        }
        writer_.make(signal_.write(leaf), place_);
        ++count_;
    }

    void lose(const PartName& name, std::string_view why) override {
        signal_.lose(name);
        tell(name.suffix, why);
    }

    [[nodiscard]] std::uint64_t count() const { return count_; }
    [[nodiscard]] const std::vector<std::string>& misplaced() const { return signal_.misplaced(); }

  private:
    void tell(std::string_view suffix, std::string_view why) {
        std::string text = name_;
        text.append(suffix).append(" is lost: ").append(why);
        report_.loss(place_, text);
    }

    PartWriter& writer_;
    Report& report_;
    std::size_t begin_;
    std::string name_;
    Place place_;
    std::string between_;
    SignalText signal_;
    std::uint64_t count_ = 0;
};

}  // namespace

void writeInstance(BlockWalk& walk, const Part& part, const Member& instance,
                   const ModuleSurvey& module, const ExpansionOptions& options, PartWriter& writer,
                   Report& report) {
    InstanceText text = InstanceText::read(walk);
    const Place place = writer.placeIn(part, 0);
    InstanceWriter signals(writer, report, part, instance, options, text);
    expand(module, instance, options, signals);
    for (const Overwrite& overwrite : text.overwrites) {
        if (!overwrite.isUsed) {
            report.loss(writer.placeIn(part, overwrite.position),
                        "OVERWRITE " + overwrite.path + " names no component of " + instance.name);
        }
    }
    for (const std::string& misplaced : signals.misplaced()) {
        report.loss(place, "no place for what OVERWRITE tells: " + misplaced);
    }
    report.change(place, "INSTANCE " + instance.name + " became " +
                             std::to_string(signals.count()) +
                             (signals.count() == 1 ? " signal" : " signals"));
    if (signals.count() == 0) {
        writer.takeOut(part);
    } else {
        writer.discard(part);
    }
}

void writeBlob(BlockWalk& walk, const Part& part, const ExpansionOptions& options,
               PartWriter& writer, Report& report) {
    const std::string name(walk.parameter(0));
    const Place place = writer.placeIn(part, 0);
    std::string text = "/begin MEASUREMENT " + name + " " + std::string(walk.parameter(1)) +
                       " UBYTE NO_COMPU_METHOD 0 0 0 255 ECU_ADDRESS " +
                       std::string(walk.parameter(2)) + " MATRIX_DIM " +
                       std::string(walk.parameter(3));
    bool isPointer = false;
    for (const FoundPart& found : walk.parts()) {
        const std::string_view keyword = found.rule->keyword;
        if (keyword == "ADDRESS_TYPE") {
            isPointer = isPointerType(valueOf(walk.textOf(found)));
        } else if (keyword != "MODEL_LINK" && keyword != "CALIBRATION_ACCESS") {
            text += " " + walk.editedText(found);
        }
    }
    if (!options.blobArrays || isPointer) {
        report.loss(place, name + " is lost: a BLOB");
        writer.takeOut(part);
        return;
    }
    writer.copy(0, part.begin);
    writer.make(text + " /end MEASUREMENT", place);
    report.change(place, "BLOB " + name + " became an array of UBYTE");
    writer.discard(part);
}

}  // namespace quillmark::preparing
