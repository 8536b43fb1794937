#include "bench/generate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <span>

namespace quillmark::bench {
namespace {

/// Collects text for the sink and counts it. Takes strings and integers.
class TextWriter {
  public:
    explicit TextWriter(OutputSink& sink) : sink_(sink) {}

    TextWriter& operator<<(std::string_view text) {
        sink_.write(text);
        written_ += text.size();
        return *this;
    }

    TextWriter& operator<<(std::integral auto number) { return writeNumber(number, 10, 0); }

    TextWriter& hex(std::uint64_t number) {
        *this << "0x";
        return writeNumber(number, 16, 0);
    }

    /// A number with leading zeros.
    TextWriter& padded(std::uint64_t number, std::size_t digits) {
        return writeNumber(number, 10, digits);
    }

    std::uint64_t written() const { return written_; }

  private:
    TextWriter& writeNumber(std::integral auto number, int base, std::size_t digits) {
        std::array<char, 24> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), number, base).ptr;
        const auto length = static_cast<std::size_t>(end - text.data());
        for (std::size_t i = length; i < digits; ++i) {
            *this << "0";
        }
        return *this << std::string_view(text.data(), length);
    }

    OutputSink& sink_;
    std::uint64_t written_ = 0;
};

/// SplitMix64. The generators of the standard library are fixed, too, but not its distributions.
class Random {
  public:
    /// A number below `limit`.
    std::uint64_t below(std::uint64_t limit) {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return (mixed ^ (mixed >> 31)) % limit;
    }

    std::string_view pick(std::span<const std::string_view> texts) {
        return texts[below(texts.size())];
    }

  private:
    std::uint64_t state_ = 20170600;
};

constexpr std::string_view kNameParts[] = {"Boost",  "Rail",   "Fan",    "Clutch", "Oil",   "Knock",
                                           "Idle",   "Purge",  "Lambda", "Torque", "Valve", "Spark",
                                           "Coolnt", "Intake", "Turbo",  "Pedal"};
constexpr std::string_view kNameKinds[] = {"_st", "_p", "_T", "_n", "_flg", "_cntr", "_dm", "_u"};
constexpr std::string_view kWords[] = {
    "pressure", "behind", "the",       "first",  "throttle", "desired", "filtered", "value",
    "of",       "speed",  "gradient",  "after",  "start",    "raw",     "sensor",   "voltage",
    "state",    "limit",  "according", "to",     "engine",   "load",    "and",      "temperature",
    "counter",  "for",    "plausible", "errors", "in",       "bank",    "two",      "correction"};
constexpr std::string_view kUnits[] = {"hPa", "degC", "1/min", "%", "V", "mg/hub", "Nm", "km/h"};
constexpr std::string_view kTypes[] = {"UBYTE", "SBYTE", "UWORD", "SWORD",
                                       "ULONG", "SLONG", "UWORD", "FLOAT32_IEEE"};

/// The frame around the objects: everything that the logger needs to reach the unit.
constexpr std::string_view kProjectStart = R"(ASAP2_VERSION 1 60

