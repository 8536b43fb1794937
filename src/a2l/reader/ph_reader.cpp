#include "a2l/reader/ph_reader.h"

namespace quillmark {

void PhReader::trace(std::string_view format, std::initializer_list<MessageArgument> arguments) {
    const MessageText text(format, arguments);
    if (logger_ != nullptr) {
        logger_->message(text.view());
        return;
    }
    console_.print("-: ");
    console_.print(text.view());
    console_.flush();  // whoever watches a long run, or ends it, has seen what was found so far
}

void PhReader::report(bool isError, std::int32_t line, std::string_view message) {
    const std::string_view name = fileName_ ? std::string_view(*fileName_) : std::string_view();
    if (logger_ == nullptr) {
        trace(isError ? "Error (%s:%d): %s\n" : "Warning (%s:%d): %s\n", {name, line, message});
        return;
    }
    constexpr const char* kFormat = "File '%s', Line %d: %s\n";
    logger_->setLine(line);
    if (isError) {
        logger_->error(kFormat, name, line, message);
    } else {
        logger_->warning(kFormat, name, line, message);
    }
}

}  // namespace quillmark
