#include "quillet/resources/ResourceStore.h"

#include <cmath>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

#include "quillet/resources/MonitorDpi.h"
#include "quillet/resources/SaturatingCast.h"
#include "quillet/resources/SystemLibrary.h"
#include "quillet/resources/WindowsVersion.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;

constexpr int kBuckets = 83;
constexpr int kUtf8 = 0; // the toolkit's number for the encoding of its files

CDuiString* FindString(const CStdStringPtrMap& table, const wchar_t* key)
{
    return key ? static_cast<CDuiString*>(table.Find(key)) : nullptr;
}

// Without memory for the text the key is added all the same, with null in its place.
CDuiString* InsertString(CStdStringPtrMap& table, const wchar_t* key, const wchar_t* text)
{
    auto* const owned = new (std::nothrow) CDuiString(text);
    delete static_cast<CDuiString*>(table.Set(key, owned));
    return owned;
}

// Frees every string. Published: the keys stay, without a text; callers rely on loading again.
void FreeStrings(CStdStringPtrMap& table)
{
    for (int i = 0; i < table.GetSize(); ++i)
        if (const wchar_t* const key = table.GetAt(i); key && table.Find(key))
            delete static_cast<CDuiString*>(table.Set(key, nullptr));
}

// Edges of any size: sums and differences wrap around as 32-bit numbers do.
int Sum(int first, int second)
{
    return static_cast<int>(static_cast<unsigned>(first) + static_cast<unsigned>(second));
}

int Difference(int first, int second)
{
    return static_cast<int>(static_cast<unsigned>(first) - static_cast<unsigned>(second));
}

// An id and what belongs to it, as the attributes of one element after another give them.
struct Entry {
    const wchar_t* id = nullptr;
    const wchar_t* value = nullptr;

    bool IsComplete() const { return id && value; }

    // Published: what an element leaves out stays as an earlier one gave it; files rely on it.
    void Read(CMarkupNode element, std::wstring_view valueName)
    {
        for (int i = 0; i < element.GetAttributeCount(); ++i) {
            const std::wstring_view name = element.GetAttributeName(i);
            if (EqualsNoCase(name, L"id"))
                id = element.GetAttributeValue(i);
            else if (EqualsNoCase(name, valueName))
                value = element.GetAttributeValue(i);
        }
    }
};

bool LoadDocument(CMarkup& document, const wchar_t* source)
{
    return source[0] == L'<' ? document.Load(source) : document.LoadFromFile(source, kUtf8);
}

bool LoadDocument(CMarkup& document, STRINGorID id, const wchar_t* type)
{
    const HMODULE module = CPaintManagerUI::GetResourceDll();
    const HRSRC found = ::FindResourceW(module, id.m_lpstr, type);
    if (!found)
        return false;

    // Published: it is the handle of the search that is freed, and only after success or a failed
    // load; the system ignores it and callers never see a difference.
    const auto freeFound = [found] { ::FreeResource(reinterpret_cast<HGLOBAL>(found)); };
    const HGLOBAL loaded = ::LoadResource(module, found);
    if (!loaded) {
        freeFound();
        return false;
    }
    const DWORD size = ::SizeofResource(module, found);
    auto* const bytes = static_cast<BYTE*>(::LockResource(loaded));
    if (!bytes || !document.LoadFromMem(bytes, size, kUtf8))
        return false;
    freeFound();
    return true;
}

} // namespace

ResourceStore::ResourceStore(ZeroScaled zeroScaled)
    : m_mTexts(kBuckets),
      m_mImagePaths(kBuckets),
      m_mXmlPaths(kBuckets),
      m_Index(nullptr),
      m_mSpare(kBuckets),
      m_nZeroScaled(zeroScaled)
{
    SetScale(USER_DEFAULT_SCREEN_DPI);
}

ResourceStore::~ResourceStore()
{
    ResetTextMap();
    ResetResourceMap();
}

void* ResourceStore::Allocate(std::size_t bytes) noexcept
{
    return ::HeapAlloc(::GetProcessHeap(), HEAP_ZERO_MEMORY, bytes);
}

void ResourceStore::Free(void* storage) noexcept
{
    if (storage)
        ::HeapFree(::GetProcessHeap(), 0, storage);
}

int ResourceStore::LoadLanguage(const wchar_t* source)
{
    CMarkup document(nullptr);
    if (!source || !LoadDocument(document, source))
        return 0;
    const CMarkupNode root = document.GetRoot();
    if (!root.IsValid())
        return 0;

    Entry entry;
    for (CMarkupNode node = CMarkupNode(root).GetChild(); node.IsValid();
         node = node.GetSibling()) {
        if (!EqualsNoCase(node.GetName(), L"Text") || !node.HasAttributes())
            continue;
        entry.Read(node, L"value");
        if (!entry.IsComplete())
            continue;
        // Published: a later text replaces an earlier one; language files are layered that way.
        if (CDuiString* const held = FindString(m_mTexts, entry.id))
            *held = entry.value;
        else
            InsertString(m_mTexts, entry.id, entry.value);
    }
    return 1;
}

