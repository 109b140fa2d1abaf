#include "gallery/pages/Pages.h"

#include "win32/Handles.h"

#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

namespace {

using namespace DuiLib;

using Animation = CImageAnimationControlUI;

constexpr int kFrames = 24;
constexpr int kSize = 128; // design pixels
constexpr UINT kTimer = 17303;
constexpr unsigned kShortTick = 10; // milliseconds

enum Source { kBackground, kBitmaps, kPreloaded, kNames, kAttributes, kSourceCount };

struct Cell {
    const wchar_t* place;
    int firstFrame; // divides the number of frames
};
constexpr std::array<Cell, kSourceCount> kCells = {{{L"frames.background", 4},
                                                    {L"frames.bitmaps", 6},
                                                    {L"frames.preloaded", 6},
                                                    {L"frames.names", 8},
                                                    {L"frames.attributes", 8}}};
constexpr const wchar_t* kSliders[] = {L"frames.duration", L"frames.precision", L"frames.padding"};

struct Rounds {
    const wchar_t* option;
    unsigned limit;
};
constexpr Rounds kRounds[] = {
    {L"frames.rounds.0", 0}, {L"frames.rounds.2", 2}, {L"frames.rounds.6", 6}};

std::wstring FrameName(int frame, const std::wstring& suffix = {})
{
    CDuiString number;
    number.Format(L"%02d", frame + 1);
    return L"frames/ball-" + std::wstring(number) + suffix + L".png";
}

std::vector<std::wstring> FrameNames(const std::wstring& suffix = {})
{
    std::vector<std::wstring> names;
    for (int frame = 0; frame < kFrames; ++frame)
        names.push_back(FrameName(frame, suffix));
    return names;
}

// The ball fades out and in again.
std::vector<std::wstring> FrameAttributes()
{
    std::vector<std::wstring> attributes;
    for (int frame = 0; frame < kFrames; ++frame) {
        const int fade = 55 + std::abs(frame - kFrames / 2) * 200 / (kFrames / 2);
        attributes.push_back(L"file='" + FrameName(frame) + L"' fade='" + std::to_wstring(fade) +
                             L"'");
    }
    return attributes;
}

// Dots in a ring, of which one leads and the others follow ever fainter.
void DrawRing(Gdiplus::Graphics& graphics, int frame, int size)
{
    constexpr int kDots = 12;
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
    for (int dot = 0; dot < kDots; ++dot) {
        const double turn = static_cast<double>(dot) / kDots;
        const double age = turn - static_cast<double>(frame) / kFrames;
        const auto alpha = static_cast<BYTE>(40 + 215 * (age - std::floor(age)));
        const double angle = turn * 2 * std::numbers::pi;
        const int radius = size / 14;
        const auto x = static_cast<int>(size / 2 + std::cos(angle) * size * 0.36);
        const auto y = static_cast<int>(size / 2 + std::sin(angle) * size * 0.36);
        const Gdiplus::SolidBrush brush(Gdiplus::Color(alpha, 0, 125, 255));
        graphics.FillEllipse(&brush, x - radius, y - radius, 2 * radius, 2 * radius);
    }
}

// A bitmap as the toolkit draws them: 32 bits, colours multiplied by their alpha.
Quillet::UniqueBitmap MakeRing(int frame, int size)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size; // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    Quillet::UniqueBitmap bitmap(
        ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap)
        return nullptr;
    Gdiplus::Bitmap pixels(size, size, size * 4, PixelFormat32bppPARGB, static_cast<BYTE*>(bits));
    Gdiplus::Graphics graphics(&pixels);
    DrawRing(graphics, frame, size);
    return bitmap;
}

void GiveRings(Animation& animation, int size)
{
    std::vector<Quillet::UniqueBitmap> rings;
    std::vector<HBITMAP> bitmaps;
    for (int frame = 0; frame < kFrames; ++frame) {
        if (auto ring = MakeRing(frame, size)) {
            bitmaps.push_back(ring.get());
            rings.push_back(std::move(ring));
        }
    }
    animation.SetBitmaps(bitmaps);
    for (auto& ring : rings)
        ring.release(); // now the animation's
}

// Stands still at a frame, after one tick of a cycle that is as short as it takes. So a decoding
// thread is asked for just that frame, and ends without delay.
void StandStillAt(Animation& animation, int frame)
{
    animation.SetPrecision(kShortTick);
    animation.SetDuring(static_cast<unsigned>(kFrames / frame) * kShortTick);
    animation.Start();
    if (auto* const manager = animation.GetManager())
        manager->KillTimer(&animation, kTimer);
    TNotifyUI tick;
    tick.sType = DUI_MSGTYPE_TIMER;
    tick.pSender = &animation;
    animation.OnNotify(&tick);
}

class FrameAnimationPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == DUI_MSGTYPE_VALUECHANGED ||
            notification.sType == DUI_MSGTYPE_VALUECHANGED_MOVE)
            TakeSettings();
        else if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && notification.pSender)
            Chosen(notification.pSender->GetName().GetData());
        else if (notification.sType == DUI_MSGTYPE_TIMER)
            ShowState();
    }
    void ScaleChanged() override { TakeFrames(); }

protected:
    void Show() override
    {
        for (std::size_t i = 0; i < kCells.size(); ++i) {
            m_animations[i] = AddTo<Animation>(kCells[i].place);
            if (!m_animations[i])
                return;
            m_animations[i]->SetAttribute(L"bindwithvisible", L"true");
        }
        OnClickOf(L"frames.start", [this] { Start(); });
        OnClickOf(L"frames.stop", [this] { Stop(); });
        TakeFrames();
    }
    void Hide() override { m_animations = {}; }

private:
    bool IsComplete() const { return m_animations.back() != nullptr; }

    // There are frames of two sizes. The toolkit finds those of a scale for what it draws itself;
    // of what is decoded only, the page chooses. The decoding thread comes first: it has its frame
    // when the others have theirs.
    void TakeFrames()
    {
        if (!IsComplete())
            return;
        CDPI& scale = *GetPaintManagerUI().GetDPIObj();
        const auto decoded = FrameNames(scale.GetScale() > 100 ? L"@150" : L"");
        m_animations[kBackground]->Stop();
        m_animations[kBackground]->SetFileRes(decoded, false, true, false);
        StandStill(kBackground);
        m_animations[kPreloaded]->SetFileRes(decoded, true, false, false);
        GiveRings(*m_animations[kBitmaps], scale.Scale(kSize));
        m_animations[kNames]->SetFileRes(FrameNames(), false, false, false);
        m_animations[kAttributes]->SetFileRes(FrameAttributes(), false, false, true);
        for (const Source source : {kBitmaps, kPreloaded, kNames, kAttributes})
            StandStill(source);
        TakeSettings();
        ShowState();
    }

    void StandStill(Source source)
    {
        StandStillAt(*m_animations[source], kCells[source].firstFrame);
    }

    unsigned Value(const wchar_t* slider) const
    {
        const auto* const found = Find<CSliderUI>(slider);
        return found ? static_cast<unsigned>(found->GetValue()) : 0;
    }

    void TakeSettings()
    {
        if (!IsComplete())
            return;
        const unsigned padding = Value(L"frames.padding");
        for (Animation* const animation : m_animations) {
            animation->SetDuring(Value(L"frames.duration"));
            animation->SetPrecision(Value(L"frames.precision"));
            animation->SetPadding(padding, padding, padding, padding);
            animation->Invalidate();
        }
        for (const wchar_t* const slider : kSliders)
            SetText((std::wstring(slider) + L".value").c_str(),
                    std::to_wstring(Value(slider)).c_str());
    }

    void Start()
    {
        for (Animation* const animation : m_animations)
            animation->Start();
        ShowState();
    }

    void Stop()
    {
        for (Animation* const animation : m_animations)
            animation->Stop();
        ShowState();
    }

    void Chosen(const std::wstring& option)
    {
        if (!IsComplete())
            return;
        if (option == L"frames.visible") {
            for (Animation* const animation : m_animations)
                animation->SetVisible(IsChosen(option));
            ShowState();
        }
        for (const auto& rounds : kRounds) {
            if (option == rounds.option && IsChosen(rounds.option))
                for (Animation* const animation : m_animations)
                    animation->SetMaxRound(rounds.limit);
        }
    }

    void ShowState()
    {
        int moving = 0;
        for (Animation* const animation : m_animations)
            moving += animation && animation->IsAnimating();
        const std::wstring text =
            L"IsAnimating: " + std::to_wstring(moving) + L" / " + std::to_wstring(kSourceCount);
        SetText(L"frames.state", text.c_str());
    }

    std::array<Animation*, kSourceCount> m_animations{}; // owned by the demonstration
};

} // namespace

std::shared_ptr<Page> MakeFrameAnimationPage(GalleryWindow& window)
{
    return std::make_shared<FrameAnimationPage>(window);
}

} // namespace gallery
