#include "pluginCore/state/XmlText.h"

#include "support/ScratchFolder.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
/** What a text means to the parser, in one line; "nothing" where no element results. */
juce::String parsed (const juce::String& text)
{
    const auto xml = parseXmlText (text);
    return xml == nullptr ? juce::String ("nothing")
                          : xml->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

juce::String nested (int depth)
{
    return juce::String::repeatedString ("<a>", depth) + juce::String::repeatedString ("</a>", depth);
}

TEST (XmlText, ReadsWhatPluginsAndTextEditorsWrite)
{
    EXPECT_EQ (parsed ("<a/>"), "<a/>");
    EXPECT_EQ (parsed ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n\r\n<a b=\"1\"><c/></a>\r\n"),
               "<a b=\"1\"><c/></a>");
    EXPECT_EQ (parsed ("<!-- <b> --><a><!-- </a> --><c d='>' e=\"/>\" /></a>"), "<a><c d=\"&gt;\" e=\"/&gt;\"/></a>");
    EXPECT_EQ (parsed ("  <a  b = '&lt;&quot;&#65;' >text &amp; <![CDATA[</a>]]></a> behind"),
               "<a b=\"&lt;&quot;A\">text &amp; &lt;/a&gt;</a>");
    EXPECT_EQ (parsed (juce::String::fromUTF8 ("<a b='\xe9\x9f\xb3'/>")), "<a b=\"&#38899;\"/>");
}

TEST (XmlText, IgnoresWhatAHeaderSaysOfTheEncoding)
{
    EXPECT_EQ (parsed ("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>"), "<a/>");
}

TEST (XmlText, RefusesWhatHoldsNoElement)
{
    for (const auto* text : { "",
                              " ",
                              "a",
                              "<",
                              "a<b/>",
                              "<a>",
                              "<a><b>",
                              "<a b></a>",
                              "<a b=\"1/>",
                              "</a>",
                              "<!-- <a/>",
                              "<?xml <a/>",
                              "<>",
                              "<1/>",
                              "<a 1='2'/>",
                              "<a =''/>",
                              "<a <b/>/>",
                              "<![CDATA[<a/>]]>",
                              "<a><![CDATA[</a>",
                              "<a><!-- </a>",
                              "<a b='1'\"/>",
                              "\xff\xfe<" })
        EXPECT_EQ (parsed (juce::String (juce::CharPointer_UTF8 (text))), "nothing") << text;
}

TEST (XmlText, ForgivesWhatJucesReaderForgives)
{
    EXPECT_EQ (parsed ("<a"), "<a/>");
    EXPECT_EQ (parsed ("<a><b></a"), "<a><b/></a>");
    EXPECT_EQ (parsed ("<a><b/></c>"), "<a><b/></a>");
    EXPECT_EQ (parsed ("<a b=1/>"), "<a/>");
    EXPECT_EQ (parsed ("< a <!-- c --> b='1'/>"), "<a b=\"1\"/>");
    EXPECT_EQ (parsed ("<a>one & two; three</a>"), "<a>one  two three</a>");
}

/** Throws pieces of markup together; most of what comes out has something wrong with it. */
juce::String makeMarkup (juce::Random& random)
{
    static const juce::StringArray pieces { "<a",  "<b ", ">", "/>",           "</a>", "</",       " c='",
                                            "'",   "\"",  "=", "d=",           "<!--", "<!--x-->", "<![CDATA[",
                                            "]]>", "<",   "x", "<!DOCTYPE e>", " ",    "<a>" };
    juce::String markup = "<a";

    for (auto i = random.nextInt (14); --i >= 0;)
        markup << pieces[random.nextInt (pieces.size())];

    return markup;
}

TEST (XmlText, FindsInAnyMarkupWhatJucesReaderFinds)
{
    juce::Random random (11);
    auto numElements = 0;

    for (auto i = 0; i < 100000; ++i)
    {
        // JUCE's reader takes a text that is cut off right behind a quote for one that the quote ends.
        const auto markup = makeMarkup (random) + ">";
        const auto juces = juce::XmlDocument (markup).getDocumentElement();
        const auto ours = parseXmlText (markup);

        ASSERT_EQ (ours != nullptr, juces != nullptr) << markup;
        ASSERT_TRUE (ours == nullptr || ours->isEquivalentTo (juces.get(), false)) << markup;
        numElements += ours != nullptr ? 1 : 0;
    }

    EXPECT_GT (numElements, 10000);
}

