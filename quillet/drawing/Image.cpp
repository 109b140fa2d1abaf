#include "quillet/drawing/Image.h"

#include <memory>
#include <new>

#include "quillet/drawing/ImageEffect.h"
#include "quillet/resources/Utils.h"

namespace DuiLib {

struct UIImage::Record {
    Gdiplus::Bitmap* bitmap = nullptr;
    HBITMAP hbitmap = nullptr;
    int opacity = 100;
    int blur = 0;
    int brightness = 0;
    bool autoDestroy = true;
};

UIImage::UIImage() : m_pRecord(new Record) {}

UIImage::UIImage(int width, int height) : UIImage()
{
    m_pRecord->bitmap = new Gdiplus::Bitmap(width, height, PixelFormat32bppARGB);
}

UIImage::UIImage(HBITMAP bitmap) : UIImage()
{
    m_pRecord->hbitmap = bitmap;
}

UIImage::UIImage(Gdiplus::Bitmap* bitmap) : UIImage()
{
    m_pRecord->bitmap = bitmap;
}

UIImage::~UIImage()
{
    if (m_pRecord->autoDestroy) {
        delete m_pRecord->bitmap;
        if (m_pRecord->hbitmap)
            ::DeleteObject(m_pRecord->hbitmap);
    }
    delete m_pRecord;
}

// Published: the record is shared from now on, and the one held before is freed by nobody.
UIImage& UIImage::operator=(const UIImage& other) = default;

UIImage* UIImage::Clone() const
try {
    // First of all, so that there is nothing to give back without memory.
    auto clone = std::make_unique<UIImage>();
    BITMAP size{};
    if (Gdiplus::Bitmap* const bitmap = m_pRecord->bitmap) {
        const auto format = bitmap->GetPixelFormat();
        const auto height = static_cast<INT>(bitmap->GetHeight());
        const auto width = static_cast<INT>(bitmap->GetWidth());
        clone->m_pRecord->bitmap = bitmap->Clone(0, 0, width, height, format);
    } else if (m_pRecord->hbitmap && ::GetObjectW(m_pRecord->hbitmap, sizeof size, &size) != 0) {
        clone->m_pRecord->hbitmap = static_cast<HBITMAP>(
            ::CopyImage(m_pRecord->hbitmap, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    }
    return clone.release();
} catch (const std::bad_alloc&) {
    return nullptr;
}

Gdiplus::Bitmap* UIImage::GetBitmap() const
{
    return m_pRecord->bitmap;
}

HBITMAP UIImage::GetHBITMAP() const
{
    return m_pRecord->hbitmap;
}

int UIImage::GetWidth() const
{
    return m_pRecord->bitmap ? static_cast<int>(m_pRecord->bitmap->GetWidth()) : 0;
}

int UIImage::GetHeight() const
{
    return m_pRecord->bitmap ? static_cast<int>(m_pRecord->bitmap->GetHeight()) : 0;
}

int UIImage::GetOpacity() const
{
    return m_pRecord->opacity;
}

void UIImage::SetOpacity(int percent)
{
    m_pRecord->opacity = percent;
}

int UIImage::GetBlur() const
{
    return m_pRecord->blur;
}

void UIImage::SetBlur(int radiusPercent, bool expandEdge)
{
    m_pRecord->blur = radiusPercent;
    if (radiusPercent >= 1 && m_pRecord->bitmap) {
        const float radius = static_cast<float>(radiusPercent * 255) / 100.0f;
        Quillet::Blur(*m_pRecord->bitmap, radius, expandEdge);
    }
}

int UIImage::GetBrightness() const
{
    return m_pRecord->brightness;
}

void UIImage::SetBrightness(int level)
{
    if (level > 0 && m_pRecord->bitmap)
        Quillet::Brighten(*m_pRecord->bitmap, level, 0);
}

void UIImage::Save(const std::wstring& path)
{
    if (m_pRecord->bitmap)
        Utils::SaveBitmap(m_pRecord->bitmap, path);
}

void UIImage::SetAutoDestroyResource(bool autoDestroy)
{
    m_pRecord->autoDestroy = autoDestroy;
}

} // namespace DuiLib
