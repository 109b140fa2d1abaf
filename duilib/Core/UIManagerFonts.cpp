#include "Core/ManagerState.h"

#include "Core/Diagnostics.h"
#include "Core/ResourceLoader.h"

namespace DuiLib {

namespace {

using Quillet::Text::View;

FontLook LookOf(LPCTSTR name, int size, bool bold, bool underline, bool italic, bool strikeout)
{
    return {std::wstring(View(name)), size, bold, underline, italic, strikeout};
}

// The face of the system's own dialogs.
FontLook SystemLook()
{
    LOGFONTW description{};
    ::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof(description), &description);
    return {
        description.lfFaceName,
        static_cast<int>(description.lfHeight < 0 ? -description.lfHeight : description.lfHeight)};
}

} // namespace

FontTable& CPaintManagerUI::State::Fonts(bool shared)
{
    return shared ? SharedState::Instance().fonts : fonts;
}

TFontInfo& CPaintManagerUI::State::DefaultFont()
{
    if (!defaultFont && Lender())
        return Lender()->m_pState->DefaultFont();
    auto& shared = SharedState::Instance().defaultFont;
    if (!defaultFont && !shared)
        shared = std::make_unique<Font>(SystemLook());
    return *(defaultFont ? defaultFont : shared)->At(Scale());
}

// By id; null for an unknown one.
TFontInfo* CPaintManagerUI::State::FindFont(int id)
{
    if (id < 0)
        return nullptr;
    TFontInfo* const own = FindOwnFont(id);
    return own ? own : Fonts(true).Find(id, Scale());
}

TFontInfo* CPaintManagerUI::State::FindOwnFont(int id)
{
    TFontInfo* const own = fonts.Find(id, Scale());
    return own || !Lender() ? own : Lender()->m_pState->FindOwnFont(id);
}

TFontInfo* CPaintManagerUI::GetDefaultFontInfo()
{
    auto& info = m_pState->DefaultFont();
    MeasureFont(info, m_pState->windowDc);
    return &info;
}

void CPaintManagerUI::SetDefaultFont(LPCTSTR name, int size, bool bold, bool underline, bool italic,
                                     bool strikeout, bool shared)
{
    auto& place = shared || m_pState->forceShared ? SharedState::Instance().defaultFont
                                                  : m_pState->defaultFont;
    place = std::make_unique<Font>(LookOf(name, size, bold, underline, italic, strikeout));
    Invalidate();
}

DWORD CPaintManagerUI::GetCustomFontCount(bool shared) const
{
    return static_cast<DWORD>(m_pState->Fonts(shared).Count());
}

void CPaintManagerUI::AddFontArray(LPCTSTR file)
{
    std::wstring reason;
    auto bytes = LoadResourceBytes(file, nullptr, nullptr, ResourceFallback::PlainPath,
                                   kLargestResource, &reason);
    if (!bytes) {
        ReportFailure(FailureAt(View(file), 0, 0, reason));
        return;
    }
    DWORD faces = 0;
    UniqueFontFile font(
        ::AddFontMemResourceEx(bytes->data(), static_cast<DWORD>(bytes->size()), nullptr, &faces));
    if (font)
        m_pState->fontFiles.push_back(std::move(font));
    else
        ReportFailure(FailureAt(View(file), 0, 0, L"not a font file"));
}

HFONT CPaintManagerUI::AddFont(int id, LPCTSTR name, int size, bool bold, bool underline,
                               bool italic, bool strikeout, bool shared)
{
    if (id < 0)
        return nullptr;
    auto& fonts = m_pState->Fonts(shared || m_pState->forceShared);
    return fonts.Add(id, LookOf(name, size, bold, underline, italic, strikeout), m_pState->Scale())
        ->hFont;
}

HFONT CPaintManagerUI::GetFont(int id)
{
    const TFontInfo* const info = m_pState->FindFont(id);
    return info ? info->hFont : m_pState->DefaultFont().hFont;
}

HFONT CPaintManagerUI::GetFont(LPCTSTR name, int size, bool bold, bool underline, bool italic,
                               bool strikeout)
{
    const FontLook look = LookOf(name, size, bold, underline, italic, strikeout);
    const int scale = m_pState->Scale();
    const TFontInfo* info = m_pState->Fonts(false).Find(look, scale);
    if (!info && m_pState->Lender())
        return m_pState->Lender()->GetFont(name, size, bold, underline, italic, strikeout);
    if (!info)
        info = m_pState->Fonts(true).Find(look, scale);
    return info ? info->hFont : nullptr;
}

int CPaintManagerUI::GetFontIndex(HFONT font, bool shared)
{
    return m_pState->Fonts(shared).IdOf(font);
}

int CPaintManagerUI::GetFontIndex(LPCTSTR name, int size, bool bold, bool underline, bool italic,
                                  bool strikeout, bool shared)
{
    return m_pState->Fonts(shared).IdOf(LookOf(name, size, bold, underline, italic, strikeout));
}

void CPaintManagerUI::RemoveFont(HFONT font, bool shared)
{
    m_pState->Fonts(shared).Remove(m_pState->Fonts(shared).IdOf(font));
}

void CPaintManagerUI::RemoveFont(int id, bool shared)
{
    m_pState->Fonts(shared).Remove(id);
}

void CPaintManagerUI::RemoveAllFonts(bool shared)
{
    m_pState->Fonts(shared).Clear();
}

TFontInfo* CPaintManagerUI::GetFontInfo(int id)
{
    TFontInfo* const info = m_pState->FindFont(id);
    if (!info)
        return GetDefaultFontInfo();
    MeasureFont(*info, m_pState->windowDc);
    return info;
}

TFontInfo* CPaintManagerUI::GetFontInfo(HFONT font)
{
    int id = m_pState->fonts.IdOf(font);
    if (id < 0 && m_pState->Lender())
        return m_pState->Lender()->GetFontInfo(font);
    if (id < 0)
        id = m_pState->Fonts(true).IdOf(font);
    return GetFontInfo(id);
}

void CPaintManagerUI::RebuildFont(TFontInfo* font)
{
    if (font)
        CreateFontHandle(*font, m_pState->Scale());
}

void CPaintManagerUI::ResetDPIAssets()
{
    auto& state = *m_pState;
    RemoveAllDrawInfos();
    state.layeredMaskSize = {};
    state.fonts.Rescale(state.Scale());
    if (state.defaultFont)
        state.defaultFont->Rescale(state.Scale());
}

} // namespace DuiLib
