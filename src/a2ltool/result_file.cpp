#include "a2ltool/result_file.h"

#include <cstdio>

#include "a2ltool/complaint.h"
#include "platform/file_stream.h"
#include "platform/replacement.h"

namespace quillmark::a2ltool {

std::unique_ptr<ResultFile> ResultFile::open(const std::string& name) {
    if (name == "-") {
        return std::make_unique<ResultFile>(std::make_unique<FileSink>(stdout), "", "");
    }
    const std::string file = withoutLinks(name);
    if (isNoPlainFile(file)) {
        return std::make_unique<ResultFile>(std::make_unique<FileSink>(file), "", file);
    }
    const std::string part = createPart(file);
    return std::make_unique<ResultFile>(
        std::make_unique<FileSink>(part.empty() ? nullptr : openStream(part, "wb")), part, file);
}

ResultFile::~ResultFile() {
    if (!partName_.empty()) {
        sink_->finish();
        removePart(partName_);
    }
}

bool ResultFile::finish() {
    sink_->finish();
    if (sink_->ok() && takeName()) {
        return true;
    }
    complain("cannot write " + (name_.empty() ? "standard output" : name_));
    return false;
}

bool ResultFile::takeName() {
    if (partName_.empty()) {
        return true;
    }
    const bool isInPlace = putInPlace(partName_, name_);
    if (isInPlace) {
        partName_.clear();
    }
    return isInPlace;
}

}  // namespace quillmark::a2ltool
