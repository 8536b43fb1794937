// Searches for the factor with which KeywordHints tells keywords by three of their bytes and their
// length, for when a new keyword takes the place of a frequent one. Prints how good the present one
// is and then each that is better than all before it.
//
//   search_keyword_spread [NUMBER OF TRIES, 100000]

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "a2l/tokens/frequent_keywords.h"
#include "a2l/tokens/keyword_tables.h"

namespace quillmark {
namespace {

/// How many keywords share their place with another of their table, and how many of them are
/// frequent, which counts first.
struct Shared {
    int frequent = 0;
    int all = 0;

    auto operator<=>(const Shared&) const = default;
};

class Places {
  public:
    explicit Places(std::uint32_t spread) : spread_(spread) {}

    void enter(const KeywordTable& table) {
        std::fill(uses_.begin(), uses_.end(), 0);
        for (const KeywordEntry& entry : table.entries) {
            ++usesOf(entry.text);
        }
    }

    int sharedIn(const KeywordTable& table) {
        return static_cast<int>(
            std::count_if(table.entries.begin(), table.entries.end(),
                          [this](const KeywordEntry& entry) { return usesOf(entry.text) > 1; }));
    }

    int& usesOf(std::string_view text) { return uses_[KeywordHints::placeOf(text, spread_)]; }

  private:
    std::uint32_t spread_;
    std::vector<int> uses_ = std::vector<int>(std::size_t{1} << KeywordHints::kPlaceBits);
};

Shared sharedWith(std::uint32_t spread) {
    Places places(spread);
    places.enter(kCoreKeywords);
    Shared shared;
    for (const std::string_view text : kFrequentKeywords) {
        shared.frequent += places.usesOf(text) > 1 ? 1 : 0;
    }
    for (int context = 0; const KeywordTable* table = keywordTableOfContext(context); ++context) {
        places.enter(*table);
        shared.all += places.sharedIn(*table);
    }
    return shared;
}

void print(std::uint32_t spread, const Shared& shared) {
    std::printf("0x%08X: %d keywords share a place, %d of them frequent\n",
                static_cast<unsigned>(spread), shared.all, shared.frequent);
}

void search(long tries) {
    Shared least = sharedWith(KeywordHints::kSpread);
    print(KeywordHints::kSpread, least);
    std::mt19937 numbers;  // always the same ones
    for (long i = 0; i < tries; ++i) {
        const std::uint32_t spread = static_cast<std::uint32_t>(numbers()) | 1U;
        const Shared shared = sharedWith(spread);
        if (shared < least) {
            least = shared;
            print(spread, shared);
        }
    }
}

}  // namespace
}  // namespace quillmark

int main(int argumentCount, char* arguments[]) {
    constexpr long kTries = 100000;
    quillmark::search(argumentCount > 1 ? std::strtol(arguments[1], nullptr, 10) : kTries);
}
