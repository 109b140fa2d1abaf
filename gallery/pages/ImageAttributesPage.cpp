#include "gallery/Canvas.h"
#include "gallery/pages/Pages.h"

#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

struct Example {
    const wchar_t* option;
    const wchar_t* attribute;
};
// The last one has a comma where a blank should be.
constexpr Example kExamples[] = {
    {L"attributes.whole", L"file='pictures/hills.png' dest='64,42,304,192'"},
    {L"attributes.part",
     L"file='photographs/fjord.jpg' source='120,60,360,210' dest='64,42,304,192' fade='160'"},
    {L"attributes.grid",
     L"file='pictures/panel.png' corner='12,12,12,12' dest='64,42,304,192' hole='true'"},
    {L"attributes.tiles",
     L"file='pictures/hills.bmp' dest='24,24,344,210' xtiled='true' ytiled='true'"},
    {L"attributes.mask", L"file='pictures/hills.png' mask='#FF608A98' dest='64,42,304,192'"},
    {L"attributes.faulty",
     L"file='pictures/hills.png' dest='64,42,304,192',fade='96' source='0,0,120,75'"}};

const wchar_t* NameOf(bool value)
{
    return value ? L"true" : L"false";
}

std::wstring Written(const RECT& rect)
{
    return std::to_wstring(rect.left) + L", " + std::to_wstring(rect.top) + L", " +
           std::to_wstring(rect.right) + L", " + std::to_wstring(rect.bottom);
}

std::wstring Written(DWORD colour)
{
    CDuiString text;
    text.Format(L"#%08X", static_cast<unsigned>(colour));
    return text.GetData();
}

std::wstring SizeOf(const TImageInfo* image)
{
    if (!image)
        return L"nullptr";
    return std::to_wstring(image->nX) + L" × " + std::to_wstring(image->nY);
}

class ImageAttributesPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType != DUI_MSGTYPE_SELECTCHANGED || !notification.pSender)
            return;
        for (const auto& example : kExamples) {
            if (notification.pSender->GetName() == example.option && IsChosen(example.option))
                Choose(example);
        }
    }
    void ScaleChanged() override { Choose(m_text); }

protected:
    void Show() override
    {
        m_canvas = AddTo<Canvas>(
            L"attributes.picture",
            [this](const Canvas& canvas, HDC dc, const RECT& paint) { Draw(canvas, dc, paint); });
        Choose(kExamples[1]);
    }
    void Hide() override
    {
        m_canvas = nullptr;
        Forget();
    }

    void OnTextChanged(CControlUI* sender) override
    {
        if (IsShown() && sender->GetName() == L"attributes.text")
            Choose(std::wstring(sender->GetText().GetData()));
    }

private:
    void Choose(const Example& example)
    {
        SetText(L"attributes.text", example.attribute);
        Choose(std::wstring(example.attribute));
    }

    void Choose(const std::wstring& text)
    {
        m_text = text;
        Forget();
        m_attribute.SetAttributeString(m_text.c_str());
        m_attribute.LoadImageW(&GetPaintManagerUI());
        ShowFields();
        if (m_canvas)
            m_canvas->Invalidate();
    }

    // The window keeps a picture under its name, whatever mask it was loaded with.
    void Forget()
    {
        GetPaintManagerUI().RemoveImage(m_attribute.GetImageName());
        m_attribute = CImageAttribute();
    }

    void ShowFields()
    {
        SetText(L"attributes.file", m_attribute.GetImageName());
        SetText(L"attributes.restype", m_attribute.GetResType());
        SetText(L"attributes.dest", Written(m_attribute.GetDest()).c_str());
        SetText(L"attributes.source", Written(m_attribute.GetSource()).c_str());
        SetText(L"attributes.corner", Written(m_attribute.GetCorner()).c_str());
        SetText(L"attributes.fade", std::to_wstring(m_attribute.GetFade()).c_str());
        SetText(L"attributes.colour", Written(m_attribute.GetMask()).c_str());
        SetText(L"attributes.hole", NameOf(m_attribute.IsHole()));
        SetText(L"attributes.tiled", (std::wstring(NameOf(m_attribute.IsXTiled())) + L", " +
                                      NameOf(m_attribute.IsYTiled()))
                                         .c_str());
        SetText(L"attributes.description", m_attribute.GetAttributeString());
        SetText(L"attributes.info", SizeOf(m_attribute.GetImageInfo()).c_str());
        SetText(L"attributes.success", NameOf(m_attribute.IsLoadSuccess()));
    }

    // Without a destination the picture fills the control.
    RECT Destination(const Canvas& canvas)
    {
        const RECT place = canvas.GetPos();
        RECT dest = m_attribute.GetDest();
        if (::IsRectEmpty(&dest))
            return place;
        dest = GetPaintManagerUI().GetDPIObj()->Scale(dest);
        ::OffsetRect(&dest, place.left, place.top);
        return dest;
    }

    void Draw(const Canvas& canvas, HDC dc, const RECT& paint)
    {
        const TImageInfo* const image = m_attribute.GetImageInfo();
        if (!image)
            return;
        CRenderEngine::DrawImage(dc, image->hBitmap, Destination(canvas), paint,
                                 m_attribute.GetSource(), m_attribute.GetCorner(), image->bAlpha,
                                 m_attribute.GetFade(), m_attribute.IsHole(),
                                 m_attribute.IsXTiled(), m_attribute.IsYTiled());
    }

    std::wstring m_text;
    CImageAttribute m_attribute;
    Canvas* m_canvas = nullptr; // owned by the demonstration
};

} // namespace

std::shared_ptr<Page> MakeImageAttributesPage(GalleryWindow& window)
{
    return std::make_shared<ImageAttributesPage>(window);
}

} // namespace gallery
