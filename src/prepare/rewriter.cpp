#include "prepare/rewriter.h"

#include <algorithm>
#include <utility>

#include "prepare/byte_search.h"
#include "prepare/instance_writer.h"
#include "prepare/listed_names.h"
#include "prepare/measurement_array.h"
#include "prepare/types.h"

namespace quillmark::preparing {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The first version whose parts the reader does not know, and the last one before it.
constexpr std::int64_t kLaterVersion = 70;
constexpr std::string_view kEarlierVersion = "60";

/// What a message tells of a piece of text: its first line, and not too much of it.
std::string shortened(std::string_view text) {
    constexpr std::size_t kMost = 60;
    const std::string_view line = text.substr(0, findLineEnd(text));
    return line.size() <= kMost && line.size() == text.size()
               ? std::string(text)
               : std::string(line.substr(0, kMost)) + "...";
}

/// "a " or "an ", as the name of a block is spoken.
std::string article(std::string_view keyword) {
    return std::string_view("AEIOU").find(keyword.front()) != std::string_view::npos &&
                   keyword.substr(0, 3) != "UNI"
               ? "an "
               : "a ";
}

/// The name behind the keyword of a block.
std::string nameIn(std::string_view block) {
    TokenReader reader(block);
    reader.next();
    reader.next();
    return std::string(reader.textOf(reader.next()));
}

}  // namespace

Rewriter::Rewriter(SourceText& source, Report& report, const Survey& survey,
                   const RewriteOptions& options, Output& output, LineMap* map)
    : source_(source),
      report_(report),
      survey_(survey),
      options_(options),
      output_(output),
      writer_(source, report, output, map, options.latin1),
      scanner_(source, report, {options.expansion.skipsMissing, true}) {}

void Rewriter::run() {
    beginText();
    while (!report_.hasFailed()) {
        const Part part = scanner_.next();
        if (part.kind == Part::Kind::Refused) {
            return;
        }
        if (part.kind == Part::Kind::EndOfDescription) {
            writer_.copy(0, part.end);
            writer_.writePassed();
            break;
        }
        if (rewritePart(part)) {
            writer_.discard(part);
        }
    }
    if (hasLaterParts_ && !version_.empty()) {
        output_.replace(versionPosition_, version_);
        report_.change(versionPlace_, "ASAP2_VERSION is now 1 60");
    }
}

/// Tells of the form in which the description is kept, and gives it a mark where the reader needs
/// one to know its characters.
void Rewriter::beginText() {
    const StoredForm& form = source_.form();
    const Place begin = source_.placeOf(0);
    if (form.isPacked) {
        report_.note(begin, "unpacked (gzip)");
    }
    if (form.isUtf16()) {
        // Without a mark it could be something else that happens to look like it.
        const auto tell = form.hasMark ? &Report::note : &Report::change;
        (report_.*tell)(begin, options_.latin1 ? "UTF-16 became ISO 8859-1"
                                               : "UTF-16 became UTF-8 with a mark");
    } else if (form.characters == StoredForm::Characters::Utf8 && options_.latin1) {
        report_.note(begin, "UTF-8 became ISO 8859-1");
    }
    if (form.characters != StoredForm::Characters::Bytes && !options_.latin1) {
        writer_.putMark(kUtf8Mark);
    }
}

/// False if the part has been given away already.
bool Rewriter::rewritePart(const Part& part) {
    switch (part.kind) {
        case Part::Kind::Version:
            rewriteVersion(part);
            return false;
        case Part::Kind::Block:
            rewriteBlock(part);
            return false;
        case Part::Kind::Stray:
            takeOutStray(part);
            return false;
        case Part::Kind::ModuleBegin:
            beginModule(part);
            return true;
        case Part::Kind::ProjectBegin:
            hasProject_ = true;
            break;
        default:
            break;
    }
    writer_.pass(part);
    return false;
}

