#pragma once

#include <string_view>

namespace quillmark {

class Console;
struct PackageOrder;
struct VersionInfo;

/// What a few runs need of libraries that are large beside this program: Qt and libarchive, which
/// bring along ICU, glib and a dozen more. Loading them takes longer than converting a small
/// description, so on Linux they hang on a module of their own, which is opened when it is needed;
/// see docs/design.md.
struct EdgeCalls {
    /// parseVersionXml() of edge_module/version_xml.h.
    bool (*parseVersionXml)(std::string_view bytes, VersionInfo& info);

    /// generatePackage() of package/package_builder.h.
    int (*generatePackage)(const PackageOrder& order, Console& console);

    /// Why the calls fail; empty if they do not.
    std::string_view trouble;
};

/// The calls. Where they are in a module, the first use opens it, and it stays open. Without the
/// module, as after half an installation, there are calls all the same, which fail: no version file
/// can be parsed, and generatePackage() reports why and returns 1.
const EdgeCalls& edges();

}  // namespace quillmark
