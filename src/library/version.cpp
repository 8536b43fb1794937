#include "quillmark/version.h"

#include "platform/program.h"

namespace quillmark {

std::string_view productName() noexcept {
    return kProgramTitle;
}

std::string_view productVersion() noexcept {
    return kProgramTitle.substr(kProgramTitle.rfind(' ') + 1);
}

}  // namespace quillmark