void Rewriter::rewriteVersion(const Part& part) {
    if (part.keyword == "A2ML_VERSION") {
        report_.forgetReader();
        report_.change(writer_.placeIn(part, 0), "took out A2ML_VERSION");
        writer_.takeOut(part);
        return;
    }
    const std::string_view text = source_.view().substr(part.begin, part.end - part.begin);
    const auto words = wordsOf(text);
    constexpr std::size_t kWords = 3;
    const std::string_view minor = words.size() == kWords ? words.back() : std::string_view();
    writer_.copy(0, part.end - minor.size());
    rememberVersion(minor, writer_.placeIn(part, 0));
    writer_.copy(part.end - minor.size(), part.end);
    writer_.discard(part);
}

/// Takes note of where a minor number is written next that may have to be an earlier one in the
/// end.
void Rewriter::rememberVersion(std::string_view minor, Place place) {
    if (integerOf(minor).value_or(0) >= kLaterVersion && version_.empty()) {
        report_.giveUpTrial();
        versionPosition_ = writer_.written();
        versionPlace_ = place;
        version_ = std::string(kEarlierVersion);
        version_.insert(0, minor.size() - std::min(minor.size(), version_.size()), '0');
    }
}

void Rewriter::beginModule(const Part& part) {
    ++module_;
    nextInstance_ = 0;
    hasPutEpk_ = false;
    writer_.copy(0, part.end);
    const bool isMeant = options_.module.empty() || options_.module == part.name;
    if (isMeant && !module().hasModPar) {
        if (const auto text = epkText(false, false)) {
            const Place place = writer_.placeIn(part, 0);
            writer_.make(
                writer_.indentation(part) + "  /begin MOD_PAR \"\"" + *text + " /end MOD_PAR",
                place);
            report_.note(place, "put in a MOD_PAR with the EPK");
        }
    }
}

/// What is missing of the EPK and its address; nothing if nothing is, or none is asked for.
std::optional<std::string> Rewriter::epkText(bool hasEpk, bool hasAddress) const {
    std::string text;
    if (!hasEpk && !options_.epk.empty()) {
        text += " EPK \"" + options_.epk + "\"";
    }
    if (!hasAddress && !options_.epkAddress.empty()) {
        text += " ADDR_EPK " + options_.epkAddress;
    }
    return text.empty() ? std::nullopt : std::optional(text);
}

void Rewriter::takeOutStray(const Part& part) {
    const std::string text(source_.view().substr(part.begin, part.end - part.begin));
    if (!hasProject_) {
        report_.error(writer_.placeIn(part, 0), "no description begins with " + shortened(text));
        return;
    }
    report_.loss(writer_.placeIn(part, 0),
                 "took out " + shortened(text) + ", which nobody knows here");
    writer_.takeOut(part);
}

void Rewriter::rewriteBlock(Part part) {
    const PartRule* rule = hasProject_ ? findBlock(part) : nullptr;
    const bool isLookedInto = rule != nullptr && rule->inner != nullptr;
    const bool isWalked = isLookedInto && walk_.walkAhead(source_.view().substr(part.begin), *rule,
                                                          part.end - part.begin);
    if (isWalked) {
        part.end = part.begin + walk_.text().size();
    } else if (!scanner_.readBlock(part, true)) {
        return;
    }
    if (!hasProject_) {
        mendVersionBlock(part);
        return;
    }
    if (rule == nullptr) {
        report_.loss(writer_.placeIn(part, 0),
                     "took out the block " + part.keyword + ", which nobody knows");
        writer_.takeOut(part);
        return;
    }
    const std::string_view text = source_.view().substr(part.begin, part.end - part.begin);
    if (part.keyword == "AXIS_PTS" && !module().expandedNames.empty()) {
        const auto words = wordsOf(text);
        checkName(part, words.size() > 2 ? words[2] : std::string_view());
    }
    if (rule->fate == Fate::TakeOut) {
        hasLaterParts_ = true;
        report_.forgetReader();
        if (report_.hasFailed()) {
            return;
        }
    }
    if (isLookedInto) {
        if (!isWalked) {
            walk_.walk(text, *rule);
        }
        walkBlock(part, *rule);
    } else if (rule->fate == Fate::TakeOut) {
        takeOutLaterBlock(part, text);
    } else {
        writer_.pass(part);
    }
}

