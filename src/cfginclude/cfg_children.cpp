#include "cfginclude/cfg_children.h"

#include <algorithm>

namespace quillmark {

CfgChild::CfgChild(OutputSink& sink, bool indent, int depth)
    : sink_(sink),
      tagBlanks_(std::min(blanksAt(indent, depth), kMostBlanks)),
      valueBlanks_(std::min(blanksAt(indent, depth + 1), kMostBlanks)),
      indent_(indent),
      depth_(depth) {}

void CfgChild::addRealValue(std::string_view key, double value) {
    char* const at = startLine(key);
    endLine(putReal(at, at + kLongestText, value));
}

void CfgChild::addLongValue(std::string_view key, std::initializer_list<std::string_view> parts) {
    sink_.written(startLine(key));
    for (const std::string_view part : parts) {
        sink_.write(part);
    }
    sink_.write(kLineBreak);
}

}  // namespace quillmark
