#include "model/ph_object_list.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/mortal_object.h"

namespace quillmark {
namespace {

using List = PhObjectList<MortalObject>;

int unseenDeaths = 0;  // for the tests that do not look at it

MortalObject& append(List& list, std::string_view name) {
    auto object = makePh<MortalObject>(unseenDeaths);
    object->setName(PhString(name));
    list.append(object);
    return list.last();
}

std::vector<std::string> namesOf(const List& list) {
    std::vector<std::string> names;
    for (const MortalObject& object : list) {
        names.emplace_back(object.name().view());
    }
    return names;
}

std::string serialName(int number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "Signal_%06d", number);
    return text.data();
}

TEST(PhObjectList, KeepsTheOrderOfAppending) {
    List list;
    EXPECT_TRUE(list.empty());
    append(list, "b");
    append(list, "a");
    append(list, "c");
    EXPECT_EQ(list.count(), 3U);
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"b", "a", "c"}));
    EXPECT_EQ(list.at(1).name().view(), "a");
    EXPECT_EQ(list.last().name().view(), "c");
}

TEST(PhObjectList, SharesWhatItHolds) {
    int ownDeaths = 0;
    auto object = makePh<MortalObject>(ownDeaths);
    {
        List list;
        list.append(object);
        EXPECT_EQ(object->refCount(), 2);
    }
    EXPECT_EQ(object->refCount(), 1);
    List list;
    list.append(object);
    object = PhHandle<MortalObject>();
    EXPECT_EQ(ownDeaths, 0);
    list.clear();
    EXPECT_EQ(ownDeaths, 1);
}

TEST(PhObjectList, FindsNothingInAnEmptyList) {
    List list;
    EXPECT_EQ(list.find("a"), nullptr);
    EXPECT_EQ(list.find(""), nullptr);
}

TEST(PhObjectList, FindsWhatIsAppendedAfterTheFirstLookup) {
    List list;
    MortalObject& a = append(list, "a");
    EXPECT_EQ(list.find("a"), &a);
    EXPECT_EQ(list.find("b"), nullptr);
    MortalObject& b = append(list, "b");
    EXPECT_EQ(list.find("b"), &b);
}

TEST(PhObjectList, LooksNamesUpExactly) {
    List list;
    append(list, "Speed");
    EXPECT_EQ(list.find("speed"), nullptr);
    EXPECT_EQ(list.find("Spee"), nullptr);
    EXPECT_EQ(list.find("Speed "), nullptr);
    EXPECT_EQ(list.find(""), nullptr);
}

TEST(PhObjectList, FindsTheFirstOfEqualNamesWhenTheIndexIsBuiltAtOnce) {
    List list;
    MortalObject& first = append(list, "same");
    for (int i = 0; i < 5000; ++i) {
        append(list, serialName(i));
    }
    append(list, "same");
    EXPECT_EQ(list.find("same"), &first);
}

TEST(PhObjectList, FindsTheFirstOfEqualNamesWhileTheIndexGrows) {
    List list;
    MortalObject& first = append(list, "same");
    EXPECT_EQ(list.find("same"), &first);
    append(list, "same");
    for (int i = 0; i < 5000; ++i) {
        append(list, serialName(i));
        append(list, "same");
        ASSERT_EQ(list.find("same"), &first) << i;
    }
    for (int i = 0; i < 5000; ++i) {
        ASSERT_NE(list.find(serialName(i)), nullptr) << i;
    }
    EXPECT_EQ(list.find(serialName(5000)), nullptr);
}

TEST(PhObjectList, TellsNamesThatHashAlikeApart) {
    List list;
    MortalObject& first = append(list, "ab");
    MortalObject& second = append(list, "`d");
    ASSERT_EQ(first.name().hash(), second.name().hash());
    EXPECT_EQ(list.find("ab"), &first);
    EXPECT_EQ(list.find("`d"), &second);
    EXPECT_EQ(list.find("_f"), nullptr);  // hashes alike as well
}

TEST(PhObjectList, PreparingToFindChangesNothing) {
    List list;
    const std::vector<std::string_view> names = {"a", "", "gone", "b", "a"};
    list.prepareToFind(names);
    MortalObject& a = append(list, "a");
    list.append(makePh<MortalObject>(unseenDeaths));  // without a name
    list.prepareToFind(names);
    MortalObject& b = append(list, "b");
    list.prepareToFind(names);
    list.prepareToFind({});
    list.prepareToFind(std::vector<std::string_view>(100, "b"));
    EXPECT_EQ(list.count(), 3U);
    EXPECT_EQ(list.find("a"), &a);
    EXPECT_EQ(list.find("b"), &b);
    EXPECT_EQ(list.find("gone"), nullptr);
    EXPECT_EQ(list.find(""), nullptr);
}

TEST(PhObjectList, NullNameIsNeverFound) {
    List list;
    list.append(makePh<MortalObject>(unseenDeaths));
    EXPECT_EQ(list.find(""), nullptr);
    list.append(makePh<MortalObject>(unseenDeaths));  // entered into the index that exists by now
    EXPECT_EQ(list.find(""), nullptr);
    MortalObject& empty = append(list, "");
    EXPECT_EQ(list.find(""), &empty);
}

