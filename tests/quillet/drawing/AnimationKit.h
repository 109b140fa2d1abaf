#pragma once

#include <gtest/gtest.h>

#include "quillet/quillet.h"
#include "support/ControlHost.h"
#include "support/TempFolder.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test {

constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kYellow{0xFFFFFF00};
constexpr Argb kWhite{0xFFFFFFFF};

// A colour of its own for every frame; none of them is white or black.
constexpr Argb FrameColour(int frame)
{
    return Argb{0xFF100000u + static_cast<unsigned>(frame) * 7};
}

// An opaque bitmap of one colour, which the caller owns.
inline HBITMAP MakeBitmap(Argb colour, int width = 2, int height = 2)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    for (int i = 0; i < width * height; ++i)
        static_cast<DWORD*>(bits)[i] = colour.value;
    return bitmap;
}

inline std::vector<HBITMAP> MakeFrames(int count)
{
    std::vector<HBITMAP> frames;
    for (int frame = 0; frame < count; ++frame)
        frames.push_back(MakeBitmap(FrameColour(frame)));
    return frames;
}

// A BMP file of one colour, 4 x 4 pixels of 24 bits.
inline std::string BitmapFile(Argb colour)
{
    constexpr int kSide = 4;
    constexpr DWORD kPixelBytes = kSide * kSide * 3;
    std::string file;
    const auto append = [&file](DWORD value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            file += static_cast<char>(value >> 8 * i & 0xFF);
    };
    constexpr DWORD kHeaderBytes = 54;
    file += "BM";
    append(kHeaderBytes + kPixelBytes, 4);
    append(0, 4);
    append(kHeaderBytes, 4);
    append(40, 4);
    append(kSide, 4);
    append(kSide, 4);
    append(1, 2);
    append(24, 2);
    append(0, 4);
    append(kPixelBytes, 4);
    for (int i = 0; i < 4; ++i)
        append(0, 4);
    for (int i = 0; i < kSide * kSide; ++i)
        append(colour.value & 0xFFFFFF, 3);
    return file;
}

// The timer notification of a control, as the manager delivers it.
inline bool Tick(DuiLib::CControlUI& control, int times = 1)
{
    DuiLib::TNotifyUI notification;
    notification.sType = DUI_MSGTYPE_TIMER;
    notification.pSender = &control;
    bool result = true;
    for (int i = 0; i < times; ++i)
        result = control.OnNotify(&notification);
    return result;
}

// What the painter draws on white.
inline Picture PaintOf(DuiLib::ImageAnimationPainter& painter, int width, int height)
{
    const Canvas canvas(width, height);
    painter.Paint(canvas.Dc());
    return canvas.Take();
}

inline bool IsPainted(const Picture& picture, Argb colour)
{
    return picture.Count(colour) == picture.Width() * picture.Height();
}

// Fails the running test when what is not white has other edges.
inline void ExpectBounds(const Picture& picture, const RECT& expected)
{
    const RECT bounds = picture.BoundsOfAllBut(kWhite);
    EXPECT_TRUE(::EqualRect(&bounds, &expected))
        << bounds.left << ", " << bounds.top << ", " << bounds.right << ", " << bounds.bottom;
}

// A control in a window, a painter for it, and a folder that is the resource path.
class AnimationTest : public testing::Test {
protected:
    static constexpr int kWidth = 40;
    static constexpr int kHeight = 20;

    AnimationTest()
    {
        DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
        DuiLib::CPaintManagerUI::SetResourcePath(folder.Path().c_str());
        host.emplace(kWidth, kHeight);
        control = &host->Add<DuiLib::CControlUI>();
        painter.emplace(control);
    }
    // The control goes before what listens to it.
    ~AnimationTest() override { host.reset(); }

    // Files of one colour each, "0.bmp" upward.
    std::vector<std::wstring> WriteFrames(int count) const
    {
        std::vector<std::wstring> names;
        for (int frame = 0; frame < count; ++frame) {
            names.push_back(std::to_wstring(frame) + L".bmp");
            folder.Write(names.back(), BitmapFile(FrameColour(frame)));
        }
        return names;
    }

    Picture Painted() { return PaintOf(*painter, kWidth, kHeight); }

    // The frame that fills the control; -1 when nothing was drawn, -2 when it is none of them.
    int Shown(int count = 1000)
    {
        const Picture picture = Painted();
        if (IsPainted(picture, kWhite))
            return -1;
        for (int frame = 0; frame < count; ++frame)
            if (IsPainted(picture, FrameColour(frame)))
                return frame;
        return -2;
    }

    bool IsInvalid() const { return ::GetUpdateRect(host->Window(), nullptr, FALSE) != 0; }
    void Validate() const { ::ValidateRect(host->Window(), nullptr); }

    TempFolder folder;
    std::optional<DuiLib::ImageAnimationPainter> painter;
    std::optional<ControlHost> host;
    DuiLib::CControlUI* control = nullptr; // the host's
};

} // namespace test
