// What a reader still does after an error: nothing.

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "a2l/every_block.h"
#include "a2l/parsing.h"

namespace quillmark {
namespace {

/// Keeps what the model looks like when an error is told, and what is printed later.
class ErrorWatch final : public Console {
  public:
    explicit ErrorWatch(const PhRoot& root) : root_(root) {}

    void print(std::string_view text) override {
        if (seen) {
            later += text;
        }
        // A cut-off text is told while its parser still waits to judge it.
        if (text.starts_with("Error (") && text.find("EOF in string") == std::string_view::npos) {
            seen = true;
            model = dump(root_);
        }
    }
    void printError(std::string_view) override {}
    void flush() override {}

    bool seen = false;
    std::string model;
    std::string later;

  private:
    const PhRoot& root_;
};

/// A dump without what is bound a handful at a time: conversions of signals, signals of groups.
/// The last of them come late, but all their names were read before.
std::string withoutLateBindings(std::string_view dump) {
    std::string result;
    while (!dump.empty()) {
        const std::size_t end = dump.find('\n') + 1;
        std::string line(dump.substr(0, end));
        dump.remove_prefix(end);
        if (const std::size_t name = line.find(" conversion="); name != std::string::npos) {
            line.erase(name, line.find_first_of(" \n", name + 1) - name);
        }
        const std::size_t word = line.find_first_not_of(' ');
        if (line.compare(word, 9, "datatype\n") != 0 && line.compare(word, 8, "signals ") != 0) {
            result += line;
        }
    }
    return result;
}

void expectNothingAfterAnError(const std::string& text) {
    PhRoot root;
    ErrorWatch watch(root);
    PhA2l reader(watch, "a.a2l");
    reader.setVerbose(true);
    reader.setTraceDefaultValues(true);
    MemoryInputFile input(text);
    const int status = reader.parse(root, input);
    EXPECT_EQ(status, watch.seen ? -1 : 0) << text;
    if (watch.seen) {
        EXPECT_EQ(withoutLateBindings(dump(root)), withoutLateBindings(watch.model)) << text;
        EXPECT_EQ(watch.later, "") << text;
    }
}

/// Puts one wrong token behind each token of a text without a fault.
void expectNothingAfterAnyError(std::string_view text) {
    constexpr std::string_view kBlanks = " \n";
    ASSERT_EQ(parseText(text).console, "");
    for (std::size_t at = text.find_first_of(kBlanks); at != std::string_view::npos;
         at = text.find_first_of(kBlanks, at + 1)) {
        for (const char* wrong : {"/*", "5", "1.5", "\"text\"", "word", "/begin", "/end"}) {
            expectNothingAfterAnError(std::string(text.substr(0, at)) + " " + wrong +
                                      std::string(text.substr(at)));
        }
    }
}

TEST(AfterAnError, NothingOfTheCoreIsKeptOrTold) {
    expectNothingAfterAnyError(kEveryCoreBlock);
}

TEST(AfterAnError, NothingOfXcpIsKeptOrTold) {
    expectNothingAfterAnyError(kEveryXcpBlock);
}

TEST(AfterAnError, NothingOfCcpIsKeptOrTold) {
    expectNothingAfterAnyError(kEveryCcpBlock);
}

TEST(AfterAnError, NothingOfGmlanIsKeptOrTold) {
    expectNothingAfterAnyError(kEveryGmlanBlock);
}

}  // namespace
}  // namespace quillmark
