#include "prepare/rewriter.h"

#include <algorithm>
#include <set>
#include <utility>

#include "prepare/latin1.h"
#include "prepare/signal_text.h"

namespace quillmark::preparing {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The first version whose parts the reader does not know, and the last one before it.
constexpr std::int64_t kLaterVersion = 70;
constexpr std::string_view kEarlierVersion = "60";

/// What a message tells of a piece of text: its first line, and not too much of it.
std::string shortened(std::string_view text) {
    constexpr std::size_t kMost = 60;
    const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
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

bool isList(std::string_view keyword, std::string_view kind) {
    return keyword.find(kind) != std::string_view::npos;
}

/// Other lists name functions and groups.
bool listsSignals(std::string_view list) {
    return isList(list, "MEASUREMENT") || isList(list, "CHARACTERISTIC");
}

/// Collects the names of signals that a name in a list stands for.
class NameCollector final : public LeafTaker {
  public:
    void begin(const Member& instance) { instance_ = &instance; }

    void take(const Leaf& leaf) override {
        const bool isMeasured =
            leaf.type.kind == Type::Kind::Measurement || leaf.type.kind == Type::Kind::Blob;
        (isMeasured ? measurements_ : characteristics_)
            .push_back(instance_->name + std::string(leaf.name.suffix));
        all_.push_back(instance_->name + std::string(leaf.name.suffix));
    }

    void lose(const PartName&, std::string_view) override { hasLost_ = true; }

    /// Those that fit into a list, or all if none does.
    [[nodiscard]] const std::vector<std::string>& namesFor(std::string_view list) const {
        if (isList(list, "MEASUREMENT") && !measurements_.empty()) {
            return measurements_;
        }
        return isList(list, "CHARACTERISTIC") && !characteristics_.empty() ? characteristics_
                                                                           : all_;
    }

    [[nodiscard]] bool hasLost() const { return hasLost_; }

  private:
    const Member* instance_ = nullptr;
    std::vector<std::string> all_;
    std::vector<std::string> measurements_;
    std::vector<std::string> characteristics_;
    bool hasLost_ = false;
};

}  // namespace

/// Writes what an instance becomes.
class InstanceWriter final : public LeafTaker {
  public:
    InstanceWriter(Rewriter& rewriter, const Part& part, const Member& instance, InstanceText& text)
        : rewriter_(rewriter),
          begin_(part.begin),
          name_(instance.name),
          place_(rewriter.placeIn(part, 0)),
          between_(rewriter.indentation(part)),
          signal_(rewriter.options_.expansion, instance, text) {}

    void take(const Leaf& leaf) override {
        if (const WrittenPart* encoding = leaf.type.find("ENCODING");
            encoding != nullptr && valueOf(encoding->text) != "UTF8") {
            tell(leaf.name.suffix, "its ENCODING " + std::string(valueOf(encoding->text)));
        }
        if (count_ > 0) {
            rewriter_.make(between_, place_);
        } else {
            rewriter_.copy(0, begin_);
        }
        rewriter_.make(signal_.write(leaf), place_);
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
        rewriter_.report_.loss(place_, text);
    }

