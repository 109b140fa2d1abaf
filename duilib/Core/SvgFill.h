#pragma once

#include <span>
#include <vector>

#include "Core/SvgGeometry.h"
#include "Core/UIPlatform.h"

namespace DuiLib::Svg {

enum class FillRule { NonZero, EvenOdd };

// An area in one colour.
struct Shape {
    std::vector<std::vector<Point>> polygons;
    FillRule rule = FillRule::NonZero;
    DWORD colour = 0;
    double top = 0; // of all points
    double bottom = 0;
};

// Fills shapes row by row: a sample belongs to the area when its middle does. The time depends on
// the rows that exist, not on how far a shape reaches out of them.
class ShapeFiller {
public:
    // Rows of samples 0xAARRGGBB, multiplied by their alpha.
    ShapeFiller(std::span<DWORD> samples, int width);

    // The samples begin at row `top` of the shape's coordinates.
    void Fill(const Shape& shape, int top);

private:
    // From the upper end to the lower one, and which way the polygon goes there.
    struct Edge {
        int first = 0; // row
        int end = 0;   // the row behind the last one
        double start = 0;
        double step = 0; // to the right for each row
        int direction = 0;
        double x = 0; // in the present row
    };

    void AddEdge(Point from, Point to);
    void FillRow(int row, FillRule rule, DWORD colour);
    void FillSpan(int row, double left, double right, DWORD colour);

    std::span<DWORD> m_samples;
    int m_width;
    int m_rows;
    std::vector<Edge> m_edges;
    std::vector<Edge> m_active; // those that cross the present row
};

} // namespace DuiLib::Svg
