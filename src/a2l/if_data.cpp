// IF_DATA: which parser an interface block goes to, and what all of them do alike.

#include "a2l/if_data.h"

#include <utility>

#include "a2l/ccp.h"
#include "a2l/gmlan.h"
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

PhGroup* InterfaceBlock::module() const {
    return owner.kind() == PhClass::Group ? static_cast<PhGroup*>(&owner) : nullptr;
}

PhCommParam* obtainCommParam(const InterfaceBlock& block, std::string_view name,
                             PhProtocolType type) {
    PhGroup* const module = block.module();
    if (module == nullptr) {
        return nullptr;
    }
    if (PhCommParam* known = module->commParams.find(name)) {
        return known;
    }
    auto created = makePh<PhCommParam>();
    created->setName(PhString(name));
    created->protocolType = type;
    created->stationParam->protocolParam().encoding = block.defaultByteOrder;
    module->commParams.append(created);
    return created.get();
}

PhHandle<PhTransportParam> addTransport(PhCommParam* commParam, std::string_view name,
                                        PhTransportType type) {
    auto created = makePh<PhTransportParam>();
    created->setName(PhString(name));
    created->transportType = type;
    if (commParam != nullptr) {
        commParam->transports.append(created);
    }
    return created;
}

void changeEncoding(BlockReader& reader, PhProtocolParam& protocol, PhByteOrder encoding,
                    std::string_view place) {
    const PhByteOrder before = std::exchange(protocol.encoding, encoding);
    if (reader.verbose() && before != PhByteOrder::Undefined && before != encoding) {
        reader.warning("Encoding changed in %s (%d -> %d)",
                       {place, static_cast<int>(before), static_cast<int>(encoding)});
    }
}

bool closeInterface(BlockReader& reader, int kind) {
    if (kind != END) {
        reader.unexpectedToken(kind);
    }
    reader.useKeywords(kCoreKeywords);
    if (reader.next() != IF_DATA) {
        reader.fail("Keyword 'IF_DATA' expected after /end");
    }
    return !reader.failed();
}

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
