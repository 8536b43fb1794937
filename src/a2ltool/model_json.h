#pragma once

#include <string_view>
#include <vector>

#include "a2ltool/json_writer.h"
#include "quillmark/model.h"
#include "quillmark/protocol.h"

namespace quillmark::a2ltool {

/// The members of the object that stands for a part of a description; the object itself is started
/// and ended by the caller. What a description does not say has no member.
void writeMembers(JsonWriter& json, const Project& project);
void writeMembers(JsonWriter& json, const Module& module);
void writeMembers(JsonWriter& json, const MemorySegment& segment);
void writeMembers(JsonWriter& json, const Protocol& protocol);
void writeMembers(JsonWriter& json, const Unit& unit);
void writeMembers(JsonWriter& json, const Conversion& conversion);
void writeMembers(JsonWriter& json, const RecordLayout& layout);
void writeMembers(JsonWriter& json, const Signal& signal);
void writeMembers(JsonWriter& json, const Group& group);
void writeMembers(JsonWriter& json, const Frame& frame);

/// A list of settings as an object, each a member of its name.
void writeSettings(JsonWriter& json, std::string_view name, const List<Setting>& settings);

/// Members that are left out where there is nothing to tell: an absent number, an empty list or
/// text.
void writeNumber(JsonWriter& json, std::string_view name, const Number& number);
void writeNumbers(JsonWriter& json, std::string_view name, const std::vector<Number>& numbers);
void writeText(JsonWriter& json, std::string_view name, std::string_view text);

}  // namespace quillmark::a2ltool
