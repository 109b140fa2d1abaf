#include "Core/SvgGeometry.h"

#include <algorithm>
#include <cmath>

namespace DuiLib::Svg {

namespace {

double Length(Point vector)
{
    return std::hypot(vector.x, vector.y);
}

// The polygons of a thick line.
class Stroker {
public:
    Stroker(const Pen& pen, double tolerance)
        : m_pen(pen), m_half(pen.width / 2), m_tolerance(tolerance)
    {
    }

    void Add(const Contour& contour)
    {
        auto points = contour.points;
        points.erase(std::unique(points.begin(), points.end()), points.end());
        bool closed = contour.closed;
        if (closed && points.size() > 1 && points.front() == points.back())
            points.pop_back();
        if (points.size() == 1) {
            AddDot(points.front());
            return;
        }
        if (points.size() == 2)
            closed = false;

        const auto count = points.size();
        const auto lines = closed ? count : count - 1;
        for (std::size_t index = 0; index < lines; index++) {
            const bool first = !closed && index == 0;
            const bool last = !closed && index + 1 == lines;
            AddLine(points[index], points[(index + 1) % count], first, last);
            if (!last)
                AddJoin(points[index], points[(index + 1) % count], points[(index + 2) % count]);
        }
    }

    Contours Take() { return std::move(m_polygons); }

private:
    Point Direction(Point from, Point to) const
    {
        const Point way = to - from;
        return way * (1 / Length(way));
    }

    static Point Normal(Point direction) { return {-direction.y, direction.x}; }

    void AddPolygon(std::vector<Point> points)
    {
        m_count += points.size();
        if (m_count > kMostPoints)
            return;
        double area = 0;
        for (std::size_t index = 0; index < points.size(); index++) {
            const Point from = points[index];
            const Point to = points[(index + 1) % points.size()];
            area += from.x * to.y - to.x * from.y;
        }
        if (area < 0)
            std::ranges::reverse(points);
        m_polygons.push_back({.points = std::move(points), .closed = true});
    }

    void AddDisc(Point centre)
    {
        for (auto& disc : FlattenEllipse(centre, {m_half, m_half}, m_tolerance))
            AddPolygon(std::move(disc.points));
    }

    void AddLine(Point from, Point to, bool first, bool last)
    {
        const Point direction = Direction(from, to);
        const Point side = Normal(direction) * m_half;
        if (m_pen.cap == LineCap::Round) {
            if (first)
                AddDisc(from);
            if (last)
                AddDisc(to);
        }
        if (m_pen.cap == LineCap::Square) {
            if (first)
                from = from - direction * m_half;
            if (last)
                to = to + direction * m_half;
        }
        AddPolygon({from + side, to + side, to - side, from - side});
    }

    void AddJoin(Point before, Point corner, Point after)
    {
        const Point in = Direction(before, corner);
        const Point out = Direction(corner, after);
        const double cross = in.x * out.y - in.y * out.x;
        const double cosine = in.x * out.x + in.y * out.y;
        constexpr double kAlmostStraight = 0.98;
        if (m_pen.join == LineJoin::Round && cosine < kAlmostStraight) {
            AddDisc(corner);
            return;
        }

        // The wedge opens on the outer side of the turn.
        const double outside = cross > 0 ? -m_half : m_half;
        const Point from = corner + Normal(in) * outside;
        const Point to = corner + Normal(out) * outside;
        std::vector<Point> wedge{corner, from, to};

        // How many times half the width the tip of a mitred corner is away from it.
        const double ratio = std::sqrt(2 / std::max(1 + cosine, 1e-9));
        const bool mitered = m_pen.join == LineJoin::Miter && ratio <= m_pen.miterLimit;
        if (mitered || cosine >= kAlmostStraight) {
            const Point middle = Normal(in) + Normal(out);
            const double scale = outside * ratio / std::max(Length(middle), 1e-9);
            wedge.insert(wedge.begin() + 2, corner + middle * scale);
        }
        AddPolygon(std::move(wedge));
    }

    void AddDot(Point point)
    {
        if (m_pen.cap == LineCap::Round)
            AddDisc(point);
        if (m_pen.cap == LineCap::Square) {
            const double half = m_half;
            AddPolygon({point + Point{-half, -half}, point + Point{half, -half},
                        point + Point{half, half}, point + Point{-half, half}});
        }
    }

    Pen m_pen;
    double m_half;
    double m_tolerance;
    Contours m_polygons;
    std::size_t m_count = 0;
};

} // namespace

Contours Outline(const Contours& contours, const Pen& pen, double tolerance)
{
    Stroker stroker(pen, tolerance);
    for (const auto& contour : contours) {
        if (!contour.points.empty())
            stroker.Add(contour);
    }
    return stroker.Take();
}

} // namespace DuiLib::Svg
