// The frame of a description: PROJECT, HEADER, MODULE, MOD_PAR with its memory segments,
// MOD_COMMON.

#include "a2l/ph_a2l.h"
#include "a2l/reader/enumeration_parameter.h"
#include "model/setting_names.h"

namespace quillmark {

using namespace kw::core;
using Rule = OptionalRule<PhA2l, PhGroup>;

int PhA2l::parseProject(PhRoot& root) {
    auto project = makePh<PhGroup>(PhDocumentKind::Project, nullptr);
    int kind = next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return fail("Identifier expected");
    }
    project->setName(PhString(token().text));
    kind = next();
    if (kind != TOK_STRING && kind != TOK_IDENT) {
        return fail("String expected");
    }
    if (keepsLongIdentifiers()) {
        project->setLongIdentifier(PhString(token().text));
    }
    root.documents.append(project);
    traceBlock("Parse PROJECT '%s'\n", *project);

    static constexpr Rule kRules[] = {
        {Form::Block, MODULE, &PhA2l::parseModule},
        {Form::Block, HEADER, &PhA2l::parseHeader},
    };
    kind = readOptionals(*this, kRules, *project, next());
    return kind == END ? closeBlock(PROJECT) : kind;
}

int PhA2l::parseHeader(PhGroup& project) {
    const PhString comment = readString();
    traceText("Parse HEADER '%s'\n", comment);
    static constexpr Rule kRules[] = {
        {Form::Bare, VERSION, nullptr, 1},
        {Form::Bare, PROJECT_NO, nullptr, 1},
    };
    const int kind = readOptionals(*this, kRules, project, next());
    return kind == END ? closeBlock(HEADER) : kind;
}

int PhA2l::parseModule(PhGroup& project) {
    auto module = makePh<PhGroup>(PhDocumentKind::Module, &project);
    module->setName(readIdentifier());
    readLongIdentifier(*module);
    if (failed()) {
        return TOK_ERROR;
    }
    project.documents.append(module);
    traceBlock("Parse MODULE '%s'\n", *module);
    const ModuleReferences references(*module, references_);

    static constexpr Rule kRules[] = {
        {Form::Block, MEASUREMENT, &PhA2l::parseMeasurement},
        {Form::Block, CHARACTERISTIC, &PhA2l::parseCharacteristic},
        {Form::Block, COMPU_METHOD, &PhA2l::parseCompuMethod},
        {Form::Block, COMPU_TAB, &PhA2l::parseCompuTab},
        {Form::Block, COMPU_VTAB, &PhA2l::parseCompuVtab},
        {Form::Block, COMPU_VTAB_RANGE, &PhA2l::parseCompuVtabRange},
        {Form::Block, AXIS_PTS},  // skipped
        {Form::Block, RECORD_LAYOUT, &PhA2l::parseRecordLayout},
        {Form::Block, GROUP, &PhA2l::parseGroup},
        {Form::Block, FUNCTION, &PhA2l::parseFunction},
        {Form::Block, FRAME, &PhA2l::parseFrame},
        {Form::Block, UNIT, &PhA2l::parseUnit},
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhGroup>},
        {Form::Block, MOD_PAR, &PhA2l::parseModPar},
        {Form::Block, MOD_COMMON, &PhA2l::parseModCommon},
        {Form::Block, A2ML, &PhA2l::parseA2ml},
        {Form::Block, USER_RIGHTS, &PhA2l::parseUserRights},
        {Form::Block, VARIANT_CODING},  // skipped
        {Form::Bare, INCLUDE, &PhA2l::parseInclude},
    };
    const int kind = readOptionals(*this, kRules, *module, next());
    return kind == END ? closeBlock(MODULE) : kind;
}

// The named file is not read: what it would add is not part of this description.
int PhA2l::parseInclude(PhGroup&) {
    return next() == TOK_STRING ? next() : fail("Filename expected");
}

// The interface description language is read over up to the first /end; it knows no blocks of its
// own.
int PhA2l::parseA2ml(PhGroup&) {
    if (verbose()) {
        trace("  Parse A2ML \n");
    }
    int kind = next();
    while (kind != END && kind != TOK_EOF && kind != TOK_ERROR) {
        kind = next();
    }
    return kind == END ? closeBlock(A2ML) : kind;
}

int PhA2l::parseModPar(PhGroup& module) {
    module.obtainProperties();
    const PhString comment = readString();
    traceText("  Parse MOD_PAR '%s'\n", comment);
    static constexpr Rule kRules[] = {
        {Form::Bare, VERSION, &PhA2l::parseVersion},
        {Form::Bare, ADDR_EPK, &PhA2l::parseAddrEpk},
        {Form::Bare, EPK, &PhA2l::parseEpk},
        {Form::Bare, ECU, &PhA2l::parseEcu},
        {Form::Bare, SUPPLIER, nullptr, 1},
        {Form::Bare, CUSTOMER, nullptr, 1},
        {Form::Bare, CUSTOMER_NO, nullptr, 1},
        {Form::Bare, USER, nullptr, 1},
        {Form::Bare, PHONE_NO, nullptr, 1},
        {Form::Bare, CPU_TYPE, nullptr, 1},
        {Form::Bare, NO_OF_INTERFACES, nullptr, 1},
        {Form::Bare, ECU_CALIBRATION_OFFSET, nullptr, 1},
        {Form::Bare, SYSTEM_CONSTANT, nullptr, 2},
        {Form::Block, MEMORY_SEGMENT, &PhA2l::parseMemorySegment},
        {Form::Block, CALIBRATION_METHOD},  // skipped
        {Form::Block, MEMORY_LAYOUT},       // skipped
    };
    const int kind = readOptionals(*this, kRules, module, next());
    return kind == END ? closeBlock(MOD_PAR) : kind;
}

