#pragma once

#include "varlo/dsp/PlainLanes.h"

#include <bit>
#include <cstdint>
#include <limits>

namespace cv::varlo
{
#if defined(__GNUC__) // Clang too
/** Two floats that share a vector register: the language of these compilers has arithmetic for them. */
using VectorLanes = float __attribute__ ((vector_size (8)));
using VectorMask = std::int32_t __attribute__ ((vector_size (8)));

inline VectorMask areBelow (VectorLanes a, VectorLanes b) noexcept
{
    return a < b;
}

inline bool areBoth (VectorMask mask) noexcept
{
    return std::bit_cast<std::int64_t> (mask) == -1;
}

inline VectorLanes select (VectorMask mask, VectorLanes yes, VectorLanes no) noexcept
{
    return mask ? yes : no;
}

inline VectorLanes absolute (VectorLanes x) noexcept
{
    return std::bit_cast<VectorLanes> (std::bit_cast<VectorMask> (x) & 0x7fffffff);
}

using NativeLanes = VectorLanes;
#else
using NativeLanes = PlainLanes;
#endif

/** One sample of both channels, which go through the same arithmetic side by side: one vector operation
    takes no longer than a scalar one, and the two recursions hide each other's waiting. A mono signal
    fills the left half.

    Each operation gives, in each half, the very bits that the same operation gives on floats.
*/
template <typename Lanes>
class FrameOf
{
public:
    /** Silence. */
    constexpr FrameOf() noexcept : FrameOf (0.0f) {}

    /** The same value in both channels. */
    explicit constexpr FrameOf (float both) noexcept : lanes { both, both } {}

    constexpr FrameOf (float left, float right) noexcept : lanes { left, right } {}

    float left() const noexcept { return lanes[0]; }

    float right() const noexcept { return lanes[1]; }

    friend FrameOf operator+ (FrameOf a, FrameOf b) noexcept { return FrameOf (a.lanes + b.lanes); }

    friend FrameOf operator- (FrameOf a, FrameOf b) noexcept { return FrameOf (a.lanes - b.lanes); }

    friend FrameOf operator* (FrameOf a, FrameOf b) noexcept { return FrameOf (a.lanes * b.lanes); }

    friend FrameOf max (FrameOf a, FrameOf b) noexcept
    {
        return FrameOf (select (areBelow (a.lanes, b.lanes), b.lanes, a.lanes));
    }

    friend FrameOf min (FrameOf a, FrameOf b) noexcept
    {
        return FrameOf (select (areBelow (b.lanes, a.lanes), b.lanes, a.lanes));
    }

    friend FrameOf abs (FrameOf x) noexcept { return FrameOf (absolute (x.lanes)); }

    /** Whether both channels are below their limits; NaN is below nothing. */
    friend bool areBothBelow (FrameOf x, FrameOf limit) noexcept { return areBoth (areBelow (x.lanes, limit.lanes)); }

    /** NaN and infinities become 0, in the channel that has them. */
    friend FrameOf finiteOrZero (FrameOf x) noexcept
    {
        const FrameOf infinity (std::numeric_limits<float>::infinity());
        return FrameOf (select (areBelow (abs (x).lanes, infinity.lanes), x.lanes, FrameOf().lanes));
    }

private:
    explicit FrameOf (Lanes value) noexcept : lanes (value) {}

    Lanes lanes;
};

using Frame = FrameOf<NativeLanes>;

/** The most channels that a frame holds. */
constexpr int maxChannels = 2;

/** The most frames that are worked on in one go: enough to spread the cost of a start, and little enough for all that
    belongs to them to stay in the first cache.
*/
constexpr int maxPartLength = 128;
} // namespace cv::varlo
