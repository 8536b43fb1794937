#pragma once

#include <cstdint>
#include <string_view>

#include "a2l/module_references.h"
#include "a2l/reader/block_reader.h"
#include "a2l/text_pool.h"
#include "a2l/tokens/lexer.h"
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
    template <int Keyword>
    int parseFunctionNames(PhFunction& function);
    int parseFrame(PhGroup& module);
    int parseFrameMeasurement(PhFrame& frame);
    int parseUserRights(PhGroup& module);
    int readAnnotation();
    int parseAnnotationText(PhA2l& reader);

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

    /// ModuleReferences::define() for a block whose name is the next token, as it should be: else
    /// the error "Identifier expected", and an object without a name.
    template <typename T>
    PhHandle<T> defineNext() {
        return expectIdentifier() ? references_->define<T>(token().text) : makePh<T>();
    }

    std::int32_t errorCount_ = 0;
    PhByteOrder moduleByteOrder_ = PhByteOrder::Undefined;
    ModuleReferences* references_ = nullptr;  ///< of the module being read
    PhObjectList<PhUnit> inlineUnits_;
    TextPool texts_;
};

}  // namespace quillmark
