#include "Core/Svg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "Core/SvgFill.h"
#include "Core/SvgGeometry.h"
#include "Core/SvgMarkup.h"
#include "Core/SvgStyle.h"

namespace DuiLib {

namespace {

using namespace Svg;

// Every pixel is the mean of so many samples in each direction.
constexpr int kSamples = 4;
constexpr int kBandSamples = 4 * 1024 * 1024;
constexpr double kTolerance = 0.25; // of curves, in samples

constexpr std::size_t kLargestFile = 4 * 1024 * 1024;
constexpr double kLargestSide = 8192;         // pixels
constexpr double kFarthestCoordinate = 4.0e6; // samples

struct Drawing {
    int width = 0; // pixels
    int height = 0;
    std::vector<Shape> shapes; // in samples
};

// A matrix can take a point anywhere, or nowhere.
double Bounded(double value)
{
    return std::isfinite(value) ? std::clamp(value, -kFarthestCoordinate, kFarthestCoordinate) : 0;
}

enum class Kind { Group, Shape, StyleSheet, Skipped, Unknown };

struct Element {
    std::wstring_view name;
    Kind kind;
};

constexpr std::array kElements{
    Element{L"svg", Kind::Group},
    Element{L"g", Kind::Group},
    Element{L"a", Kind::Group},
    Element{L"path", Kind::Shape},
    Element{L"rect", Kind::Shape},
    Element{L"circle", Kind::Shape},
    Element{L"ellipse", Kind::Shape},
    Element{L"line", Kind::Shape},
    Element{L"polyline", Kind::Shape},
    Element{L"polygon", Kind::Shape},
    Element{L"style", Kind::StyleSheet},
    Element{L"defs", Kind::Skipped},
    Element{L"title", Kind::Skipped},
    Element{L"desc", Kind::Skipped},
    Element{L"metadata", Kind::Skipped},
    Element{L"symbol", Kind::Skipped},
    Element{L"clipPath", Kind::Skipped},
    Element{L"mask", Kind::Skipped},
    Element{L"filter", Kind::Skipped},
    Element{L"marker", Kind::Skipped},
    Element{L"pattern", Kind::Skipped},
    Element{L"linearGradient", Kind::Skipped},
    Element{L"radialGradient", Kind::Skipped},
    Element{L"script", Kind::Skipped},
    Element{L"animate", Kind::Skipped},
    Element{L"animateTransform", Kind::Skipped},
    Element{L"animateMotion", Kind::Skipped},
    Element{L"set", Kind::Skipped},
};

Kind KindOf(std::wstring_view name)
{
    const auto element = std::ranges::find(kElements, name, &Element::name);
    return element == kElements.end() ? Kind::Unknown : element->kind;
}

// Reads a drawing and works out all its areas.
class Reader {
public:
    Reader(std::wstring_view text, int scale) : m_markup(text), m_scale(scale / 100.0) {}

    std::optional<Drawing> Read(std::wstring& failure)
    {
        m_open.push_back({});
        for (;;) {
            switch (m_markup.Next()) {
            case MarkupReader::Piece::Open:
                Open();
                break;
            case MarkupReader::Piece::Close:
                Close();
                break;
            case MarkupReader::Piece::Text:
                if (m_open.back().styleSheet)
                    m_styleText += m_markup.Text();
                break;
            case MarkupReader::Piece::Mistake:
                m_failure = m_markup.Mistake();
                break;
            case MarkupReader::Piece::End:
                return std::move(m_drawing);
            }
            if (!m_failure.empty()) {
                failure = m_failure;
                return std::nullopt;
            }
        }
    }

private:
    struct OpenElement {
        Style style;
        Matrix matrix;
        bool skipped = false;
        bool styleSheet = false;
    };

    std::wstring_view Text(std::wstring_view attribute) const
    {
        const auto& all = m_markup.Attributes();
        const auto found = std::ranges::find(all, attribute, &Attribute::name);
        return found == all.end() ? std::wstring_view() : std::wstring_view(found->value);
    }