    Rewriter& rewriter_;
    std::size_t begin_;
    std::string name_;
    Place place_;
    std::string between_;
    SignalText signal_;
    std::uint64_t count_ = 0;
};

Rewriter::Rewriter(SourceText& source, Report& report, const Survey& survey,
                   const RewriteOptions& options, Output& output, LineMap* map)
    : source_(source),
      report_(report),
      survey_(survey),
      options_(options),
      output_(output),
      map_(map),
      scanner_(source, report, {options.expansion.skipsMissing, true}) {}

void Rewriter::run() {
    beginText();
    while (!report_.hasFailed()) {
        const Part part = scanner_.next();
        if (part.kind == Part::Kind::Refused) {
            return;
        }
        if (part.kind == Part::Kind::EndOfDescription) {
            copy(0, part.end);
            break;
        }
        if (rewritePart(part)) {
            scanner_.discard(part.end);
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
        output_.write(kUtf8Mark);
        written_ += kUtf8Mark.size();
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
    copy(0, part.end);
    return true;
}

void Rewriter::rewriteVersion(const Part& part) {
    if (part.keyword == "A2ML_VERSION") {
        report_.forgetReader();
        report_.change(placeIn(part, 0), "took out A2ML_VERSION");
        takeOut(part);
        return;
    }
    const std::string_view text = source_.view().substr(part.begin, part.end - part.begin);
    const auto words = wordsOf(text);
    constexpr std::size_t kWords = 3;
    const std::string_view minor = words.size() == kWords ? words.back() : std::string_view();
    copy(0, part.end - minor.size());
    rememberVersion(minor, placeIn(part, 0));
    copy(part.end - minor.size(), part.end);
    scanner_.discard(part.end);
}

/// Takes note of where a minor number is written next that may have to be an earlier one in the
/// end.
void Rewriter::rememberVersion(std::string_view minor, Place place) {
    if (integerOf(minor).value_or(0) >= kLaterVersion && version_.empty()) {
        versionPosition_ = written_;
        versionPlace_ = place;
        version_ = std::string(kEarlierVersion);
        version_.insert(0, minor.size() - std::min(minor.size(), version_.size()), '0');
    }
}

void Rewriter::beginModule(const Part& part) {
    ++module_;
    nextInstance_ = 0;
    hasPutEpk_ = false;
    copy(0, part.end);
    const bool isMeant = options_.module.empty() || options_.module == part.name;
    if (isMeant && !module().hasModPar) {
        if (const auto text = epkText(false, false)) {
            const Place place = placeIn(part, 0);
            make(indentation(part) + "  /begin MOD_PAR \"\"" + *text + " /end MOD_PAR", place);
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
        report_.error(placeIn(part, 0), "no description begins with " + shortened(text));
        return;
    }
    report_.loss(placeIn(part, 0), "took out " + shortened(text) + ", which nobody knows here");
    takeOut(part);
}

void Rewriter::rewriteBlock(Part part) {
    const PartRule* rule = hasProject_ ? findBlock(part) : nullptr;
    const bool isLookedInto = rule != nullptr && rule->inner != nullptr;
    const bool isWalked = isLookedInto && walk_.walkAhead(source_.view().substr(part.begin), *rule);
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
        report_.loss(placeIn(part, 0),
                     "took out the block " + part.keyword + ", which nobody knows");
        takeOut(part);
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
    }
    if (isLookedInto) {
        if (!isWalked) {
            walk_.walk(text, *rule);
        }
        walkBlock(part, *rule);
    } else if (rule->fate == Fate::TakeOut) {
        takeOutLaterBlock(part, text);
    } else {
        copy(0, part.end);
        scanner_.discard(part.end);
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
        report_.error(placeIn(part, 0), "no description begins with the block " + part.keyword);
        return;
    }
    const Place place = placeIn(part, 0);
    copy(0, part.begin);
    make("ASAP2_VERSION " + std::string(words[2]) + " ", place);
    rememberVersion(words[3], place);
    make(words[3], place);
    report_.change(place, "ASAP2_VERSION is no block any more");
    scanner_.discard(part.end);
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
        takeOut(part);
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
    writeEdited(part);
}

/// A block of version 1.7 that tells nothing to the reader.
void Rewriter::takeOutLaterBlock(const Part& part, std::string_view text) {
    report_.change(placeIn(part, 0), "took out " + part.keyword + " " + nameIn(text));
    takeOut(part);
}

void Rewriter::tellOddities(const Part& part) {
    for (const Oddity& oddity : walk_.oddities()) {
        const std::string text =
            shortened(walk_.text().substr(oddity.begin, oddity.end - oddity.begin));
        const Place place = placeIn(part, oddity.begin);
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

/// Writes the block with its edits and gives it away.
void Rewriter::writeEdited(const Part& part) {
    std::size_t copied = 0;
    for (const TextEdit& edit : walk_.edits().sorted()) {
        copy(copied, part.begin + edit.from);
        make(edit.text, edit.text.empty() ? Place{} : placeIn(part, edit.from));
        copied = part.begin + edit.to;
    }
    copy(copied, part.end);
    scanner_.discard(part.end);
}

// --- Signals -------------------------------------------------------------------------------------

/// Words of version 1.7 in a block of 1.6. False if the signal as a whole is lost.
bool Rewriter::takeOutLaterWord(const Part& part, const FoundPart& found) {
    const std::string_view text = walk_.textOf(found);
    const Place place = placeIn(part, found.begin);
    if (found.rule->fate != Fate::Keep) {
        report_.forgetReader();
    }
    switch (found.rule->fate) {
        case Fate::Keep:
            return true;
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
        case Fate::TakeOut:
            break;
    }
    hasLaterParts_ = true;
    report_.change(place, "took out " + shortened(text));
    walk_.edits().takeOut(walk_.text(), found.begin, found.end);
    return true;
}

/// A name that an instance's signal has too is an error.
void Rewriter::checkName(const Part& part, std::string_view name) {
    if (!module().expandedNames.contains(name)) {
        return;
    }
    for (const NamedInstance& named : findInstances(module(), name)) {
        NameCollector collector;
        collector.begin(*named.instance);
        expand(module(), *named.instance, options_.expansion, collector);
        for (const std::string& each : collector.namesFor({})) {
            if (each == name) {
                report_.error(placeIn(part, 0), "the name " + each +
                                                    " would exist twice; the other one is in " +
                                                    report_.textOf(named.instance->place));
                return;
            }
        }
    }
}

void Rewriter::rewriteMeasurement(const Part& part) {
    checkName(part, walk_.parameter(0));
    bool isLost = walk_.parameter(2) == "FLOAT16_IEEE";
    if (isLost) {
        report_.loss(placeIn(part, walk_.parameters()[2].begin),
                     std::string(walk_.parameter(0)) + " is lost: the data type FLOAT16_IEEE");
    }
    for (const FoundPart& found : walk_.parts()) {
        isLost = isLost || !takeOutLaterWord(part, found);
    }
    if (isLost) {
        hasLaterParts_ = true;
        takeOut(part);
    } else if (mendSizes(part)) {
        writeEdited(part);
    }
}

/// Brings an array of more than three sizes into a form that the reader knows. False if the
/// measurement has been written or taken out for it.
bool Rewriter::mendSizes(const Part& part) {
    constexpr std::size_t kMostSizes = 3;
    const auto hasTooMany = [this](const FoundPart& dim) {
        return wordsOf(walk_.textOf(dim)).size() - 1 > kMostSizes;
    };
    const FoundPart* dim = nullptr;
    Array array;
    for (const FoundPart& found : walk_.parts()) {
        if (found.rule->keyword == "MATRIX_DIM") {
            if (dim != nullptr && hasTooMany(*dim)) {
                // The last one counts.
                hasLaterParts_ = true;
                report_.change(placeIn(part, dim->begin),
                               "took out " + shortened(walk_.textOf(*dim)));
                walk_.edits().takeOut(walk_.text(), dim->begin, dim->end);
            }
            dim = &found;
        } else if (found.rule->keyword == "LAYOUT") {
            array.isRowWise = valueOf(walk_.textOf(found)) == "ROW_DIR";
        }
    }
    if (dim == nullptr || !hasTooMany(*dim)) {
        return true;
    }
    hasLaterParts_ = true;
    const Place place = placeIn(part, dim->begin);
    const std::string name(walk_.parameter(0));
    array.sizes = readSizes(walk_.textOf(*dim));
    if (array.sizes.size() <= kMostSizes) {
        std::string text = "MATRIX_DIM";
        for (const std::int64_t size : array.sizes) {
            text += " " + std::to_string(size);
        }
        report_.change(place, "the sizes of " + name + " are now those of " + text);
        walk_.edits().replace(dim->begin, dim->end, array.sizes.empty() ? "MATRIX_DIM 1" : text);
        return true;
    }
    if (!array.isRowWiseOr(false)) {
        report_.loss(place, name +
                                " is lost: an array of more than three sizes without LAYOUT "
                                "ROW_DIR");
        takeOut(part);
        return false;
    }
    if (array.count() > options_.expansion.limit) {
        report_.error(place, name + " becomes " + std::to_string(array.count()) + " signals");
        return false;
    }
    report_.change(place, name + " became " + std::to_string(array.count()) + " signals");
    writeElements(part, array);
    return false;
}

/// Writes the values of an array of more than three sizes one by one.
void Rewriter::writeElements(const Part& part, const Array& array) {
    const std::string between = indentation(part);
    const ValueType* type = findValueType(walk_.parameter(2));
    copy(0, part.begin);
    const Place place = placeIn(part, 0);
    std::vector<std::int64_t> indices(array.sizes.size());
    const auto count = static_cast<std::int64_t>(array.count());
    for (std::int64_t element = 0; element < count; ++element) {
        std::int64_t rest = element;
        for (std::size_t i = 0; i < indices.size(); ++i) {
            indices[i] = rest % array.sizes[i];
            rest /= array.sizes[i];
        }
        make(element == 0 ? "" : between, place);
        make(elementText(indices, element * type->size), place);
    }
    scanner_.discard(part.end);
}

/// The measurement as that of one value, which lies so many bytes behind the first.
std::string Rewriter::elementText(const std::vector<std::int64_t>& indices, std::int64_t offset) {
    TextEdits edits = walk_.edits();
    std::string suffix;
    for (const std::int64_t index : indices) {
        suffix += "[" + std::to_string(index) + "]";
    }
    const std::size_t nameEnd = walk_.parameters()[0].end;
    edits.replace(nameEnd, nameEnd, suffix);
    for (const FoundPart& found : walk_.parts()) {
        const std::string_view keyword = found.rule->keyword;
        const std::string_view text = walk_.textOf(found);
        if (keyword == "MATRIX_DIM" || keyword == "LAYOUT" || keyword == "ARRAY_SIZE") {
            edits.takeOut(walk_.text(), found.begin, found.end);
        } else if (keyword == "ECU_ADDRESS") {
            edits.replace(
                found.begin, found.end,
                "ECU_ADDRESS " + addressText(integerOf(valueOf(text)).value_or(0), offset));
        } else if (keyword == "DISPLAY_IDENTIFIER") {
            edits.replace(found.begin, found.end, withSuffix(text, suffix));
        } else if (keyword == "SYMBOL_LINK") {
            const auto words = wordsOf(text);
            edits.replace(found.begin, found.end,
                          "SYMBOL_LINK " + std::string(words[1]) + " " +
                              std::to_string(integerOf(words[2]).value_or(0) + offset));
        } else if (keyword == "IF_DATA") {
            edits.replace(found.begin, found.end,
                          movedInterface(walk_.editedText(found), {}, offset));
        }
    }
    return edits.apply(walk_.text());
}

void Rewriter::rewriteCharacteristic(const Part& part) {
    checkName(part, walk_.parameter(0));
    for (const FoundPart& found : walk_.parts()) {
        takeOutLaterWord(part, found);
    }
    writeEdited(part);
}

// --- Lists of names ------------------------------------------------------------------------------

void Rewriter::rewriteFunction(const Part& part) {
    for (const FoundPart& found : walk_.parts()) {
        takeOutLaterWord(part, found);
    }
    rewriteNames(part);
}

/// The names of instances become those of their signals; what is lost goes out of the lists.
void Rewriter::rewriteNames(const Part& part) {
    const ModuleSurvey& survey = module();
    const bool matters = !survey.instances.empty() || !survey.blobs.empty();
    std::size_t changed = 0;
    std::set<std::pair<const PartRule*, std::string>> listedNames;
    for (const ListedName& listed : walk_.names()) {
        if (!matters || listed.list == nullptr || !listsSignals(listed.list->keyword)) {
            continue;
        }
        const std::string_view name = walk_.textOf(listed.token);
        NameCollector collector;
        for (const NamedInstance& named : findInstances(survey, name)) {
            collector.begin(*named.instance);
            expand(survey, *named.instance, options_.expansion, collector, named.target);
        }
        const auto& names = collector.namesFor(listed.list->keyword);
        const bool isBlob = !options_.expansion.blobArrays && survey.blobs.contains(name);
        if (names.empty() && !collector.hasLost() && !isBlob) {
            continue;
        }
        std::string text;
        for (const std::string& each : names) {
            if (listedNames.emplace(listed.list, each).second) {
                text += text.empty() ? each : " " + each;
            }
        }
        if (text == name) {
            continue;
        }
        ++changed;
        if (text.empty()) {
            walk_.edits().takeOut(walk_.text(), listed.token.begin, listed.token.end);
        } else {
            walk_.edits().replace(listed.token.begin, listed.token.end, std::move(text));
        }
    }
    if (changed > 0) {
        report_.change(placeIn(part, 0), "brought " + std::to_string(changed) +
                                             (changed == 1 ? " name in " : " names in ") +
                                             part.keyword + " " + std::string(walk_.parameter(0)) +
                                             " up to date");
    }
    writeEdited(part);
}

// --- The EPK -------------------------------------------------------------------------------------

void Rewriter::addEpk(const Part& part) {
    const ModuleSurvey& survey = module();
    const bool isMeant = options_.module.empty() || options_.module == survey.name;
    const auto text = isMeant ? epkText(survey.hasEpk, survey.hasEpkAddress) : std::nullopt;
    // A module may have several MOD_PAR, and the first one gets it.
    if (text && !std::exchange(hasPutEpk_, true)) {
        const std::size_t behind = walk_.parameters()[0].end;
        walk_.edits().replace(behind, behind, *text);
        report_.note(placeIn(part, 0), "put the EPK into MOD_PAR");
    }
    writeEdited(part);
}

// --- Instances -----------------------------------------------------------------------------------

void Rewriter::expandInstance(const Part& part) {
    const Member& instance = module().instances[nextInstance_];
    ++nextInstance_;
    InstanceText text = InstanceText::read(walk_);
    const Place place = placeIn(part, 0);
    InstanceWriter writer(*this, part, instance, text);
    expand(module(), instance, options_.expansion, writer);
    for (const Overwrite& overwrite : text.overwrites) {
        if (!overwrite.isUsed) {
            report_.loss(placeIn(part, overwrite.position),
                         "OVERWRITE " + overwrite.path + " names no component of " + instance.name);
        }
    }
    for (const std::string& misplaced : writer.misplaced()) {
        report_.loss(place, "no place for what OVERWRITE tells: " + misplaced);
    }
    report_.change(place, "INSTANCE " + instance.name + " became " +
                              std::to_string(writer.count()) +
                              (writer.count() == 1 ? " signal" : " signals"));
    if (writer.count() == 0) {
        takeOut(part);
    } else {
        scanner_.discard(part.end);
    }
}

void Rewriter::rewriteBlob(const Part& part) {
    const std::string name(walk_.parameter(0));
    const Place place = placeIn(part, 0);
    std::string text = "/begin MEASUREMENT " + name + " " + std::string(walk_.parameter(1)) +
                       " UBYTE NO_COMPU_METHOD 0 0 0 255 ECU_ADDRESS " +
                       std::string(walk_.parameter(2)) + " MATRIX_DIM " +
                       std::string(walk_.parameter(3));
    bool isPointer = false;
    for (const FoundPart& found : walk_.parts()) {
        const std::string_view keyword = found.rule->keyword;
        if (keyword == "ADDRESS_TYPE") {
            isPointer = isPointerType(valueOf(walk_.textOf(found)));
        } else if (keyword != "MODEL_LINK" && keyword != "CALIBRATION_ACCESS") {
            text += " " + walk_.editedText(found);
        }
    }
    if (!options_.expansion.blobArrays || isPointer) {
        report_.loss(place, name + " is lost: a BLOB");
        takeOut(part);
        return;
    }
    checkName(part, name);
    copy(0, part.begin);
    make(text + " /end MEASUREMENT", place);
    report_.change(place, "BLOB " + name + " became an array of UBYTE");
    scanner_.discard(part.end);
}

// --- Bytes ---------------------------------------------------------------------------------------

/// Makes sure that the window shows whether anything stands behind a position in its line.
void Rewriter::fetchRestOfLine(std::size_t position) {
    do {
        const std::string_view text = source_.view();
        while (position < text.size() && (text[position] == ' ' || text[position] == '\t')) {
            ++position;
        }
        if (position < text.size()) {
            return;
        }
    } while (source_.more());
}

/// Writes what stands before a part and gives the part away, with its line if it fills one.
void Rewriter::takeOut(const Part& part) {
    fetchRestOfLine(part.end);
    TextEdits edits;
    edits.takeOut(source_.view(), part.begin, part.end);
    const TextEdit& edit = edits.sorted().front();
    copy(0, edit.from);
    make(edit.text, source_.placeOf(part.begin));
    scanner_.discard(edit.to);
}

/// A line feed and the blanks before a part, for what is put behind it.
std::string Rewriter::indentation(const Part& part) const {
    const std::string_view before = source_.view().substr(0, part.begin);
    const std::size_t feed = before.rfind('\n');
    if (feed == std::string_view::npos) {
        return "\n";
    }
    const std::string_view blanks = before.substr(feed + 1);
    const bool isBlank = blanks.find_first_not_of(" \t") == std::string_view::npos;
    std::string text = feed > 0 && before[feed - 1] == '\r' ? "\r\n" : "\n";
    return isBlank ? text.append(blanks) : text;
}

Place Rewriter::placeIn(const Part& part, std::size_t position) {
    return source_.placeOf(part.begin + position);
}

/// Copies bytes of the window.
void Rewriter::copy(std::size_t from, std::size_t to) {
    if (map_ == nullptr && !options_.latin1) {
        output_.write(source_.view().substr(from, to - from));
        written_ += to - from;
        return;
    }
    while (from < to) {
        const std::size_t end = std::min(to, source_.fileEnd(from));
        const std::string_view bytes = source_.view().substr(from, end - from);
        const Place place = source_.placeOf(from);
        if (map_ != nullptr) {
            map_->addCopied(bytes, place);
        }
        put(bytes, place);
        from = end;
    }
}

/// Writes bytes that were made for something at a place.
void Rewriter::make(std::string_view bytes, Place place) {
    if (map_ != nullptr) {
        map_->addMade(bytes, place);
    }
    put(bytes, place);
}

void Rewriter::put(std::string_view bytes, Place place) {
    if (!options_.latin1 || isAscii(bytes)) {
        output_.write(bytes);
        written_ += bytes.size();
        return;
    }
    converted_.clear();
    const std::size_t lost = appendAsLatin1(bytes, converted_);
    if (lost > 0) {
        report_.loss(place, std::to_string(lost) + (lost == 1 ? " character" : " characters") +
                                " from here on that ISO 8859-1 lacks became ?");
    }
    output_.write(converted_);
    written_ += converted_.size();
}

}  // namespace quillmark::preparing
