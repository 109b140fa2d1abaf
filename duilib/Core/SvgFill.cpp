#include "Core/SvgFill.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Core/DrawingColor.h"

namespace DuiLib::Svg {

namespace {

constexpr unsigned kChannelBits = 8;

// The first whole sample whose middle is not before the place, among `count`.
int FirstBehind(double place, int count)
{
    return static_cast<int>(std::clamp(std::ceil(place - 0.5), 0.0, static_cast<double>(count)));
}

unsigned Scaled(unsigned value, unsigned alpha)
{
    return (value * alpha + kOpaqueAlpha / 2) / kOpaqueAlpha;
}

DWORD ScaledChannels(DWORD colour, unsigned alpha)
{
    DWORD scaled = 0;
    for (unsigned shift = 0; shift < 32; shift += kChannelBits)
        scaled |= Scaled(colour >> shift & 0xFF, alpha) << shift;
    return scaled;
}

DWORD MultipliedByAlpha(DWORD colour)
{
    return ScaledChannels(Opaque(colour), AlphaOf(colour));
}

} // namespace

ShapeFiller::ShapeFiller(std::span<DWORD> samples, int width)
    : m_samples(samples),
      m_width(width),
      m_rows(width > 0 ? static_cast<int>(samples.size() / static_cast<std::size_t>(width)) : 0)
{
}

void ShapeFiller::Fill(const Shape& shape, int top)
{
    m_edges.clear();
    m_active.clear();
    const Point origin{0, static_cast<double>(top)};
    for (const auto& polygon : shape.polygons) {
        for (std::size_t i = 0; i < polygon.size(); ++i)
            AddEdge(polygon[i] - origin, polygon[(i + 1) % polygon.size()] - origin);
    }
    std::ranges::sort(m_edges, {}, &Edge::first);

    const DWORD colour = MultipliedByAlpha(shape.colour);
    auto next = m_edges.begin();
    for (int row = 0; row < m_rows && (next != m_edges.end() || !m_active.empty()); ++row) {
        std::erase_if(m_active, [row](const Edge& edge) { return edge.end <= row; });
        for (; next != m_edges.end() && next->first == row; ++next)
            m_active.push_back(*next);
        if (!m_active.empty())
            FillRow(row, shape.rule, colour);
    }
}

void ShapeFiller::AddEdge(Point from, Point to)
{
    const int direction = from.y < to.y ? 1 : -1;
    if (direction < 0)
        std::swap(from, to);
    const int first = FirstBehind(from.y, m_rows);
    const int end = FirstBehind(to.y, m_rows);
    if (first >= end)
        return;
    const double step = (to.x - from.x) / (to.y - from.y);
    m_edges.push_back({.first = first,
                       .end = end,
                       .start = from.x + (first + 0.5 - from.y) * step,
                       .step = step,
                       .direction = direction});
}

void ShapeFiller::FillRow(int row, FillRule rule, DWORD colour)
{
    for (auto& edge : m_active)
        edge.x = edge.start + (row - edge.first) * edge.step;
    std::ranges::sort(m_active, {}, &Edge::x);

    int turns = 0;
    double left = 0;
    for (const auto& edge : m_active) {
        const bool wasInside = turns != 0;
        turns = rule == FillRule::EvenOdd ? 1 - turns : turns + edge.direction;
        const bool isInside = turns != 0;
        if (isInside && !wasInside)
            left = edge.x;
        else if (wasInside && !isInside)
            FillSpan(row, left, edge.x, colour);
    }
}

void ShapeFiller::FillSpan(int row, double left, double right, DWORD colour)
{
    const int first = FirstBehind(left, m_width);
    const int end = FirstBehind(right, m_width);
    if (first >= end)
        return;
    const auto line = m_samples.subspan(static_cast<std::size_t>(row) * m_width, m_width);
    const auto span = line.subspan(first, end - first);
    const unsigned rest = kOpaqueAlpha - AlphaOf(colour);
    if (rest == 0) {
        std::ranges::fill(span, colour);
        return;
    }
    for (DWORD& sample : span)
        sample = colour + (sample != 0 ? ScaledChannels(sample, rest) : 0);
}

} // namespace DuiLib::Svg
