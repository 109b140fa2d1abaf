#include "duilib/Core/ZipWriter.h"
#include "fuzz/engine/Files.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <UIlib.h>

#include <memory>

namespace fuzz {

using namespace DuiLib;

namespace {

constexpr std::string_view kPassword = "secret";

void Run(ByteView input)
{
    CPaintManagerUI::SetResourcePath(L"");
    auto* const bytes = const_cast<std::byte*>(input.data());
    CPaintManagerUI::SetResourceZip(bytes, static_cast<unsigned>(input.size()),
                                    HashOf(input) % 2 != 0 ? L"secret" : nullptr);
    for (const wchar_t* const name :
         {L"a.xml", L"DIR/b.xml", L"dir\\secret.xml", L"none.xml", L""}) {
        CMarkup markup;
        if (markup.LoadFromFile(name))
            markup.GetRoot().GetName();
    }
    for (const wchar_t* const name : {L"picture.bmp", L"dir/shape.svg"}) {
        if (TImageInfo* const image = CRenderEngine::LoadImage(STRINGorID(name)))
            CRenderEngine::FreeImage(image);
    }
    CPaintManagerUI::SetResourceZip(nullptr, 0u);
}

using test::ZipWriter;

Bytes MixedArchive(ZipWriter::Packing packing, std::string_view comment)
{
    const std::string skin = "<Window><Button text=\"one\"/><Button text=\"two\"/></Window>";
    const std::string shape =
        "<svg width=\"8\" height=\"8\"><circle cx=\"4\" cy=\"4\" r=\"3\"/></svg>";
    ZipWriter zip;
    zip.Add({.name = "a.xml", .content = skin, .packing = packing});
    zip.Add({.name = "dir/b.xml", .content = skin + skin, .packing = packing});
    zip.Add({.name = "dir/shape.svg", .content = shape, .packing = packing});
    zip.Add({.name = "dir/secret.xml",
             .content = skin,
             .packing = packing,
             .password = std::string(kPassword)});
    return ToBytes(zip.Finish(comment));
}

std::vector<Bytes> Seeds()
{
    std::vector<Bytes> seeds;
    seeds.push_back(ToBytes(ZipWriter().Finish()));
    seeds.push_back(MixedArchive(ZipWriter::Packing::Stored, ""));
    seeds.push_back(MixedArchive(ZipWriter::Packing::Deflated, "a comment"));

    ZipWriter large;
    large.Add("a.xml", "<Window>" + std::string(50'000, ' ') + "</Window>");
    seeds.push_back(ToBytes(large.Finish()));

    ZipWriter wrong;
    wrong.Add({.name = "a.xml", .content = "<Window/>", .sizesFollow = true});
    wrong.Add({.name = "dir/b.xml", .content = "<Window/>", .method = 12});
    wrong.Add({.name = "dir/shape.svg", .content = "<svg/>", .size = 100'000'000});
    wrong.Add({.name = "picture.bmp", .content = "BM", .wrongSum = 1});
    seeds.push_back(ToBytes(wrong.Finish()));
    return seeds;
}

std::vector<Bytes> Dictionary()
{
    using namespace std::string_view_literals;
    std::vector<Bytes> words;
    for (const auto word :
         {"PK\1\2"sv, "PK\3\4"sv, "PK\5\6"sv, "PK\6\6"sv, "PK\6\7"sv, "PK\7\10"sv, "\0\0"sv,
          "\10\0"sv, "\1\0\0\0"sv, "\377\377\377\377"sv, "a.xml"sv, "dir/"sv, "../"sv, "\0"sv})
        words.push_back(ToBytes(word));
    return words;
}

} // namespace

const Target kZipTarget{"zip", &Run, &Seeds, &Dictionary};

} // namespace fuzz