/begin PROJECT Treadmill "generated for measurements of time and memory"
  /begin MODULE Rig "generated control unit"
)";
constexpr std::string_view kModuleStart = R"(
    /begin MOD_PAR "generated" EPK "RIG_0001" ADDR_EPK 0x80001000 /end MOD_PAR
    /begin MOD_COMMON "defaults" BYTE_ORDER MSB_LAST ALIGNMENT_BYTE 1 /end MOD_COMMON
    /begin IF_DATA XCP
      /begin DAQ
        DYNAMIC 8 4 0 OPTIMISATION_TYPE_DEFAULT ADDRESS_EXTENSION_FREE
        IDENTIFICATION_FIELD_TYPE_ABSOLUTE GRANULARITY_ODT_ENTRY_SIZE_DAQ_BYTE 7
        OVERLOAD_INDICATION_PID
        /begin EVENT "10 ms task" "10ms" 0x1 DAQ 0xFF 10 6 0x80 /end EVENT
        /begin EVENT "100 ms task" "100ms" 0x2 DAQ 0xFF 100 6 0x10 /end EVENT
      /end DAQ
      /begin XCP_ON_CAN
        0x0101 CAN_ID_MASTER 0x7E1 CAN_ID_SLAVE 0x7E9 BAUDRATE 500000
      /end XCP_ON_CAN
    /end IF_DATA
    /begin RECORD_LAYOUT Cell_U16 FNC_VALUES 1 UWORD COLUMN_DIR DIRECT /end RECORD_LAYOUT
    /begin RECORD_LAYOUT Curve_U16
      NO_AXIS_PTS_X 1 UBYTE AXIS_PTS_X 2 UWORD INDEX_INCR DIRECT
      FNC_VALUES 3 UWORD COLUMN_DIR DIRECT
    /end RECORD_LAYOUT
)";
constexpr std::string_view kProjectEnd = "  /end MODULE\n/end PROJECT\n";

/// Begins a line within an object.
constexpr std::string_view kLine = "\n      ";

constexpr std::string_view kEventList = R"(
      /begin IF_DATA XCP
        /begin DAQ_EVENT FIXED_EVENT_LIST EVENT 0x1 /end DAQ_EVENT
      /end IF_DATA)";

/// How many conversions every mix has at least, for signals to refer to.
constexpr std::uint64_t kLeastConversions = 8;

/// Writes the objects of one description, numbering each kind from 0.
class Generator {
  public:
    explicit Generator(OutputSink& sink) : text_(sink) {}

    std::uint64_t written() const { return text_.written(); }

    void writeLiteral(std::string_view literal) { text_ << literal; }

    void writeA2ml() {
        text_ << "      struct Layer_" << a2mlBlocks_++ << " {\n";
        for (int member = 0; member < 6; ++member) {
            text_ << "        " << (member % 2 == 0 ? "uint" : "ulong") << ";  /* ";
            writeSentence(4);
            text_ << " */\n";
        }
        text_ << "        taggedstruct { (block \"" << random_.pick(kNameParts)
              << "\" struct { uchar; char[64]; })*; };\n      };\n";
    }

    void writeConversion() {
        const std::uint64_t number = conversions_++;
        switch (number % 4) {
            case 0:
                startConversion(number, "RAT_FUNC");
                text_ << "\n      COEFFS 0 " << 1 + random_.below(4096) << " -"
                      << random_.below(900) << " 0 0 " << 1 + random_.below(100);
                break;
            case 1:
                startConversion(number, "LINEAR");
                text_ << "\n      COEFFS_LINEAR 0." << 1 + random_.below(99999) << " -"
                      << random_.below(100);
                break;
            case 2:
                startConversion(number, "TAB_VERB");
                text_ << "\n      COMPU_TAB_REF Texts_" << number;
                break;
            default:
                startConversion(number, "TAB_INTP");
                text_ << "\n      COMPU_TAB_REF Curve_" << number;
                break;
        }
        text_ << "\n    /end COMPU_METHOD\n";
        writeTable(number);
    }

    /// A measurement with a name, texts and optional parts as long as real ones are: some 300
    /// bytes, one parameter to a line.
    void writeMeasurement() {
        const std::uint64_t number = measurements_++;
        const Name name{random_.pick(kNameParts), random_.pick(kNameParts),
                        random_.pick(kNameKinds), number};
        text_ << "    /begin MEASUREMENT ";
        writeName(name);
        writeDescriptionLine();
        text_ << kLine << random_.pick(kTypes) << kLine;
        referToConversion();
        text_ << kLine << "1" << kLine << "0" << kLine << "0" << kLine << 1 + random_.below(65535);
        if (random_.below(2) == 0) {
            text_ << ".5";
        }
        text_ << kLine << "ECU_ADDRESS ";
        text_.hex(0x70000000 + 4 * number);
        if (random_.below(2) == 0) {
            text_ << kLine << "ECU_ADDRESS_EXTENSION 0x0";
        }
        if (random_.below(4) == 0) {
            text_ << kLine << "FORMAT \"%7.2\"";
        }
        if (random_.below(8) == 0) {
            text_ << kLine << "BIT_MASK ";
            text_.hex(std::uint64_t{1} << random_.below(8));
        }
        if (random_.below(2) == 0) {
            writeSymbolLink(name);
        }
        if (random_.below(4) == 0) {
            text_ << kEventList;
        }
        if (random_.below(8) == 0) {
            writeAnnotation();
        }
        text_ << "\n    /end MEASUREMENT\n";
    }

