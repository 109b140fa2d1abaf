#include "fuzz/engine/GuardedText.h"
#include "fuzz/targets/TargetList.h"
#include "fuzz/targets/Words.h"

#include <UIlib.h>

#include <array>

namespace fuzz {

using namespace DuiLib;

namespace {

// Reads everything that a node has. Far fewer nodes than a text can hold are enough.
void Visit(CMarkupNode node, int& left)
{
    std::array<wchar_t, 8> cut{};
    for (; node.IsValid() && left > 0; node = node.GetSibling()) {
        --left;
        node.GetParent();
        node.HasSiblings();
        node.GetChild(node.GetName());
        for (int i = -1; i <= node.GetAttributeCount(); ++i) {
            const LPCTSTR name = node.GetAttributeName(i);
            node.GetAttributeValue(i);
            node.GetAttributeValue(i, cut.data(), cut.size());
            if (name) {
                node.HasAttribute(name);
                node.GetAttributeValue(name, cut.data(), 1);
            }
        }
        // Not one call for each level: texts may nest deeply.
        if (node.HasChildren() && left % 2 == 0)
            Visit(node.GetChild(), left);
    }
}

void ReadAll(CMarkup& markup, bool loaded)
{
    std::array<wchar_t, 80> message{};
    markup.GetLastErrorMessage(message.data(), message.size());
    markup.GetLastErrorLocation(message.data(), 3);
    if (!loaded)
        return;
    int left = 500;
    Visit(markup.GetRoot(), left);
}

void Run(ByteView input)
{
    static GuardedText text(64 * 1024);
    const auto hash = HashOf(input);

    CMarkup fromText;
    fromText.SetPreserveWhitespace((hash & 1) != 0);
    ReadAll(fromText, fromText.Load(text.Place(Widen(input))));

    constexpr int kEncodings[] = {XMLFILE_ENCODING_UTF8, XMLFILE_ENCODING_UNICODE,
                                  XMLFILE_ENCODING_ASNI};
    CMarkup fromBytes;
    fromBytes.SetPreserveWhitespace((hash & 2) != 0);
    auto* const bytes = const_cast<BYTE*>(reinterpret_cast<const BYTE*>(input.data()));
    ReadAll(fromBytes, fromBytes.LoadFromMem(bytes, static_cast<DWORD>(input.size()),
                                             kEncodings[hash / 4 % std::size(kEncodings)]));
}

std::vector<Bytes> Seeds()
{
    auto seeds = SeedFolder(L"markup");
    Append(seeds, SeedFolder(L"skin"));
    Append(seeds, GalleryFiles(L".xml"));

    // The same in two bytes a character.
    for (std::size_t i = 0, count = seeds.size(); i < count && i < 10; ++i) {
        const auto wide = Widen(seeds[i]);
        Bytes bytes = ToBytes("\xFF\xFE");
        const auto units = std::as_bytes(std::span(wide));
        bytes.insert(bytes.end(), units.begin(), units.end());
        seeds.push_back(std::move(bytes));
    }
    return seeds;
}

} // namespace

const Target kMarkupTarget{"markup", &Run, &Seeds, [] { return DictionaryFile(L"markup"); }};

} // namespace fuzz
