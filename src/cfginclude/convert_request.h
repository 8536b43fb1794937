#pragma once

#include <string>
#include <vector>

namespace quillmark {

/// What a run of `convert` is asked to do: the checked options of the command line. The conversion
/// driver, the document builder and the package builder read from it. An empty text means that the
/// option was not given; texts are the bytes of the command line, unchanged.
struct ConvertRequest {
    std::string inputFile;
    std::string stationName;
    /// Package to write; derived from outputFile when only user files were given.
    std::string zpkiFile;
    /// Put directly before every name in the document.
    std::string namePrefix;
    std::string outputFile;
    bool compress = false;
    bool indent = false;
    /// The library selection as given, for example "sigTrak=1.5.4".
    std::string library;
    /// Put the EPK before the names of the user files in the package.
    bool epkFilePrefix = false;
    /// May hold empty items; the package builder refuses those.
    std::vector<std::string> userFiles;
};

}  // namespace quillmark
