#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "a2ltool/json_writer.h"
#include "quillmark/description.h"
#include "quillmark/model.h"

namespace quillmark::a2ltool {

class DescriptionJson;

/// A part of a module that is written as a list of objects.
struct JsonSection {
    const char* option;  ///< chooses it on the command line
    const char* name;    ///< of the list in the document
    const char* help;
    void (*write)(DescriptionJson& json, const Module& module);
};

/// All of them, in the order in which they are written.
std::span<const JsonSection> jsonSections();

/// Writes a description as JSON while it is walked: as one document, or as one object per line that
/// tells its `type` and to which project and module it belongs. docs/description.schema.json tells
/// the form of both. What a description does not say has no member.
class DescriptionJson {
  public:
    enum class Form { Document, Lines };

    /// `sections` has an entry for each of jsonSections(): whether it is wanted.
    DescriptionJson(OutputSink& sink, Form form, std::vector<bool> sections);

    void write(const Description& description);

    /// For the sections: what surrounds one of their objects, and where its members go.
    void startItem(std::string_view type);
    void endItem();
    JsonWriter& json() { return json_; }

  private:
    void writeDocument(const Description& description);
    void writeLines(const Description& description);

    JsonWriter json_;
    Form form_;
    std::vector<bool> sections_;
    std::string_view project_;
    std::string_view module_;
};

}  // namespace quillmark::a2ltool
