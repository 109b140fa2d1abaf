#include "duilib/Core/ZipWriter.h"
#include "fuzz/engine/Files.h"
#include "fuzz/targets/HiddenWindow.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

namespace fuzz {

using namespace DuiLib;

namespace {

// Pictures are found by name, so the file comes out of an archive in memory.
void Run(ByteView input)
{
    test::ZipWriter zip;
    zip.Add({.name = "a.svg",
             .content = std::string(AsText(input)),
             .packing = test::ZipWriter::Packing::Stored});
    std::string archive = zip.Finish();
    CPaintManagerUI::SetResourcePath(L"");
    CPaintManagerUI::SetResourceZip(archive.data(), static_cast<unsigned>(archive.size()));

    const auto hash = HashOf(input);
    if (hash % 4 != 0) {
        if (TImageInfo* const image = CRenderEngine::LoadImage(STRINGorID(L"a.svg")))
            CRenderEngine::FreeImage(image);
    } else {
        HiddenWindow& window = SharedWindow();
        constexpr int kScales[] = {96, 120, 144, 240};
        window.Manager().SetDPI(kScales[hash / 4 % std::size(kScales)]);
        const RECT item{0, 0, 64, 64};
        CRenderEngine::DrawImageString(window.Canvas(), &window.Manager(), item, item, L"a.svg");
        window.Manager().RemoveAllDrawInfos();
        window.Manager().RemoveAllImages();
        window.Manager().SetDPI(96);
    }
    CPaintManagerUI::SetResourceZip(nullptr, 0u);
}

std::vector<Bytes> Seeds()
{
    auto seeds = SeedFolder(L"svg");
    Append(seeds, GalleryFiles(L".svg"));
    return seeds;
}

} // namespace

const Target kSvgTarget{"svg", &Run, &Seeds, [] { return DictionaryFile(L"svg"); },
                        &CloseSharedWindow};

} // namespace fuzz
