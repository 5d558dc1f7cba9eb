#include "framework/XmlText.h"
#include "host/VqXML.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The text as it is read and written again; "none" when it is refused.
std::string Reread(const std::string& text) {
    const auto document = VqXML::CreateXmlDocument(text);
    return document ? ToXmlText(*document->GetRootNode()) : "none";
}

std::string Nested(std::size_t depth, const std::string& innermost = "") {
    std::string text;
    for (std::size_t level = 0; level < depth; ++level)
        text += "<a>";
    text += innermost;
    for (std::size_t level = 0; level < depth; ++level)
        text += "</a>";
    return text;
}

// What is no document.

TEST(XmlParserTest, TextThatIsNotWellFormedGivesNoDocument) {
    for (const char* const text : {"",
                                   " ",
                                   "text",
                                   "<a>",
                                   "<a",
                                   "</a>",
                                   "<a></b>",
                                   "<a/><b/>",
                                   "<a/>text",
                                   "text<a/>",
                                   "<a><b></a></b>",
                                   "<a b></a>",
                                   "<a b=c/>",
                                   "<a b=\"<\"/>",
                                   "<a>&</a>",
                                   "<a>& b</a>",
                                   "<a>]]></a>",
                                   "<1/>",
                                   "< a/>",
                                   "<a>< /a>",
                                   "<a><!-- -- --></a>",
                                   "<a><![CDATA[</a>",
                                   "<a><?xml version=\"1.0\"?></a>",
                                   " <?xml version=\"1.0\"?><a/>"})
        EXPECT_EQ(Reread(text), "none") << text;
}

TEST(XmlParserTest, AttributeThatStandsTwiceGivesNoDocument) {
    EXPECT_EQ(Reread(R"(<a b="1" b="2"/>)"), "none");
}

TEST(XmlParserTest, TextThatIsNotUtf8GivesNoDocument) {
    for (const char* const text :
         {"<a>\x80</a>", "<a>\xC3</a>", "<a>\xC0\xAF</a>", "<a>\xE0\x80\xAF</a>", "<a>\xED\xA0\x80</a>",
          "<a>\xF4\x90\x80\x80</a>", "<a>\xFF</a>", "<a>\xEF\xBF\xBE</a>", "<a>\xEF\xBF\xBF</a>", "<\xC3/>"})
        EXPECT_EQ(Reread(text), "none") << text;
}

TEST(XmlParserTest, Utf16GivesNoDocumentWithOrWithoutAMark) {
    using namespace std::string_literals;
    EXPECT_EQ(Reread("\xFF\xFE<\0a\0/\0>\0"s), "none");
    EXPECT_EQ(Reread("\xFE\xFF\0<\0a\0/\0>"s), "none");
    EXPECT_EQ(Reread("<\0a\0/\0>\0"s), "none");
    EXPECT_EQ(Reread("\0<\0a\0/\0>"s), "none");
    EXPECT_EQ(Reread("\n\0<\0a\0/\0>\0"s), "none");
}

TEST(XmlParserTest, ControlCharacterGivesNoDocumentAlsoAsAReference) {
    using namespace std::string_literals;
    EXPECT_EQ(Reread("<a>\x01</a>"), "none");
    EXPECT_EQ(Reread("<a>\0</a>"s), "none");
    EXPECT_EQ(Reread("<a/>\0"s), "none");
    EXPECT_EQ(Reread("<a>&#1;</a>"), "none");
    EXPECT_EQ(Reread("<a>&#0;</a>"), "none");
    EXPECT_EQ(Reread("<a>&#xD800;</a>"), "none");
    EXPECT_EQ(Reread("<a>&#x110000;</a>"), "none");
}

TEST(XmlParserTest, DoctypeGivesNoDocument) {
    for (const char* const text :
         {"<!DOCTYPE a><a/>", "<!DOCTYPE a []><a/>", "<!DOCTYPE a SYSTEM \"a.dtd\"><a/>",
          "<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>", "<?xml version=\"1.0\"?>\n<!DOCTYPE a><a/>"})
        EXPECT_EQ(Reread(text), "none") << text;
}

