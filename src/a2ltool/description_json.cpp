#include "a2ltool/description_json.h"

#include <utility>

#include "a2ltool/model_json.h"
#include "quillmark/version.h"

namespace quillmark::a2ltool {
namespace {

/// Writes each item of a list as an object of that type.
template <typename Item>
void writeItems(DescriptionJson& json, std::string_view type, const List<Item>& items) {
    for (const Item& item : items) {
        json.startItem(type);
        writeMembers(json.json(), item);
        json.endItem();
    }
}

constexpr JsonSection kSections[] = {
    {"--memory", "memorySegments", "memory segments",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "memorySegment", module.memorySegments());
     }},
    {"--protocols", "protocols", "how the control unit is reached and measured",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "protocol", module.protocols());
     }},
    {"--units", "units", "UNIT blocks",
     [](DescriptionJson& json, const Module& module) { writeItems(json, "unit", module.units()); }},
    {"--conversions", "conversions", "conversion methods and tables",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "conversion", module.conversions());
     }},
    {"--record-layouts", "recordLayouts", "record layouts",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "recordLayout", module.recordLayouts());
     }},
    {"--signals", "signals", "measurements and characteristics",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "signal", module.signals());
     }},
    {"--groups", "groups", "groups and functions",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "group", module.groups());
     }},
    {"--frames", "frames", "frames",
     [](DescriptionJson& json, const Module& module) {
         writeItems(json, "frame", module.frames());
     }},
};

}  // namespace

std::span<const JsonSection> jsonSections() {
    return kSections;
}

DescriptionJson::DescriptionJson(OutputSink& sink, Form form, std::vector<bool> sections)
    : json_(sink), form_(form), sections_(std::move(sections)) {}

void DescriptionJson::write(const Description& description) {
    if (form_ == Form::Document) {
        writeDocument(description);
    } else {
        writeLines(description);
    }
}

void DescriptionJson::startItem(std::string_view type) {
    json_.startObject();
    if (form_ == Form::Lines) {
        json_.textMember("type", type);
        json_.textMember("project", project_);
        json_.textMember("module", module_);
    }
}

void DescriptionJson::endItem() {
    json_.endObject();
    if (form_ == Form::Lines) {
        json_.endDocument();
    }
}

void DescriptionJson::writeDocument(const Description& description) {
    json_.startObject();
    json_.textMember("generator", productName());
    json_.textMember("file", description.name());
    json_.booleanMember("utf8Mark", description.hasUtf8Mark());
    json_.startArray("projects");
    for (const Project& project : description.projects()) {
        json_.startObject();
        writeMembers(json_, project);
        json_.startArray("modules");
        for (const Module& module : project.modules()) {
            json_.startObject();
            writeMembers(json_, module);
            for (std::size_t i = 0; i < sections_.size(); ++i) {
                if (sections_[i]) {
                    json_.startArray(kSections[i].name);
                    kSections[i].write(*this, module);
                    json_.endArray();
                }
            }
            json_.endObject();
        }
        json_.endArray();
        json_.endObject();
    }
    json_.endArray();
    json_.endObject();
    json_.endDocument();
}

void DescriptionJson::writeLines(const Description& description) {
    json_.startObject();
    json_.textMember("type", "description");
    json_.textMember("generator", productName());
    json_.textMember("file", description.name());
    json_.booleanMember("utf8Mark", description.hasUtf8Mark());
    json_.endObject();
    json_.endDocument();
    for (const Project& project : description.projects()) {
        json_.startObject();
        json_.textMember("type", "project");
        writeMembers(json_, project);
        json_.endObject();
        json_.endDocument();
        project_ = project.name();
        for (const Module& module : project.modules()) {
            json_.startObject();
            json_.textMember("type", "module");
            json_.textMember("project", project_);
            writeMembers(json_, module);
            json_.endObject();
            json_.endDocument();
            module_ = module.name();
            for (std::size_t i = 0; i < sections_.size(); ++i) {
                if (sections_[i]) {
                    kSections[i].write(*this, module);
                }
            }
        }
    }
}

}  // namespace quillmark::a2ltool
