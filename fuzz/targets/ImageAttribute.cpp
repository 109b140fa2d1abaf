#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/GallerySkin.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <quillet/drawing/ImageAttribute.h>

namespace fuzz {

using namespace DuiLib;

namespace {

// An image description, and after a line break further pairs over it.
void Run(ByteView input)
{
    static GuardedText descriptionText(64 * 1024);
    static GuardedText modifierText(64 * 1024);
    UseGallerySkin();
    auto& manager = SharedWindow().Manager();

    const std::wstring text = Widen(input);
    const auto end = std::min(text.find(L'\n'), text.size());
    const LPCTSTR description = descriptionText.Place(text.substr(0, end));
    const LPCTSTR modifier = end < text.size() ? modifierText.Place(text.substr(end + 1)) : nullptr;

    CImageAttribute attribute;
    attribute.SetAttributeString(description);
    CImageAttribute copy(attribute);
    attribute.ModifyAttribute(modifier);
    attribute.LoadImageW(&manager);
    copy.LoadImageW(&manager);
    copy = attribute;
    copy.SetAttributeString(modifier);
    copy.ModifyAttribute(description);
    copy.SetAttributeString(copy.GetImageName());
    copy.ModifyAttribute(attribute.GetAttributeString());
}

std::vector<Bytes> Dictionary()
{
    auto words = DictionaryFile(L"image-attribute");
    Append(words, AttributeValues());
    return words;
}

} // namespace

const Target kImageAttributeTarget{"image-attribute", &Run,
                                   [] { return SeedFolder(L"image-attribute"); }, &Dictionary,
                                   &CloseSharedWindow};

} // namespace fuzz
