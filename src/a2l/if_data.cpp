// IF_DATA: which parser an interface block goes to.

#include "a2l/if_data.h"

#include "a2l/ph_a2l.h"
#include "a2l/xcp.h"

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

int PhA2l::parseIfData(PhObject& owner) {
    const int kind = next();
    if (kind == TOK_IDENT) {
        for (const InterfaceRow& row : kInterfaces) {
            if (row.name == token().text) {
                for (int i = 0; i < row.versionNumbers; ++i) {
                    next();
                }
                InterfaceBlock block{*this, owner, moduleByteOrder_};
                return row.parse(block);
            }
        }
    }
    if (verbose()) {
        trace("  Parse unknown IF_DATA '%s'\n", {token().text});
    }
    return skipInterface(*this, kind);
}

}  // namespace quillmark