/// The rule for a block that may stand where this one stands.
const PartRule* Rewriter::findBlock(const Part& part) {
    switch (part.level) {
        case Part::Level::Module:
            return findModuleBlock(part.keyword);
        case Part::Level::Project:
            return findProjectBlock(part.keyword);
        case Part::Level::File:
            break;
    }
    return nullptr;
}

/// Some tools write ASAP2_VERSION as a block.
void Rewriter::mendVersionBlock(const Part& part) {
    const std::string text(source_.view().substr(part.begin, part.end - part.begin));
    const auto words = wordsOf(text);
    constexpr std::size_t kWords = 6;  // /begin ASAP2_VERSION major minor /end ASAP2_VERSION
    if (part.keyword != "ASAP2_VERSION" || words.size() != kWords) {
        report_.error(writer_.placeIn(part, 0),
                      "no description begins with the block " + part.keyword);
        return;
    }
    const Place place = writer_.placeIn(part, 0);
    writer_.copy(0, part.begin);
    writer_.make("ASAP2_VERSION " + std::string(words[2]) + " ", place);
    rememberVersion(words[3], place);
    writer_.make(words[3], place);
    report_.change(place, "ASAP2_VERSION is no block any more");
    writer_.discard(part);
}

/// What is done with a block that was taken apart depends on its kind.
void Rewriter::walkBlock(const Part& part, const PartRule& rule) {
    struct Row {
        std::string_view keyword;
        void (Rewriter::*rewrite)(const Part&);
    };
    static constexpr Row kRows[] = {
        {"MEASUREMENT", &Rewriter::rewriteMeasurement},
        {"CHARACTERISTIC", &Rewriter::rewriteCharacteristic},
        {"FUNCTION", &Rewriter::rewriteFunction},
        {"GROUP", &Rewriter::rewriteNames},
        {"FRAME", &Rewriter::rewriteNames},
        {"MOD_PAR", &Rewriter::addEpk},
        {"INSTANCE", &Rewriter::expandInstance},
        {"BLOB", &Rewriter::rewriteBlob},
    };
    tellOddities(part);
    if (walk_.isBroken()) {
        writer_.takeOut(part);
        return;
    }
    for (const Row& row : kRows) {
        if (row.keyword == part.keyword) {
            (this->*row.rewrite)(part);
            return;
        }
    }
    if (rule.fate == Fate::TakeOut) {
        takeOutLaterBlock(part, walk_.text());
        return;
    }
    writer_.writeEdited(part, walk_.edits());
}

/// A block of version 1.7 that tells nothing to the reader.
void Rewriter::takeOutLaterBlock(const Part& part, std::string_view text) {
    report_.change(writer_.placeIn(part, 0), "took out " + part.keyword + " " + nameIn(text));
    writer_.takeOut(part);
}

void Rewriter::tellOddities(const Part& part) {
    for (const Oddity& oddity : walk_.oddities()) {
        const std::string text =
            shortened(walk_.text().substr(oddity.begin, oddity.end - oddity.begin));
        const Place place = writer_.placeIn(part, oddity.begin);
        if (oddity.what.empty()) {
            report_.loss(place, "took out the " + part.keyword + " " + nameIn(walk_.text()) +
                                    ", which cannot be read from here on: " + text);
        } else {
            report_.loss(place, "took out the " + std::string(oddity.what) + " " + text +
                                    ", which nobody knows in " + article(part.keyword) +
                                    part.keyword);
        }
    }
}

// --- Signals -------------------------------------------------------------------------------------

/// A name that an instance's signal has too is an error.
void Rewriter::checkName(const Part& part, std::string_view name) {
    if (const Member* twin = findInstanceOf(name, module(), options_.expansion)) {
        report_.error(writer_.placeIn(part, 0), "the name " + std::string(name) +
                                                    " would exist twice; the other one is in " +
                                                    report_.textOf(twin->place));
    }
}

