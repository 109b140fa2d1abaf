#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/GallerySkin.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <array>

namespace fuzz {

using namespace DuiLib;

namespace {

constexpr int kMostLinks = 4;

void Draw(HiddenWindow& window, LPCTSTR text, RECT rect, UINT style, int capacity)
{
    std::array<RECT, kMostLinks> links{};
    std::array<CDuiString, kMostLinks> linkTexts;
    int count = capacity;
    CRenderEngine::DrawHtmlText(window.Canvas(), &window.Manager(), rect, text, 0xFF102030,
                                capacity != 0 ? links.data() : nullptr,
                                capacity != 0 ? linkTexts.data() : nullptr, count, 0, style);
}

void Run(ByteView input)
{
    static GuardedText guarded(64 * 1024);
    UseGallerySkin();
    HiddenWindow& window = SharedWindow();
    const LPCTSTR text = guarded.Place(Widen(input));
    const auto hash = HashOf(input);

    constexpr UINT kStyles[] = {0,
                                DT_SINGLELINE | DT_VCENTER,
                                DT_WORDBREAK,
                                DT_CENTER | DT_WORDBREAK | DT_END_ELLIPSIS,
                                DT_RIGHT | DT_SINGLELINE | DT_BOTTOM | DT_END_ELLIPSIS,
                                DT_NOPREFIX | DT_WORDBREAK};
    const UINT style = kStyles[hash % std::size(kStyles)];
    const auto width = static_cast<LONG>(hash / 8 % HiddenWindow::kWidth);
    const int capacity = static_cast<int>(hash / 4096 % (kMostLinks + 1));
    window.Manager().SetUseGdiplusText(hash / 65536 % 8 == 0);
    Draw(window, text, {0, 0, width, 9999}, style | DT_CALCRECT, capacity);
    Draw(window, text, {5, 5, 5 + width, HiddenWindow::kHeight}, style, capacity);
}

} // namespace

const Target kHtmlTextTarget{"html-text", &Run, [] { return SeedFolder(L"html-text"); },
                             [] { return DictionaryFile(L"html-text"); }, &CloseSharedWindow};

} // namespace fuzz
