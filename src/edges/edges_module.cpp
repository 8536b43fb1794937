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
        std::string reason;
        void* const calls = openModule(QUILLMARK_EDGES_MODULE, "quillmark_edge_calls", reason);
        if (calls != nullptr) {
            calls_ = *reinterpret_cast<Calls>(calls)();
            return;
        }
        trouble_ =
            "Packages and unusual version files take a module that is not where it was "
            "installed with this program: " +
            reason;
        calls_ = {&parseNothing, &reportTrouble, trouble_};
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
