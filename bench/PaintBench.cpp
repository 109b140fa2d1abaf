#include "bench/BenchWindow.h"
#include "bench/Harness.h"

#include <algorithm>

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kRows = 50;
constexpr int kColumns = 20;
constexpr SIZE kWindow{1400, 900};
constexpr double kLargestToBareGdi = 1.5;
constexpr double kLargestOfOneControl = 0.01;

// The same fills, borders and texts with GDI alone, into an off-screen bitmap and to the window.
class BareScene {
public:
    explicit BareScene(BenchWindow& window) : m_window(window.GetHWND())
    {
        for (int i = 0; i < kRows * kColumns; ++i) {
            const auto name = L"control" + std::to_wstring(i);
            m_places.push_back(window.Manager().FindControl(name.c_str())->GetPos());
            m_texts.push_back(L"Text " + std::to_wstring(i));
        }
        m_font = window.Manager().GetFont(-1);
        m_screen = ::GetDC(m_window);
        m_memory = ::CreateCompatibleDC(m_screen);
        m_bitmap = ::CreateCompatibleBitmap(m_screen, kWindow.cx, kWindow.cy);
        m_oldBitmap = ::SelectObject(m_memory, m_bitmap);
        m_oldFont = ::SelectObject(m_memory, m_font);
        m_fill = ::CreateSolidBrush(RGB(0xE8, 0xF3, 0xFF));
        m_line = ::CreateSolidBrush(RGB(0x00, 0x7D, 0xFF));
        ::SetBkMode(m_memory, TRANSPARENT);
        ::SetTextColor(m_memory, RGB(0x1F, 0x29, 0x33));
    }
    ~BareScene()
    {
        ::SelectObject(m_memory, m_oldFont);
        ::SelectObject(m_memory, m_oldBitmap);
        ::DeleteObject(m_bitmap);
        ::DeleteObject(m_fill);
        ::DeleteObject(m_line);
        ::DeleteDC(m_memory);
        ::ReleaseDC(m_window, m_screen);
    }
    BareScene(const BareScene&) = delete;
    BareScene& operator=(const BareScene&) = delete;

    void Paint()
    {
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            RECT place = m_places[i];
            ::FillRect(m_memory, &place, m_fill);
            ::FrameRect(m_memory, &place, m_line);
            ::DrawTextW(m_memory, m_texts[i].c_str(), static_cast<int>(m_texts[i].size()), &place,
                        DT_SINGLELINE | DT_CENTER | DT_VCENTER);
        }
        ::BitBlt(m_screen, 0, 0, kWindow.cx, kWindow.cy, m_memory, 0, 0, SRCCOPY);
    }

private:
    HWND m_window;
    HFONT m_font;
    HDC m_screen;
    HDC m_memory;
    HBITMAP m_bitmap;
    HGDIOBJ m_oldBitmap;
    HGDIOBJ m_oldFont;
    HBRUSH m_fill;
    HBRUSH m_line;
    std::vector<RECT> m_places;
    std::vector<std::wstring> m_texts;
};

void RepaintAllAndOne(Report& report)
{
    BenchWindow window(kWindow.cx, kWindow.cy);
    window.Load(SkinOf(kRows, kColumns));
    BareScene bare(window);
    const auto all = TimeBoth([&] { window.Repaint(); }, [&] { bare.Paint(); });
    report.Add({"repaint 1,000 plain controls / the same by bare GDI", all.cost, all.bare,
                kLargestToBareGdi});

    CControlUI* const control = window.Manager().FindControl(L"control500");
    EmptyWindow empty(kWindow.cx, kWindow.cy);
    const auto one = TimeBoth(
        [&] {
            control->Invalidate();
            ::UpdateWindow(window);
        },
        [&] { empty.Repaint(&control->GetPos()); });
    report.Add({"repaint one control of 1,000 / an empty WM_PAINT", one.cost, one.bare, {}});
    report.Add({"repaint one control less an empty WM_PAINT / repaint all",
                std::max(one.cost - one.bare, 0.0), all.cost, kLargestOfOneControl});
}

void HtmlText(Report& report)
{
    std::wstring text;
    while (text.size() < 2000)
        text += L"Some <b>bold</b> and {i}italic{/i} words with a <a link>link</a> in them. ";
    BenchWindow window(600, 500);
    window.Load(L"<Window><VerticalLayout/></Window>");
    const HDC dc = window.Manager().GetPaintDC();
    report.Add({"draw HTML text of 2,000 characters, kept layout",
                TimeOf([&] {
                    RECT place{0, 0, 600, 500};
                    int links = 0;
                    CRenderEngine::DrawHtmlText(dc, &window.Manager(), place, text.c_str(),
                                                0xFF000000, nullptr, nullptr, links, -1,
                                                DT_WORDBREAK);
                }),
                {},
                {}});
}

void Pictures(Report& report)
{
    constexpr int kPictures = 100;
    constexpr int kSize = 32;
    BenchWindow window(800, 600);
    window.Load(L"<Window><VerticalLayout/></Window>");
    auto& manager = window.Manager();
    const HDC screen = manager.GetPaintDC();
    BYTE* bits = nullptr;
    const HBITMAP bitmap = CRenderEngine::CreateARGB32Bitmap(screen, kSize, kSize, &bits);
    std::fill_n(bits, kSize * kSize * 4, BYTE{0x80});
    manager.AddImage(L"bench.png", bitmap, kSize, kSize, true);

    const HDC memory = ::CreateCompatibleDC(screen);
    BYTE* canvasBits = nullptr;
    const HBITMAP canvas = CRenderEngine::CreateARGB32Bitmap(screen, 800, 600, &canvasBits);
    const HGDIOBJ oldCanvas = ::SelectObject(memory, canvas);
    const HDC source = ::CreateCompatibleDC(screen);
    const RECT paint{0, 0, 800, 600};
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};

    const auto placeOf = [](int i) {
        return RECT{i % 20 * kSize, i / 20 * kSize, i % 20 * kSize + kSize, i / 20 * kSize + kSize};
    };
    const auto drawByString = [&] {
        for (int i = 0; i < kPictures; ++i)
            CRenderEngine::DrawImageString(memory, &manager, placeOf(i), paint, L"bench.png");
    };
    // Pictures differ from one place to the next, so each must be selected.
    const auto drawBare = [&] {
        for (int i = 0; i < kPictures; ++i) {
            const RECT place = placeOf(i);
            const HGDIOBJ before = ::SelectObject(source, bitmap);
            ::AlphaBlend(memory, place.left, place.top, kSize, kSize, source, 0, 0, kSize, kSize,
                         blend);
            ::SelectObject(source, before);
        }
    };
    const auto pictures = TimeBoth(drawByString, drawBare);
    ::DeleteDC(source);
    ::SelectObject(memory, oldCanvas);
    ::DeleteObject(canvas);
    ::DeleteDC(memory);
    report.Add({"draw 100 pictures by image string / select and AlphaBlend each",
                pictures.cost,
                pictures.bare,
                {}});
}

} // namespace

void RunPaintBench(Report& report)
{
    RepaintAllAndOne(report);
    HtmlText(report);
    Pictures(report);
}

} // namespace bench