CDuiString ResourceStore::GetText(const wchar_t* id, const wchar_t* type)
{
    if (!id)
        return {};
    if (const CDuiString* const held = FindString(m_mTexts, id))
        return *held;
    // Published: an id that nobody knows is its own text and is asked for again each time.
    if (!m_pQuery)
        return id;
    // Published: the application's answer is remembered, also an empty one.
    const CDuiString* const answer =
        InsertString(m_mTexts, id, m_pQuery->QueryControlText(id, type));
    return answer ? *answer : CDuiString();
}

void ResourceStore::ReloadText()
{
    if (!m_pQuery)
        return;
    for (int i = 0; i < m_mTexts.GetSize() && m_pQuery; ++i) {
        const wchar_t* const key = m_mTexts.GetAt(i);
        if (!key)
            continue;
        // Published: no answer leaves the old text.
        const wchar_t* const answer = m_pQuery->QueryControlText(key, nullptr);
        if (!answer)
            continue;
        if (CDuiString* const held = FindString(m_mTexts, key))
            *held = answer;
        else
            InsertString(m_mTexts, key, answer);
    }
}

void ResourceStore::ResetTextMap()
{
    FreeStrings(m_mTexts);
}

int ResourceStore::LoadResource(STRINGorID xml, const wchar_t* type)
{
    const bool loaded = IS_INTRESOURCE(xml.m_lpstr) ? LoadDocument(m_Index, xml, type)
                                                    : LoadDocument(m_Index, xml.m_lpstr);
    return loaded ? LoadResource(m_Index.GetRoot()) : 0;
}

int ResourceStore::LoadResource(CMarkupNode node)
{
    if (!node.IsValid())
        return 0;
    if (!node.HasChildren())
        return 1;

    // Containers may be nested to any depth, so the walk keeps its own stack. What an element
    // leaves out is taken over from its earlier siblings, never from another level.
    struct Level {
        CMarkupNode next;
        Entry entry;
    };
    std::vector<Level> levels{{node.GetChild(), {}}};
    while (!levels.empty()) {
        Level& level = levels.back();
        CMarkupNode element = level.next;
        if (!element.IsValid()) {
            levels.pop_back();
            continue;
        }
        level.next = element.GetSibling();

        // Published: an element with children only contains, whatever its name is.
        if (element.HasChildren()) {
            levels.push_back({element.GetChild(), {}});
            continue;
        }
        const bool isImage = EqualsNoCase(element.GetName(), L"Image");
        if ((!isImage && !EqualsNoCase(element.GetName(), L"Xml")) || !element.HasAttributes())
            continue;
        level.entry.Read(element, L"path");
        auto& table = isImage ? m_mImagePaths : m_mXmlPaths;
        // Published: the first path of an id stays; an application's index goes before defaults.
        if (level.entry.IsComplete() && !FindString(table, level.entry.id))
            InsertString(table, level.entry.id, level.entry.value);
    }
    return 1;
}

const wchar_t* ResourceStore::GetImagePath(const wchar_t* id) const
{
    const CDuiString* const path = FindString(m_mImagePaths, id);
    return path ? path->GetData() : nullptr;
}

const wchar_t* ResourceStore::GetXmlPath(const wchar_t* id) const
{
    const CDuiString* const path = FindString(m_mXmlPaths, id);
    return path ? path->GetData() : nullptr;
}

void ResourceStore::ResetResourceMap()
{
    FreeStrings(m_mImagePaths);
    FreeStrings(m_mXmlPaths);
}

unsigned ResourceStore::GetDPI() const
{
    if (m_nAwareness == PROCESS_DPI_UNAWARE)
        return USER_DEFAULT_SCREEN_DPI;
    return static_cast<unsigned>(
        ::MulDiv(static_cast<int>(GetScale()), USER_DEFAULT_SCREEN_DPI, 100));
}

unsigned ResourceStore::GetScale() const
{
    switch (m_nAwareness) {
    case PROCESS_DPI_UNAWARE:
        return 100;
    case PROCESS_SYSTEM_DPI_AWARE:
        return m_uSystemScale;
    default:
        return m_uScale;
    }
}

