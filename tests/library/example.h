#pragma once

#include <string>

#include <gtest/gtest.h>

#include "quillmark/description.h"

namespace quillmark {

/// Content of a version file.
inline constexpr const char* kVersions = "<v><TopVersion>2023.4.2</TopVersion></v>";

/// A description of one module, which can be converted, with these blocks in it.
inline std::string moduleWith(const std::string& blocks) {
    return "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /begin MODULE M \"\"\n"
           "/begin MOD_PAR \"\" EPK \"V1\" ADDR_EPK 1 /end MOD_PAR\n"
           "/begin IF_DATA XCP /end IF_DATA\n" +
           blocks + "/end MODULE /end PROJECT\n";
}

inline Description described(const std::string& text, const ReadOptions& options = {}) {
    return Description::readMemory(text, "in.a2l", options);
}

/// An engine controller, in which everything occurs once.
inline Description engine() {
    Description description = Description::readFile(QUILLMARK_EXAMPLES "/engine-xcp/engine.a2l");
    EXPECT_TRUE(description.isComplete());
    return description;
}

inline Module firstModule(const Description& description) {
    return description.projects()[0].modules()[0];
}

}  // namespace quillmark
