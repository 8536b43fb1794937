#pragma once

#include <functional>
#include <optional>
#include <string>

#include "quillmark/diff.h"

namespace quillmark {

/// What a difference says.
struct ModelDifferenceData {
    DiffKind kind = DiffKind::Incomparable;
    DiffObject object = DiffObject::Setting;
    std::string module;
    std::string name;
    std::optional<std::string> oldValue = {};
    std::optional<std::string> newValue = {};
    std::string sentence = {};
};

/// Takes each difference as it is found.
using DifferenceTaker = std::function<void(ModelDifferenceData difference)>;

}  // namespace quillmark
