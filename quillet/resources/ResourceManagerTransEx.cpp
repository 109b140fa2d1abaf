#include "quillet/resources/ResourceManagerTransEx.h"

namespace DuiLib {

CResourceManagerTransEx* CResourceManagerTransEx::GetInstance()
{
    static CResourceManagerTransEx* const instance = new CResourceManagerTransEx;
    return instance;
}

void CResourceManagerTransEx::Release()
{
    // Published: releasing through a null pointer does nothing, and GetInstance still answers with
    // the old pointer afterwards. Read back from memory, `this` is not taken for non-null.
    CResourceManagerTransEx* const volatile self = this;
    delete self;
}

void* CResourceManagerTransEx::operator new(std::size_t bytes) noexcept
{
    return ResourceStore::Allocate(bytes);
}

void CResourceManagerTransEx::operator delete(void* storage) noexcept
{
    ResourceStore::Free(storage);
}

// Published: a value that scales to 0 stays 0 here, unlike in the other managers.
CResourceManagerTransEx::CResourceManagerTransEx() : m_Store(ResourceStore::ZeroScaled::StaysZero)
{
}

CResourceManagerTransEx::~CResourceManagerTransEx() = default;
CResourceManagerTransEx::CResourceManagerTransEx(const CResourceManagerTransEx&) = default;
CResourceManagerTransEx&
CResourceManagerTransEx::operator=(const CResourceManagerTransEx&) = default;

int CResourceManagerTransEx::LoadLanguage(const wchar_t* source)
{
    return m_Store.LoadLanguage(source);
}

CDuiString CResourceManagerTransEx::GetText(const wchar_t* id, const wchar_t* type)
{
    return m_Store.GetText(id, type);
}

void CResourceManagerTransEx::ReloadText()
{
    m_Store.ReloadText();
}

void CResourceManagerTransEx::ResetTextMap()
{
    m_Store.ResetTextMap();
}

void CResourceManagerTransEx::SetTextQueryInterface(IQueryControlTextEx* query)
{
    m_Store.SetTextQueryInterface(query);
}

void CResourceManagerTransEx::SetLanguage(const wchar_t* code)
{
    m_Store.SetLanguage(code);
}

const wchar_t* CResourceManagerTransEx::GetLanguage()
{
    return m_Store.GetLanguage();
}

int CResourceManagerTransEx::LoadResource(STRINGorID xml, const wchar_t* type)
{
    return m_Store.LoadResource(xml, type);
}

int CResourceManagerTransEx::LoadResource(CMarkupNode node)
{
    return m_Store.LoadResource(node);
}

const wchar_t* CResourceManagerTransEx::GetImagePath(const wchar_t* id)
{
    return m_Store.GetImagePath(id);
}

const wchar_t* CResourceManagerTransEx::GetXmlPath(const wchar_t* id)
{
    return m_Store.GetXmlPath(id);
}

void CResourceManagerTransEx::ResetResourceMap()
{
    m_Store.ResetResourceMap();
}

unsigned CResourceManagerTransEx::GetDPI()
{
    return m_Store.GetDPI();
}

unsigned CResourceManagerTransEx::GetScale()
{
    return m_Store.GetScale();
}

void CResourceManagerTransEx::SetScale(unsigned dpi)
{
    m_Store.SetScale(dpi);
}

PROCESS_DPI_AWARENESS CResourceManagerTransEx::GetDPIAwareness()
{
    return m_Store.GetDPIAwareness();
}

int CResourceManagerTransEx::SetDPIAwareness(PROCESS_DPI_AWARENESS awareness)
{
    return m_Store.SetDPIAwareness(awareness);
}

unsigned CResourceManagerTransEx::GetTrueDPI()
{
    return m_Store.GetTrueDPI();
}

int CResourceManagerTransEx::Scale(int value)
{
    return m_Store.Scale(value);
}

SIZE CResourceManagerTransEx::Scale(SIZE size)
{
    return m_Store.Scale(size);
}

POINT CResourceManagerTransEx::Scale(POINT point)
{
    return m_Store.Scale(point);
}

RECT CResourceManagerTransEx::Scale(RECT rect)
{
    return m_Store.Scale(rect);
}

void CResourceManagerTransEx::Scale(POINT* point)
{
    m_Store.Scale(point);
}

void CResourceManagerTransEx::Scale(SIZE* size)
{
    m_Store.Scale(size);
}

void CResourceManagerTransEx::Scale(RECT* rect)
{
    m_Store.Scale(rect);
}

int CResourceManagerTransEx::RestoreScale(int value)
{
    return m_Store.RestoreScale(value);
}

RECT CResourceManagerTransEx::RestoreScaleRect(RECT rect)
{
    return m_Store.RestoreScaleRect(rect);
}

} // namespace DuiLib
