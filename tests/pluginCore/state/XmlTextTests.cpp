#include "state/XmlText.h"

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

TEST (XmlText, RefusesWhatIsNoXml)
{
    for (const auto* text : { "",
                              " ",
                              "a",
                              "<",
                              "<a",
                              "<a>",
                              "<a><b></a",
                              "<a b></a>",
                              "<a b=1/>",
                              "<a b=\"1/>",
                              "</a>",
                              "<!-- <a/>",
                              "<?xml <a/>",
                              "<>",
                              "< a/>",
                              "<1/>",
                              "<a 1='2'/>",
                              "<a =''/>",
                              "<a <b/>/>",
                              "<![CDATA[<a/>]]>",
                              "<a><![CDATA[</a>",
                              "<a b='1'\"/>",
                              "\xff\xfe<" })
        EXPECT_EQ (parsed (juce::String (juce::CharPointer_UTF8 (text))), "nothing") << text;
}

TEST (XmlText, RefusesCharactersThatDoNotExist)
{
    EXPECT_NE (parsed ("<a b='&#9;&#x41;&#X10FFFF;&#1114111;'>&#10;</a>"), "nothing");

    for (const auto* reference : { "&#0;", "&#xFFFFFFFF;", "&#xD800;", "&#57343;", "&#x110000;", "&#1114112;", "&#x;",
                                   "&#;", "&#12a;", "&#xg;", "&#999999999999;", "&#-1;", "&#65" })
    {
        EXPECT_EQ (parsed ("<a b='" + juce::String (reference) + "'/>"), "nothing") << reference;
        EXPECT_EQ (parsed ("<a>" + juce::String (reference) + "</a>"), "nothing") << reference;
    }
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

    EXPECT_EQ (parseXmlFile (scratch.getFile ("missing.xml")), nullptr);
    EXPECT_EQ (parseXmlFile (scratch.getFolder()), nullptr);
}

TEST (XmlText, RefusesDocumentTypes)
{
    EXPECT_EQ (parsed ("<!DOCTYPE a><a/>"), "nothing");
    EXPECT_EQ (parsed ("<!DOCTYPE a [<!ENTITY b \"<a>\"><!ENTITY c \"&b;&b;\">]><a>&c;</a>"), "nothing");
    EXPECT_EQ (parsed ("<!DOCTYPE a SYSTEM \"/etc/hostname\"><a>&b;</a>"), "nothing");
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
