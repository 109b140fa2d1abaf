#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/GallerySkin.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

namespace fuzz {

using namespace DuiLib;

namespace {

// An image string, and after a line break a modifier over it.
void Run(ByteView input)
{
    static GuardedText imageText(64 * 1024);
    static GuardedText modifierText(64 * 1024);
    UseGallerySkin();
    HiddenWindow& window = SharedWindow();
    auto& manager = window.Manager();

    const std::wstring text = Widen(input);
    const auto end = std::min(text.find(L'\n'), text.size());
    const LPCTSTR image = imageText.Place(text.substr(0, end));
    const LPCTSTR modifier = end < text.size() ? modifierText.Place(text.substr(end + 1)) : nullptr;

    TDrawInfo info;
    info.Parse(image, modifier, nullptr);
    info.Parse(modifier, image, &manager);
    info.Clear();

    manager.GetDrawInfo(image, modifier);
    const auto hash = static_cast<LONG>(HashOf(input) % 1000);
    const RECT item{hash % 7, hash % 5, hash % 7 + hash % 200, hash % 5 + hash % 90};
    const RECT paint{0, 0, HiddenWindow::kWidth, HiddenWindow::kHeight};
    CRenderEngine::DrawImageString(window.Canvas(), &manager, item, paint, image, modifier);
    manager.RemoveDrawInfo(image, modifier);
}

std::vector<Bytes> Dictionary()
{
    auto words = DictionaryFile(L"image-string");
    Append(words, AttributeValues());
    return words;
}

} // namespace

const Target kImageStringTarget{"image-string", &Run, [] { return SeedFolder(L"image-string"); },
                                &Dictionary, &CloseSharedWindow};

} // namespace fuzz
