// The frame of a description: PROJECT, HEADER, MODULE, MOD_PAR with its memory segments,
// MOD_COMMON.

#include <cstdint>

#include "a2l/core_blocks.h"
#include "a2l/reader/enumeration_parameter.h"
#include "a2l/recovery.h"
#include "model/setting_names.h"

namespace quillmark {

namespace {

using namespace kw::core;

using GroupRule = CoreRule<PhGroup>;

int parseHeader(CoreReader& reader, PhGroup& project) {
    const PhString comment = reader.readString();
    reader.traceBlock("Parse HEADER '%s'\n", comment);
    static constexpr GroupRule kRules[] = {
        skipped(VERSION, 1),
        skipped(PROJECT_NO, 1),
    };
    return readParts(reader, kRules, project, HEADER, reader.next());
}

// The named file is not read: what it would add is not part of this description.
int parseInclude(CoreReader& reader, PhGroup&) {
    return reader.next() == TOK_STRING ? reader.next() : reader.fail("Filename expected");
}

// The interface description language is read over up to the first /end; it knows no blocks of its
// own.
int parseA2ml(CoreReader& reader, PhGroup&) {
    reader.traceBlock("  Parse A2ML \n");
    int kind = reader.next();
    while (kind != END && kind != TOK_EOF && kind != TOK_ERROR) {
        kind = reader.next();
    }
    return kind == END ? reader.closeBlock(A2ML) : kind;
}

/// A text, kept under the name that the rule tells.
int storeText(CoreReader& reader, PhGroup& module, const GroupRule& rule) {
    const PhString text = reader.readString();
    reader.keepText(module.obtainProperties(), rule.value<std::string_view>(), text.view());
    return reader.next();
}

int parseAddrEpk(CoreReader& reader, PhGroup& module) {
    std::int32_t address = 0;
    if (reader.readIntegerOrWarn(address)) {
        module.obtainProperties().setInteger(setting::kEpkAddress, address);
    }
    return reader.next();
}

int parseMemorySegment(CoreReader& reader, PhGroup& module) {
    // Several words of the standard share a use of the model, which knows fewer.
    static constexpr WordRow<PhSegmentUse> kUses[] = {
        {kw::word::CODE, PhSegmentUse::Code},
        {kw::word::DATA, PhSegmentUse::Data},
        {kw::word::VARIABLES, PhSegmentUse::Variables},
        {kw::word::RESERVED, PhSegmentUse::Reserved},
        {kw::word::CALIBRATION_VARIABLES, PhSegmentUse::Parameters},
        {kw::word::OFFLINE_DATA, PhSegmentUse::Undefined},
        {kw::word::SERAM, PhSegmentUse::Undefined},
        {kw::word::EXCLUDE_FROM_FLASH, PhSegmentUse::Undefined},
    };
    static constexpr WordRow<PhMemoryType> kTypes[] = {
        {kw::word::RAM, PhMemoryType::Ram},
        {kw::word::ROM, PhMemoryType::Rom},
        {kw::word::EPROM, PhMemoryType::Eprom},
        {kw::word::EEPROM, PhMemoryType::Eeprom},
        {kw::word::FLASH, PhMemoryType::Flash},
        {kw::word::REGISTER, PhMemoryType::Register},
        {identifier("NOT_IN_ECU"), PhMemoryType::Undefined},
    };
    static constexpr WordRow<PhMemoryAttribute> kAttributes[] = {
        {kw::word::INTERN, PhMemoryAttribute::Intern},
        {kw::word::EXTERN, PhMemoryAttribute::Extern},
    };
    constexpr int kMirrorOffsets = 5;

    auto segment = makePh<PhMemoryPage>();
    segment->setName(reader.readIdentifier());
    reader.readLongIdentifier(*segment);
    reader.traceBlock("  Parse MEMORY_SEGMENT '%s'\n", segment->name());
    segment->use = readChoice(reader, kUses);
    segment->memoryType = readChoice(reader, kTypes);
    segment->attribute = readChoice(reader, kAttributes);
    segment->address = reader.readInteger();
    segment->size = reader.readInteger();
    reader.keepIn(module.memoryPages, segment);
    static constexpr CoreRule<PhMemoryPage> kRules[] = {
        block(IF_DATA, parseIfData<PhMemoryPage>),
    };
    return readParts(reader, kRules, *segment, MEMORY_SEGMENT, reader.drop(kMirrorOffsets));
}

int parseModPar(CoreReader& reader, PhGroup& module) {
    module.obtainProperties();
    const PhString comment = reader.readString();
    reader.traceBlock("  Parse MOD_PAR '%s'\n", comment);
    static constexpr GroupRule kRules[] = {
        bare(VERSION, storeText, setting::kVersion),
        bare(ADDR_EPK, parseAddrEpk),
        bare(EPK, storeText, setting::kEpk),
        bare(ECU, storeText, setting::kEcu),
        skipped(SUPPLIER, 1),
        skipped(CUSTOMER, 1),
        skipped(CUSTOMER_NO, 1),
        skipped(USER, 1),
        skipped(PHONE_NO, 1),
        skipped(CPU_TYPE, 1),
        skipped(NO_OF_INTERFACES, 1),
        skipped(ECU_CALIBRATION_OFFSET, 1),
        skipped(SYSTEM_CONSTANT, 2),
        block(MEMORY_SEGMENT, parseMemorySegment),
        skippedBlock(CALIBRATION_METHOD),
        skippedBlock(MEMORY_LAYOUT),
    };
    return readParts(reader, kRules, module, MOD_PAR, reader.next());
}

int parseModuleByteOrder(CoreReader& reader, PhGroup&) {
    reader.keepModuleByteOrder(readByteOrder(reader));
    return reader.next();
}

int parseModCommon(CoreReader& reader, PhGroup& module) {
    const PhString comment = reader.readString();
    reader.traceBlock("Parse MOD_COMMON '%s'\n", comment);
    static constexpr GroupRule kRules[] = {
        bare(BYTE_ORDER_, parseModuleByteOrder),
        skipped(S_REC_LAYOUT, 1),
        skipped(DEPOSIT, 1),
        skipped(DATA_SIZE, 1),
        skipped(ALIGNMENT_BYTE, 1),
        skipped(ALIGNMENT_WORD, 1),
        skipped(ALIGNMENT_LONG, 1),
        skipped(ALIGNMENT_INT64, 1),
        skipped(ALIGNMENT_FLOAT16_IEEE, 1),
        skipped(ALIGNMENT_FLOAT32_IEEE, 1),
        skipped(ALIGNMENT_FLOAT64_IEEE, 1),
    };
    return readParts(reader, kRules, module, MOD_COMMON, reader.next());
}

/// A block of the module. The reader knows which one it is, so that it can look for its end if the
/// parse fails there.
int parseModuleBlock(CoreReader& reader, PhGroup& module, const GroupRule& rule) {
    reader.setModuleBlock(rule.keyword());
    const int kind = rule.value<GroupRule::Parse>()(reader, module);
    if (kind != TOK_ERROR) {
        reader.setModuleBlock(TOK_EOF);
    }
    return kind;
}

constexpr GroupRule moduleBlock(int keyword, GroupRule::Parse parse) {
    return {Form::Block, keyword, parseModuleBlock, parse};
}

int parseModule(CoreReader& reader, PhGroup& project) {
    auto module = makePh<PhGroup>(PhDocumentKind::Module, &project);
    module->setName(reader.readIdentifier());
    reader.readLongIdentifier(*module);
    if (reader.failed()) {
        return TOK_ERROR;
    }
    project.documents.append(module);
    reader.traceBlock("Parse MODULE '%s'\n", module->name());
    const CoreReader::ModuleScope scope(reader, *module);

    static constexpr GroupRule kRules[] = {
        moduleBlock(MEASUREMENT, parseMeasurement),
        moduleBlock(CHARACTERISTIC, parseCharacteristic),
        moduleBlock(COMPU_METHOD, parseCompuMethod),
        moduleBlock(COMPU_TAB, parseCompuTab),
        moduleBlock(COMPU_VTAB, parseCompuVtab),
        moduleBlock(COMPU_VTAB_RANGE, parseCompuVtabRange),
        skippedBlock(AXIS_PTS),
        moduleBlock(RECORD_LAYOUT, parseRecordLayout),
        moduleBlock(GROUP, parseGroup),
        moduleBlock(FUNCTION, parseFunction),
        moduleBlock(FRAME, parseFrame),
        moduleBlock(UNIT, parseUnit),
        moduleBlock(IF_DATA, parseIfData<PhGroup>),
        moduleBlock(MOD_PAR, parseModPar),
        moduleBlock(MOD_COMMON, parseModCommon),
        moduleBlock(A2ML, parseA2ml),
        moduleBlock(USER_RIGHTS, parseUserRights),
        skippedBlock(VARIANT_CODING),
        bare(INCLUDE, parseInclude),
    };
    for (int kind = reader.next(); kind != TOK_ERROR; kind = resumeInModule(reader, kRules)) {
        kind = readOptionals(reader, kRules, *module, kind, OtherBlocks::Wrong);
        if (kind == END) {
            return reader.closeBlock(MODULE);
        }
    }
    return TOK_ERROR;
}

}  // namespace

int parseProject(CoreReader& reader, PhRoot& root) {
    auto project = makePh<PhGroup>(PhDocumentKind::Project, nullptr);
    int kind = reader.next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return reader.fail("Identifier expected");
    }
    project->setName(PhString(reader.token().text));
    project->line = reader.lineNumber();
    kind = reader.next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return reader.fail("String expected");
    }
    if (reader.parts().longIdentifiers) {
        project->setLongIdentifier(PhString(reader.token().text));
    }
    root.documents.append(project);
    reader.traceBlock("Parse PROJECT '%s'\n", project->name());

    static constexpr GroupRule kRules[] = {
        block(MODULE, parseModule),
        block(HEADER, parseHeader),
    };
    return readParts(reader, kRules, *project, PROJECT, reader.next());
}

}  // namespace quillmark
