// Turns the shape in an SVG file into a block that juce::Path::loadPathFromData reads. Runs during the build,
// on nothing but the standard library, since JUCE isn't compiled yet by then.
//
//     svgToPath <SVG file> <file to write>
//
// Knows <path> elements with every path command but the elliptical arc, and viewBox; no other shapes, no
// transforms. Strokes have to be outlines: a path is filled.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{
struct Point
{
    float x = 0.0f;
    float y = 0.0f;
};

Point operator+ (Point a, Point b)
{
    return { a.x + b.x, a.y + b.y };
}

Point operator- (Point a, Point b)
{
    return { a.x - b.x, a.y - b.y };
}

/** A stored path as it grows: a letter for each step, and its points as little-endian floats. */
class Block
{
public:
    void add (char step, const std::vector<Point>& points = {})
    {
        bytes.push_back (step);

        for (const auto point : points)
        {
            addFloat (point.x);
            addFloat (point.y);
        }
    }

    const std::string& getBytes() const { return bytes; }

private:
    void addFloat (float value)
    {
        const auto bits = std::bit_cast<std::uint32_t> (value);

        for (auto shift = 0; shift < 32; shift += 8)
            bytes.push_back (static_cast<char> (bits >> shift & 0xff));
    }

    std::string bytes;
};

/** Reads numbers as SVG writes them, with blanks or commas or nothing between: "1-.5.25" holds three. */
class Numbers
{
public:
    explicit Numbers (std::string textToRead) : text (std::move (textToRead)) {}

    /** The next character that is neither blank nor comma, 0 at the end. */
    char peek()
    {
        position = std::min (text.find_first_not_of (" \t\r\n,", position), text.size());
        return text.c_str()[position];
    }

    bool isAtNumber()
    {
        return peek() != '\0' && std::string_view ("+-.0123456789").find (peek()) != std::string_view::npos;
    }

    char takeLetter()
    {
        const auto letter = peek();
        ++position;
        return letter;
    }

    float takeNumber()
    {
        peek();
        const auto* const start = text.c_str() + position;
        char* end = nullptr;
        const auto value = std::strtof (start, &end);

        if (end == start)
            throw std::runtime_error ("a number is missing before \"" + text.substr (position, 20) + "\"");

        position += static_cast<std::size_t> (end - start);
        return value;
    }

    Point takePoint()
    {
        const auto x = takeNumber();
        return { x, takeNumber() };
    }

private:
    const std::string text;
    std::size_t position = 0;
};

/** Writes the steps of one path's text. */
class PathReader
{
public:
    PathReader (std::string text, Block& blockToFill) : numbers (std::move (text)), block (blockToFill) {}

    void read()
    {
        while (numbers.peek() != '\0')
        {
            // A command's numbers may come several times over; further pairs of a move are lines.
            if (! numbers.isAtNumber())
                command = numbers.takeLetter();
            else if (command == 'M' || command == 'm')
                command = command == 'M' ? 'L' : 'l';
            else if (command == '\0' || command == 'Z' || command == 'z')
                throw std::runtime_error ("numbers without a command");

            step();
        }
    }

private:
    void step()
    {
        const auto isRelative = command >= 'a';
        const auto origin = isRelative ? current : Point();

        switch (isRelative ? command - 'a' + 'A' : command)
        {
            case 'M':
                start = origin + numbers.takePoint();
                return finish ('m', {}, start);
            case 'L':
                return finish ('l', {}, origin + numbers.takePoint());
            case 'H':
                return finish ('l', {}, { origin.x + numbers.takeNumber(), current.y });
            case 'V':
                return finish ('l', {}, { current.x, origin.y + numbers.takeNumber() });
            case 'C':
                return cubic (origin, origin + numbers.takePoint());
            case 'S':
                return cubic (origin, mirroredControl ('b'));
            case 'Q':
                return quadratic (origin, origin + numbers.takePoint());
            case 'T':
                return quadratic (origin, mirroredControl ('q'));
            case 'Z':
                return close();
            default:
                throw std::runtime_error (std::string ("path command ") + command + " is not known here");
        }
    }

    void cubic (Point origin, Point control1)
    {
        lastControl = origin + numbers.takePoint();
        finish ('b', { control1, lastControl }, origin + numbers.takePoint());
    }

    void quadratic (Point origin, Point control)
    {
        lastControl = control;
        finish ('q', { control }, origin + numbers.takePoint());
    }

    /** Where a smooth curve's first control point lies: across from the last curve's of the same kind. */
    Point mirroredControl (char curve) const { return lastStep == curve ? current + current - lastControl : current; }

    void close()
    {
        block.add ('c');
        current = start;
        lastStep = 'c';
    }

    void finish (char stepLetter, std::vector<Point> points, Point end)
    {
        points.push_back (end);
        block.add (stepLetter, points);
        current = end;
        lastStep = stepLetter;
    }

    Numbers numbers;
    Block& block;
    char command = '\0';
    char lastStep = '\0';
    Point start, current, lastControl;
};

/** What an attribute of the element at `start` holds, empty without it. */
std::string getAttribute (const std::string& svg, std::size_t start, const std::string& name)
{
    const auto end = svg.find ('>', start);
    const auto marker = ' ' + name + "=\"";
    auto element = svg.substr (start, end - start);
    std::replace (element.begin(), element.end(), '\n', ' ');

    const auto found = element.find (marker);

    if (found == std::string::npos)
        return {};

    const auto first = found + marker.size();
    return element.substr (first, element.find ('"', first) - first);
}

Block convert (const std::string& svg)
{
    const std::string pathTag = "<path";
    auto path = svg.find (pathTag);

    if (path == std::string::npos)
        throw std::runtime_error ("there is no path");

    Block block;
    block.add (getAttribute (svg, path, "fill-rule") == "evenodd" ? 'z' : 'n');

    // The corners draw nothing, but count when the shape is scaled to fit: margins in the picture stay.
    if (const auto viewBox = getAttribute (svg, svg.find ("<svg"), "viewBox"); ! viewBox.empty())
    {
        Numbers numbers (viewBox);
        const auto corner = numbers.takePoint();
        block.add ('m', { corner });
        block.add ('m', { corner + numbers.takePoint() });
    }

    for (; path != std::string::npos; path = svg.find (pathTag, path + 1))
        PathReader (getAttribute (svg, path, "d"), block).read();

    block.add ('e');
    return block;
}
} // namespace

int main (int argc, char** argv)
{
    if (argc != 3)
    {
        std::cerr << "usage: svgToPath <SVG file> <file to write>\n";
        return 2;
    }

    try
    {
        std::ifstream input (argv[1], std::ios::binary);
        const std::string svg ((std::istreambuf_iterator<char> (input)), std::istreambuf_iterator<char>());
        const auto block = convert (svg);

        std::ofstream output (argv[2], std::ios::binary);
        output << block.getBytes() << std::flush;

        if (! output)
            throw std::runtime_error (std::string ("can't write ") + argv[2]);
    }
    catch (const std::exception& error)
    {
        std::cerr << argv[1] << ": " << error.what() << '\n';
        return 1;
    }

    return 0;
}
