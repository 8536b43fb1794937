#include <string>
#include <string_view>

#include "edges/edges.h"
#include "platform/console.h"
#include "platform/open_module.h"

namespace quillmark {
namespace {

bool parseNothing(std::string_view, VersionInfo&) {
    return false;
}

int reportTrouble(const PackageOrder&, Console& console) {
    console.printLine("ERROR: " + std::string(edges().trouble));
    return 1;
}

/// The calls in the module, or what takes their place where it cannot be opened.
class Module {
  public:
    Module() {
        using Calls = const EdgeCalls* (*)();
        void* const calls = openModule(QUILLMARK_EDGES_MODULE, "quillmark_edge_calls", trouble_);
        calls_ = calls == nullptr ? EdgeCalls{&parseNothing, &reportTrouble, trouble_}
                                  : *reinterpret_cast<Calls>(calls)();
    }

    const EdgeCalls& calls() const { return calls_; }

  private:
    std::string trouble_;
    EdgeCalls calls_{};
};

}  // namespace

const EdgeCalls& edges() {
    static const Module module;
    return module.calls();
}

}  // namespace quillmark
