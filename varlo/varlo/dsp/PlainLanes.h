#pragma once

#include <cmath>

namespace cv::varlo
{
/** Two floats side by side, for compilers without vector types in the language. */
struct PlainLanes
{
    float first, second;

    float operator[] (int lane) const noexcept { return lane == 0 ? first : second; }
};

/** The answers to a comparison of two PlainLanes. */
struct PlainMask
{
    bool first, second;
};

inline PlainLanes operator+ (PlainLanes a, PlainLanes b) noexcept
{
    return { a.first + b.first, a.second + b.second };
}

inline PlainLanes operator- (PlainLanes a, PlainLanes b) noexcept
{
    return { a.first - b.first, a.second - b.second };
}

inline PlainLanes operator* (PlainLanes a, PlainLanes b) noexcept
{
    return { a.first * b.first, a.second * b.second };
}

inline PlainMask areBelow (PlainLanes a, PlainLanes b) noexcept
{
    return { a.first < b.first, a.second < b.second };
}

inline bool areBoth (PlainMask mask) noexcept
{
    return mask.first && mask.second;
}

inline PlainLanes select (PlainMask mask, PlainLanes yes, PlainLanes no) noexcept
{
    return { mask.first ? yes.first : no.first, mask.second ? yes.second : no.second };
}

inline PlainLanes absolute (PlainLanes x) noexcept
{
    return { std::abs (x.first), std::abs (x.second) };
}
} // namespace cv::varlo
