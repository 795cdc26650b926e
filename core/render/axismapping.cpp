#include "render/axismapping.h"

#include <cmath>
#include <limits>

namespace {

// Truncates toward zero; values beyond the int range (a degenerate axis) saturate.
int truncated(float value)
{
    if (std::isnan(value))
        return 0;
    if (value <= float(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= float(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

} // namespace

void AxisMapping::setUp(float minimum, float maximum, float start, float length, bool flipped)
{
    m_minimum = minimum;
    m_maximum = maximum;
    m_scale = length / (maximum - minimum);
    m_offset = start;
    if (flipped) {
        m_scale = -m_scale;
        m_offset = length;
    }
}

int AxisMapping::toPixel(double value) const
{
    return truncated(toPixelF(value));
}

int AxisMapping::toValue(double pixel) const
{
    return truncated(toValueF(pixel));
}
