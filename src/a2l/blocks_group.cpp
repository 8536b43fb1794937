// How signals are ordered for people: GROUP, FUNCTION, FRAME, USER_RIGHTS, and notes (ANNOTATION).

#include "a2l/ph_a2l.h"

namespace quillmark {

using namespace kw::core;
using Rule = OptionalRule<PhA2l, PhFunction>;

template <int Keyword>
int PhA2l::parseSignalNames(PhFunction& function) {
    return readNameBlock(
        Keyword, [&](std::string_view name) { references_->bindMemberSoon(function, name); });
}

template <int Keyword>
int PhA2l::parseFunctionNames(PhFunction& function) {
    return readNameBlock(Keyword, [&](std::string_view name) {
        function.functions.append(references_->refer<PhFunction>(name));
    });
}

int PhA2l::parseGroup(PhGroup& module) {
    static constexpr Rule kRules[] = {
        {Form::Bare, ROOT, nullptr, 0},
        {Form::Block, REF_CHARACTERISTIC, &PhA2l::parseSignalNames<REF_CHARACTERISTIC>},
        {Form::Block, REF_MEASUREMENT, &PhA2l::parseSignalNames<REF_MEASUREMENT>},
        {Form::Block, SUB_GROUP, &PhA2l::parseFunctionNames<SUB_GROUP>},
        {Form::Block, FUNCTION_LIST, &PhA2l::parseFunctionNames<FUNCTION_LIST>},
        {Form::Block, ANNOTATION, &PhA2l::parseAnnotation<PhFunction>},
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhFunction>},
    };
    const auto group = defineNext<PhFunction>();
    readLongIdentifier(*group);
    traceBlock("Parse GROUP '%s'\n", *group);
    keepIn(module.functions, group);
    const int kind = readOptionals(*this, kRules, *group, next());
    return kind == END ? closeBlock(GROUP) : kind;
}

int PhA2l::parseFunction(PhGroup& module) {
    static constexpr Rule kRules[] = {
        {Form::Bare, FUNCTION_VERSION, nullptr, 1},
        {Form::Block, DEF_CHARACTERISTIC, &PhA2l::parseSignalNames<DEF_CHARACTERISTIC>},
        {Form::Block, REF_CHARACTERISTIC, &PhA2l::parseSignalNames<REF_CHARACTERISTIC>},
        {Form::Block, IN_MEASUREMENT, &PhA2l::parseSignalNames<IN_MEASUREMENT>},
        {Form::Block, LOC_MEASUREMENT, &PhA2l::parseSignalNames<LOC_MEASUREMENT>},
        {Form::Block, OUT_MEASUREMENT, &PhA2l::parseSignalNames<OUT_MEASUREMENT>},
        {Form::Block, SUB_FUNCTION, &PhA2l::parseFunctionNames<SUB_FUNCTION>},
        {Form::Block, ANNOTATION, &PhA2l::parseAnnotation<PhFunction>},
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhFunction>},
    };
    const auto function = defineNext<PhFunction>();
    readLongIdentifier(*function);
    traceBlock("Parse FUNCTION '%s'\n", *function);
    keepIn(module.functions, function);
    const int kind = readOptionals(*this, kRules, *function, next());
    return kind == END ? closeBlock(FUNCTION) : kind;
}

int PhA2l::parseFrame(PhGroup& module) {
    static constexpr OptionalRule<PhA2l, PhFrame> kRules[] = {
        {Form::Bare, FRAME_MEASUREMENT, &PhA2l::parseFrameMeasurement},
        {Form::Block, IF_DATA, &PhA2l::parseIfDataOf<PhFrame>},
    };
    auto frame = makePh<PhFrame>();
    frame->setName(readIdentifier());
    readLongIdentifier(*frame);
    traceBlock("Parse FRAME '%s'\n", *frame);
    readIntPair(frame->scalingUnit, frame->rate);
    keepIn(module.frames, frame);
    const int kind = readOptionals(*this, kRules, *frame, next());
    return kind == END ? closeBlock(FRAME) : kind;
}

int PhA2l::parseFrameMeasurement(PhFrame& frame) {
    return readNames(
        [&](std::string_view name) { frame.signals.append(references_->refer<PhEntity>(name)); });
}

// Who may see what is no concern of the logger; the block is checked and dropped.
int PhA2l::parseUserRights(PhGroup& module) {
    static constexpr OptionalRule<PhA2l, PhGroup> kRules[] = {
        {Form::Bare, READ_ONLY, nullptr, 0},
        {Form::Block, REF_GROUP, &PhA2l::dropNameBlock<PhGroup, REF_GROUP>},
    };
    readIdentifier();
    if (verbose()) {
        trace("Parse USER_RIGHTS\n");
    }
    const int kind = readOptionals(*this, kRules, module, next());
    return kind == END ? closeBlock(USER_RIGHTS) : kind;
}

int PhA2l::readAnnotation() {
    static constexpr OptionalRule<PhA2l, PhA2l> kRules[] = {
        {Form::Bare, ANNOTATION_LABEL, nullptr, 1},
        {Form::Bare, ANNOTATION_ORIGIN, nullptr, 1},
        {Form::Block, ANNOTATION_TEXT, &PhA2l::parseAnnotationText},
    };
    const int kind = readOptionals(*this, kRules, *this, next());
    return kind == END ? closeBlock(ANNOTATION) : kind;
}

int PhA2l::parseAnnotationText(PhA2l&) {
    int kind = next();
    while (kind == TOK_STRING) {
        kind = next();
    }
    return kind == END ? closeBlock(ANNOTATION_TEXT) : unexpectedToken(kind);
}

}  // namespace quillmark
