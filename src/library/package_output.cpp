#include "library/package_output.h"

#include <algorithm>

#include "edges/edges.h"
#include "edges/package_order.h"
#include "model/setting_names.h"

namespace quillmark {
namespace {

/// The first module of the first project, or nullptr.
const PhGroup* firstModule(const PhRoot& model) {
    if (model.documents.empty() || model.documents.at(0).documents.empty()) {
        return nullptr;
    }
    return &model.documents.at(0).documents.at(0);
}

bool mayStandInPrefix(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           c == '-';
}

}  // namespace

std::string userFilePrefix(const PhRoot& model) {
    const PhGroup* const module = firstModule(model);
    if (module == nullptr || !module->properties) {
        return {};
    }
    const PhValue* const epk = module->properties->find(setting::kEpk);
    if (epk == nullptr) {
        return {};
    }
    std::string prefix(epk->text().view());
    std::replace_if(
        prefix.begin(), prefix.end(), [](char c) { return !mayStandInPrefix(c); }, '_');
    return prefix;
}

int buildPackage(const ConvertRequest& request, IncludeFileState includeFile, const PhRoot& model,
                 Console& console) {
    const PackageOrder order{request.zpkiFile, request.outputFile,
                             includeFile == IncludeFileState::Complete, request.userFiles,
                             request.epkFilePrefix ? userFilePrefix(model) : std::string()};
    return edges().generatePackage(order, console);
}

}  // namespace quillmark
