#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace DuiLib::Svg {

struct Point {
    double x = 0;
    double y = 0;

    Point operator+(Point other) const { return {x + other.x, y + other.y}; }
    Point operator-(Point other) const { return {x - other.x, y - other.y}; }
    Point operator*(double factor) const { return {x * factor, y * factor}; }
    bool operator==(const Point&) const = default;
};

// x' = a x + c y + e, y' = b x + d y + f
struct Matrix {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    Point Apply(Point point) const;
    Matrix operator*(const Matrix& inner) const; // first the inner one, then this one
    double Scale() const;                        // the mean growth of a length
};

struct Contour {
    std::vector<Point> points;
    bool closed = false;
};

using Contours = std::vector<Contour>;

// What has more points is cut there, so that a file of any content needs a bounded memory.
constexpr std::size_t kMostPoints = 2 * 1000 * 1000;

// Takes numbers and words off an attribute's text; blanks and commas separate.
class Scanner {
public:
    explicit Scanner(std::wstring_view text);

    bool AtEnd();
    bool Number(double& value);
    bool Flag(bool& value); // one digit, which needs no separator
    wchar_t Letter();       // 0 when the next character is none
    std::wstring_view Word();
    bool Skip(wchar_t expected);
    std::wstring_view Rest() const { return m_rest; }

private:
    void SkipSeparators();

    std::wstring_view m_rest;
};

// A number with an optional unit, in user units; percent are of the reference.
bool ParseLength(std::wstring_view text, double reference, double& value);

bool ParseTransform(std::wstring_view text, Matrix& matrix);

// Curves become lines that leave them by at most the tolerance (user units). Path data is drawn up
// to its first mistake.
Contours FlattenPath(std::wstring_view data, double tolerance);
Contours FlattenPoints(std::wstring_view list, bool closed);
Contours FlattenRect(Point origin, Point size, Point radius, double tolerance);
Contours FlattenEllipse(Point centre, Point radius, double tolerance);

enum class LineCap { Butt, Round, Square };
enum class LineJoin { Miter, Round, Bevel };

struct Pen {
    double width = 1;
    LineCap cap = LineCap::Butt;
    LineJoin join = LineJoin::Miter;
    double miterLimit = 4;
};

// The area of a line as polygons that all turn the same way: together, filled by the non-zero
// rule, they are the line.
Contours Outline(const Contours& contours, const Pen& pen, double tolerance);

} // namespace DuiLib::Svg
