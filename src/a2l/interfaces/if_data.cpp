#include "a2l/interfaces/if_data.h"

#include <string_view>

#include "a2l/interfaces/ccp.h"
#include "a2l/interfaces/gmlan.h"
#include "a2l/interfaces/interface_block.h"
#include "a2l/interfaces/xcp.h"
#include "a2l/tokens/keyword_tables.h"

namespace quillmark {

namespace {

using namespace kw::core;

/// A protocol whose interface blocks are read.
struct InterfaceRow {
    std::string_view name;
    int versionNumbers;  ///< tokens between the name and the contents
    int (*parse)(InterfaceBlock& block);
};

constexpr InterfaceRow kInterfaces[] = {
    {"ASAP1B_CCP", 0, &parseCcp},
    {"ASAP1B_GMLAN", 0, &parseGmlan},
    {"XCP", 0, &parseXcp},
    {"XCPplus", 1, &parseXcp},
};

/// Reads over the block of an unknown interface, whose first token is `kind`.
int skipInterface(BlockReader& reader, int kind) {
    for (;;) {
        if (kind == TOK_EOF || kind == TOK_ERROR) {
            return kind;
        }
        if (kind != END) {
            kind = reader.next();
        } else if ((kind = reader.next()) == IF_DATA) {
            return reader.next();
        }
    }
}

}  // namespace

int readIfData(BlockReader& reader, PhObject& owner, PhByteOrder defaultByteOrder) {
    const int kind = reader.next();
    if (kind == TOK_IDENT) {
        for (const InterfaceRow& row : kInterfaces) {
            if (row.name == reader.token().text) {
                for (int i = 0; i < row.versionNumbers; ++i) {
                    reader.next();
                }
                InterfaceBlock block{reader, owner, defaultByteOrder};
                return row.parse(block);
            }
        }
    }
    if (reader.verbose()) {
        reader.trace("  Parse unknown IF_DATA '%s'\n", {reader.token().text});
    }
    return skipInterface(reader, kind);
}

}  // namespace quillmark
