#include "model/ph_logger.h"

#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

class LastMessage final : public PhLogger {
  public:
    void message(std::string_view text) override { last = text; }
    void warning(const char* format, std::string_view fileName, std::int32_t line,
                 std::string_view message) override {
        keep("warning", format, fileName, line, message);
    }
    void error(const char* format, std::string_view fileName, std::int32_t line,
               std::string_view message) override {
        keep("error", format, fileName, line, message);
    }

    std::string last;

  private:
    void keep(std::string_view kind, std::string_view format, std::string_view fileName,
              std::int32_t line, std::string_view message) {
        last = kind;
        last.append("|").append(format).append("|").append(fileName).append("|");
        last.append(std::to_string(line)).append("|").append(message);
    }
};

TEST(PhLogger, KeepsTheLineOfTheNextMessage) {
    LastMessage logger;
    EXPECT_EQ(logger.line(), 0);
    logger.setLine(12);
    EXPECT_EQ(logger.line(), 12);
}

TEST(PhLogger, HandsMessagesToTheReceiver) {
    LastMessage receiver;
    PhLogger& logger = receiver;
    logger.message("trace\n");
    EXPECT_EQ(receiver.last, "trace\n");
    logger.warning("%s", "a.a2l", 3, "odd");
    EXPECT_EQ(receiver.last, "warning|%s|a.a2l|3|odd");
    logger.error("%s", "a.a2l", 4, "wrong");
    EXPECT_EQ(receiver.last, "error|%s|a.a2l|4|wrong");
}

}  // namespace
}  // namespace quillmark
