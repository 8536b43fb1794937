#pragma once

#include <memory>
#include <string>

#include "cfginclude/cfg_element.h"
#include "cfginclude/convert_request.h"
#include "cfginclude/generation_time.h"
#include "cfginclude/library_versions.h"
#include "model/module_model.h"
#include "platform/console.h"

namespace quillmark {

/// What became of the attempt to build an include document.
enum class DocumentStatus {
    Built,     ///< the document is whole
    NoOutput,  ///< reported on standard output; nothing is to be written
    Refused,   ///< the library selection was refused on standard error; the program ends at once
};

/// When and by whom a document is generated.
struct DocumentOrigin {
    GenerationTime time;
    std::string user;  ///< login name in the system's own bytes; empty if unknown
};

/// Now, and the user of this process.
DocumentOrigin currentOrigin();

/// An include document, ready to be written. Its stations are made from the model and the request
/// while they are written, so it must not outlive either.
struct IncludeDocument {
    std::unique_ptr<CfgElement> root;  ///< null unless built
};

/// Builds the document of a whole description: header comments, generator data, and one station for
/// each module that the logger can reach. Reads the version file in the current directory.
DocumentStatus buildIncludeDocument(const ConvertRequest& request, const PhRoot& model,
                                    const DocumentOrigin& origin, IncludeDocument& document,
                                    Console& console);

/// The same for a library that has been selected, whatever the request says of it.
DocumentStatus buildIncludeDocument(const ConvertRequest& request, const PhRoot& model,
                                    const DocumentOrigin& origin, const LibrarySelection& library,
                                    IncludeDocument& document, Console& console);

/// What became of an include file.
enum class IncludeFileState {
    NotOpened,  ///< there is none, which has been reported
    CutOff,     ///< the disk was full, or the like: not all of the document is in it
    Complete,
};

/// Writes a document to the named file, emptied first.
IncludeFileState storeIncludeFile(const std::string& outputFile, const CfgElement& root,
                                  bool indent, Console& console);

/// The same for who does not care whether the file is complete: 0, or 1 when it cannot be opened.
int writeIncludeFile(const std::string& outputFile, const CfgElement& root, bool indent,
                     Console& console);

}  // namespace quillmark
