#include "fuzz/Names.h"
#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/GallerySkin.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <stdexcept>

namespace fuzz {

using namespace DuiLib;

namespace {

class QuilletControls : public IDialogBuilderCallback {
public:
    // IDialogBuilderCallback:
    CControlUI* CreateControl(LPCTSTR name) override
    {
        for (const auto& control : kQuilletControls) {
            if (std::wstring_view(control.name) == name)
                return control.create();
        }
        return nullptr;
    }
};

CControlUI* Build(HiddenWindow& window, LPCTSTR skin)
{
    QuilletControls controls;
    CDialogBuilder builder;
    try {
        return builder.Create(STRINGorID(skin), nullptr, &controls, &window.Manager());
    } catch (const std::logic_error&) {
        // One control answers a number that is none with the standard errors.
        return nullptr;
    }
}

void Run(ByteView input)
{
    static GuardedText text(64 * 1024);
    const auto hash = HashOf(input);
    std::wstring skin = Widen(input);

    // Anything else is the name of a file.
    if (!skin.starts_with(L'<'))
        skin.insert(skin.begin(), L'<');
    UseGallerySkin();
    HiddenWindow window;
    if ((hash & 3) == 0)
        window.Manager().SetDPI(144);
    CControlUI* const root = Build(window, text.Place(skin));
    if (!root)
        return;
    window.Manager().AttachDialog(root);
    ::SetWindowPos(window.GetHWND(), nullptr, 0, 0, HiddenWindow::kWidth, HiddenWindow::kHeight,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    window.LayOutAndPaint();
    if (hash % 16 == 1)
        window.ShowAndPaint();
    if (hash % 2 == 0) {
        window.Use(hash);
        window.Tick();
        window.Pump();
        window.LayOutAndPaint();
    }
}

std::vector<Bytes> Seeds()
{
    auto seeds = SeedFolder(L"skin");
    Append(seeds, GalleryFiles(L".xml"));
    return seeds;
}

std::vector<Bytes> Dictionary()
{
    auto words = DictionaryFile(L"markup");
    Append(words, ControlNames());
    Append(words, AttributeNames());
    Append(words, AttributeValues());
    return words;
}

} // namespace

const Target kSkinTarget{"skin", &Run, &Seeds, &Dictionary};

} // namespace fuzz
