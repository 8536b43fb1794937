#include "a2l/interfaces/interface_block.h"

#include <utility>

#include "a2l/tokens/keyword_tables.h"

namespace quillmark {

using namespace kw::core;

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

}  // namespace quillmark