TEST (XmlText, TakesReferencesToAnyCharacterAsJuceDoes)
{
    for (const auto* reference :
         { "&#9;", "&#x41;", "&#1114111;", "&#0;", "&#xFFFFFFFF;", "&#xD800;", "&#57343;", "&#x110000;", "&#1114112;",
           "&#x;", "&#12a;", "&#xg;", "&#999999999999;", "&#;", "&#-1;", "&#x41x", "&#x&#65;", "&AMP;", "&unknown;" })
    {
        for (const auto& text :
             { "<a b='" + juce::String (reference) + "c'/>", "<a>" + juce::String (reference) + "c</a>" })
        {
            const auto expected = juce::parseXML (text);
            const auto result = parseXmlText (text);
            ASSERT_NE (expected, nullptr) << text;
            ASSERT_NE (result, nullptr) << text;
            EXPECT_TRUE (result->isEquivalentTo (expected.get(), false)) << text;
        }
    }
}

TEST (XmlText, TakesEveryCharacterThatJuceWrites)
{
    for (juce::juce_wchar character = 1; character < 0x110000; character += character < 0x3000 ? 1 : 211)
    {
        juce::XmlElement xml ("a");
        xml.setAttribute ("b", juce::String::charToString (character));

        const auto result = parseXmlText (xml.toString());
        ASSERT_NE (result, nullptr) << (int) character;
        ASSERT_EQ (result->getStringAttribute ("b"), juce::String::charToString (character)) << (int) character;
    }
}

TEST (XmlText, RefusesReferencesThatTheReaderWouldRunAwayWith)
{
    for (const auto* text : { "<a>&#x", "<a b='&#x", "<a>&#65", "<a b='&#x4", "<a>& and no more</a>", "<a b='&'/>",
                              "<a>&<b><c/></b>;</a>" })
        EXPECT_EQ (parsed (text), "nothing") << text;

    EXPECT_EQ (parsed ("<a>" + juce::String::repeatedString ("&", 1000000) + "</a>"), "nothing");
}

TEST (XmlText, RefusesTextBehindAProcessingInstruction)
{
    for (const auto* text : { "<Varlo><?a?>b</Varlo>", "<a>b<?c?>d</a>", "<a> <?b?> <!-- c --> <?d?>&amp;</a>",
                              "<a><?b?><c/><?d?><!-- e -->f</a>", "<a><?b" })
        EXPECT_EQ (parsed (text), "nothing") << text;

    EXPECT_EQ (parsed ("<?a?><?b?><c><?d?><e <?f?> g='<?h?>'/>i<?j?><?k?></c>l"), "<c><e g=\"&lt;?h?&gt;\"/>i</c>");
}

TEST (XmlText, RefusesSizesThatNoStateHas)
{
    const auto ofSize = [] (int numBytes) { return "<a>" + juce::String::repeatedString ("x", numBytes - 7) + "</a>"; };
    EXPECT_NE (parsed (ofSize (8 * 1024 * 1024)), "nothing");
    EXPECT_EQ (parsed (ofSize (8 * 1024 * 1024 + 1)), "nothing");

    EXPECT_NE (parsed ("<a>" + juce::String::repeatedString ("<b/>", 99999) + "</a>"), "nothing");
    EXPECT_EQ (parsed ("<a>" + juce::String::repeatedString ("<b/>", 100000) + "</a>"), "nothing");

    const auto withAttributes = [] (int number, const juce::String& name)
    {
        juce::String text = "<a";

        for (auto i = 0; i < number; ++i)
            text << ' ' << name << i << "=''";

        return text + "/>";
    };
    EXPECT_NE (parsed (withAttributes (1000, "b")), "nothing");
    EXPECT_EQ (parsed (withAttributes (1001, "b")), "nothing");

    juce::String manyNames = "<a>";

    for (auto i = 0; i < 11; ++i)
        manyNames << withAttributes (1000, "n" + juce::String (i) + "_");

    EXPECT_EQ (parsed (manyNames + "</a>"), "nothing");
}

