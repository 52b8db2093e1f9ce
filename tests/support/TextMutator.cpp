#include "support/TextMutator.h"

#include <array>

namespace cv::test
{
std::string TextMutator::mutate (std::string text)
{
    for (auto i = random.nextInt ({ 1, 4 }); --i >= 0;)
        text = damage (std::move (text));

    return text;
}

std::string TextMutator::damage (std::string text)
{
    switch (random.nextInt (8))
    {
        case 0:
            return flipBits (std::move (text));
        case 1:
            return truncate (std::move (text));
        case 2:
            return duplicateElement (std::move (text));
        case 3:
            return swapElements (std::move (text));
        case 4:
            return changeNumber (std::move (text));
        case 5:
            return nestDeeply (std::move (text));
        case 6:
            return changeEncoding (text);
        default:
            return insertOddBytes (std::move (text));
    }
}

std::string TextMutator::flipBits (std::string text)
{
    for (auto i = random.nextInt ({ 1, 9 }); --i >= 0 && ! text.empty();)
    {
        auto& byte = text[positionIn (text)];
        byte = (char) ((unsigned char) byte ^ (1u << random.nextInt (8)));
    }

    return text;
}

std::string TextMutator::truncate (std::string text)
{
    text.resize (positionIn (text));
    return text;
}

std::string TextMutator::duplicateElement (std::string text)
{
    const auto [begin, end] = findTag (text);
    const auto tag = text.substr (begin, end - begin);
    return text.insert (findTag (text).first, tag);
}

std::string TextMutator::swapElements (std::string text)
{
    auto first = findTag (text);
    auto second = findTag (text);

    if (second.first < first.first)
        std::swap (first, second);

    if (first.second > second.first)
        return text;

    const auto a = text.substr (first.first, first.second - first.first);
    const auto b = text.substr (second.first, second.second - second.first);
    text.replace (second.first, b.size(), a);
    return text.replace (first.first, a.size(), b);
}

std::string TextMutator::changeNumber (std::string text)
{
    static const std::array<std::string, 14> numbers { "1e38",        "-1e999",     "nan", "-nan", "inf",    "-inf",
                                                       "99999999999", "2147483648", "-1",  "0x7f", "1e-400", "",
                                                       "1,5",         "-.e5+7" };

    const auto begin = text.find ("=\"", positionIn (text));

    if (begin == std::string::npos)
        return text;

    const auto end = text.find ('"', begin + 2);
    const auto number = random.nextInt (10) == 0 ? std::string (5000, '9') : numbers[(size_t) random.nextInt (14)];
    return end == std::string::npos ? text : text.replace (begin + 2, end - begin - 2, number);
}

std::string TextMutator::nestDeeply (std::string text)
{
    const auto depth = 1 << random.nextInt (15);
    std::string opening;
    std::string closing;

    for (auto i = 0; i < depth; ++i)
    {
        opening += "<PARAMS>";
        closing += "</PARAMS>";
    }

    return text.insert (findTag (text).first, random.nextBool() ? opening + closing : opening);
}

std::string TextMutator::changeEncoding (const std::string& text)
{
    const auto bigEndian = random.nextBool();
    auto result = random.nextBool() ? std::string (bigEndian ? "\xfe\xff" : "\xff\xfe") : std::string();

    for (const auto character : text)
    {
        result += bigEndian ? '\0' : character;
        result += bigEndian ? character : '\0';
    }

    return random.nextInt (3) == 0 ? "\xef\xbb\xbf" + text : result;
}

std::string TextMutator::insertOddBytes (std::string text)
{
    static const std::array<std::string, 10> odd {
        "\xe9", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xc0\xaf",           std::string (1, '\0'),
        "&#0;", "&#xFFFFFFFF;", "&unknown;",        "base64:a=\"-9.AA\"", "<!DOCTYPE a [<!ENTITY b \"&b;\">]>"
    };

    return text.insert (positionIn (text), odd[(size_t) random.nextInt (10)]);
}

std::pair<size_t, size_t> TextMutator::findTag (const std::string& text)
{
    const auto begin = text.find ('<', positionIn (text));
    const auto end = begin == std::string::npos ? begin : text.find ('>', begin);

    if (end == std::string::npos)
        return { text.size(), text.size() };

    return { begin, end + 1 };
}

size_t TextMutator::positionIn (const std::string& text)
{
    return text.empty() ? 0 : (size_t) random.nextInt ((int) text.size());
}
} // namespace cv::test
