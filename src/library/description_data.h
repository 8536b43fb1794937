#pragma once

#include <string>

#include "model/model_memory.h"
#include "model/module_model.h"
#include "quillmark/description.h"

namespace quillmark {

struct ReadOptionsData {
    bool keepTexts = true;
    bool keepSignals = true;
    bool keepArrays = true;
    bool keepMembers = true;
    bool keepLimits = true;
    bool keepFormats = true;
    std::size_t errorLimit = 0;
    FindingHandler findingHandler;
};

/// What a description holds. Its model has memory of its own, which nothing else is in.
struct DescriptionData {
    ModelArena arena;
    PhRoot root;
    std::string name;
    Findings findings;
    ReadStatus status = ReadStatus::NotOpened;
    bool reachedEnd = false;
};

}  // namespace quillmark