TEST (XmlText, ReadsFilesInUtf8AndUtf16)
{
    const cv::test::ScratchFolder scratch;
    const auto file = scratch.getFile ("file.xml");
    const auto valueOf = [&] (const std::string& bytes)
    {
        file.replaceWithData (bytes.data(), bytes.size());
        const auto xml = parseXmlFile (file);
        return xml == nullptr ? juce::String ("nothing") : xml->getStringAttribute ("b");
    };
    const auto umlaut = juce::String::fromUTF8 ("\xc3\xa4");

    EXPECT_EQ (valueOf ("<a b='\xc3\xa4'/>"), umlaut);
    EXPECT_EQ (valueOf ("\xef\xbb\xbf<a b='\xc3\xa4'/>"), umlaut);
    EXPECT_EQ (valueOf (std::string ("\xff\xfe<\0a\0 \0b\0=\0'\0\xe4\0'\0/\0>\0", 22)), umlaut);
    EXPECT_EQ (valueOf (std::string ("\xfe\xff\0<\0a\0 \0b\0=\0'\0\xe4\0'\0/\0>", 22)), umlaut);
    EXPECT_EQ (valueOf ("<a b='\xe4'/>"), "nothing");
    EXPECT_EQ (valueOf (""), "nothing");
    EXPECT_EQ (valueOf ("\xff"), "nothing");
    EXPECT_EQ (valueOf ("\xff\xfe"), "nothing");
    EXPECT_EQ (valueOf ("\xef\xbb\xbf"), "nothing");

    EXPECT_EQ (valueOf (("<a b='1'>" + juce::String::repeatedString (" ", 8 * 1024 * 1024) + "</a>").toStdString()),
               "nothing");

    EXPECT_EQ (parseXmlFile (scratch.getFile ("missing.xml")), nullptr);
    EXPECT_EQ (parseXmlFile (scratch.getFolder()), nullptr);
}

TEST (XmlText, RefusesDocumentTypes)
{
    EXPECT_EQ (parsed ("<!DOCTYPE a><a/>"), "nothing");
    EXPECT_EQ (parsed ("<!DOCTYPE a [<!ENTITY b \"<a>\"><!ENTITY c \"&b;&b;\">]><a>&c;</a>"), "nothing");
    EXPECT_EQ (parsed ("<!DOCTYPE a SYSTEM \"/etc/hostname\"><a>&b;</a>"), "nothing");
    EXPECT_EQ (parsed ("<?xml version='1.0'?> <!-- b --> <!DOCTYPE a><a/>"), "nothing");
}

TEST (XmlText, TakesWhatOnlyLooksLikeADocumentType)
{
    EXPECT_EQ (parsed ("<!-- <!DOCTYPE a> --><a/>"), "<a/>");
    EXPECT_EQ (parsed ("<a><!-- <!DOCTYPE a> --></a><!DOCTYPE a>"), "<a/>");
    EXPECT_EQ (parsed ("<a b='<!DOCTYPE a>'/>"), "<a b=\"&lt;!DOCTYPE a&gt;\"/>");
    EXPECT_EQ (parsed ("<a><![CDATA[<!DOCTYPE a>]]></a>"), "<a>&lt;!DOCTYPE a&gt;</a>");
}

TEST (XmlText, RefusesADepthThatWouldExhaustTheStack)
{
    EXPECT_NE (parsed (nested (200)), "nothing");
    EXPECT_EQ (parsed (nested (201)), "nothing");
    EXPECT_EQ (parsed (nested (1000000)), "nothing");
    EXPECT_EQ (parsed (juce::String::repeatedString ("<a b='/>'>", 100000)), "nothing");
    EXPECT_NE (parsed ("<a>" + juce::String::repeatedString ("<b></b><b/>", 10000) + "</a>"), "nothing");
}

TEST (XmlText, FindsChildrenByTheirExactName)
{
    const auto xml = parseXmlText ("<a><B i='1'/><b i='2'/><b i='3'/><c><d/></c></a>");

    ASSERT_NE (findChildElement (*xml, "b"), nullptr);
    EXPECT_EQ (findChildElement (*xml, "b")->getIntAttribute ("i"), 2);
    EXPECT_EQ (findChildElement (*xml, "C"), nullptr);
    EXPECT_EQ (findChildElement (*xml, "d"), nullptr);
}
} // namespace
} // namespace cv::pluginCore
