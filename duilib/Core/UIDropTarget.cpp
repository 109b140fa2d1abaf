#include "Core/UIDropTarget.h"

namespace DuiLib {

CIDropTarget::CIDropTarget() : m_hTargetWnd(nullptr), m_lReferences(0), m_bAllowDrop(false) {}

CIDropTarget::~CIDropTarget() = default;

void CIDropTarget::SetTargetWnd(HWND window)
{
    m_hTargetWnd = window;
}

void CIDropTarget::AddSuportedFormat(FORMATETC& format)
{
    m_aFormats.push_back(format);
    m_aFormats.back().ptd = nullptr;
}

HRESULT CIDropTarget::QueryInterface(REFIID id, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (!::IsEqualIID(id, IID_IUnknown) && !::IsEqualIID(id, IID_IDropTarget))
        return E_NOINTERFACE;
    *object = static_cast<IDropTarget*>(this);
    AddRef();
    return S_OK;
}

ULONG CIDropTarget::AddRef()
{
    return static_cast<ULONG>(::InterlockedIncrement(&m_lReferences));
}

ULONG CIDropTarget::Release()
{
    return static_cast<ULONG>(::InterlockedDecrement(&m_lReferences));
}

bool CIDropTarget::QueryDrop(DWORD keys, LPDWORD effect)
{
    const DWORD allowed = *effect;
    *effect = DROPEFFECT_NONE;
    if (!m_bAllowDrop)
        return false;

    // What the user asks for with the keys, as in every file window; else the mildest.
    const bool control = (keys & MK_CONTROL) != 0;
    const bool shift = (keys & MK_SHIFT) != 0;
    if (control || shift) {
        const DWORD asked = control ? (shift ? DROPEFFECT_LINK : DROPEFFECT_COPY) : DROPEFFECT_MOVE;
        *effect = allowed & asked;
        return true;
    }
    for (const DWORD one : {DROPEFFECT_COPY, DROPEFFECT_MOVE, DROPEFFECT_LINK}) {
        if ((allowed & one) != 0) {
            *effect = one;
            break;
        }
    }
    return true;
}

HRESULT CIDropTarget::DragEnter(IDataObject* data, DWORD keys, POINTL, DWORD* effect)
{
    if (data == nullptr || effect == nullptr)
        return E_INVALIDARG;
    m_bAllowDrop = false;
    for (FORMATETC& format : m_aFormats)
        m_bAllowDrop = m_bAllowDrop || data->QueryGetData(&format) == S_OK;
    QueryDrop(keys, effect);
    return S_OK;
}

HRESULT CIDropTarget::DragOver(DWORD keys, POINTL, DWORD* effect)
{
    if (effect == nullptr)
        return E_INVALIDARG;
    QueryDrop(keys, effect);
    return S_OK;
}

HRESULT CIDropTarget::DragLeave()
{
    m_bAllowDrop = false;
    return S_OK;
}

HRESULT CIDropTarget::Drop(IDataObject* data, DWORD keys, POINTL, DWORD* effect)
{
    if (data == nullptr || effect == nullptr)
        return E_INVALIDARG;
    const bool allowed = QueryDrop(keys, effect);
    m_bAllowDrop = false;
    if (!allowed)
        return S_OK;
    // The callee may end this object.
    for (FORMATETC format : std::vector<FORMATETC>(m_aFormats)) {
        STGMEDIUM medium{};
        if (data->QueryGetData(&format) != S_OK || FAILED(data->GetData(&format, &medium)))
            continue;
        if (OnDrop(&format, medium, effect))
            ::ReleaseStgMedium(&medium);
        break;
    }
    return S_OK;
}

} // namespace DuiLib
