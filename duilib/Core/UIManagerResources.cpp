#include "Core/ManagerState.h"

#include "Core/ImageCache.h"
#include "Core/UIRender.h"

#include <new>

namespace DuiLib {

namespace {

using Quillet::Text::View;

LPCTSTR FindText(const TextTable<CDuiString>& table, LPCTSTR name)
{
    const auto found = table.find(View(name));
    return found == table.end() ? nullptr : found->second.GetData();
}

bool RemoveText(TextTable<CDuiString>& table, LPCTSTR name)
{
    const auto found = table.find(View(name));
    if (found == table.end())
        return false;
    table.erase(found);
    return true;
}

LPCTSTR TextOrNull(const CDuiString& text)
{
    return text.IsEmpty() ? nullptr : text.GetData();
}

} // namespace

const TImageInfo* ImageTable::Find(std::wstring_view name) const
{
    const auto found = m_images.find(name);
    return found == m_images.end() ? nullptr : found->second.back().image;
}

const TImageInfo* ImageTable::Add(std::wstring_view name, const TImageInfo* image, bool cached)
{
    const Held held{image, cached};
    try {
        // A name never stands without a picture.
        std::vector<Held> first;
        first.reserve(1);
        auto& pictures = m_images.try_emplace(std::wstring(name), std::move(first)).first->second;
        pictures.push_back(held);
    } catch (const std::bad_alloc&) {
        LetGo(held);
        throw;
    }
    return image;
}

void ImageTable::Remove(std::wstring_view name)
{
    const auto found = m_images.find(name);
    if (found == m_images.end())
        return;
    for (const Held& held : found->second)
        LetGo(held);
    m_images.erase(found);
}

void ImageTable::Clear()
{
    for (const auto& [name, pictures] : m_images) {
        for (const Held& held : pictures)
            LetGo(held);
    }
    m_images.clear();
}

void ImageTable::Reload()
{
    for (const auto& [name, pictures] : m_images) {
        for (const Held& held : pictures) {
            if (held.cached)
                ImageCache::Reload(held.image);
        }
    }
}

void ImageTable::AdjustColours(bool use, short H, short S, short L)
{
    for (const auto& [name, pictures] : m_images) {
        for (const Held& held : pictures) {
            if (held.image->bUseHSL)
                CRenderEngine::AdjustImage(use, const_cast<TImageInfo*>(held.image), H, S, L);
        }
    }
}

void ImageTable::LetGo(const Held& held)
{
    if (held.cached)
        ImageCache::Release(held.image);
    else
        CRenderEngine::FreeImage(const_cast<TImageInfo*>(held.image));
}

void StyleTable::Add(LPCTSTR name, LPCTSTR attributes)
{
    auto style = std::make_unique<CDuiString>(attributes);
    auto* const replaced = static_cast<CDuiString*>(m_styles.Set(name, style.get()));
    style.release();
    delete replaced;
}

LPCTSTR StyleTable::Find(LPCTSTR name) const
{
    const auto* const attributes = static_cast<const CDuiString*>(m_styles.Find(name));
    return attributes ? attributes->GetData() : nullptr;
}

bool StyleTable::Remove(LPCTSTR name)
{
    delete static_cast<CDuiString*>(m_styles.Find(name));
    return m_styles.Remove(name);
}

void StyleTable::Clear()
{
    for (int index = 0; index < m_styles.GetSize(); ++index)
        delete static_cast<CDuiString*>(m_styles.Find(m_styles.GetAt(index), false));
    m_styles.RemoveAll();
}

ImageTable& CPaintManagerUI::State::Images(bool shared)
{
    return shared ? SharedState::Instance().images : images;
}

TextTable<CDuiString>& CPaintManagerUI::State::Defaults(bool shared)
{
    return shared ? SharedState::Instance().defaults : defaults;
}

StyleTable& CPaintManagerUI::State::Styles(bool shared)
{
    return shared ? SharedState::Instance().styles : styles;
}

DWORD CPaintManagerUI::GetDefaultDisabledColor() const
{
    if (!m_pState->colours.disabled && m_pState->Lender())
        return m_pState->Lender()->GetDefaultDisabledColor();
    return m_pState->colours.disabled.value_or(SharedState::Instance().colours.disabled);
}

void CPaintManagerUI::SetDefaultDisabledColor(DWORD color, bool shared)
{
    if (shared)
        SharedState::Instance().colours.disabled = color;
    else
        m_pState->colours.disabled = color;
    Invalidate();
}

DWORD CPaintManagerUI::GetDefaultFontColor() const
{
    if (!m_pState->colours.font && m_pState->Lender())
        return m_pState->Lender()->GetDefaultFontColor();
    return m_pState->colours.font.value_or(SharedState::Instance().colours.font);
}

void CPaintManagerUI::SetDefaultFontColor(DWORD color, bool shared)
{
    if (shared)
        SharedState::Instance().colours.font = color;
    else
        m_pState->colours.font = color;
    Invalidate();
}

DWORD CPaintManagerUI::GetDefaultLinkFontColor() const
{
    if (!m_pState->colours.link && m_pState->Lender())
        return m_pState->Lender()->GetDefaultLinkFontColor();
    return m_pState->colours.link.value_or(SharedState::Instance().colours.link);
}

void CPaintManagerUI::SetDefaultLinkFontColor(DWORD color, bool shared)
{
    if (shared)
        SharedState::Instance().colours.link = color;
    else
        m_pState->colours.link = color;
    Invalidate();
}

DWORD CPaintManagerUI::GetDefaultLinkHoverFontColor() const
{
    if (!m_pState->colours.linkHover && m_pState->Lender())
        return m_pState->Lender()->GetDefaultLinkHoverFontColor();
    return m_pState->colours.linkHover.value_or(SharedState::Instance().colours.linkHover);
}

void CPaintManagerUI::SetDefaultLinkHoverFontColor(DWORD color, bool shared)
{
    if (shared)
        SharedState::Instance().colours.linkHover = color;
    else
        m_pState->colours.linkHover = color;
    Invalidate();
}

DWORD CPaintManagerUI::GetDefaultSelectedBkColor() const
{
    if (!m_pState->colours.selectedBack && m_pState->Lender())
        return m_pState->Lender()->GetDefaultSelectedBkColor();
    return m_pState->colours.selectedBack.value_or(SharedState::Instance().colours.selectedBack);
}

void CPaintManagerUI::SetDefaultSelectedBkColor(DWORD color, bool shared)
{
    if (shared)
        SharedState::Instance().colours.selectedBack = color;
    else
        m_pState->colours.selectedBack = color;
    Invalidate();
}

const TImageInfo* CPaintManagerUI::GetImage(LPCTSTR name)
{
    const TImageInfo* const own = m_pState->Images(false).Find(View(name));
    if (!own && m_pState->Lender())
        return m_pState->Lender()->GetImage(name);
    return own ? own : m_pState->Images(true).Find(View(name));
}

const TImageInfo* CPaintManagerUI::GetImageEx(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL,
                                              bool gdiplus, HINSTANCE instance)
{
    const TImageInfo* const known = GetImage(name);
    return known ? known : AddImage(name, type, mask, useHSL, gdiplus, false, instance);
}

const TImageInfo* CPaintManagerUI::GetImageEx(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL,
                                              HINSTANCE instance, bool gdiplus)
{
    return GetImageEx(name, type, mask, useHSL, gdiplus, instance);
}

const TImageInfo* CPaintManagerUI::AddImage(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL,
                                            bool gdiplus, bool shared, HINSTANCE instance)
{
    if (View(name).empty())
        return nullptr;
    const TImageInfo* const image =
        ImageCache::Acquire(name, type, mask, useHSL, gdiplus, instance);
    if (!image)
        return nullptr;
    auto& images = m_pState->Images(shared || m_pState->forceShared);
    if (images.Find(View(name)) == image) {
        ImageCache::Release(image);
        return image;
    }
    return images.Add(View(name), image, true);
}

const TImageInfo* CPaintManagerUI::AddImage(LPCTSTR name, HBITMAP bitmap, int width, int height,
                                            bool alpha, bool shared)
{
    if (View(name).empty() || !bitmap || width == 0 || height == 0)
        return nullptr;
    auto image = std::make_unique<TImageInfo>();
    image->hBitmap = bitmap;
    image->nX = width;
    image->nY = height;
    image->bAlpha = alpha;
    return m_pState->Images(shared || m_pState->forceShared)
        .Add(View(name), image.release(), false);
}

void CPaintManagerUI::RemoveImage(LPCTSTR name, bool shared)
{
    auto& images = m_pState->Images(shared);
    images.Remove(View(name));
    images.Remove(ScaledImageName(View(name), m_pState->Scale()));
}

void CPaintManagerUI::RemoveAllImages(bool shared)
{
    m_pState->Images(shared).Clear();
}

void CPaintManagerUI::ReloadImages()
{
    m_pState->images.Reload();
    m_pState->layeredMaskSize = {};
    if (m_pState->root)
        m_pState->root->Invalidate();
}

const TDrawInfo* CPaintManagerUI::GetDrawInfo(LPCTSTR image, LPCTSTR modify)
{
    auto& infos = m_pState->drawInfos;
    const DrawKeyView key{View(image), View(modify)};
    if (const auto known = infos.find(key); known != infos.end())
        return known->second.get();
    auto info = std::make_unique<TDrawInfo>();
    info->Parse(image, modify, this);
    const DrawKey own{std::wstring(key.image), std::wstring(key.modify)};
    return infos.emplace(own, std::move(info)).first->second.get();
}

void CPaintManagerUI::RemoveDrawInfo(LPCTSTR image, LPCTSTR modify)
{
    auto& infos = m_pState->drawInfos;
    const auto known = infos.find(DrawKeyView{View(image), View(modify)});
    if (known != infos.end())
        infos.erase(known);
}

void CPaintManagerUI::RemoveAllDrawInfos()
{
    m_pState->drawInfos.clear();
}

const TImageInfo* CPaintManagerUI::GetImageString(LPCTSTR image, LPCTSTR modify)
{
    const TDrawInfo* const info = GetDrawInfo(image, modify);
    if (info->sImageName.IsEmpty())
        return nullptr;
    return GetImageEx(info->sImageName, TextOrNull(info->sResType), info->dwMask, info->bHSL,
                      info->bGdiplus);
}

void CPaintManagerUI::AddDefaultAttributeList(LPCTSTR control, LPCTSTR attributes, bool shared)
{
    if (!View(control).empty()) {
        m_pState->Defaults(shared || m_pState->forceShared)
            .insert_or_assign(std::wstring(View(control)), CDuiString(attributes));
    }
}

LPCTSTR CPaintManagerUI::GetDefaultAttributeList(LPCTSTR control) const
{
    const LPCTSTR own = FindText(m_pState->Defaults(false), control);
    if (!own && m_pState->Lender())
        return m_pState->Lender()->GetDefaultAttributeList(control);
    return own ? own : FindText(m_pState->Defaults(true), control);
}

bool CPaintManagerUI::RemoveDefaultAttributeList(LPCTSTR control, bool shared)
{
    return RemoveText(m_pState->Defaults(shared), control);
}

void CPaintManagerUI::RemoveAllDefaultAttributeList(bool shared)
{
    m_pState->Defaults(shared).clear();
}

void CPaintManagerUI::AddWindowCustomAttribute(LPCTSTR name, LPCTSTR value)
{
    if (!View(name).empty())
        m_pState->customAttributes.try_emplace(std::wstring(View(name)), CDuiString(value));
}

LPCTSTR CPaintManagerUI::GetWindowCustomAttribute(LPCTSTR name) const
{
    return FindText(m_pState->customAttributes, name);
}

bool CPaintManagerUI::RemoveWindowCustomAttribute(LPCTSTR name)
{
    return RemoveText(m_pState->customAttributes, name);
}

void CPaintManagerUI::RemoveAllWindowCustomAttribute()
{
    m_pState->customAttributes.clear();
}

void CPaintManagerUI::AddStyle(LPCTSTR name, LPCTSTR attributes, bool shared)
{
    if (!View(name).empty())
        m_pState->Styles(shared || m_pState->forceShared).Add(name, attributes);
}

LPCTSTR CPaintManagerUI::GetStyle(LPCTSTR name) const
{
    if (View(name).empty())
        return nullptr;
    const LPCTSTR own = m_pState->Styles(false).Find(name);
    if (!own && m_pState->Lender())
        return m_pState->Lender()->GetStyle(name);
    return own ? own : m_pState->Styles(true).Find(name);
}

BOOL CPaintManagerUI::RemoveStyle(LPCTSTR name, bool shared)
{
    return !View(name).empty() && m_pState->Styles(shared).Remove(name);
}

const CStdStringPtrMap& CPaintManagerUI::GetStyles(bool shared) const
{
    return m_pState->Styles(shared).All();
}

void CPaintManagerUI::RemoveAllStyle(bool shared)
{
    m_pState->Styles(shared).Clear();
}

} // namespace DuiLib
