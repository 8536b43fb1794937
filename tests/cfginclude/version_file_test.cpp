#include "cfginclude/version_file.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "edges/edges.h"
#include "support/collecting_console.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

class VersionFile : public testing::Test {
  protected:
    /// The way of every file: whoever reads it, finds the same.
    bool read(std::string_view content) {
        info_.versions = {"left over"};
        const bool wellFormed = parseVersionFile(content, info_, console_);
        VersionInfo xml;
        EXPECT_EQ(edges().parseVersionXml(content, xml), wellFormed);
        if (wellFormed) {
            EXPECT_EQ(info_, xml);
        }
        return wellFormed;
    }

    CollectingConsole console_;
    VersionInfo info_;
};

TEST_F(VersionFile, IsReadInItsOrder) {
    ASSERT_TRUE(
        read("<?xml version=\"1.0\"?>\n<!-- c --><v>\n <TopVersion>2023.4.2</TopVersion>\n"
             " <VersionList>\n  1.4.4\t1.5.5\n\n 2023.4.2 </VersionList>\n"
             " <Restrictions>\n"
             "  <VersionRestriction><Check> sigTrak+1.4.4-$TopVersion$+$TopVersion$- \n"
             "</Check><MessageWarning>two\n   words\t</MessageWarning>"
             "</VersionRestriction>\n"
             "  <Other><VersionRestriction><Check>no</Check></VersionRestriction></Other>\n"
             "  <VersionRestriction><x/><a><Check>a$topVersion$</Check></a>\n"
             "</VersionRestriction>\n"
             "  <VersionRestriction><MessageWarning/></VersionRestriction>\n"
             " </Restrictions></v>\n"));
    EXPECT_EQ(info_.topVersion, "2023.4.2");
    EXPECT_EQ(info_.versions, (std::vector<std::string>{"1.4.4", "1.5.5", "2023.4.2"}));
    ASSERT_EQ(info_.restrictions.size(), 3U);
    EXPECT_EQ(info_.restrictions[0].check, "sigTrak+1.4.4-2023.4.2+2023.4.2-");
    EXPECT_TRUE(info_.restrictions[0].hasWarning);
    EXPECT_EQ(info_.restrictions[0].warning, "two words");
    EXPECT_EQ(info_.restrictions[1].check, "a$topVersion$");
    EXPECT_FALSE(info_.restrictions[1].hasWarning);
    EXPECT_EQ(info_.restrictions[2].check, "");
    EXPECT_TRUE(info_.restrictions[2].hasWarning);
    EXPECT_EQ(info_.restrictions[2].warning, "");
}

TEST_F(VersionFile, IsFoundAnywhereBelowTheRoot) {
    ASSERT_TRUE(read("<v><a><b/><TopVersion>1.2</TopVersion></a><VersionList>1</VersionList></v>"));
    EXPECT_EQ(info_.topVersion, "1.2");
    EXPECT_EQ(info_.versions.size(), 1U);
    ASSERT_TRUE(read("<TopVersion>3.4</TopVersion>"));
    EXPECT_EQ(info_.topVersion, "3.4");
}

TEST_F(VersionFile, TakesTheTopVersionAsItStands) {
    ASSERT_TRUE(read("<v><TopVersion> 1.2\n&amp;<![CDATA[<x>]]></TopVersion></v>"));
    EXPECT_EQ(info_.topVersion, " 1.2\n&<x>");
    ASSERT_TRUE(read("<v><TopVersion/></v>"));
    EXPECT_EQ(info_.topVersion, "");
}

TEST_F(VersionFile, IsUtf8) {
    ASSERT_TRUE(
        read("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
             "<v><TopVersion>1.\xC3\xA4</TopVersion></v>"));
    EXPECT_EQ(info_.topVersion, "1.\xC3\xA4");
}