int PhA2l::parseVersion(PhGroup& module) {
    return storeText(module, setting::kVersion);
}

int PhA2l::parseEpk(PhGroup& module) {
    return storeText(module, setting::kEpk);
}

int PhA2l::parseEcu(PhGroup& module) {
    return storeText(module, setting::kEcu);
}

int PhA2l::storeText(PhGroup& module, std::string_view property) {
    const PhString text = readString();
    keepText(module.obtainProperties(), property, text.view());
    return next();
}

int PhA2l::parseAddrEpk(PhGroup& module) {
    std::int32_t address = 0;
    if (readIntegerOrWarn(address)) {
        module.obtainProperties().setInteger(setting::kEpkAddress, address);
    }
    return next();
}

int PhA2l::parseMemorySegment(PhGroup& module) {
    // Several words of the standard share a use of the model, which knows fewer.
    static constexpr WordRow<PhSegmentUse> kUses[] = {
        {kw::word::CODE, {}, PhSegmentUse::Code},
        {kw::word::DATA, {}, PhSegmentUse::Data},
        {kw::word::VARIABLES, {}, PhSegmentUse::Variables},
        {kw::word::RESERVED, {}, PhSegmentUse::Reserved},
        {kw::word::CALIBRATION_VARIABLES, {}, PhSegmentUse::Parameters},
        {kw::word::OFFLINE_DATA, {}, PhSegmentUse::Undefined},
        {kw::word::SERAM, {}, PhSegmentUse::Undefined},
        {kw::word::EXCLUDE_FROM_FLASH, {}, PhSegmentUse::Undefined},
    };
    static constexpr WordRow<PhMemoryType> kTypes[] = {
        {kw::word::RAM, {}, PhMemoryType::Ram},
        {kw::word::ROM, {}, PhMemoryType::Rom},
        {kw::word::EPROM, {}, PhMemoryType::Eprom},
        {kw::word::EEPROM, {}, PhMemoryType::Eeprom},
        {kw::word::FLASH, {}, PhMemoryType::Flash},
        {kw::word::REGISTER, {}, PhMemoryType::Register},
        {TOK_IDENT, "NOT_IN_ECU", PhMemoryType::Undefined},
    };
    static constexpr WordRow<PhMemoryAttribute> kAttributes[] = {
        {kw::word::INTERN, {}, PhMemoryAttribute::Intern},
        {kw::word::EXTERN, {}, PhMemoryAttribute::Extern},
    };
    constexpr int kMirrorOffsets = 5;

    auto segment = makePh<PhMemoryPage>();
    segment->setName(readIdentifier());
    readLongIdentifier(*segment);
    traceBlock("  Parse MEMORY_SEGMENT '%s'\n", *segment);
    segment->use = readChoice(*this, kUses);
    segment->memoryType = readChoice(*this, kTypes);
    segment->attribute = readChoice(*this, kAttributes);
    segment->address = readInteger();
    segment->size = readInteger();
    keepIn(module.memoryPages, segment);
    static constexpr OptionalRule<PhA2l, PhMemoryPage> kRules[] = {
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhMemoryPage>},
    };
    const int kind = readOptionals(*this, kRules, *segment, drop(kMirrorOffsets));
    return kind == END ? closeBlock(MEMORY_SEGMENT) : kind;
}

int PhA2l::parseModCommon(PhGroup& module) {
    const PhString comment = readString();
    traceText("Parse MOD_COMMON '%s'\n", comment);
    static constexpr Rule kRules[] = {
        {Form::Bare, BYTE_ORDER_, &PhA2l::parseModuleByteOrder},
        {Form::Bare, S_REC_LAYOUT, nullptr, 1},
        {Form::Bare, DEPOSIT, nullptr, 1},
        {Form::Bare, DATA_SIZE, nullptr, 1},
        {Form::Bare, ALIGNMENT_BYTE, nullptr, 1},
        {Form::Bare, ALIGNMENT_WORD, nullptr, 1},
        {Form::Bare, ALIGNMENT_LONG, nullptr, 1},
        {Form::Bare, ALIGNMENT_INT64, nullptr, 1},
        {Form::Bare, ALIGNMENT_FLOAT16_IEEE, nullptr, 1},
        {Form::Bare, ALIGNMENT_FLOAT32_IEEE, nullptr, 1},
        {Form::Bare, ALIGNMENT_FLOAT64_IEEE, nullptr, 1},
    };
    const int kind = readOptionals(*this, kRules, module, next());
    return kind == END ? closeBlock(MOD_COMMON) : kind;
}

int PhA2l::parseModuleByteOrder(PhGroup&) {
    return readByteOrder(moduleByteOrder_);
}

}  // namespace quillmark
