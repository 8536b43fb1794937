#include "edges/edge_calls.h"

#include "edge_module/version_xml.h"
#include "package/package_builder.h"

namespace quillmark {

const EdgeCalls kEdgeCalls{&parseVersionXml, &generatePackage, {}};

}  // namespace quillmark