TEST(XmlParserTest, EntityThatXmlDoesNotKnowGivesNoDocument) {
    EXPECT_EQ(Reread("<a>&nbsp;</a>"), "none");
    EXPECT_EQ(Reread("<a>&e;</a>"), "none");
}

TEST(XmlParserTest, VersionsThatAreNot1GiveNoDocument) {
    EXPECT_EQ(Reread("<?xml version=\"2.0\"?><a/>"), "none");
    EXPECT_EQ(Reread("<?xml version=\"1.\"?><a/>"), "none");
    EXPECT_EQ(Reread("<?xml version=\"1.0b\"?><a/>"), "none");
    EXPECT_EQ(Reread("<?xml version=\"1.1\"?><a/>"), "<a/>");
}

TEST(XmlParserTest, ElementsNestAsDeepAs256) {
    const std::string leaf = "<a/>";
    EXPECT_EQ(Reread(Nested(255, leaf)), Nested(255, leaf));
    EXPECT_EQ(Reread(Nested(256, "x")), Nested(256, "x"));
}

TEST(XmlParserTest, ElementsThatNestDeeperThan256GiveNoDocument) {
    EXPECT_EQ(Reread(Nested(257)), "none");
    EXPECT_EQ(Reread(Nested(256, "<a/>")), "none");
    EXPECT_EQ(Reread(Nested(256, "<a/><b/>")), "none");
    EXPECT_EQ(Reread("<a>" + Nested(3) + Nested(256) + "</a>"), "none");
    EXPECT_EQ(Reread(Nested(1000000)), "none");
}

TEST(XmlParserTest, DepthIsCountedFromTheRootAndNotByElements) {
    std::string wide = "<a>";
    for (int element = 0; element < 1000; ++element)
        wide += "<b/>";
    wide += "</a>";
    EXPECT_EQ(Reread(wide), wide);
}

// What is accepted without counting.

TEST(XmlParserTest, ByteOrderMarkOfUtf8IsAccepted) {
    EXPECT_EQ(Reread("\xEF\xBB\xBF<a/>"), "<a/>");
    EXPECT_EQ(Reread("\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>"), "<a/>");
    EXPECT_EQ(Reread("\xEF\xBB\xBF\xEF\xBB\xBF<a/>"), "none");
}

TEST(XmlParserTest, DeclaredEncodingIsIgnored) {
    for (const char* const encoding : {"UTF-8", "ISO-8859-1", "UTF-16", "windows-1252", "no-such-encoding"})
        EXPECT_EQ(Reread("<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?><a>\xC3\xA9</a>"),
                  "<a>\xC3\xA9</a>")
            << encoding;
}

TEST(XmlParserTest, NamespacesAreNotLookedAt) {
    EXPECT_EQ(Reread("<x:a xmlns:x=\"u\"><y:b/></x:a>"), "<x:a><y:b/></x:a>");
    EXPECT_EQ(Reread("<a:b:c/>"), "<a:b:c/>");
}

TEST(XmlParserTest, AttributesAreDropped) {
    EXPECT_EQ(Reread("<a id=\"1\" name='x'><b c=\"&lt;\">t</b></a>"), "<a><b>t</b></a>");
}

TEST(XmlParserTest, CommentsAndInstructionsAroundTheRootDoNotCount) {
    EXPECT_EQ(
        Reread("<?xml version=\"1.0\" standalone=\"yes\"?>\n<!-- c -->\n<?p i?><a/>\n<!-- c --><?p i?>\n"),
        "<a/>");
}

// Texts.

TEST(XmlParserTest, TextIsKeptToTheLetterAndNeverTrimmed) {
    EXPECT_EQ(Reread("<a> \t x\n y </a>"), "<a> \t x\n y </a>");
}

TEST(XmlParserTest, BlanksAreATextWhereNoChildStandsBesideThem) {
    EXPECT_EQ(Reread("<a> \t\n</a>"), "<a> \t\n</a>");
    EXPECT_EQ(Reread("<a><b> </b></a>"), "<a><b> </b></a>");
}

TEST(XmlParserTest, BlankStretchesBesideChildrenDoNotCount) {
    EXPECT_EQ(Reread("<a>\n  <b/>\r\n\t<c/> </a>"), "<a><b/><c/></a>");
}

