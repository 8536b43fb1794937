#include "platform/text.h"

namespace quillmark {

std::string joined(std::initializer_list<std::string_view> texts) {
    std::string result;
    for (const std::string_view text : texts) {
        result += text;
    }
    return result;
}

}  // namespace quillmark