void ResourceStore::SetScale(unsigned dpi)
{
    m_uScale = static_cast<unsigned>(::MulDiv(static_cast<int>(dpi), 100, USER_DEFAULT_SCREEN_DPI));
    // Published: construction has set the system scale to 100 already, so a system-aware process
    // always scales by 100 percent.
    if (m_uSystemScale == 0)
        m_uSystemScale = m_uScale;
}

PROCESS_DPI_AWARENESS ResourceStore::GetDPIAwareness()
{
    if (Quillet::IsWindows81OrLater()) {
        // Published: neither the library nor the process handle is given back; calls are rare.
        const HMODULE shcore = Quillet::LoadSystemLibrary(L"Shcore.dll");
        using GetAwareness = HRESULT WINAPI(HANDLE, PROCESS_DPI_AWARENESS*);
        if (auto* const get = Quillet::FindExport<GetAwareness>(shcore, "GetProcessDpiAwareness"))
            get(::OpenProcess(PROCESS_ALL_ACCESS, FALSE, ::GetCurrentProcessId()), &m_nAwareness);
    }
    return m_nAwareness;
}

int ResourceStore::SetDPIAwareness(PROCESS_DPI_AWARENESS awareness)
{
    if (!Quillet::IsWindows81OrLater()) {
        // Published: an older system takes the value, yet success is not reported.
        m_nAwareness = awareness;
        return 0;
    }
    const HMODULE shcore = Quillet::LoadSystemLibrary(L"Shcore.dll"); // stays loaded
    using SetAwareness = HRESULT WINAPI(PROCESS_DPI_AWARENESS);
    auto* const set = Quillet::FindExport<SetAwareness>(shcore, "SetProcessDpiAwareness");
    if (!set || set(awareness) != S_OK)
        return 0;
    m_nAwareness = awareness;
    return 1;
}

unsigned ResourceStore::GetTrueDPI()
{
    // Published: whether the measurement succeeded does not matter; 96 remains when it did not.
    return Quillet::MeasureMainMonitorDpi().dpi;
}

int ResourceStore::Scale(int value) const
{
    // Published: a line of one pixel stays one pixel at every scale.
    if (value == 1 || m_nAwareness == PROCESS_DPI_UNAWARE)
        return value;
    const int scaled = ::MulDiv(value, static_cast<int>(GetScale()), 100);
    // Published: only a monitor-aware process lifts 0 to 1, a system-aware one keeps it.
    const bool lifts =
        m_nAwareness != PROCESS_SYSTEM_DPI_AWARE && m_nZeroScaled == ZeroScaled::BecomesOne;
    return scaled == 0 && lifts ? 1 : scaled;
}

int ResourceStore::Scale(int value, unsigned dpi)
{
    // Published: no exemption for 0 and 1 here, and no look at the awareness.
    return ::MulDiv(value, ::MulDiv(static_cast<int>(dpi), 100, USER_DEFAULT_SCREEN_DPI), 100);
}

SIZE ResourceStore::Scale(SIZE size) const
{
    return {Scale(int{size.cx}), Scale(int{size.cy})};
}

POINT ResourceStore::Scale(POINT point) const
{
    return {Scale(int{point.x}), Scale(int{point.y})};
}

RECT ResourceStore::Scale(RECT rect) const
{
    // Published: the size is scaled, not the right and bottom edge, so equal sizes stay equal.
    const int width = Scale(Difference(rect.right, rect.left));
    const int height = Scale(Difference(rect.bottom, rect.top));
    const int left = Scale(int{rect.left});
    const int top = Scale(int{rect.top});
    return {left, top, Sum(left, width), Sum(top, height)};
}

void ResourceStore::Scale(POINT* point) const
{
    if (point)
        *point = Scale(*point);
}

void ResourceStore::Scale(SIZE* size) const
{
    // Published: a size of at most one by one pixel stays as it is, only in this form.
    if (size && (size->cx > 1 || size->cy > 1))
        *size = Scale(*size);
}

void ResourceStore::Scale(RECT* rect) const
{
    if (rect)
        *rect = Scale(*rect);
}

int ResourceStore::RestoreScale(int value) const
{
    return value == 1 ? 1 : Unscale(value);
}

RECT ResourceStore::RestoreScaleRect(RECT rect) const
{
    // Published: 1 is no exception here, and each edge is taken by itself.
    return {Unscale(rect.left), Unscale(rect.top), Unscale(rect.right), Unscale(rect.bottom)};
}

int ResourceStore::Unscale(int value) const
{
    // Published: rounds up, in single precision, so it does not undo every Scale; callers rely on
    // the results.
    const unsigned scale = GetScale() != 0 ? GetScale() : 100;
    const float factor = static_cast<float>(scale) / 100.0f;
    return Quillet::SaturateToInt(std::ceil(static_cast<float>(value) / factor));
}

} // namespace DuiLib
