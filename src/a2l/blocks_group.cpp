// How signals are ordered for people: GROUP, FUNCTION, FRAME, USER_RIGHTS, and notes (ANNOTATION).

#include <string_view>

#include "a2l/core_blocks.h"

namespace quillmark {

namespace {

using namespace kw::core;

using FunctionRule = CoreRule<PhFunction>;

/// A block of names of signals.
int parseSignalNames(CoreReader& reader, PhFunction& function, const FunctionRule& rule) {
    return reader.readNameBlock(rule.keyword(), [&](std::string_view name) {
        reader.references().bindMemberSoon(function, name);
    });
}

/// A block of names of groups or functions.
int parseFunctionNames(CoreReader& reader, PhFunction& function, const FunctionRule& rule) {
    return reader.readNameBlock(rule.keyword(), [&](std::string_view name) {
        reader.references().appendMember(function.functions, name);
    });
}

int parseFrameMeasurement(CoreReader& reader, PhFrame& frame) {
    return reader.readNames(
        [&](std::string_view name) { reader.references().appendMember(frame.signals, name); });
}

/// What a note fills: nothing is kept of it.
struct Annotation {};

int parseAnnotationText(CoreReader& reader, Annotation&) {
    int kind = reader.next();
    while (kind == TOK_STRING) {
        kind = reader.next();
    }
    return kind == END ? reader.closeBlock(ANNOTATION_TEXT) : reader.unexpectedToken(kind);
}

}  // namespace

int parseGroup(CoreReader& reader, PhGroup& module) {
    static constexpr FunctionRule kRules[] = {
        skipped(ROOT, 0),
        block(REF_CHARACTERISTIC, parseSignalNames),
        block(REF_MEASUREMENT, parseSignalNames),
        block(SUB_GROUP, parseFunctionNames),
        block(FUNCTION_LIST, parseFunctionNames),
        block(ANNOTATION, parseAnnotation<PhFunction>),
        block(IF_DATA, parseIfData<PhFunction>),
    };
    const auto group = reader.defineNext<PhFunction>();
    reader.readLongIdentifier(*group);
    reader.traceBlock("Parse GROUP '%s'\n", group->name());
    reader.keepDescribed(module.functions, group);
    return readParts(reader, kRules, *group, GROUP, reader.next());
}

int parseFunction(CoreReader& reader, PhGroup& module) {
    static constexpr FunctionRule kRules[] = {
        skipped(FUNCTION_VERSION, 1),
        block(DEF_CHARACTERISTIC, parseSignalNames),
        block(REF_CHARACTERISTIC, parseSignalNames),
        block(IN_MEASUREMENT, parseSignalNames),
        block(LOC_MEASUREMENT, parseSignalNames),
        block(OUT_MEASUREMENT, parseSignalNames),
        block(SUB_FUNCTION, parseFunctionNames),
        block(ANNOTATION, parseAnnotation<PhFunction>),
        block(IF_DATA, parseIfData<PhFunction>),
    };
    const auto function = reader.defineNext<PhFunction>();
    reader.readLongIdentifier(*function);
    reader.traceBlock("Parse FUNCTION '%s'\n", function->name());
    reader.keepDescribed(module.functions, function);
    return readParts(reader, kRules, *function, FUNCTION, reader.next());
}

int parseFrame(CoreReader& reader, PhGroup& module) {
    static constexpr CoreRule<PhFrame> kRules[] = {
        bare(FRAME_MEASUREMENT, parseFrameMeasurement),
        block(IF_DATA, parseIfData<PhFrame>),
    };
    auto frame = makePh<PhFrame>();
    frame->setName(reader.readIdentifier());
    reader.readLongIdentifier(*frame);
    reader.traceBlock("Parse FRAME '%s'\n", frame->name());
    reader.readIntPair(frame->scalingUnit, frame->rate);
    reader.keepDescribed(module.frames, frame);
    return readParts(reader, kRules, *frame, FRAME, reader.next());
}

// Who may see what is no concern of the logger; the block is checked and dropped.
int parseUserRights(CoreReader& reader, PhGroup& module) {
    static constexpr CoreRule<PhGroup> kRules[] = {
        skipped(READ_ONLY, 0),
        skippedNameBlock(REF_GROUP),
    };
    reader.readIdentifier();
    reader.traceBlock("Parse USER_RIGHTS\n");
    return readParts(reader, kRules, module, USER_RIGHTS, reader.next());
}

int readAnnotation(CoreReader& reader) {
    static constexpr CoreRule<Annotation> kRules[] = {
        skipped(ANNOTATION_LABEL, 1),
        skipped(ANNOTATION_ORIGIN, 1),
        block(ANNOTATION_TEXT, parseAnnotationText),
    };
    Annotation annotation;
    return readParts(reader, kRules, annotation, ANNOTATION, reader.next());
}

}  // namespace quillmark
