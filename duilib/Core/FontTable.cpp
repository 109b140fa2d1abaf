#include "Core/FontTable.h"

#include "Core/TextCache.h"

#include <algorithm>

namespace DuiLib {

namespace {

// Pixels. A single character of a larger font takes the system many megabytes, or more than it has.
constexpr int kLargestHeight = 2000;

// A height is never scaled to nothing.
int ScaledHeight(int size, int scale)
{
    const int height = std::clamp(::MulDiv(size, scale, 100), -kLargestHeight, kLargestHeight);
    return height != 0 || size == 0 ? height : (size > 0 ? 1 : -1);
}

} // namespace

std::size_t FontLookHash::operator()(const FontLook& look) const
{
    const unsigned flags = (look.bold ? 1u : 0u) | (look.underline ? 2u : 0u) |
                           (look.italic ? 4u : 0u) | (look.strikeout ? 8u : 0u);
    return HashWith(HashWith(std::hash<std::wstring>()(look.name), look.size), flags);
}

void CreateFontHandle(TFontInfo& info, int scale)
{
    DeleteFontHandle(info);
    LOGFONTW description{};
    ::lstrcpynW(description.lfFaceName, info.sFontName, LF_FACESIZE);
    description.lfHeight = -ScaledHeight(info.iSize, scale);
    description.lfWeight = info.bBold ? FW_BOLD : FW_NORMAL;
    description.lfUnderline = info.bUnderline;
    description.lfItalic = info.bItalic;
    description.lfStrikeOut = info.bStrikeout;
    description.lfCharSet = DEFAULT_CHARSET;
    description.lfQuality = CLEARTYPE_QUALITY;
    info.hFont = ::CreateFontIndirectW(&description);
}

void DeleteFontHandle(TFontInfo& info)
{
    if (info.hFont) {
        ForgetFont(info.hFont);
        ::DeleteObject(info.hFont);
    }
    info.hFont = nullptr;
    info.tm = {};
}

void MeasureFont(TFontInfo& info, HDC dc)
{
    if (info.tm.tmHeight != 0 || !info.hFont || !dc)
        return;
    const HGDIOBJ before = ::SelectObject(dc, info.hFont);
    ::GetTextMetricsW(dc, &info.tm);
    ::SelectObject(dc, before);
}

Font::Font(FontLook look) : m_look(std::move(look)) {}

Font::~Font()
{
    for (const auto& made : m_made)
        DeleteFontHandle(*made.info);
}

TFontInfo* Font::At(int scale)
{
    for (const auto& made : m_made) {
        if (made.scale == scale)
            return made.info.get();
    }
    auto info = std::make_unique<TFontInfo>();
    info->hFont = nullptr;
    info->sFontName = m_look.name.c_str();
    info->iSize = m_look.size;
    info->bBold = m_look.bold;
    info->bUnderline = m_look.underline;
    info->bItalic = m_look.italic;
    info->bStrikeout = m_look.strikeout;
    m_made.reserve(m_made.size() + 1); // before there is a handle to lose
    CreateFontHandle(*info, scale);
    m_made.push_back({scale, std::move(info)});
    return m_made.back().info.get();
}

void Font::Rescale(int scale)
{
    if (m_made.empty())
        return;
    for (std::size_t index = 1; index < m_made.size(); ++index)
        DeleteFontHandle(*m_made[index].info);
    m_made.erase(m_made.begin() + 1, m_made.end());
    m_made.front().scale = scale;
    CreateFontHandle(*m_made.front().info, scale);
}

bool Font::Owns(HFONT font) const
{
    return std::any_of(m_made.begin(), m_made.end(),
                       [font](const Made& made) { return made.info->hFont == font; });
}

TFontInfo* FontTable::Add(int id, FontLook look, int scale)
{
    Remove(id);
    m_ids.try_emplace(look, id);
    auto& font = m_fonts[id] = std::make_unique<Font>(std::move(look));
    return font->At(scale);
}

TFontInfo* FontTable::Find(int id, int scale) const
{
    const auto found = m_fonts.find(id);
    return found == m_fonts.end() ? nullptr : found->second->At(scale);
}

TFontInfo* FontTable::Find(const FontLook& look, int scale) const
{
    const int id = IdOf(look);
    return id < 0 ? nullptr : Find(id, scale);
}

int FontTable::IdOf(const FontLook& look) const
{
    const auto found = m_ids.find(look);
    return found == m_ids.end() ? -1 : found->second;
}

int FontTable::IdOf(HFONT font) const
{
    if (!font)
        return -1;
    const auto owner = std::find_if(m_fonts.begin(), m_fonts.end(),
                                    [font](const auto& entry) { return entry.second->Owns(font); });
    return owner == m_fonts.end() ? -1 : owner->first;
}

void FontTable::Remove(int id)
{
    const auto found = m_fonts.find(id);
    if (found == m_fonts.end())
        return;
    const FontLook look = found->second->Look();
    m_fonts.erase(found);
    if (IdOf(look) != id)
        return;

    // Another id may have the same look.
    m_ids.erase(look);
    for (const auto& [other, font] : m_fonts) {
        if (font->Look() == look)
            m_ids.try_emplace(look, other);
    }
}

void FontTable::Clear()
{
    m_fonts.clear();
    m_ids.clear();
}

void FontTable::Rescale(int scale)
{
    for (const auto& entry : m_fonts)
        entry.second->Rescale(scale);
}

} // namespace DuiLib