TEST(PhObjectList, RemoveReleasesAndForgets) {
    int ownDeaths = 0;
    List list;
    append(list, "a");
    auto doomed = makePh<MortalObject>(ownDeaths);
    doomed->setName(PhString("b"));
    list.append(std::move(doomed));
    append(list, "c");
    MortalObject& second = append(list, "b");
    EXPECT_EQ(list.find("b"), &list.at(1));
    list.remove(1);
    EXPECT_EQ(ownDeaths, 1);
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"a", "c", "b"}));
    EXPECT_EQ(list.find("b"), &second);
    list.remove(2);
    EXPECT_EQ(list.find("b"), nullptr);
    EXPECT_EQ(list.find("c"), &list.at(1));
}

TEST(PhObjectList, ClearForgetsEverything) {
    List list;
    append(list, "a");
    EXPECT_NE(list.find("a"), nullptr);
    list.clear();
    EXPECT_EQ(list.count(), 0U);
    EXPECT_EQ(list.find("a"), nullptr);
    MortalObject& again = append(list, "a");
    EXPECT_EQ(list.find("a"), &again);
}

TEST(PhObjectList, HandleCanBePointedElsewhere) {
    int ownDeaths = 0;
    List list;
    list.append(makePh<MortalObject>(ownDeaths));
    const auto other = makePh<MortalObject>(unseenDeaths);
    list.handle(0) = other;
    EXPECT_EQ(ownDeaths, 1);
    EXPECT_EQ(&list.at(0), other.get());
}

int comparisons = 0;

int byName(const MortalObject& left, const MortalObject& right) {
    ++comparisons;
    return left.name().view().compare(right.name().view());
}

int byFirstByte(const MortalObject& left, const MortalObject& right) {
    return left.name().view().front() - right.name().view().front();
}

TEST(PhObjectList, SortLeavesShortListsUntouched) {
    comparisons = 0;
    List list;
    list.sort(byName);
    EXPECT_TRUE(list.empty());
    MortalObject& only = append(list, "a");
    EXPECT_EQ(list.find("a"), &only);
    list.sort(byName);
    EXPECT_EQ(comparisons, 0);
    EXPECT_EQ(list.find("a"), &only);
}

TEST(PhObjectList, SortOrdersTheObjects) {
    List list;
    append(list, "c");
    append(list, "a");
    append(list, "b");
    list.sort(byName);
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(list.find("b"), &list.at(1));
}

TEST(PhObjectList, SortRebuildsTheIndex) {
    List list;
    append(list, "c");
    append(list, "a");
    EXPECT_EQ(list.find("c"), &list.at(0));
    list.sort(byName);
    EXPECT_EQ(list.find("c"), &list.at(1));
    EXPECT_EQ(list.find("a"), &list.at(0));
    MortalObject& b = append(list, "b");
    EXPECT_EQ(list.find("b"), &b);
}

TEST(PhObjectList, SortKeepsTheOrderOfEqualObjects) {
    List list;
    append(list, "b1");
    append(list, "a2");
    append(list, "b0");
    append(list, "a1");
    list.sort(byFirstByte);
    EXPECT_EQ(namesOf(list), (std::vector<std::string>{"a2", "a1", "b1", "b0"}));
}

TEST(PhNameIndex, AMillionTimesOneNameCostsOneComparisonEach) {
    constexpr std::uint32_t kTimes = 1000000;
    const std::uint32_t hash = PhNameIndex::hashOf("Signal");
    PhNameIndex index(0);
    std::uint32_t matchings = 0;
    const auto matches = [&matchings](std::uint32_t position) {
        ++matchings;
        return position == 0;
    };
    for (std::uint32_t position = 0; position < kTimes; ++position) {
        index.add(hash, position, matches);
    }
    EXPECT_EQ(matchings, kTimes - 1);
    EXPECT_EQ(index.find("Signal", matches), 0U);
    EXPECT_EQ(matchings, kTimes);
}

TEST(PhNameIndex, HashSpreadsSerialNames) {
    constexpr int kNames = 100000;
    constexpr std::size_t kBuckets = 1U << 17U;
    std::set<std::uint32_t> hashes;
    std::vector<int> buckets(kBuckets);
    for (int i = 0; i < kNames; ++i) {
        const std::uint32_t hash = PhNameIndex::hashOf(serialName(i));
        hashes.insert(hash);
        ++buckets[hash % kBuckets];
    }
    EXPECT_GT(hashes.size(), std::size_t{kNames - 50});
    EXPECT_LE(*std::max_element(buckets.begin(), buckets.end()), 16);
}

TEST(PhNameIndex, HashTakesInEveryByte) {
    const std::string alphabet = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t length = 1; length <= alphabet.size(); ++length) {
        std::string name = alphabet.substr(0, length);
        const std::uint32_t hash = PhNameIndex::hashOf(name);
        for (char& c : name) {
            const char kept = c;
            c = '!';
            EXPECT_NE(PhNameIndex::hashOf(name), hash) << length << kept;
            c = kept;
        }
    }
    EXPECT_NE(PhNameIndex::hashOf(std::string_view("a\0", 2)), PhNameIndex::hashOf("a"));
}

}  // namespace
}  // namespace quillmark
