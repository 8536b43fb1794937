#include "a2l/reader/ph_reader.h"

namespace quillmark {

MessageText findingText(bool isError, std::string_view fileName, std::int32_t line,
                        std::string_view message) {
    return MessageText(isError ? "Error (%s:%d): %s\n" : "Warning (%s:%d): %s\n",
                       {fileName, line, message});
}

void PhReader::trace(std::string_view format, std::initializer_list<MessageArgument> arguments) {
    const MessageText text(format, arguments);
    if (logger_ != nullptr) {
        logger_->message(text.view());
    } else {
        print(text);
    }
}

void PhReader::print(const MessageText& text) {
    console_.print(kConsoleMark);
    console_.print(text.view());
    console_.flush();  // whoever watches a long run, or ends it, has seen what was found so far
}

void PhReader::report(bool isError, TextPlace place, std::string_view message) {
    const std::string_view name = fileName_ ? std::string_view(*fileName_) : std::string_view();
    if (logger_ == nullptr) {
        print(findingText(isError, name, place.line, message));
        return;
    }
    constexpr const char* kFormat = "File '%s', Line %d: %s\n";
    logger_->setLine(place.line);
    logger_->setColumn(place.column);
    if (isError) {
        logger_->error(kFormat, name, place.line, message);
    } else {
        logger_->warning(kFormat, name, place.line, message);
    }
}

}  // namespace quillmark
