#pragma once

#include "quillmark/compare.h"
#include "quillmark/convert.h"
#include "quillmark/diff.h"

namespace quillmark {

/// The way of the verbs into what they are told.
struct VerbAccess {
    static const ConvertOptionsData& data(const ConvertOptions& options) { return *options.data_; }
    static const CompareOptionsData& data(const CompareOptions& options) { return *options.data_; }
    static const DiffOptionsData& data(const DiffOptions& options) { return *options.data_; }
};

}  // namespace quillmark
