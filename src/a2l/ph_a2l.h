#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "a2l/block_reader.h"
#include "a2l/lexer.h"
#include "a2l/name_batch.h"
#include "a2l/resolution.h"
#include "a2l/text_pool.h"
#include "model/enumerations.h"
#include "model/module_model.h"
#include "model/ph_object.h"
#include "model/ph_object_list.h"
#include "model/ph_string.h"
#include "model/ph_value.h"
#include "model/signal_model.h"

namespace quillmark {

/// Reader of A2L descriptions (ASAM MCD-2 MC). Each block has one operation named after its
/// keyword; they stand here in the order of the standard's nesting, and their bodies in one file
/// per family of blocks. Names that are not defined yet when something refers to them are left as
/// placeholders; resolve() binds them afterwards.
class PhA2l final : public BlockReader {
  public:
    using BlockReader::BlockReader;

    std::string_view formatName() const override { return "ASAP2"; }
    int parse(PhRoot& root) override;

    /// Reads an input that is already open, under the reader's file name.
    int parse(PhRoot& root, InputFile& input);

    /// Debugging aid: traces every token of the file, one line each. -1 without a file name, -2
    /// when the file cannot be opened, else 0.
    int print_tokens();

    /// Measurements that ended in an error during the last parse.
    std::int32_t errorCount() const { return errorCount_; }

    /// The byte order of MOD_COMMON, the default for the signals and protocols that follow it.
    PhByteOrder moduleByteOrder() const { return moduleByteOrder_; }

  private:
    struct Measurement;

    void startOver();
    int parseProjects(PhRoot& root, InputFile& input);

    // Blocks and optional parts. Each operation is called after the keyword, is given what the part
    // belongs to, and returns the kind of the first token after the part.

    // blocks_project.cpp
    int parseProject(PhRoot& root);
    int parseHeader(PhGroup& project);
    int parseModule(PhGroup& project);
    int parseInclude(PhGroup& module);
    int parseA2ml(PhGroup& module);
    int parseModPar(PhGroup& module);
    int parseVersion(PhGroup& module);
    int parseEpk(PhGroup& module);
    int parseEcu(PhGroup& module);
    int parseAddrEpk(PhGroup& module);
    int parseMemorySegment(PhGroup& module);
    int parseModCommon(PhGroup& module);
    int parseModuleByteOrder(PhGroup& module);

    // blocks_conversion.cpp
    int parseCompuMethod(PhGroup& module);
    int parseCoeffs(PhConversion& conversion);
    int parseCoeffsLinear(PhConversion& conversion);
    int parseRefUnit(PhConversion& conversion);
    int parseCompuTabRef(PhConversion& conversion);
    int parseFormula(PhConversion& conversion);
    int parseCompuTab(PhGroup& module);
    int parseCompuVtab(PhGroup& module);
    int parseCompuVtabRange(PhGroup& module);
    int parseDefaultValue(PhConversion& table);
    int parseVerbalDefaultValue(PhConversion& table);
    int parseUnit(PhGroup& module);

    // blocks_signal.cpp
    int parseMeasurement(PhGroup& module);
    int parseMeasurementBody(Measurement& measurement);
    int parseEcuAddress(Measurement& measurement);
    int parseEcuAddressExtension(Measurement& measurement);
    int parseBitMask(Measurement& measurement);
    int parseByteOrder(Measurement& measurement);
    int parseArraySize(Measurement& measurement);
    int parseMatrixDim(Measurement& measurement);
    int parseLayout(Measurement& measurement);
    int parseMeasurementIfData(Measurement& measurement);
    int parseBitOperation(Measurement& measurement);
    int parseLeftShift(PhEntity& signal);
    int parseRightShift(PhEntity& signal);
    int parseSignExtend(PhEntity& signal);
    int parseVirtual(Measurement& measurement);
    int parseCharacteristic(PhGroup& module);
    int parseCharacteristicByteOrder(PhEntity& signal);
    int parseNumber(PhEntity& signal);
    int parseDependentCharacteristic(PhEntity& signal);
    int parseVirtualCharacteristic(PhEntity& signal);

    // blocks_record_layout.cpp
    int parseRecordLayout(PhGroup& module);

    // blocks_group.cpp
    int parseGroup(PhGroup& module);
    int parseFunction(PhGroup& module);
    template <int Keyword>
    int parseSignalNames(PhFunction& function);
    void bindSignals(NameBatch& names, PhObjectList<PhEntity>& signals);
    template <int Keyword>
    int parseFunctionNames(PhFunction& function);
    int parseFrame(PhGroup& module);
    int parseFrameMeasurement(PhFrame& frame);
    int parseUserRights(PhGroup& module);
    int readAnnotation();
    int parseAnnotationText(PhA2l& reader);

    // if_data.cpp
    int parseIfData(PhObject& owner);

