#include "quillet/resources/ResourceManagerModeEx.h"

namespace DuiLib {

CResourceManagerModeEx* CResourceManagerModeEx::GetInstance()
{
    static CResourceManagerModeEx* const instance = new CResourceManagerModeEx;
    return instance;
}

void CResourceManagerModeEx::Release()
{
    // Published: releasing through a null pointer does nothing, and GetInstance still answers with
    // the old pointer afterwards. Read back from memory, `this` is not taken for non-null.
    CResourceManagerModeEx* const volatile self = this;
    delete self;
}

void* CResourceManagerModeEx::operator new(std::size_t bytes) noexcept
{
    return ResourceStore::Allocate(bytes);
}

void CResourceManagerModeEx::operator delete(void* storage) noexcept
{
    ResourceStore::Free(storage);
}

CResourceManagerModeEx::CResourceManagerModeEx() : m_Store(ResourceStore::ZeroScaled::BecomesOne) {}

CResourceManagerModeEx::~CResourceManagerModeEx() = default;
CResourceManagerModeEx::CResourceManagerModeEx(const CResourceManagerModeEx&) = default;
CResourceManagerModeEx& CResourceManagerModeEx::operator=(const CResourceManagerModeEx&) = default;

int CResourceManagerModeEx::LoadLanguage(const wchar_t* source)
{
    return m_Store.LoadLanguage(source);
}

CDuiString CResourceManagerModeEx::GetText(const wchar_t* id, const wchar_t* type)
{
    return m_Store.GetText(id, type);
}

void CResourceManagerModeEx::ReloadText()
{
    m_Store.ReloadText();
}

void CResourceManagerModeEx::ResetTextMap()
{
    m_Store.ResetTextMap();
}

void CResourceManagerModeEx::SetTextQueryInterface(IQueryControlTextEx* query)
{
    m_Store.SetTextQueryInterface(query);
}

void CResourceManagerModeEx::SetLanguage(const wchar_t* code)
{
    m_Store.SetLanguage(code);
}

const wchar_t* CResourceManagerModeEx::GetLanguage()
{
    return m_Store.GetLanguage();
}

int CResourceManagerModeEx::LoadResource(STRINGorID xml, const wchar_t* type)
{
    return m_Store.LoadResource(xml, type);
}

int CResourceManagerModeEx::LoadResource(CMarkupNode node)
{
    return m_Store.LoadResource(node);
}

const wchar_t* CResourceManagerModeEx::GetImagePath(const wchar_t* id)
{
    return m_Store.GetImagePath(id);
}

const wchar_t* CResourceManagerModeEx::GetXmlPath(const wchar_t* id)
{
    return m_Store.GetXmlPath(id);
}

void CResourceManagerModeEx::ResetResourceMap()
{
    m_Store.ResetResourceMap();
}

void CResourceManagerModeEx::SetMainHWND(HWND window)
{
    m_hMainWnd = window;
}

HWND CResourceManagerModeEx::GetMainHWND()
{
    return m_hMainWnd;
}

unsigned CResourceManagerModeEx::GetDPI()
{
    return m_Store.GetDPI();
}

unsigned CResourceManagerModeEx::GetScale()
{
    return m_Store.GetScale();
}

void CResourceManagerModeEx::SetScale(unsigned dpi)
{
    m_Store.SetScale(dpi);
}

PROCESS_DPI_AWARENESS CResourceManagerModeEx::GetDPIAwareness()
{
    return m_Store.GetDPIAwareness();
}

int CResourceManagerModeEx::SetDPIAwareness(PROCESS_DPI_AWARENESS awareness)
{
    return m_Store.SetDPIAwareness(awareness);
}

unsigned CResourceManagerModeEx::GetTrueDPI()
{
    return m_Store.GetTrueDPI();
}

int CResourceManagerModeEx::Scale(int value)
{
    return m_Store.Scale(value);
}

int CResourceManagerModeEx::Scale(int value, unsigned dpi)
{
    return m_Store.Scale(value, dpi);
}

SIZE CResourceManagerModeEx::Scale(SIZE size)
{
    return m_Store.Scale(size);
}

POINT CResourceManagerModeEx::Scale(POINT point)
{
    return m_Store.Scale(point);
}

RECT CResourceManagerModeEx::Scale(RECT rect)
{
    return m_Store.Scale(rect);
}

void CResourceManagerModeEx::Scale(POINT* point)
{
    m_Store.Scale(point);
}

void CResourceManagerModeEx::Scale(SIZE* size)
{
    m_Store.Scale(size);
}

void CResourceManagerModeEx::Scale(RECT* rect)
{
    m_Store.Scale(rect);
}

int CResourceManagerModeEx::RestoreScale(int value)
{
    return m_Store.RestoreScale(value);
}

RECT CResourceManagerModeEx::RestoreScaleRect(RECT rect)
{
    return m_Store.RestoreScaleRect(rect);
}

} // namespace DuiLib