    /// A short measurement, named by number only, for groups to refer to.
    void writeSerialMeasurement() {
        text_ << "    /begin MEASUREMENT ";
        writeSerialName(serials_);
        text_ << " \"\" UWORD ";
        referToConversion();
        text_ << " 1 0 0 65535 ECU_ADDRESS ";
        text_.hex(0x60000000 + 2 * serials_) << " /end MEASUREMENT\n";
        ++serials_;
    }

    void writeArrayMeasurement() {
        text_ << "    /begin MEASUREMENT Field_" << arrays_ << " \"";
        writeSentence(6);
        text_ << "\" UWORD ";
        referToConversion();
        text_ << " 1 0 0 65535\n      ARRAY_SIZE " << 2 + random_.below(15) << " ECU_ADDRESS ";
        text_.hex(0x50000000 + 64 * arrays_) << "\n    /end MEASUREMENT\n";
        ++arrays_;
    }

    void writeCharacteristic() {
        const std::uint64_t number = characteristics_++;
        constexpr std::string_view kForms[] = {"VALUE", "VALUE", "VAL_BLK", "CURVE"};
        const std::string_view form = random_.pick(kForms);
        const std::uint64_t limit = 1 + random_.below(65535);
        const Name name{random_.pick(kNameParts), random_.pick(kNameParts), "_C", number};
        text_ << "    /begin CHARACTERISTIC ";
        writeName(name);
        writeDescriptionLine();
        text_ << kLine << form << kLine;
        text_.hex(0x80010000 + 16 * number)
            << kLine << (form == "CURVE" ? "Curve_U16" : "Cell_U16") << kLine << "0" << kLine;
        referToConversion();
        text_ << kLine << "0" << kLine << limit;
        if (form == "VAL_BLK") {
            text_ << kLine << "NUMBER " << 1 + random_.below(100000);
        } else if (form == "CURVE") {
            text_ << kLine << "/begin AXIS_DESCR STD_AXIS NO_INPUT_QUANTITY ";
            referToConversion();
            text_ << " 16 0 65535 /end AXIS_DESCR";
        }
        text_ << kLine << "EXTENDED_LIMITS 0 " << limit << kLine << "FORMAT \"%8.3\"";
        if (random_.below(2) == 0) {
            writeSymbolLink(name);
        }
        text_ << "\n    /end CHARACTERISTIC\n";
    }

    /// A group that names the next ten thousand serial measurements of `count`, from the front
    /// again after the last one.
    void writeGroup(std::uint64_t count) {
        constexpr std::uint64_t kNamesPerGroup = 10000;
        text_ << "    /begin GROUP List_" << groups_++ << " \"";
        writeSentence(5);
        text_ << "\"\n      ROOT\n      /begin REF_MEASUREMENT\n";
        for (std::uint64_t i = 0; i < std::min(count, kNamesPerGroup); ++i) {
            text_ << "        ";
            writeSerialName(nextInGroup_);
            text_ << "\n";
            nextInGroup_ = nextInGroup_ + 1 < count ? nextInGroup_ + 1 : 0;
        }
        text_ << "      /end REF_MEASUREMENT\n    /end GROUP\n";
    }

