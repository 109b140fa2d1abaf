#include "Core/SvgGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace DuiLib::Svg {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMostCurveLines = 200;

double Length(Point vector)
{
    return std::hypot(vector.x, vector.y);
}

int CurveLines(double deviation, double tolerance)
{
    return std::clamp(static_cast<int>(std::ceil(std::sqrt(0.75 * deviation / tolerance))), 1,
                      kMostCurveLines);
}

int ArcLines(double radius, double angle, double tolerance)
{
    const double step = 2 * std::acos(1 - std::min(0.5, tolerance / std::max(radius, tolerance)));
    return std::clamp(static_cast<int>(std::ceil(std::abs(angle) / step)), 1, kMostCurveLines);
}

// Collects subpaths, point by point.
class PathBuilder {
public:
    explicit PathBuilder(double tolerance) : m_tolerance(tolerance) {}

    Point Current() const { return m_current; }

    void Move(Point to)
    {
        m_start = m_current = to;
        m_open = false;
    }

    void Line(Point to)
    {
        if (++m_count > kMostPoints)
            return;
        if (!m_open) {
            m_contours.push_back({.points = {m_current}, .closed = false});
            m_open = true;
        }
        m_contours.back().points.push_back(to);
        m_current = to;
    }

    void Cubic(Point first, Point second, Point to)
    {
        const Point from = m_current;
        const double deviation =
            std::max(Length(from - first * 2 + second), Length(first - second * 2 + to));
        const int lines = CurveLines(deviation, m_tolerance);
        for (int index = 1; index < lines; index++) {
            const double t = static_cast<double>(index) / lines;
            const double s = 1 - t;
            Line(from * (s * s * s) + first * (3 * s * s * t) + second * (3 * s * t * t) +
                 to * (t * t * t));
        }
        Line(to);
    }

    void Quadratic(Point control, Point to)
    {
        const Point from = m_current;
        Cubic(from + (control - from) * (2.0 / 3), to + (control - to) * (2.0 / 3), to);
    }

    // An arc of an ellipse whose x axis is turned by `turn` radians, to the point at the end angle.
    void Arc(Point centre, Point radius, double turn, double angle, double sweep)
    {
        const int lines = ArcLines(std::max(radius.x, radius.y), sweep, m_tolerance);
        for (int index = 1; index <= lines; index++) {
            const double at = angle + sweep * index / lines;
            const Point flat{radius.x * std::cos(at), radius.y * std::sin(at)};
            Line(centre + Point{flat.x * std::cos(turn) - flat.y * std::sin(turn),
                                flat.x * std::sin(turn) + flat.y * std::cos(turn)});
        }
    }

    // An arc by its end point, as path data names it.
    void ArcTo(Point radius, double turn, bool large, bool clockwise, Point to)
    {
        const Point from = m_current;
        radius = {std::abs(radius.x), std::abs(radius.y)};
        if (from == to)
            return;
        if (radius.x == 0 || radius.y == 0) {
            Line(to);
            return;
        }

        // In the frame of the ellipse, around the middle of the chord.
        const double cosine = std::cos(turn);
        const double sine = std::sin(turn);
        const Point half = (from - to) * 0.5;
        const Point chord{cosine * half.x + sine * half.y, -sine * half.x + cosine * half.y};
        const double reach =
            chord.x * chord.x / (radius.x * radius.x) + chord.y * chord.y / (radius.y * radius.y);
        if (reach > 1)
            radius = radius * std::sqrt(reach);

        const double across =
            radius.x * radius.x * chord.y * chord.y + radius.y * radius.y * chord.x * chord.x;
        const double square = radius.x * radius.x * radius.y * radius.y;
        const double factor =
            std::sqrt(std::max(0.0, (square - across) / across)) * (large == clockwise ? -1 : 1);
        const Point middle{factor * radius.x * chord.y / radius.y,
                           -factor * radius.y * chord.x / radius.x};
        const Point centre = (from + to) * 0.5 + Point{cosine * middle.x - sine * middle.y,
                                                       sine * middle.x + cosine * middle.y};

        const auto angleOf = [&](Point point) {
            return std::atan2((point.y - middle.y) / radius.y, (point.x - middle.x) / radius.x);
        };
        const double angle = angleOf(chord);
        double sweep = angleOf(chord * -1) - angle;
        if (clockwise && sweep < 0)
            sweep += 2 * kPi;
        if (!clockwise && sweep > 0)
            sweep -= 2 * kPi;

        Arc(centre, radius, turn, angle, sweep);
        if (m_open)
            m_contours.back().points.back() = to; // without the rounding
        m_current = to;
    }

    void Close()
    {
        if (m_open)
            m_contours.back().closed = true;
        else if (++m_count <= kMostPoints)
            m_contours.push_back({.points = {m_current}, .closed = true});
        m_open = false;
        m_current = m_start;
    }

    Contours Take() { return std::move(m_contours); }

private:
    double m_tolerance;
    Contours m_contours;
    Point m_start;
    Point m_current;
    bool m_open = false;
    std::size_t m_count = 0;
};

// Reads path data command by command.
class PathReader {
public:
    PathReader(std::wstring_view data, double tolerance) : m_scanner(data), m_builder(tolerance) {}