/// Words of version 1.7 in a block of 1.6. False if the signal as a whole is lost.
bool Rewriter::takeOutLaterWord(const Part& part, const FoundPart& found) {
    if (found.rule->fate == Fate::Keep) {
        return true;
    }
    const std::string_view text = walk_.textOf(found);
    const Place place = writer_.placeIn(part, found.begin);
    report_.forgetReader();
    switch (found.rule->fate) {
        case Fate::Address:
            if (isPointerType(valueOf(text))) {
                report_.loss(place, std::string(walk_.parameter(0)) +
                                        " is lost: its address holds another address (" +
                                        std::string(text) + ")");
                return false;
            }
            break;
        case Fate::Encoding:
            if (valueOf(text) != "UTF8") {
                report_.loss(place, std::string(walk_.parameter(0)) +
                                        " is now a text of bytes, not of " +
                                        std::string(valueOf(text)));
                hasLaterParts_ = true;
                walk_.edits().takeOut(walk_.text(), found.begin, found.end);
                return true;
            }
            break;
        default:
            break;
    }
    hasLaterParts_ = true;
    report_.change(place, "took out " + shortened(text));
    walk_.edits().takeOut(walk_.text(), found.begin, found.end);
    return true;
}

void Rewriter::rewriteMeasurement(const Part& part) {
    checkName(part, walk_.parameter(0));
    bool isLost = walk_.parameter(2) == "FLOAT16_IEEE";
    if (isLost) {
        report_.loss(writer_.placeIn(part, walk_.parameterBegin(2)),
                     std::string(walk_.parameter(0)) + " is lost: the data type FLOAT16_IEEE");
    }
    for (const FoundPart& found : walk_.parts()) {
        isLost = isLost || !takeOutLaterWord(part, found);
    }
    if (isLost) {
        hasLaterParts_ = true;
        writer_.takeOut(part);
        return;
    }
    const Sizes sizes = mendSizes(walk_, part, options_.expansion, writer_, report_);
    hasLaterParts_ |= sizes != Sizes::Kept;
    if (sizes == Sizes::Kept || sizes == Sizes::Mended) {
        writer_.writeEdited(part, walk_.edits());
    }
}

void Rewriter::rewriteCharacteristic(const Part& part) {
    checkName(part, walk_.parameter(0));
    for (const FoundPart& found : walk_.parts()) {
        takeOutLaterWord(part, found);
    }
    writer_.writeEdited(part, walk_.edits());
}

// --- Lists of names ------------------------------------------------------------------------------

void Rewriter::rewriteFunction(const Part& part) {
    for (const FoundPart& found : walk_.parts()) {
        takeOutLaterWord(part, found);
    }
    rewriteNames(part);
}

void Rewriter::rewriteNames(const Part& part) {
    const std::size_t changed = editListedNames(walk_, module(), options_.expansion);
    if (changed > 0) {
        report_.change(writer_.placeIn(part, 0),
                       "brought " + std::to_string(changed) +
                           (changed == 1 ? " name in " : " names in ") + part.keyword + " " +
                           std::string(walk_.parameter(0)) + " up to date");
    }
    writer_.writeEdited(part, walk_.edits());
}

// --- The EPK -------------------------------------------------------------------------------------

void Rewriter::addEpk(const Part& part) {
    const ModuleSurvey& survey = module();
    const bool isMeant = options_.module.empty() || options_.module == survey.name;
    const auto text = isMeant ? epkText(survey.hasEpk, survey.hasEpkAddress) : std::nullopt;
    // A module may have several MOD_PAR, and the first one gets it.
    if (text && !std::exchange(hasPutEpk_, true)) {
        const std::size_t behind = walk_.parameterEnd(0);
        walk_.edits().replace(behind, behind, *text);
        report_.note(writer_.placeIn(part, 0), "put the EPK into MOD_PAR");
    }
    writer_.writeEdited(part, walk_.edits());
}

// --- Instances -----------------------------------------------------------------------------------

void Rewriter::expandInstance(const Part& part) {
    const Member& instance = module().instances[nextInstance_];
    ++nextInstance_;
    writeInstance(walk_, part, instance, module(), options_.expansion, writer_, report_);
}

void Rewriter::rewriteBlob(const Part& part) {
    if (options_.expansion.blobArrays) {
        checkName(part, walk_.parameter(0));
    }
    writeBlob(walk_, part, options_.expansion, writer_, report_);
}

}  // namespace quillmark::preparing