    double Length(std::wstring_view attribute, double reference, double otherwise = 0) const
    {
        double value = otherwise;
        return ParseLength(Text(attribute), reference, value) ? value : otherwise;
    }

    void Fail(std::wstring_view reason) { m_failure = m_markup.At(reason); }

    void Open()
    {
        auto name = m_markup.Name();
        constexpr std::wstring_view kPrefix = L"svg:";
        if (name.starts_with(kPrefix))
            name.remove_prefix(kPrefix.size());

        auto element = m_open.back();
        const bool root = m_open.size() == 1;
        const bool foreign = name.find(L':') != name.npos;
        const Kind kind = foreign ? Kind::Skipped : KindOf(name);
        element.styleSheet = kind == Kind::StyleSheet;
        element.skipped = element.skipped || (!root && (foreign || kind == Kind::Skipped));
        if (root && name != L"svg")
            return Fail(L"the root element is not <svg>");
        if (!element.skipped && !element.styleSheet) {
            if (kind == Kind::Unknown)
                return Fail(L"the element <" + std::wstring(name) + L"> cannot be drawn");
            if (root && !ReadViewport(element.matrix))
                return;
            if (!ReadStyle(name, root, element))
                return;
            if (kind == Kind::Shape && !element.skipped)
                AddShapes(name, element);
        }
        m_open.push_back(element);
    }

    void Close()
    {
        if (m_open.back().styleSheet) {
            m_sheet.Add(m_styleText);
            m_styleText.clear();
        }
        m_open.pop_back();
    }

    bool ReadViewport(Matrix& matrix)
    {
        Scanner box(Text(L"viewBox"));
        Point origin;
        Point size;
        const bool boxed = box.Number(origin.x) && box.Number(origin.y) && box.Number(size.x) &&
                           box.Number(size.y);
        if (boxed && (size.x <= 0 || size.y <= 0)) {
            Fail(L"the view box is empty");
            return false;
        }

        // A missing side follows from the other one and the view box.
        constexpr double kMissing = std::numeric_limits<double>::lowest();
        Point own{Length(L"width", size.x, kMissing), Length(L"height", size.y, kMissing)};
        if (!boxed && (own.x == kMissing || own.y == kMissing)) {
            Fail(L"the drawing has no size");
            return false;
        }
        if (own.x == kMissing && own.y == kMissing)
            own = size;
        else if (own.x == kMissing)
            own.x = own.y * size.x / size.y;
        else if (own.y == kMissing)
            own.y = own.x * size.y / size.x;
        if (own.x <= 0 || own.y <= 0) {
            Fail(L"the drawing is empty");
            return false;
        }
        if (own.x * m_scale > kLargestSide || own.y * m_scale > kLargestSide) {
            Fail(L"the drawing is too large");
            return false;
        }
        m_drawing.width = PixelSize(own.x);
        m_drawing.height = PixelSize(own.y);
        m_user = boxed ? size : own;

        // The view box fills the whole pixels that the drawing takes.
        const Point pixels{static_cast<double>(m_drawing.width),
                           static_cast<double>(m_drawing.height)};
        matrix = Matrix{.a = kSamples, .d = kSamples} * Fit(pixels, boxed ? origin : Point{});
        return true;
    }

    int PixelSize(double length) const
    {
        return std::max(1, static_cast<int>(std::lround(length * m_scale)));
    }

    Matrix Fit(Point pixels, Point origin) const
    {
        Point scale{pixels.x / m_user.x, pixels.y / m_user.y};
        const auto wish = Text(L"preserveAspectRatio");
        const bool keepRatio = wish.find(L"none") == wish.npos;
        if (keepRatio) {
            const bool slice = wish.find(L"slice") != wish.npos;
            // Sizes rounded to whole pixels are no other ratio.
            const bool same = std::abs(scale.x * m_user.x - scale.y * m_user.x) < 1 &&
                              std::abs(scale.x * m_user.y - scale.y * m_user.y) < 1;
            if (!same) {
                const double one = slice ? std::max(scale.x, scale.y) : std::min(scale.x, scale.y);
                scale = {one, one};
            }
        }
        const auto place = [wish](std::wstring_view low, std::wstring_view high) {
            return wish.find(low) != wish.npos ? 0.0 : wish.find(high) != wish.npos ? 1.0 : 0.5;
        };
        const Point free{pixels.x - m_user.x * scale.x, pixels.y - m_user.y * scale.y};
        return {.a = scale.x,
                .d = scale.y,
                .e = free.x * place(L"xMin", L"xMax") - origin.x * scale.x,
                .f = free.y * place(L"YMin", L"YMax") - origin.y * scale.y};
    }