    Contours Read()
    {
        wchar_t command = m_scanner.Letter();
        if (command != L'M' && command != L'm')
            return {};
        while (command != 0 && Draw(command)) {
            // Further numbers repeat the command; after a move they are lines.
            if (command == L'M' || command == L'm')
                command = command == L'M' ? L'L' : L'l';
            const bool repeatable = command != L'Z' && command != L'z';
            if (const wchar_t next = m_scanner.Letter())
                command = next;
            else if (m_scanner.AtEnd() || !repeatable)
                break;
        }
        return m_builder.Take();
    }

private:
    bool Draw(wchar_t command)
    {
        const bool relative = command >= L'a';
        m_origin = relative ? m_builder.Current() : Point{};
        const wchar_t kind = relative ? static_cast<wchar_t>(command - L'a' + L'A') : command;

        const auto before = m_last;
        m_last = kind;
        switch (kind) {
        case L'M':
            return Move();
        case L'L':
            return Line();
        case L'H':
        case L'V':
            return Straight(kind == L'H');
        case L'C':
            return Cubic();
        case L'S':
            return SmoothCubic(before == L'C' || before == L'S');
        case L'Q':
            return Quadratic();
        case L'T':
            return SmoothQuadratic(before == L'Q' || before == L'T');
        case L'A':
            return Arc();
        case L'Z':
            m_builder.Close();
            return true;
        default:
            return false;
        }
    }

    bool Read(Point& point)
    {
        Point read;
        if (!m_scanner.Number(read.x) || !m_scanner.Number(read.y))
            return false;
        point = m_origin + read;
        return true;
    }

    bool Move()
    {
        Point to;
        if (!Read(to))
            return false;
        m_builder.Move(to);
        return true;
    }

    bool Line()
    {
        Point to;
        if (!Read(to))
            return false;
        m_builder.Line(to);
        return true;
    }

    bool Straight(bool horizontal)
    {
        double value = 0;
        if (!m_scanner.Number(value))
            return false;
        Point to = m_builder.Current();
        if (horizontal)
            to.x = m_origin.x + value;
        else
            to.y = m_origin.y + value;
        m_builder.Line(to);
        return true;
    }

    bool Cubic()
    {
        Point first;
        return Read(first) && CubicFrom(first);
    }

    bool SmoothCubic(bool continues)
    {
        const Point current = m_builder.Current();
        return CubicFrom(continues ? current * 2 - m_control : current);
    }

    bool CubicFrom(Point first)
    {
        Point second;
        Point to;
        if (!Read(second) || !Read(to))
            return false;
        m_builder.Cubic(first, second, to);
        m_control = second;
        return true;
    }

    bool Quadratic()
    {
        Point control;
        return Read(control) && QuadraticBy(control);
    }

    bool SmoothQuadratic(bool continues)
    {
        const Point current = m_builder.Current();
        return QuadraticBy(continues ? current * 2 - m_control : current);
    }

    bool QuadraticBy(Point control)
    {
        Point to;
        if (!Read(to))
            return false;
        m_builder.Quadratic(control, to);
        m_control = control;
        return true;
    }

    bool Arc()
    {
        Point radius;
        double degrees = 0;
        bool large = false;
        bool clockwise = false;
        Point to;
        if (!m_scanner.Number(radius.x) || !m_scanner.Number(radius.y) ||
            !m_scanner.Number(degrees) || !m_scanner.Flag(large) || !m_scanner.Flag(clockwise) ||
            !Read(to))
            return false;
        m_builder.ArcTo(radius, degrees * kPi / 180, large, clockwise, to);
        return true;
    }

    Scanner m_scanner;
    PathBuilder m_builder;
    Point m_origin;
    Point m_control;
    wchar_t m_last = 0;
};

} // namespace

Contours FlattenPath(std::wstring_view data, double tolerance)
{
    return PathReader(data, tolerance).Read();
}

Contours FlattenPoints(std::wstring_view list, bool closed)
{
    Scanner scanner(list);
    Contour contour{.points = {}, .closed = closed};
    Point point;
    while (scanner.Number(point.x) && scanner.Number(point.y))
        contour.points.push_back(point);
    return contour.points.empty() ? Contours() : Contours{std::move(contour)};
}

Contours FlattenRect(Point origin, Point size, Point radius, double tolerance)
{
    if (size.x <= 0 || size.y <= 0)
        return {};
    const Point end = origin + size;
    radius = {std::clamp(radius.x, 0.0, size.x / 2), std::clamp(radius.y, 0.0, size.y / 2)};
    if (radius.x == 0 || radius.y == 0)
        return {{.points = {origin, {end.x, origin.y}, end, {origin.x, end.y}}, .closed = true}};

    PathBuilder builder(tolerance);
    const Point low = origin + radius;
    const Point high = end - radius;
    constexpr double kQuarter = kPi / 2;
    builder.Move({low.x, origin.y});
    builder.Line({high.x, origin.y});
    builder.Arc({high.x, low.y}, radius, 0, -kQuarter, kQuarter);
    builder.Line({end.x, high.y});
    builder.Arc(high, radius, 0, 0, kQuarter);
    builder.Line({low.x, end.y});
    builder.Arc({low.x, high.y}, radius, 0, kQuarter, kQuarter);
    builder.Line({origin.x, low.y});
    builder.Arc(low, radius, 0, kPi, kQuarter);
    builder.Close();
    return builder.Take();
}

Contours FlattenEllipse(Point centre, Point radius, double tolerance)
{
    if (radius.x <= 0 || radius.y <= 0)
        return {};
    PathBuilder builder(tolerance);
    builder.Move({centre.x + radius.x, centre.y});
    builder.Arc(centre, radius, 0, 0, 2 * kPi);
    builder.Close();
    return builder.Take();
}

} // namespace DuiLib::Svg
