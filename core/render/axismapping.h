#pragma once

// Maps the values of one graph axis to image pixels and back. All conversions to whole pixels
// or whole values truncate toward zero, so that drawing and mouse picking agree on every pixel.
class AxisMapping
{
public:
    AxisMapping() = default;

    // Maps [minimum, maximum] onto length pixels from start. A flipped axis (the angle axis, whose
    // pixels grow downwards) maps minimum to pixel length and maximum to pixel 0: with start M and
    // length H - M the angle axis stands on the bottom strip and reaches the top edge.
    void setUp(float minimum, float maximum, float start, float length, bool flipped);

    float minimum() const { return m_minimum; }
    float maximum() const { return m_maximum; }
    float scale() const { return m_scale; }
    float offset() const { return m_offset; }

    float toPixelF(double value) const { return (float(value) - m_minimum) * m_scale + m_offset; }
    float toValueF(double pixel) const { return (float(pixel) - m_offset) / m_scale + m_minimum; }
    int toPixel(double value) const;
    int toValue(double pixel) const;

private:
    float m_minimum = 0.0f;
    float m_maximum = 0.0f;
    float m_scale = 1.0f;
    float m_offset = 0.0f;
};
