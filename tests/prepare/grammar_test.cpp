// The tables of words against the reader: what stands in one of them, the reader takes, and what
// the reader takes, stands in one.

#include "prepare/grammar.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "a2l/ph_a2l.h"
#include "a2l/tokens/keyword_tables.h"
#include "platform/input_file.h"
#include "preparing.h"
#include "support/collecting_console.h"

namespace quillmark::preparing {
namespace {

/// What the reader says about a description; nothing if it takes all of it.
std::string refusal(std::string_view text) {
    const auto root = makePh<PhRoot>();
    CollectingConsole console;
    PhA2l reader(console, "x");
    MemoryInputFile input(text);
    return reader.parse(*root, input) == 0 ? std::string() : console.out;
}

/// Whether the reader refuses a word in this line for not knowing it.
bool isUnknownIn(std::string_view refusal, std::size_t line) {
    return refusal.find("(x:" + std::to_string(line) + "): Unexpected token") !=
           std::string_view::npos;
}

std::size_t linesOf(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

using Words = std::vector<std::string>;

/// Tokens that suit a parameter.
const Words& sampleOf(char parameter) {
    static const std::map<char, Words> kSamples = {
        {'.', {"1"}},
        {'I', {"n"}},
        {'N', {"n"}},
        {'S', {"\"\""}},
        {'X', {"\"\""}},
        {'M', {"1"}},
        {'F', {"1"}},
        {'Z', {"1"}},
        {'T', {"UBYTE"}},
        {'O', {"BYTE_ORDER_MSB_LAST"}},
        {'w', {"%5.2"}},
        {'W', {"\"\""}},
        {'c', {"1", "3"}},
        {'C', {"BLOCK"}},
        {'a', {"FIXED", "1"}},
        {'i', {"n", "m"}},
        {'s', {"\"\"", "\"\""}},
        {'#', {"1", "1.5"}},
        {'z', {"1", "2"}},
        {'k', {"1", "2", "3"}},
        {'n', {"1"}},
        {'j', {"1"}},
        {'t', {"\"\""}},
        {'P', {"2", "1", "2", "3", "4"}},
        {'V', {"2", "1", "\"\"", "3", "\"\""}},
        {'Q', {"2", "1", "2", "\"\"", "3", "4", "\"\""}},
        {'R', {"RASTER", "1", "RASTER", "2"}},
        {'E', {"EVENT", "1", "EVENT", "2"}},
        {'G', {"TGT_A", "1", "TGT_B", "2"}},
        {'D', {"NONE"}},
    };
    return kSamples.at(parameter);
}

Words samplesOf(std::string_view parameters) {
    Words words;
    for (const char parameter : parameters) {
        const Words& sample = sampleOf(parameter);
        words.insert(words.end(), sample.begin(), sample.end());
    }
    return words;
}

std::string joined(const Words& words) {
    std::string text;
    for (const std::string& word : words) {
        text += word + "\n";
    }
    return text;
}

/// A place in a description where parts of a layout may stand.
struct Context {
    const Layout* layout;
    const KeywordTable* keywords;
    std::string before;
    std::string after;

    [[nodiscard]] std::string with(const std::string& part) const { return before + part + after; }
};

/// The place within a block that stands at another one.
Context within(const Context& outer, std::string_view keyword, const Layout& layout) {
    const std::string name(keyword);
    return {&layout, outer.keywords,
            outer.before + "/begin " + name + "\n" + joined(samplesOf(layout.parameters)),
            "/end " + name + "\n" + outer.after};
}

/// Adds a place and those within it; layouts that stand at several places once.
void addContexts(const Context& context, std::vector<Context>& contexts) {
    if (std::any_of(contexts.begin(), contexts.end(), [&context](const Context& each) {
            return each.layout == context.layout && each.keywords == context.keywords;
        })) {
        return;
    }
    contexts.push_back(context);
    for (const PartRule& part : context.layout->parts) {
        // Interfaces are alike everywhere.
        if (part.inner != nullptr && part.inner->parameters != "D") {
            addContexts(within(context, part.keyword, *part.inner), contexts);
        }
    }
}

Context moduleContext() {
    static constexpr Layout kModule{"", {}};
    return {&kModule, &kCoreKeywords,
            "ASAP2_VERSION 1 60\n/begin PROJECT P \"\"\n/begin MODULE M \"\"\n",
            "/end MODULE\n/end PROJECT\n"};
}

/// All places in the blocks of a module that the reader knows.
const std::vector<Context>& contexts() {
    static const std::vector<Context> kContexts = [] {
        std::vector<Context> found;
        const Context module = moduleContext();
        for (const KeywordEntry& keyword : kCoreKeywords.entries) {
            const PartRule* rule = findModuleBlock(keyword.text);
            if (rule != nullptr && rule->inner != nullptr && keyword.text != "IF_DATA") {
                addContexts(within(module, keyword.text, *rule->inner), found);
            }
        }
        const std::pair<const char*, const KeywordTable*> interfaces[] = {
            {"XCP", &kXcpKeywords},
            {"XCPplus", &kXcpKeywords},
            {"ASAP1B_CCP", &kCcpKeywords},
            {"ASAP1B_GMLAN", &kGmlanKeywords},
        };
        for (const auto& [name, keywords] : interfaces) {
            const Layout& layout = *findInterface(name);
            addContexts({&layout, keywords,
                         module.before + "/begin IF_DATA " + name + "\n" +
                             joined(samplesOf(layout.parameters)),
                         "/end IF_DATA\n" + module.after},
                        found);
        }
        return found;
    }();
    return kContexts;
}

/// The words of a table, and all that stand in one of the places or nowhere.
std::set<std::string> wordsFor(const KeywordTable& keywords) {
    std::set<std::string> words{"no_keyword"};
    for (const KeywordEntry& entry : keywords.entries) {
        words.emplace(entry.text);
    }
    for (const Context& context : contexts()) {
        for (const PartRule& part : context.layout->parts) {
            words.emplace(part.keyword);
        }
    }
    words.erase("/begin");
    words.erase("/end");
    words.erase("/include");
    return words;
}

bool isTaken(const PartRule* rule) {
    return rule != nullptr && rule->fate == Fate::Keep;
}

TEST(Grammar, HasAllPlaces) {
    EXPECT_GT(contexts().size(), 60U);
    for (const Context& context : contexts()) {
        EXPECT_EQ(refusal(context.with("")), "") << context.with("");
    }
}

TEST(Grammar, HasTheWordsOfTheReader) {
    std::map<const KeywordTable*, std::set<std::string>> words;
    for (const Context& context : contexts()) {
        auto& known = words[context.keywords];
        if (known.empty()) {
            known = wordsFor(*context.keywords);
        }
        const std::size_t line = linesOf(context.before) + 1;
        for (const std::string& word : known) {
            const std::string text = context.with(word + "\n");
            const bool isListed =
                context.layout->parameters.ends_with('i') && lookup(*context.keywords, word) == 0;
            EXPECT_EQ(isListed || isTaken(findPart(*context.layout, Form::Bare, word)),
                      !isUnknownIn(refusal(text), line))
                << text;
        }
    }
}

TEST(Grammar, HasTheBlocksOfTheReader) {
    const std::set<std::string> core = wordsFor(kCoreKeywords);
    for (const Context& context : contexts()) {
        const std::size_t line = linesOf(context.before) + 1;
        for (const std::string& word : wordsFor(*context.keywords)) {
            const PartRule* rule = findPart(*context.layout, Form::Block, word);
            // Nothing is made of such words, so that only what is not looked into takes them.
            const std::string text =
                context.with("/begin " + word + "\n? ? ? ? ? ? ? ? ? ? ? ? ?\n/end " + word + "\n");
            const std::string said = refusal(text);
            if (context.layout->skipsUnknownBlocks) {
                EXPECT_EQ(rule == nullptr, said.empty()) << text;
            } else {
                EXPECT_EQ(isTaken(rule), !isUnknownIn(said, line)) << text;
                const bool isLookedInto =
                    rule != nullptr && rule->inner != nullptr && rule->inner->parameters != "D";
                EXPECT_EQ(isTaken(rule) && !isLookedInto, said.empty()) << text;
            }
        }
    }
}

TEST(Grammar, HasTheBlocksOfProjectsAndModules) {
    const Context module = moduleContext();
    const Context project{nullptr, &kCoreKeywords, "/begin PROJECT P \"\"\n", "/end PROJECT\n"};
    for (const std::string& word : wordsFor(kCoreKeywords)) {
        const std::string block = "/begin " + word + "\n/end " + word + "\n";
        EXPECT_EQ(isTaken(findModuleBlock(word)),
                  !isUnknownIn(refusal(module.with(block)), linesOf(module.before) + 1))
            << word;
        EXPECT_EQ(findProjectBlock(word) != nullptr || word == "MODULE",
                  !isUnknownIn(refusal(project.with(block)), linesOf(project.before) + 1))
            << word;
        EXPECT_TRUE(isUnknownIn(refusal(module.with(word + "\n")), linesOf(module.before) + 1));
        EXPECT_TRUE(isUnknownIn(refusal(project.with(word + "\n")), linesOf(project.before) + 1));
    }
}

/// Says nothing if the preparation leaves a text alone that the reader takes, or else makes of it
/// one that the reader takes, and that stays.
std::string mistake(const std::string& text) {
    const bool isTaken = refusal(text).empty();
    const Prepared prepared = prepareInMemory(text);
    if (isTaken) {
        return prepared.findings.empty() && prepared.text == text ? "" : prepared.findings;
    }
    if (prepared.findings.empty()) {
        return "nothing told";
    }
    if (!prepared.isGood) {
        return "";
    }
    const std::string stillWrong = refusal(prepared.text);
    return stillWrong.empty() ? prepareInMemory(prepared.text).findings
                              : prepared.findings + stillWrong;
}

/// Tries each of these words changed into others, left out, and written twice.
void tryOthers(const std::string& before, const Words& words, const std::string& after) {
    static const Words kOthers = {
        "1", "-1", "1.5",         "0x0",  "n",   "1ms",   "NULL", "\"x\"",
        "?", "-",  "MEASUREMENT", "\x1F", "DAQ", "FIXED", "99",   "NETWORK_LIMITS"};
    for (std::size_t i = 0; i <= words.size(); ++i) {
        for (std::size_t j = 0; j < kOthers.size() + 2; ++j) {
            Words changed = words;
            const auto at = changed.begin() + static_cast<std::ptrdiff_t>(i);
            if (j < kOthers.size()) {
                i < words.size() ? void(*at = kOthers[j]) : changed.push_back(kOthers[j]);
            } else if (i < words.size()) {
                j == kOthers.size() ? void(changed.erase(at)) : void(changed.insert(at, *at));
            }
            const std::string text = before + joined(changed) + after;
            ASSERT_EQ(mistake(text), "") << text;
        }
    }
}

TEST(Grammar, HasTheParametersOfTheReader) {
    for (const Context& context : contexts()) {
        for (const PartRule& part : context.layout->parts) {
            if (part.fate != Fate::Keep) {
                continue;
            }
            const std::string keyword(part.keyword);
            if (part.form == Form::Bare) {
                tryOthers(context.before + keyword + "\n", samplesOf(part.parameters),
                          context.after);
            } else if (part.inner != nullptr) {
                tryOthers(context.before + "/begin " + keyword + "\n",
                          samplesOf(part.inner->parameters),
                          "/end " + keyword + "\n" + context.after);
            }
        }
    }
    const Context module = moduleContext();
    for (const KeywordEntry& entry : kCoreKeywords.entries) {
        const std::string keyword(entry.text);
        const PartRule* rule = findModuleBlock(keyword);
        if (rule != nullptr && rule->inner != nullptr) {
            tryOthers(module.before + "/begin " + keyword + "\n",
                      samplesOf(rule->inner->parameters), "/end " + keyword + "\n" + module.after);
        }
    }
}

}  // namespace
}  // namespace quillmark::preparing
