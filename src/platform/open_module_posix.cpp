#include <dlfcn.h>

#include "platform/open_module.h"

namespace quillmark {

void* openModule(const char* name, const char* symbol, std::string& trouble) {
    void* const module = dlopen(name, RTLD_NOW | RTLD_LOCAL);
    void* const address = module == nullptr ? nullptr : dlsym(module, symbol);
    if (address == nullptr) {
        trouble = dlerror();
    }
    return address;
}

}  // namespace quillmark
