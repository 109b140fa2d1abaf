#include "gallery/Canvas.h"
#include "gallery/ReadImage.h"
#include "gallery/pages/Pages.h"

#include <filesystem>
#include <iterator>
#include <memory>
#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr const wchar_t* kPhotograph = L"photographs/fjord.jpg";
constexpr const wchar_t* kSliders[] = {L"images.opacity", L"images.blur", L"images.brightness"};

using OwnedImage = std::unique_ptr<UIImage>;

// Not every platform has the effects of GDI+: a gray pixel is brightened and looked at.
bool HasEffects()
{
    UIImage image(1, 1);
    image.GetBitmap()->SetPixel(0, 0, Gdiplus::Color(255, 90, 90, 90));
    image.SetBrightness(100);
    Gdiplus::Color colour;
    image.GetBitmap()->GetPixel(0, 0, &colour);
    return colour.GetR() != 90;
}

std::wstring TemporaryFile()
{
    wchar_t folder[MAX_PATH + 1]{};
    ::GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
    return std::wstring(folder) + L"quillet-image.png";
}

std::wstring SettingsOf(const UIImage& image)
{
    return L"opacity " + std::to_wstring(image.GetOpacity()) + L"   blur " +
           std::to_wstring(image.GetBlur()) + L"   brightness " +
           std::to_wstring(image.GetBrightness());
}

class ImagesPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        const bool slides = notification.sType == DUI_MSGTYPE_VALUECHANGED ||
                            notification.sType == DUI_MSGTYPE_VALUECHANGED_MOVE;
        if (slides && m_original)
            Work();
    }
    void LanguageChanged() override { ShowWhetherThereAreEffects(); }

protected:
    void Show() override
    {
        m_original = ReadImage(kPhotograph);
        AddPicture(L"images.original.picture", m_original);
        AddPicture(L"images.worked.picture", m_worked);
        AddPicture(L"images.clone.picture", m_clone);
        SetText(L"images.original.settings", SettingsOf(*m_original).c_str());
        OnClickOf(L"images.clone", [this] { Clone(); });
        OnClickOf(L"images.save", [this] { Save(); });
        Work();
        Clone();
        ShowWhetherThereAreEffects();
    }
    void Hide() override
    {
        m_original.reset();
        m_worked.reset();
        m_clone.reset();
    }

private:
    void AddPicture(const wchar_t* place, const OwnedImage& image)
    {
        AddTo<Canvas>(place, [&image](Canvas& canvas, HDC dc, const RECT&) {
            UIPainter(&canvas, dc)
                .DrawImage({0, 0, canvas.GetWidth(), canvas.GetHeight()}, image.get());
        });
    }

    int Value(const wchar_t* slider) const
    {
        const auto* const found = Find<CSliderUI>(slider);
        return found ? found->GetValue() : 0;
    }

    // Effects add up in the pixels, so each time a clone of the original gets them.
    void Work()
    {
        m_worked.reset(m_original->Clone());
        m_worked->SetBlur(Value(L"images.blur"), false);
        m_worked->SetBrightness(Value(L"images.brightness"));
        m_worked->SetOpacity(Value(L"images.opacity"));
        for (const wchar_t* const slider : kSliders)
            SetText((std::wstring(slider) + L".value").c_str(),
                    std::to_wstring(Value(slider)).c_str());
        ShowChange(L"images.worked", *m_worked);
    }

    void Clone()
    {
        m_clone.reset(m_worked->Clone());
        ShowChange(L"images.clone", *m_clone);
    }

    void ShowChange(const std::wstring& name, const UIImage& image)
    {
        SetText((name + L".settings").c_str(), SettingsOf(image).c_str());
        if (auto* const place = Find<CControlUI>((name + L".picture").c_str()))
            place->Invalidate();
    }

    void Save()
    {
        const std::wstring path = TemporaryFile();
        std::error_code error;
        std::filesystem::remove(path, error);
        m_worked->Save(path);
        const bool saved = std::filesystem::exists(path, error);
        SetText(L"images.path", saved ? path.c_str() : TextOf(L"images.unsaved").c_str());
    }

    void ShowWhetherThereAreEffects()
    {
        SetText(L"images.effects",
                TextOf(HasEffects() ? L"images.with-effects" : L"images.without-effects").c_str());
    }

    OwnedImage m_original;
    OwnedImage m_worked;
    OwnedImage m_clone;
};

} // namespace

std::shared_ptr<Page> MakeImagesPage(GalleryWindow& window)
{
    return std::make_shared<ImagesPage>(window);
}

} // namespace gallery
