#pragma once

#include <limits>

namespace Quillet {

// The integer part of a number, limited to the range of int; 0 for something that is no number.
template <class Real>
constexpr int SaturateToInt(Real value)
{
    using Limits = std::numeric_limits<int>;
    if (value != value)
        return 0;
    if (value >= -static_cast<Real>(Limits::min()))
        return Limits::max();
    if (value <= static_cast<Real>(Limits::min()))
        return Limits::min();
    return static_cast<int>(value);
}

} // namespace Quillet
