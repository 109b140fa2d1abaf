#include "gallery/Canvas.h"
#include "gallery/ReadImage.h"
#include "gallery/pages/Pages.h"

#include <memory>
#include <string>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr unsigned long kBlue = 0xFF007DFF;
constexpr unsigned long kOrange = 0xFFF08C00;
constexpr unsigned long kGray = 0xFF9AA5B1;
constexpr unsigned long kSheerBlue = 0x60007DFF;
constexpr unsigned long kSheerOrange = 0x60F08C00;

constexpr int kWidth = 320; // design pixels, of both drawings
constexpr int kHeight = 216;
constexpr int kRays = 13;
constexpr int kCopies = 6;

constexpr const wchar_t* kSliders[] = {L"painter.offset", L"painter.translate"};

struct Settings {
    int translation = 0; // design pixels, between two boxes
    bool keepColours = true;
    bool smooth = false; // also in the image
    int opacity = 100;   // percent, of the faint picture
};

// Draws the same on a control and into an image.
class Drawing {
public:
    Drawing(UIPainter& painter, CDPI& scale, const Settings& settings, UIImage& picture)
        : m_painter(painter), m_scale(scale), m_settings(settings), m_picture(picture)
    {
    }

    void Draw()
    {
        m_painter.SetPen(kBlue);
        m_painter.SetBrush(kSheerBlue);
        DrawRays();
        DrawOverlappingBoxes();
        DrawTranslatedBoxes();
        DrawPictures();
    }

private:
    int At(int length) const { return m_scale.Scale(length); }
    RECT At(int left, int top, int right, int bottom) const
    {
        return {At(left), At(top), At(right), At(bottom)};
    }

    void DrawRays()
    {
        for (int ray = 0; ray < kRays; ++ray)
            m_painter.DrawLine({At(10), At(102)}, {At(10 + ray * 11), At(8 + ray * ray / 2)});
    }

    // The colours of the box in the middle; without Restore they stay for what comes after.
    void DrawOverlappingBoxes()
    {
        DrawBox(At(164, 8, 228, 60));
        m_painter.Save();
        m_painter.SetPen(kOrange);
        m_painter.SetBrush(kSheerOrange);
        DrawBox(At(204, 28, 268, 80));
        if (m_settings.keepColours)
            m_painter.Restore();
        DrawBox(At(244, 48, 308, 100));
    }

    void DrawTranslatedBoxes()
    {
        for (int copy = 0; copy < kCopies; ++copy) {
            m_painter.DrawRectange(At(10, 120, 58, 168));
            m_painter.Translate(At(m_settings.translation), At(m_settings.translation) / 2);
        }
        m_painter.ResetTransform();
    }

    // The whole, a part, and the whole with an opacity.
    void DrawPictures()
    {
        const int width = m_picture.GetWidth();
        const int height = m_picture.GetHeight();
        m_picture.SetOpacity(100);
        m_painter.DrawImage(At(164, 112, 230, 153), &m_picture);
        m_painter.DrawImage(At(242), At(112), At(66), At(41), &m_picture, width / 4, height / 8,
                            width / 3, height / 3);
        m_picture.SetOpacity(m_settings.opacity);
        m_painter.DrawImage(At(164, 165, 230, 206), &m_picture);
        m_painter.SetPen(kGray);
        m_painter.DrawRectange(At(242, 165, 308, 206));
        m_painter.DrawLine(At(242), At(165), At(308), At(206));
    }

    void DrawBox(const RECT& box)
    {
        m_painter.FillRectange(box);
        m_painter.DrawRectange(box);
    }

    UIPainter& m_painter;
    CDPI& m_scale;
    const Settings& m_settings;
    UIImage& m_picture;
};

class PainterPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == DUI_MSGTYPE_VALUECHANGED ||
            notification.sType == DUI_MSGTYPE_VALUECHANGED_MOVE ||
            notification.sType == DUI_MSGTYPE_SELECTCHANGED)
            Update();
    }
    void ScaleChanged() override { Update(); }

protected:
    void Show() override
    {
        m_picture = ReadImage(L"pictures/hills.png");
        m_control = AddTo<Canvas>(L"painter.control", [this](Canvas& canvas, HDC dc, const RECT&) {
            UIPainter painter(&canvas, dc);
            Drawing(painter, *GetPaintManagerUI().GetDPIObj(), m_settings, *m_picture).Draw();
        });
        if (m_control) {
            m_control->SetFixedWidth(kWidth);
            m_control->SetFixedHeight(kHeight);
            m_control->SetBkColor(0xFFFFFFFF);
        }
        m_copy = AddTo<Canvas>(L"painter.image", [this](Canvas& canvas, HDC dc, const RECT&) {
            UIPainter(&canvas, dc).DrawImage(0, 0, m_image.get());
        });
        Update();
    }
    void Hide() override
    {
        m_control = m_copy = nullptr;
        m_picture.reset();
        m_image.reset();
    }

private:
    int Value(const wchar_t* slider) const
    {
        const auto* const found = Find<CSliderUI>(slider);
        return found ? found->GetValue() : 0;
    }

    // The control is moved by its margin; its drawing knows nothing of it.
    void Update()
    {
        if (!m_control || !m_copy)
            return;
        m_settings = {.translation = Value(L"painter.translate"),
                      .keepColours = IsChosen(L"painter.restore"),
                      .smooth = IsChosen(L"painter.smooth"),
                      .opacity = IsChosen(L"painter.opacity") ? 40 : 100};
        const LONG offset = Value(L"painter.offset");
        m_control->SetPadding({offset, offset / 5, 0, 0});
        m_control->Invalidate();
        for (const wchar_t* const slider : kSliders)
            SetText((std::wstring(slider) + L".value").c_str(),
                    std::to_wstring(Value(slider)).c_str());
        DrawImage();
    }

    void DrawImage()
    {
        CDPI& scale = *GetPaintManagerUI().GetDPIObj();
        m_image = std::make_unique<UIImage>(scale.Scale(kWidth), scale.Scale(kHeight));
        UIPainter painter(m_image.get());
        if (m_settings.smooth)
            painter.SetRenderHint(UIPainter::Antialiasing);
        Drawing(painter, scale, m_settings, *m_picture).Draw();
        m_copy->Invalidate();
    }

    Settings m_settings;
    std::unique_ptr<UIImage> m_picture;
    std::unique_ptr<UIImage> m_image;
    Canvas* m_control = nullptr; // both owned by the demonstration
    Canvas* m_copy = nullptr;
};

} // namespace

std::shared_ptr<Page> MakePainterPage(GalleryWindow& window)
{
    return std::make_shared<PainterPage>(window);
}

} // namespace gallery