    // The same part in blocks of different kinds.
    template <typename Owner>
    int parseIfDataOf(Owner& owner) {
        return parseIfData(owner);
    }
    template <typename Owner>
    int parseAnnotation(Owner&) {
        return readAnnotation();
    }

    // Parameters that are read and not kept.
    template <typename Owner>
    int dropWord(Owner&) {
        nextWord();
        return next();
    }
    template <typename Owner>
    int dropNumbers(Owner&) {
        int kind = next();
        while (kind == TOK_INTEGER || kind == TOK_FLOAT) {
            kind = next();
        }
        return kind;
    }
    template <typename Owner>
    int dropNames(Owner&) {
        return readNames([](std::string_view) {});
    }
    template <typename Owner, int Keyword>
    int dropNameBlock(Owner&) {
        return readNameBlock(Keyword, [](std::string_view) {});
    }

    // Parts of several blocks, read from the next token on.
    int storeText(PhGroup& module, std::string_view property);
    PhHandle<PhConversion> startTable(std::string_view traceFormat);
    std::int32_t readElementCount(PhConversion& table);
    PhNumber readTableNumber();
    PhString readTableText();
    void keepEntry(PhConversion& table, PhTableEntry entry);
    int closeVerbalTable(PhConversion& table, int keyword);
    PhHandle<PhUnit> inlineUnit(std::string_view text);
    int readByteOrder(PhByteOrder& byteOrder);
    void keepShift(PhEntity& signal, PhBitOperation operation, std::int32_t count);
    void readStorageType(PhEntity& signal);
    void readLimits(PhEntity& signal);
    PhNumber readLimit(std::string_view message);
    void applyDimensions(const Measurement& measurement);

    // Traces "... '%s'\n" with a name or a text when the reader is verbose.
    void traceBlock(std::string_view format, const PhObject& block) {
        traceText(format, block.name());
    }
    void traceText(std::string_view format, const PhString& text) {
        if (verbose()) {
            trace(format, {text.view()});
        }
    }

    /// Stand-ins for names that were not defined yet when something referred to them, one per
    /// name, shared by all that refer to it.
    struct Placeholders {
        PhObjectList<PhConversion> conversions;
        PhObjectList<PhUnit> units;
        PhObjectList<PhRecordLayout> recordLayouts;
        PhObjectList<PhEntity> signals;
        PhObjectList<PhFunction> functions;
    };

    /// What `name` refers to within the current module: the object if it is defined already,
    /// otherwise its placeholder.
    template <typename T>
    PhHandle<T> refer(PhObjectList<T> PhGroup::*kind, PhObjectList<T>& placeholders,
                      std::string_view name) {
        if (T* defined = findInScope(module_, kind, name)) {
            return PhHandle<T>(defined);
        }
        if (T* placeholder = placeholders.find(name)) {
            return PhHandle<T>(placeholder);
        }
        auto placeholder = makePh<T>();
        placeholder->setName(PhString(name));
        placeholder->markPlaceholder();
        ++openPlaceholders_;
        placeholders.append(placeholder);
        return placeholder;
    }

    /// The object that a block of that name defines. Its placeholder, if there is one, becomes that
    /// object: whatever referred to it is bound by that, and millions of names that stand before
    /// their definitions cost no second object each.
    template <typename T>
    PhHandle<T> define(PhObjectList<T>& placeholders, std::string_view name) {
        if (T* placeholder = placeholders.find(name);
            placeholder != nullptr && placeholder->isPlaceholder()) {
            placeholder->markDefined();
            --openPlaceholders_;
            return PhHandle<T>(placeholder);
        }
        auto object = makePh<T>();
        object->setName(PhString(name));
        return object;
    }

    /// The same for a block whose name is the next token, as it should be: else the error
    /// "Identifier expected", and an object without a name.
    template <typename T>
    PhHandle<T> defineNext(PhObjectList<T>& placeholders) {
        return expectIdentifier() ? define(placeholders, token().text) : makePh<T>();
    }
    PhHandle<PhConversion> referConversion(std::string_view name) {
        return refer(&PhGroup::conversions, placeholders_.conversions, name);
    }

    /// Signals whose conversions are named but not bound yet, and the names.
    struct Unbound {
        NameBatch names;
        std::vector<PhHandle<PhEntity>> signals;
    };

    /// Makes the conversion of that name the signal's, together with those of other signals, when
    /// enough have come together or their module ends.
    void bindConversionSoon(PhEntity& signal, std::string_view name);
    void bindConversions();

    std::int32_t errorCount_ = 0;
    PhByteOrder moduleByteOrder_ = PhByteOrder::Undefined;
    PhGroup* module_ = nullptr;         ///< the module being read
    Placeholders placeholders_;         ///< of that module
    std::size_t openPlaceholders_ = 0;  ///< how many of them are not defined yet
    Unbound unbound_;
    PhObjectList<PhUnit> inlineUnits_;
    TextPool texts_;
};

}  // namespace quillmark
