#include "quillet/drawing/Painter.h"

#include <optional>
#include <vector>

#include "quillet/drawing/Image.h"
#include "quillet/resources/Utils.h"

namespace DuiLib {

namespace {

constexpr float kLineWidth = 1.0f;
constexpr int kOpaque = 100; // percent

// Lets only a share of each pixel through.
void SetOpacity(Gdiplus::ImageAttributes& attributes, float share)
{
    const Gdiplus::ColorMatrix matrix{
        {{1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, 0, 1, 0, 0}, {0, 0, 0, share, 0}, {0, 0, 0, 0, 1}}};
    attributes.SetColorMatrix(&matrix, Gdiplus::ColorMatrixFlagsDefault,
                              Gdiplus::ColorAdjustTypeDefault);
}

HDC PaintDcOf(CControlUI& control)
{
    CPaintManagerUI* const manager = control.GetManager();
    return manager ? manager->GetPaintDC() : nullptr;
}

} // namespace

UIPen::UIPen() : UIPen(0) {}
UIPen::UIPen(unsigned long color) : m_pColor(std::make_unique<unsigned long>(color)) {}
UIPen::UIPen(const UIPen& other) : UIPen(other.GetColor()) {}
UIPen::~UIPen() = default;

UIPen& UIPen::operator=(const UIPen& other)
{
    *m_pColor = *other.m_pColor;
    return *this;
}

unsigned long UIPen::GetColor() const
{
    return *m_pColor;
}

UIBrush::UIBrush() : UIBrush(0) {}
UIBrush::UIBrush(unsigned long color) : m_pColor(std::make_unique<unsigned long>(color)) {}
UIBrush::UIBrush(const UIBrush& other) : UIBrush(other.GetColor()) {}
UIBrush::~UIBrush() = default;

UIBrush& UIBrush::operator=(const UIBrush& other)
{
    *m_pColor = *other.m_pColor;
    return *this;
}

unsigned long UIBrush::GetColor() const
{
    return *m_pColor;
}

// Holds all that a paint needs in one block: most painters are made for a few lines and go again.
struct UIPainter::Record {
    struct Colours {
        unsigned long pen = 0;
        unsigned long brush = 0;
    };

    CControlUI* control = nullptr;
    std::optional<Gdiplus::Graphics> graphics;
    Colours colours;
    std::vector<Colours> saved;
};

UIPainter::UIPainter(CControlUI* control, HDC hdc) : m_pRecord(new Record)
{
    m_pRecord->control = control;
    if (!control)
        return;
    const HDC dc = hdc ? hdc : PaintDcOf(*control);
    if (!dc)
        return;
    auto& graphics = m_pRecord->graphics.emplace(dc);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
}

UIPainter::UIPainter(UIImage* image) : m_pRecord(new Record)
{
    if (image && image->GetBitmap())
        m_pRecord->graphics.emplace(image->GetBitmap());
}

UIPainter::~UIPainter()
{
    delete m_pRecord;
}

// Published: the record is shared from now on, and the one held before is freed by nobody.
UIPainter& UIPainter::operator=(const UIPainter& other) = default;

void UIPainter::SetPen(const UIPen& pen)
{
    m_pRecord->colours.pen = pen.GetColor();
}

void UIPainter::SetBrush(const UIBrush& brush)
{
    m_pRecord->colours.brush = brush.GetColor();
}

void UIPainter::Save()
{
    m_pRecord->saved.push_back(m_pRecord->colours);
}

void UIPainter::Restore()
{
    if (m_pRecord->saved.empty())
        return;
    m_pRecord->colours = m_pRecord->saved.back();
    m_pRecord->saved.pop_back();
}

void UIPainter::ResetTransform()
{
    if (m_pRecord->graphics)
        m_pRecord->graphics->ResetTransform();
}

void UIPainter::Translate(int dx, int dy)
{
    if (m_pRecord->graphics)
        m_pRecord->graphics->TranslateTransform(static_cast<float>(dx), static_cast<float>(dy),
                                                Gdiplus::MatrixOrderPrepend);
}

void UIPainter::SetRenderHint(RenderHint hint)
{
    if (m_pRecord->graphics && hint == Antialiasing)
        m_pRecord->graphics->SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
}

Gdiplus::Point UIPainter::Offset() const
{
    if (!m_pRecord->control)
        return {};
    const RECT place = m_pRecord->control->GetPos();
    return {place.left, place.top};
}

void UIPainter::DrawLine(int x1, int y1, int x2, int y2)
{
    if (!m_pRecord->graphics)
        return;
    const auto offset = Offset();
    const Gdiplus::Pen pen(Gdiplus::Color(m_pRecord->colours.pen), kLineWidth);
    m_pRecord->graphics->DrawLine(&pen, offset + Gdiplus::Point(x1, y1),
                                  offset + Gdiplus::Point(x2, y2));
}

void UIPainter::DrawLine(const POINT& from, const POINT& to)
{
    DrawLine(from.x, from.y, to.x, to.y);
}

void UIPainter::DrawRectange(const RECT& rect)
{
    if (!m_pRecord->graphics)
        return;
    auto place = Utils::FromWin32RECT(rect);
    place.Offset(Offset());
    const Gdiplus::Pen pen(Gdiplus::Color(m_pRecord->colours.pen), kLineWidth);
    m_pRecord->graphics->DrawRectangle(&pen, place);
}

void UIPainter::FillRectange(const RECT& rect)
{
    if (!m_pRecord->graphics)
        return;
    auto place = Utils::FromWin32RECT(rect);
    place.Offset(Offset());
    const Gdiplus::SolidBrush brush{Gdiplus::Color(m_pRecord->colours.brush)};
    m_pRecord->graphics->FillRectangle(&brush, place);
}

void UIPainter::DrawImage(int x, int y, int width, int height, UIImage* image, int sourceX,
                          int sourceY, int sourceWidth, int sourceHeight)
{
    if (!image || !image->GetBitmap() || !m_pRecord->graphics)
        return;
    Gdiplus::ImageAttributes attributes;
    if (image->GetOpacity() < kOpaque)
        SetOpacity(attributes, static_cast<float>(image->GetOpacity() / 100.0));
    m_pRecord->graphics->SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
    Gdiplus::Rect place(x, y, width, height);
    place.Offset(Offset());
    m_pRecord->graphics->DrawImage(image->GetBitmap(), place, sourceX, sourceY, sourceWidth,
                                   sourceHeight, Gdiplus::UnitPixel, &attributes);
}

void UIPainter::DrawImage(int x, int y, int width, int height, UIImage* image)
{
    if (image)
        DrawImage(x, y, width, height, image, 0, 0, image->GetWidth(), image->GetHeight());
}

void UIPainter::DrawImage(const RECT& rect, UIImage* image)
{
    DrawImage(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, image);
}

void UIPainter::DrawImage(int x, int y, UIImage* image)
{
    if (image)
        DrawImage(x, y, image->GetWidth(), image->GetHeight(), image);
}

} // namespace DuiLib