TEST_F(VersionFile, TakesWhateverStartsNextForTheNextElement) {
    // The restrictions stand where the version list is due, their first entry in their own place.
    ASSERT_TRUE(
        read("<v><TopVersion>1</TopVersion><Restrictions><VersionRestriction>"
             "<Check>a</Check></VersionRestriction></Restrictions></v>"));
    EXPECT_TRUE(info_.versions.empty());
    EXPECT_TRUE(info_.restrictions.empty());
    ASSERT_TRUE(
        read("<v><TopVersion>1</TopVersion><x/><Restrictions><VersionRestriction>"
             "<Check>a</Check></VersionRestriction></Restrictions></v>"));
    EXPECT_EQ(info_.restrictions.size(), 1U);
    ASSERT_TRUE(read("<v><TopVersion>1</TopVersion><x/><VersionList>1</VersionList></v>"));
    EXPECT_TRUE(info_.versions.empty());
    ASSERT_TRUE(read("<v><VersionList>1</VersionList><TopVersion>1</TopVersion></v>"));
    EXPECT_EQ(info_.topVersion, "1");
    EXPECT_TRUE(info_.versions.empty());
}

TEST_F(VersionFile, MayLackEverything) {
    ASSERT_TRUE(read("<v/>"));
    EXPECT_EQ(info_.topVersion, "");
    ASSERT_TRUE(read("<v><VersionList>1</VersionList></v>"));
    EXPECT_TRUE(info_.versions.empty());
}

TEST_F(VersionFile, MustBeWellFormedToItsEnd) {
    constexpr std::string_view kBegin = "<v><TopVersion>1</TopVersion>";
    EXPECT_TRUE(read(std::string(kBegin) + "</v>\n<!-- end -->\n"));
    for (const std::string_view end :
         {"", "</w>", "<a>", "<VersionList>", "<VersionList></VersionList>", "</v><w/>", "</v>x",
          "&undefined;</v>", "<VersionList/><Restrictions>", "<a b=c/></v>",
          "<VersionList/><Restrictions><VersionRestriction><Check>",
          "<x/><Restrictions><VersionRestriction>", "<VersionList/><Restrictions><x>"}) {
        EXPECT_FALSE(read(std::string(kBegin).append(end))) << end;
    }
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read("\n"));
    EXPECT_FALSE(read("1.2.3"));
    EXPECT_FALSE(read("<TopVersion>"));
    EXPECT_FALSE(read("<v>"));
}

TEST_F(VersionFile, MayNestDeeply) {
    constexpr int kDepth = 200000;
    std::string open;
    std::string close;
    for (int i = 0; i < kDepth; ++i) {
        open += "<a>";
        close += "</a>";
    }
    ASSERT_TRUE(read("<v><TopVersion>1" + open + ".2" + close + "<!-- c --><?p?>.3</TopVersion>" +
                     "<VersionList>" + open + "4" + close + "</VersionList></v>"));
    EXPECT_EQ(info_.topVersion, "1.2.3");
    EXPECT_EQ(info_.versions, std::vector<std::string>{"4"});
    EXPECT_FALSE(read("<v><TopVersion>1" + open));
}

TEST_F(VersionFile, ComesWithAnExample) {
    ASSERT_TRUE(read(readFile(QUILLMARK_EXAMPLES "/sigtrakVersions.xml")));
    EXPECT_EQ(info_.topVersion, "2023.4.2");
    EXPECT_EQ(info_.versions.size(), 13U);
    ASSERT_EQ(info_.restrictions.size(), 2U);
    EXPECT_EQ(info_.restrictions[1].check, "sigTrak+2021.10.0-2023.4.2");
    EXPECT_TRUE(info_.restrictions[1].hasWarning);
}

// --- without an XML reader --------------------------------------------------------------------

bool isPlain(std::string_view content) {
    VersionInfo info;
    return parsePlainVersionFile(content, info);
}