    bool ReadStyle(std::wstring_view name, bool root, OpenElement& element)
    {
        const double diagonal = std::hypot(m_user.x, m_user.y) / std::sqrt(2.0);
        const auto reason = ApplyStyle(element.style, name, m_markup.Attributes(),
                                       {.sheet = m_sheet, .diagonal = diagonal});
        if (!reason.empty()) {
            Fail(reason);
            return false;
        }
        element.skipped = !element.style.displayed;

        Matrix own;
        if (!ParseTransform(Text(L"transform"), own)) {
            Fail(L"the transform cannot be read");
            return false;
        }
        if (!root && name == L"svg")
            own = own * Matrix{.e = Length(L"x", m_user.x), .f = Length(L"y", m_user.y)};
        element.matrix = element.matrix * own;
        return true;
    }

    void AddShapes(std::wstring_view name, const OpenElement& element)
    {
        const auto& style = element.style;
        const double scale = element.matrix.Scale();
        if (!style.visible || scale <= 0)
            return;
        const double tolerance = kTolerance / scale;
        const auto contours = Flatten(name, tolerance);
        const bool area = name != L"line";
        if (style.fill && area)
            AddShape(contours, element.matrix,
                     style.evenOdd ? FillRule::EvenOdd : FillRule::NonZero, *style.fill,
                     style.opacity * style.fillOpacity);
        if (style.stroke && style.pen.width > 0)
            AddShape(Outline(contours, style.pen, tolerance), element.matrix, FillRule::NonZero,
                     *style.stroke, style.opacity * style.strokeOpacity);
    }

    Contours Flatten(std::wstring_view name, double tolerance) const
    {
        const double diagonal = std::hypot(m_user.x, m_user.y) / std::sqrt(2.0);
        const auto point = [this](std::wstring_view x, std::wstring_view y) {
            return Point{Length(x, m_user.x), Length(y, m_user.y)};
        };
        if (name == L"path")
            return FlattenPath(Text(L"d"), tolerance);
        if (name == L"polygon" || name == L"polyline")
            return FlattenPoints(Text(L"points"), name == L"polygon");
        if (name == L"line")
            return {{.points = {point(L"x1", L"y1"), point(L"x2", L"y2")}, .closed = false}};
        if (name == L"rect") {
            // A radius that is not given is the other one.
            const double rx = Length(L"rx", m_user.x, -1);
            const double ry = Length(L"ry", m_user.y, -1);
            const Point radius{rx < 0 ? std::max(ry, 0.0) : rx, ry < 0 ? std::max(rx, 0.0) : ry};
            return FlattenRect(point(L"x", L"y"), point(L"width", L"height"), radius, tolerance);
        }
        if (name == L"circle") {
            const double radius = Length(L"r", diagonal);
            return FlattenEllipse(point(L"cx", L"cy"), {radius, radius}, tolerance);
        }
        return FlattenEllipse(point(L"cx", L"cy"), point(L"rx", L"ry"), tolerance);
    }