    void writeComment() {
        text_ << "    /* ";
        for (int line = 0; line < 60; ++line) {
            writeSentence(12);
            text_ << "\n       ";
        }
        text_ << "*/\n";
        for (int line = 0; line < 20; ++line) {
            text_ << "    // ";
            writeSentence(10);
            text_ << "\n";
        }
    }

    std::uint64_t serialCount() const { return serials_; }

  private:
    /// What the name of an object is put together from.
    struct Name {
        std::string_view system;
        std::string_view part;
        std::string_view kind;
        std::uint64_t number;
    };

    void writeName(const Name& name) {
        text_ << name.system << name.part << name.kind;
        text_.padded(name.number, 7);
    }

    void writeDescriptionLine() {
        text_ << kLine << "\"";
        writeSentence(3 + random_.below(7));
        text_ << "\"";
    }

    void writeSymbolLink(const Name& name) {
        text_ << kLine << "SYMBOL_LINK \"";
        writeName(name);
        text_ << "\" 0";
    }

    void writeAnnotation() {
        text_ << kLine << "/begin ANNOTATION ANNOTATION_LABEL \"origin\"\n"
              << "        /begin ANNOTATION_TEXT \"";
        writeSentence(8);
        text_ << "\" /end ANNOTATION_TEXT" << kLine << "/end ANNOTATION";
    }

    void startConversion(std::uint64_t number, std::string_view kind) {
        text_ << "    /begin COMPU_METHOD Conv_" << number << " \"";
        writeSentence(4);
        text_ << "\" " << kind << " \"%8.3\" \"" << random_.pick(kUnits) << "\"";
    }

    void writeTable(std::uint64_t number) {
        const std::uint64_t rows = 4 + random_.below(12);
        if (number % 4 == 2) {
            text_ << "    /begin COMPU_VTAB Texts_" << number << " \"\" TAB_VERB " << rows << "\n";
            for (std::uint64_t row = 0; row < rows; ++row) {
                text_ << "      " << row << " \"" << random_.pick(kWords) << " "
                      << random_.pick(kWords) << "\"\n";
            }
            text_ << "    /end COMPU_VTAB\n";
        } else if (number % 4 == 3) {
            text_ << "    /begin COMPU_TAB Curve_" << number << " \"\" TAB_INTP " << rows << "\n";
            for (std::uint64_t row = 0; row < rows; ++row) {
                text_ << "      " << 64 * row << ".5 " << random_.below(1000) << "."
                      << random_.below(1000) << "\n";
            }
            text_ << "    /end COMPU_TAB\n";
        }
    }

    void writeSerialName(std::uint64_t number) {
        text_ << "Signal_";
        text_.padded(number, 8);
    }

    void writeSentence(std::uint64_t words) {
        for (std::uint64_t i = 0; i < words; ++i) {
            text_ << (i == 0 ? "" : " ") << random_.pick(kWords);
        }
    }

    /// Names a conversion, the early ones far more often than the late ones: a tenth of them serves
    /// four fifths of the signals. In descriptions of real units it serves three fifths to all.
    void referToConversion() {
        const auto scales = static_cast<std::uint64_t>(std::bit_width(conversions_));
        const std::uint64_t limit = std::uint64_t{1} << random_.below(scales + 1);
        text_ << "Conv_" << random_.below(std::min(limit, conversions_));
    }

    TextWriter text_;
    Random random_;
    std::uint64_t a2mlBlocks_ = 0;
    std::uint64_t conversions_ = 0;
    std::uint64_t measurements_ = 0;
    std::uint64_t serials_ = 0;
    std::uint64_t arrays_ = 0;
    std::uint64_t characteristics_ = 0;
    std::uint64_t groups_ = 0;
    std::uint64_t nextInGroup_ = 0;
};

/// What share of the size, in percent, each kind of content gets.
struct Mix {
    std::string_view name;
    unsigned a2ml;
    unsigned conversions;
    unsigned measurements;
    unsigned serials;
    unsigned arrays;
    unsigned characteristics;
    unsigned groups;
    unsigned comments;
    bool groupsFirst;  ///< groups name signals that are defined behind them
};