TEST(PlainVersionFile, IsWhatComesWithTheProgram) {
    EXPECT_TRUE(isPlain(readFile(QUILLMARK_EXAMPLES "/sigtrakVersions.xml")));
    EXPECT_TRUE(isPlain("<v/>"));
    EXPECT_TRUE(isPlain("<?xml version=\"1.0\"?>\n<!-- a --><v>\t<!----><w_1>2 ]\n</w_1></v>\n"));
}

TEST(PlainVersionFile, IsNothingThatNeedsAReader) {
    for (const std::string_view content : {"",
                                           "\n",
                                           "1.2.3",
                                           "<v>",
                                           "</v>",
                                           "<v></w>",
                                           "<v/><w/>",
                                           "<v/>x",
                                           "<v/></v>",
                                           "<>",
                                           "<v",
                                           "<v a='b'/>",
                                           "<v></v >",
                                           "<v />",
                                           "<1/>",
                                           "<a-b/>",
                                           "<a:b/>",
                                           "<v>&amp;</v>",
                                           "<v>></v>",
                                           "<v>]]></v>",
                                           "<v><![CDATA[a]]></v>",
                                           "<v><?p?></v>",
                                           "<?p?><v/>",
                                           "<!DOCTYPE v><v/>",
                                           "<v>\r\n</v>",
                                           "<v>\x7f</v>",
                                           "<v>\xC3\xA4</v>",
                                           "\xEF\xBB\xBF<v/>",
                                           " <?xml version=\"1.0\"?><v/>",
                                           "<?xml version='1.0'?><v/>",
                                           "<?xml version=\"1.1\"?><v/>",
                                           "<!-- a -- b --><v/>",
                                           "<!-- a ---><v/>",
                                           "<!-- a <v/>",
                                           "<!-- <a> --><v/>",
                                           "<v>\x01</v>"}) {
        EXPECT_FALSE(isPlain(content)) << content;
    }
    EXPECT_FALSE(isPlain(std::string_view("<v>\0</v>", 8)));
}

/// Documents of the pieces that version files are made of, in any order.
class RandomDocuments {
  public:
    std::string next() {
        std::string document;
        for (std::size_t left = pick(24); left > 0; --left) {
            document += kPieces[pick(kPieces.size())];
        }
        return document;
    }

  private:
    static constexpr std::array<std::string_view, 34> kPieces = {
        "<v>",
        "</v>",
        "<v>",
        "</v>",
        "<TopVersion>",
        "</TopVersion>",
        "<TopVersion>1.2</TopVersion>",
        "<TopVersion/>",
        "<VersionList>",
        "</VersionList>",
        "<VersionList>1 2\n\t3 </VersionList>",
        "<Restrictions>",
        "</Restrictions>",
        "<VersionRestriction>",
        "</VersionRestriction>",
        "<Check>",
        "</Check>",
        "<Check>a$TopVersion$ $Top$TopVersion$</Check>",
        "<MessageWarning>",
        "</MessageWarning>",
        "<MessageWarning/>",
        "<xml>",
        "</xml>",
        "<!-- a -->",
        "<!---->",
        "<!--->",
        "<!-- - -->",
        "<?xml version=\"1.0\"?>",
        " ",
        "\n",
        "\t",
        "1.5 ",
        "]",
        "-",
    };

    std::size_t pick(std::size_t choices) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<std::size_t>(state_ >> 33U) % choices;
    }

    std::uint64_t state_ = 1;
};

TEST(PlainVersionFile, MeansTheSameToAReader) {
    constexpr int kDocuments = 20000;
    RandomDocuments documents;
    int plain = 0;
    for (int i = 0; i < kDocuments; ++i) {
        // Those inside an element are well-formed more often.
        const std::string content = "<v>" + documents.next() + "</v>";
        VersionInfo own;
        VersionInfo xml;
        if (parsePlainVersionFile(content, own)) {
            ++plain;
            ASSERT_TRUE(edges().parseVersionXml(content, xml)) << content;
            ASSERT_EQ(own, xml) << content;
        }
    }
    EXPECT_GT(plain, kDocuments / 50);
}

}  // namespace
}  // namespace quillmark
