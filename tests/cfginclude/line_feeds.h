#pragma once

#include <string>
#include <string_view>

namespace quillmark {

/// The written text with bare line feeds, which read better in an expectation.
inline std::string withLineFeeds(std::string_view written) {
    std::string text;
    for (std::size_t i = 0; i < written.size(); ++i) {
        const bool lineBreak = written.substr(i).starts_with("\r\n");
        text += lineBreak ? '\n' : written[i];
        i += lineBreak ? 1 : 0;
    }
    return text;
}

}  // namespace quillmark
