#include "Core/UIPlatform.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "Core/ImageCache.h"
#include "Core/UIManager.h"
#include "Core/UIRecords.h"
#include "Utils/DPI.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;

struct Pair {
    std::wstring_view key;
    std::wstring_view value;
};

// Reads `key='value'` pairs off an image string. Anything else ends it.
class PairReader {
public:
    explicit PairReader(std::wstring_view text) : m_rest(text) {}

    std::optional<Pair> Next()
    {
        while (!m_rest.empty() && m_rest.front() <= L' ')
            m_rest.remove_prefix(1);

        const auto keyEnd = std::min(m_rest.find_first_of(L"= "), m_rest.size());
        Pair pair{.key = m_rest.substr(0, keyEnd), .value = {}};
        m_rest.remove_prefix(keyEnd);

        SkipBlanks();
        if (!Skip(L'='))
            return End();
        SkipBlanks();
        if (!Skip(L'\''))
            return End();

        const auto valueEnd = m_rest.find(L'\'');
        if (valueEnd == std::wstring_view::npos)
            return End();
        pair.value = m_rest.substr(0, valueEnd);
        m_rest.remove_prefix(valueEnd + 1);

        // One blank leads to the next pair; any other character ends the text after this one.
        if (!Skip(L' '))
            m_rest = {};
        return pair;
    }

private:
    std::optional<Pair> End()
    {
        m_rest = {};
        return std::nullopt;
    }

    bool Skip(wchar_t expected)
    {
        if (m_rest.empty() || m_rest.front() != expected)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    void SkipBlanks()
    {
        while (Skip(L' ')) {
        }
    }

    std::wstring_view m_rest;
};

UINT ToFade(LPCTSTR text)
{
    return static_cast<UINT>(std::clamp(Text::ToInt(text), 0, 255));
}

UINT ToRotation(LPCTSTR text)
{
    const int degrees = Text::ToInt(text);
    return static_cast<UINT>(degrees < 0 ? degrees % 360 + 360 : degrees);
}

struct KeyRow {
    std::wstring_view key;
    void (*apply)(TDrawInfo& info, LPCTSTR value);
};

constexpr std::array kKeys{
    KeyRow{L"file", [](TDrawInfo& info, LPCTSTR text) { info.sImageName = text; }},
    KeyRow{L"res", [](TDrawInfo& info, LPCTSTR text) { info.sImageName = text; }},
    KeyRow{L"restype", [](TDrawInfo& info, LPCTSTR text) { info.sResType = text; }},
    KeyRow{L"dest", [](TDrawInfo& info, LPCTSTR text) { info.rcDest = Text::ToRect(text); }},
    KeyRow{L"source", [](TDrawInfo& info, LPCTSTR text) { info.rcSource = Text::ToRect(text); }},
    KeyRow{L"corner", [](TDrawInfo& info, LPCTSTR text) { info.rcCorner = Text::ToRect(text); }},
    KeyRow{L"mask", [](TDrawInfo& info, LPCTSTR text) { info.dwMask = Text::ToColour(text); }},
    KeyRow{L"fade", [](TDrawInfo& info, LPCTSTR text) { info.uFade = ToFade(text); }},
    KeyRow{L"rotate", [](TDrawInfo& info, LPCTSTR text) { info.uRotate = ToRotation(text); }},
    KeyRow{L"gdiplus", [](TDrawInfo& info, LPCTSTR text) { info.bGdiplus = Text::IsTrue(text); }},
    KeyRow{L"hole", [](TDrawInfo& info, LPCTSTR text) { info.bHole = Text::IsTrue(text); }},
    KeyRow{L"xtiled", [](TDrawInfo& info, LPCTSTR text) { info.bTiledX = Text::IsTrue(text); }},
    KeyRow{L"ytiled", [](TDrawInfo& info, LPCTSTR text) { info.bTiledY = Text::IsTrue(text); }},
    KeyRow{L"hsl", [](TDrawInfo& info, LPCTSTR text) { info.bHSL = Text::IsTrue(text); }},
    KeyRow{L"size", [](TDrawInfo& info, LPCTSTR text) { info.szImage = Text::ToSize(text); }},
    KeyRow{L"align", [](TDrawInfo& info, LPCTSTR text) { info.sAlign = text; }},
    KeyRow{L"padding", [](TDrawInfo& info, LPCTSTR text) { info.rcPadding = Text::ToRect(text); }},
};

void ApplyPairs(TDrawInfo& info, LPCTSTR text)
{
    if (text == nullptr)
        return;

    PairReader reader(text);
    while (const auto pair = reader.Next()) {
        if (pair->value.empty())
            continue;
        const auto row = std::ranges::find(kKeys, pair->key, &KeyRow::key);
        if (row != kKeys.end())
            row->apply(info, std::wstring(pair->value).c_str());
    }
}

} // namespace

tagTDrawInfo::tagTDrawInfo()
{
    Clear();
}

void tagTDrawInfo::Clear()
{
    for (auto* text : {&sDrawString, &sDrawModify, &sImageName, &sResType, &sAlign})
        text->Empty();
    rcDest = rcSource = rcCorner = rcPadding = RECT{};
    szImage = CDuiSize();
    dwMask = 0;
    uFade = 255;
    uRotate = 0;
    bHole = bTiledX = bTiledY = bHSL = bGdiplus = false;
}

void tagTDrawInfo::Parse(LPCTSTR image, LPCTSTR modify, CPaintManagerUI* manager)
{
    Clear();
    sDrawString = image;
    sDrawModify = modify;
    sImageName = image;

    ApplyPairs(*this, sDrawString);
    ApplyPairs(*this, sDrawModify);

    if (manager != nullptr && manager->GetDPIObj()->GetScale() != 100) {
        const int scale = static_cast<int>(manager->GetDPIObj()->GetScale());
        sImageName = ScaledImageName(sImageName.GetData(), scale).c_str();
    }
}

} // namespace DuiLib