TEST(XmlParserTest, StretchThatIsNotBlankIsKeptWholeWithItsBlanks) {
    EXPECT_EQ(Reread("<a> x <b/> \n <c/> y\n</a>"), "<a> x  y\n<b/><c/></a>");
}

TEST(XmlParserTest, OtherBlanksThanXmlsOwnDoCount) {
    EXPECT_EQ(Reread("<a>\xC2\xA0<b/></a>"), "<a>\xC2\xA0<b/></a>");
}

TEST(XmlParserTest, CommentsInstructionsAndCdataDoNotEndAStretch) {
    EXPECT_EQ(Reread("<a> <!-- c --> x<b/></a>"), "<a>  x<b/></a>");
    EXPECT_EQ(Reread("<a> <?p i?>x<b/></a>"), "<a> x<b/></a>");
    EXPECT_EQ(Reread("<a> <![CDATA[x]]> <b/></a>"), "<a> x <b/></a>");
    EXPECT_EQ(Reread("<a> <!-- c --> <![CDATA[ ]]> <?p i?><b/></a>"), "<a><b/></a>");
}

TEST(XmlParserTest, CdataIsTextToTheLetter) {
    EXPECT_EQ(Reread("<a><![CDATA[<b>&amp;]]></a>"), "<a>&lt;b&gt;&amp;amp;</a>");
    EXPECT_EQ(Reread("<a>x<![CDATA[]]>y</a>"), "<a>xy</a>");
}

TEST(XmlParserTest, EntitiesAndReferencesStandForTheirCharacters) {
    EXPECT_EQ(Reread("<a>&lt;&gt;&amp;&quot;&apos;</a>"), "<a>&lt;&gt;&amp;\"'</a>");
    EXPECT_EQ(Reread("<a>&#65;&#x42;&#xe9;&#x1F600;</a>"), "<a>AB\xC3\xA9\xF0\x9F\x98\x80</a>");
}

TEST(XmlParserTest, LineEndsAreNormalisedAndReferencesToThemKept) {
    EXPECT_EQ(Reread("<a>1\r\n2\r3\n4</a>"), "<a>1\n2\n3\n4</a>");
    EXPECT_EQ(Reread("<a>&#13;&#10;</a>"), "<a>&#13;\n</a>");
    EXPECT_EQ(Reread("<a><![CDATA[1\r\n2]]></a>"), "<a>1\n2</a>");
}

TEST(XmlParserTest, TextBetweenChildrenIsPutTogether) {
    EXPECT_EQ(Reread("<a>one<b>two</b>three<c/>four</a>"), "<a>onethreefour<b>two</b><c/></a>");
}

TEST(XmlParserTest, TextsBeyond16MebibytesAreReadWhole) {
    // Multi-byte characters, so that some stand across the pieces in which such a text is fed.
    constexpr std::size_t kCharacters = (std::size_t{1} << 24) / 3 + 1000;
    std::string content;
    content.reserve(kCharacters * 3);
    for (std::size_t character = 0; character < kCharacters; ++character)
        content += "\xE2\x82\xAC";
    const std::string text = "<a><b>" + content + "</b><c/></a>";
    ASSERT_GT(text.size(), std::size_t{1} << 24);

    EXPECT_TRUE(Reread(text) == text); // without printing either
    EXPECT_EQ(Reread(text + "<"), "none");
}

TEST(XmlParserTest, TextOfExactlyOnePieceIsRead) {
    const std::string text = "<a>" + std::string((std::size_t{1} << 24) - 7, 'x') + "</a>";
    ASSERT_EQ(text.size(), std::size_t{1} << 24);

    EXPECT_TRUE(Reread(text) == text);
}

TEST(XmlParserTest, DocumentLivesAsLongAsAHolderAndTheRootEvenLonger) {
    auto document = VqXML::CreateXmlDocument("<a><b>text</b></a>");
    vq::auto_com<VqXML::IDocument> another = document;
    document = nullptr;
    VqXML::INode* const root = another->GetRootNode();
    EXPECT_EQ(root->GetChildValue("b"), "text");

    root->AddRef();
    const vq::auto_com<VqXML::INode> kept(root);
    another = nullptr;

    EXPECT_EQ(kept->GetChildValue("b"), "text");
}

} // namespace