constexpr Mix kMixes[] = {
    {"realistic", 4, 4, 42, 4, 1, 34, 6, 5, false},
    {"measurements", 0, 1, 99, 0, 0, 0, 0, 0, false},
    {"characteristics", 0, 1, 0, 0, 0, 99, 0, 0, false},
    {"conversions", 0, 95, 5, 0, 0, 0, 0, 0, false},
    {"groups", 0, 1, 0, 69, 0, 0, 30, 0, false},
    {"forward-groups", 0, 1, 0, 74, 0, 0, 25, 0, true},
    {"arrays", 0, 1, 19, 0, 80, 0, 0, 0, false},
    {"a2ml", 90, 1, 9, 0, 0, 0, 0, 0, false},
    {"comments", 0, 1, 9, 0, 0, 0, 0, 90, false},
};

/// Writes things of one kind until they fill `percent` of `size`.
template <typename Write>
void fill(Generator& generator, std::uint64_t size, unsigned percent, Write writeOne) {
    const std::uint64_t end = generator.written() + size * percent / 100;
    while (percent != 0 && generator.written() < end) {
        writeOne();
    }
}

void writeGroupsFirst(Generator& generator, const Mix& mix, std::uint64_t size) {
    // With this many bytes for each, the signals fill their share.
    constexpr std::uint64_t kSerialSize = 95;
    const std::uint64_t count = 1 + size * mix.serials / 100 / kSerialSize;
    fill(generator, size, mix.groups, [&] { generator.writeGroup(count); });
    while (generator.serialCount() < count) {
        generator.writeSerialMeasurement();
    }
}

void writeSerialsFirst(Generator& generator, const Mix& mix, std::uint64_t size) {
    fill(generator, size, mix.serials, [&] { generator.writeSerialMeasurement(); });
    fill(generator, size, mix.groups, [&] { generator.writeGroup(generator.serialCount()); });
}

void writeDescription(const Mix& mix, std::uint64_t size, OutputSink& sink) {
    Generator generator(sink);
    generator.writeLiteral(kProjectStart);
    generator.writeLiteral("    /begin A2ML\n");
    fill(generator, size, mix.a2ml, [&] { generator.writeA2ml(); });
    generator.writeLiteral("    /end A2ML\n");
    generator.writeLiteral(kModuleStart);
    for (std::uint64_t i = 0; i < kLeastConversions; ++i) {
        generator.writeConversion();
    }
    fill(generator, size, mix.conversions, [&] { generator.writeConversion(); });
    fill(generator, size, mix.comments, [&] { generator.writeComment(); });
    fill(generator, size, mix.measurements, [&] { generator.writeMeasurement(); });
    fill(generator, size, mix.arrays, [&] { generator.writeArrayMeasurement(); });
    fill(generator, size, mix.characteristics, [&] { generator.writeCharacteristic(); });
    if (mix.groupsFirst) {
        writeGroupsFirst(generator, mix, size);
    } else {
        writeSerialsFirst(generator, mix, size);
    }
    generator.writeLiteral(kProjectEnd);
}

}  // namespace

std::vector<std::string_view> mixNames() {
    std::vector<std::string_view> names;
    for (const Mix& mix : kMixes) {
        names.push_back(mix.name);
    }
    return names;
}

bool generateDescription(std::string_view mixName, std::uint64_t size, OutputSink& sink) {
    for (const Mix& mix : kMixes) {
        if (mix.name == mixName) {
            writeDescription(mix, size, sink);
            return true;
        }
    }
    return false;
}

std::string generatedDescription(std::string_view mix, std::uint64_t size) {
    std::string text;
    StringSink sink(text);
    if (!generateDescription(mix, size, sink)) {
        return {};
    }
    sink.finish();
    return text;
}

}  // namespace quillmark::bench
