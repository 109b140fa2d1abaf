#include "Core/SvgGeometry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <string>

namespace DuiLib::Svg {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMostCurveLines = 200;
constexpr double kLargestNumber = 1e7;

bool IsSpace(wchar_t character)
{
    return character == L' ' || (character >= L'\t' && character <= L'\r');
}

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

bool IsLetter(wchar_t character)
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

double Length(Point vector)
{
    return std::hypot(vector.x, vector.y);
}

// How many characters of the text are a number: sign, digits, point, exponent.
std::size_t NumberLength(std::wstring_view text)
{
    std::size_t at = 0;
    const auto digits = [&] {
        const auto first = at;
        while (at < text.size() && IsDigit(text[at]))
            at++;
        return at - first;
    };
    const auto sign = [&] {
        if (at < text.size() && (text[at] == L'+' || text[at] == L'-'))
            at++;
    };

    sign();
    auto count = digits();
    if (at < text.size() && text[at] == L'.') {
        at++;
        count += digits();
    }
    if (count == 0)
        return 0;

    const auto mantissa = at;
    if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
        at++;
        sign();
        if (digits() == 0)
            at = mantissa; // the unit "em", or a letter of its own
    }
    return at;
}

double ToNumber(std::wstring_view text)
{
    std::string narrow;
    for (const wchar_t character : text.substr(!text.empty() && text.front() == L'+' ? 1 : 0))
        narrow += static_cast<char>(character);
    double value = 0;
    std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    return std::clamp(value, -kLargestNumber, kLargestNumber);
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

bool ParseOneTransform(std::wstring_view name, const std::vector<double>& numbers, Matrix& matrix)
{
    const auto count = numbers.size();
    const auto at = [&](std::size_t index, double otherwise) {
        return index < count ? numbers[index] : otherwise;
    };
    if (name == L"matrix" && count == 6) {
        matrix = {numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
        return true;
    }
    if (count == 0)
        return false;
    if (name == L"translate") {
        matrix = {.e = at(0, 0), .f = at(1, 0)};
        return true;
    }
    if (name == L"scale") {
        matrix = {.a = at(0, 1), .d = at(1, at(0, 1))};
        return true;
    }

    const double angle = at(0, 0) * kPi / 180;
    if (name == L"rotate") {
        const Matrix turn{
            std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
        const Point centre{at(1, 0), at(2, 0)};
        matrix =
            Matrix{.e = centre.x, .f = centre.y} * turn * Matrix{.e = -centre.x, .f = -centre.y};
        return true;
    }
    if (name == L"skewX") {
        matrix = {.c = std::tan(angle)};
        return true;
    }
    if (name == L"skewY") {
        matrix = {.b = std::tan(angle)};
        return true;
    }
    return false;
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

Point Matrix::Apply(Point point) const
{
    return {a * point.x + c * point.y + e, b * point.x + d * point.y + f};
}

Matrix Matrix::operator*(const Matrix& inner) const
{
    return {a * inner.a + c * inner.b,     b * inner.a + d * inner.b,
            a * inner.c + c * inner.d,     b * inner.c + d * inner.d,
            a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
}

double Matrix::Scale() const
{
    return std::sqrt(std::abs(a * d - b * c));
}

Scanner::Scanner(std::wstring_view text) : m_rest(text) {}

void Scanner::SkipSeparators()
{
    while (!m_rest.empty() && (IsSpace(m_rest.front()) || m_rest.front() == L','))
        m_rest.remove_prefix(1);
}

bool Scanner::AtEnd()
{
    SkipSeparators();
    return m_rest.empty();
}

bool Scanner::Number(double& value)
{
    SkipSeparators();
    const auto length = NumberLength(m_rest);
    if (length == 0)
        return false;
    value = ToNumber(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    return true;
}

bool Scanner::Flag(bool& value)
{
    SkipSeparators();
    if (m_rest.empty() || (m_rest.front() != L'0' && m_rest.front() != L'1'))
        return false;
    value = m_rest.front() == L'1';
    m_rest.remove_prefix(1);
    return true;
}

wchar_t Scanner::Letter()
{
    SkipSeparators();
    if (m_rest.empty() || !IsLetter(m_rest.front()))
        return 0;
    const wchar_t letter = m_rest.front();
    m_rest.remove_prefix(1);
    return letter;
}

std::wstring_view Scanner::Word()
{
    SkipSeparators();
    const auto end = std::ranges::find_if_not(m_rest, IsLetter);
    const auto word = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
    m_rest.remove_prefix(word.size());
    return word;
}

bool Scanner::Skip(wchar_t expected)
{
    SkipSeparators();
    if (m_rest.empty() || m_rest.front() != expected)
        return false;
    m_rest.remove_prefix(1);
    return true;
}

bool ParseLength(std::wstring_view text, double reference, double& value)
{
    struct Unit {
        std::wstring_view name;
        double pixels;
    };
    static constexpr std::array kUnits{
        Unit{L"", 1},           Unit{L"px", 1},  Unit{L"pt", 96.0 / 72},
        Unit{L"pc", 16},        Unit{L"in", 96}, Unit{L"cm", 96 / 2.54},
        Unit{L"mm", 96 / 25.4}, Unit{L"em", 16}, Unit{L"ex", 8},
    };

    Scanner scanner(text);
    double number = 0;
    if (!scanner.Number(number))
        return false;
    if (scanner.Skip(L'%')) {
        value = number * reference / 100;
        return scanner.AtEnd();
    }
    const auto word = scanner.Word();
    const auto unit = std::ranges::find(kUnits, word, &Unit::name);
    if (unit == kUnits.end() || !scanner.AtEnd())
        return false;
    value = number * unit->pixels;
    return true;
}

bool ParseTransform(std::wstring_view text, Matrix& matrix)
{
    Scanner scanner(text);
    Matrix all;
    while (!scanner.AtEnd()) {
        const auto name = scanner.Word();
        if (!scanner.Skip(L'('))
            return false;
        std::vector<double> numbers;
        double number = 0;
        while (scanner.Number(number))
            numbers.push_back(number);
        Matrix one;
        if (!scanner.Skip(L')') || !ParseOneTransform(name, numbers, one))
            return false;
        all = all * one;
    }
    matrix = all;
    return true;
}

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
