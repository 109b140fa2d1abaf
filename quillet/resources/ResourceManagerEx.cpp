#include "quillet/resources/ResourceManagerEx.h"

namespace DuiLib {

IQueryControlTextEx::IQueryControlTextEx() = default;
IQueryControlTextEx::IQueryControlTextEx(const IQueryControlTextEx&) = default;
IQueryControlTextEx::IQueryControlTextEx(IQueryControlTextEx&&) noexcept = default;
IQueryControlTextEx& IQueryControlTextEx::operator=(const IQueryControlTextEx&) = default;
IQueryControlTextEx& IQueryControlTextEx::operator=(IQueryControlTextEx&&) noexcept = default;

CResourceManagerEx* CResourceManagerEx::GetInstance()
{
    static CResourceManagerEx* const instance = new CResourceManagerEx;
    return instance;
}

void CResourceManagerEx::Release()
{
    // Published: releasing through a null pointer does nothing, and GetInstance still answers with
    // the old pointer afterwards. Read back from memory, `this` is not taken for non-null.
    CResourceManagerEx* const volatile self = this;
    delete self;
}

void* CResourceManagerEx::operator new(std::size_t bytes) noexcept
{
    return ResourceStore::Allocate(bytes);
}

void CResourceManagerEx::operator delete(void* storage) noexcept
{
    ResourceStore::Free(storage);
}

CResourceManagerEx::CResourceManagerEx() : m_Store(ResourceStore::ZeroScaled::BecomesOne) {}

CResourceManagerEx::~CResourceManagerEx() = default;
CResourceManagerEx::CResourceManagerEx(const CResourceManagerEx&) = default;
CResourceManagerEx& CResourceManagerEx::operator=(const CResourceManagerEx&) = default;

int CResourceManagerEx::LoadLanguage(const wchar_t* source)
{
    return m_Store.LoadLanguage(source);
}

CDuiString CResourceManagerEx::GetText(const wchar_t* id, const wchar_t* type)
{
    return m_Store.GetText(id, type);
}

void CResourceManagerEx::ReloadText()
{
    m_Store.ReloadText();
}

void CResourceManagerEx::ResetTextMap()
{
    m_Store.ResetTextMap();
}

void CResourceManagerEx::SetTextQueryInterface(IQueryControlTextEx* query)
{
    m_Store.SetTextQueryInterface(query);
}

void CResourceManagerEx::SetLanguage(const wchar_t* code)
{
    m_Store.SetLanguage(code);
}

const wchar_t* CResourceManagerEx::GetLanguage()
{
    return m_Store.GetLanguage();
}

int CResourceManagerEx::LoadResource(STRINGorID xml, const wchar_t* type)
{
    return m_Store.LoadResource(xml, type);
}

int CResourceManagerEx::LoadResource(CMarkupNode node)
{
    return m_Store.LoadResource(node);
}

const wchar_t* CResourceManagerEx::GetImagePath(const wchar_t* id)
{
    return m_Store.GetImagePath(id);
}

const wchar_t* CResourceManagerEx::GetXmlPath(const wchar_t* id)
{
    return m_Store.GetXmlPath(id);
}

void CResourceManagerEx::ResetResourceMap()
{
    m_Store.ResetResourceMap();
}

void CResourceManagerEx::SetMainHWND(HWND window)
{
    m_hMainWnd = window;
}

HWND CResourceManagerEx::GetMainHWND()
{
    return m_hMainWnd;
}

void CResourceManagerEx::SetVeskaMaskHWND(HWND window)
{
    m_hVeskaMaskWnd = window;
}

HWND CResourceManagerEx::GetVeskaMaskHWND()
{
    return m_hVeskaMaskWnd;
}

unsigned CResourceManagerEx::GetDPI()
{
    return m_Store.GetDPI();
}

unsigned CResourceManagerEx::GetScale()
{
    return m_Store.GetScale();
}

void CResourceManagerEx::SetScale(unsigned dpi)
{
    m_Store.SetScale(dpi);
}

PROCESS_DPI_AWARENESS CResourceManagerEx::GetDPIAwareness()
{
    return m_Store.GetDPIAwareness();
}

int CResourceManagerEx::SetDPIAwareness(PROCESS_DPI_AWARENESS awareness)
{
    return m_Store.SetDPIAwareness(awareness);
}

unsigned CResourceManagerEx::GetTrueDPI()
{
    return m_Store.GetTrueDPI();
}

int CResourceManagerEx::Scale(int value)
{
    return m_Store.Scale(value);
}

int CResourceManagerEx::Scale(int value, unsigned dpi)
{
    return m_Store.Scale(value, dpi);
}

SIZE CResourceManagerEx::Scale(SIZE size)
{
    return m_Store.Scale(size);
}

POINT CResourceManagerEx::Scale(POINT point)
{
    return m_Store.Scale(point);
}

RECT CResourceManagerEx::Scale(RECT rect)
{
    return m_Store.Scale(rect);
}

void CResourceManagerEx::Scale(POINT* point)
{
    m_Store.Scale(point);
}

void CResourceManagerEx::Scale(SIZE* size)
{
    m_Store.Scale(size);
}

void CResourceManagerEx::Scale(RECT* rect)
{
    m_Store.Scale(rect);
}

int CResourceManagerEx::RestoreScale(int value)
{
    return m_Store.RestoreScale(value);
}

RECT CResourceManagerEx::RestoreScaleRect(RECT rect)
{
    return m_Store.RestoreScaleRect(rect);
}

} // namespace DuiLib