    void AddShape(const Contours& contours, const Matrix& matrix, FillRule rule, Rgb colour,
                  double opacity)
    {
        const auto alpha = static_cast<BYTE>(std::lround(opacity * 255));
        Shape shape{.polygons = {},
                    .rule = rule,
                    .colour = static_cast<DWORD>(alpha) << 24 | colour,
                    .top = kFarthestCoordinate,
                    .bottom = -kFarthestCoordinate};
        for (const auto& contour : contours) {
            m_points += contour.points.size();
            if (m_points > kMostPoints)
                return Fail(L"the drawing has too many points");
            if (contour.points.size() < 3)
                continue;
            auto& polygon = shape.polygons.emplace_back();
            polygon.reserve(contour.points.size());
            for (const auto& point : contour.points) {
                const auto placed = matrix.Apply(point);
                polygon.push_back({Bounded(placed.x), Bounded(placed.y)});
                shape.top = std::min(shape.top, polygon.back().y);
                shape.bottom = std::max(shape.bottom, polygon.back().y);
            }
        }
        if (alpha != 0 && !shape.polygons.empty())
            m_drawing.shapes.push_back(std::move(shape));
    }

    MarkupReader m_markup;
    double m_scale;
    Drawing m_drawing;
    Point m_user; // the size of the viewport in user units
    StyleSheet m_sheet;
    std::wstring m_styleText;
    std::vector<OpenElement> m_open;
    std::size_t m_points = 0;
    std::wstring m_failure;
};

// Some rows of the picture, sampled.
class Band {
public:
    Band(int width, int rows)
        : m_width(width), m_rows(rows), m_samples(std::size_t{kSamples} * kSamples * width * rows)
    {
    }

    void Draw(const std::vector<Shape>& shapes, int firstRow)
    {
        std::ranges::fill(m_samples, 0);
        ShapeFiller filler(m_samples, m_width * kSamples);
        const int top = firstRow * kSamples;
        const int bottom = (firstRow + m_rows) * kSamples;
        for (const auto& shape : shapes) {
            if (shape.bottom > top && shape.top < bottom)
                filler.Fill(shape, top);
        }
    }

    // The mean of each pixel's samples, which are multiplied by their alpha.
    void Average(DWORD* pixels, int rows) const
    {
        constexpr unsigned kCount = kSamples * kSamples;
        for (int row = 0; row < rows; row++) {
            for (int column = 0; column < m_width; column++) {
                std::array<unsigned, 4> sums{};
                for (int down = 0; down < kSamples; down++) {
                    const auto* line = m_samples.data() +
                                       (std::size_t{kSamples} * row + down) * m_width * kSamples +
                                       std::size_t{kSamples} * column;
                    for (int across = 0; across < kSamples; across++) {
                        for (unsigned channel = 0; channel < 4; channel++)
                            sums[channel] += line[across] >> channel * 8 & 0xFF;
                    }
                }
                DWORD pixel = 0;
                for (unsigned channel = 0; channel < 4; channel++)
                    pixel |= (sums[channel] + kCount / 2) / kCount << channel * 8;
                *pixels++ = pixel;
            }
        }
    }

private:
    int m_width;
    int m_rows;
    std::vector<DWORD> m_samples;
};

void Render(const Drawing& drawing, const DecodedPicture& picture)
{
    const int rowSamples = picture.width * kSamples * kSamples;
    const int rows = std::clamp(kBandSamples / rowSamples, 1, picture.height);
    Band band(picture.width, rows);
    auto* pixels = reinterpret_cast<DWORD*>(picture.bits);
    for (int row = 0; row < picture.height; row += rows) {
        band.Draw(drawing.shapes, row);
        band.Average(pixels + std::size_t{1} * row * picture.width,
                     std::min(rows, picture.height - row));
    }
}

} // namespace

DecodedPicture DrawSvg(std::span<const BYTE> data, int scale, std::wstring& failure)
{
    if (data.size() > kLargestFile) {
        failure = L"the drawing's file is too large";
        return {};
    }
    const auto text = DecodeText(data);
    if (!text) {
        failure = L"the drawing's text cannot be read";
        return {};
    }
    const auto drawing = Reader(*text, scale).Read(failure);
    if (!drawing)
        return {};

    auto picture = CreatePicture(drawing->width, drawing->height, failure);
    if (picture.bitmap == nullptr)
        return {};
    Render(*drawing, picture);
    picture.scalable = true;
    return picture;
}

} // namespace DuiLib
