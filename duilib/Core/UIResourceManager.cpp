#include "Core/UIResourceManager.h"

#include "win32/TextParse.h"

#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace DuiLib {

namespace {

using Quillet::Text::EqualsNoCase;
using TextMap =
    std::unordered_map<std::wstring, CDuiString, Quillet::Text::WideHash, Quillet::Text::WideEqual>;

CResourceManager* g_manager = nullptr;

std::mutex& InstanceMutex()
{
    static std::mutex& mutex = *new std::mutex;
    return mutex;
}

LPCTSTR Find(const TextMap& map, LPCTSTR id)
{
    if (id == nullptr)
        return nullptr;
    const auto found = map.find(std::wstring_view(id));
    return found != map.end() ? found->second.GetData() : nullptr;
}

// Calls the visitor with every element below the root that has no children itself, and with a root
// that has none, in document order.
template <class Visit>
void ForEachLeaf(CMarkupNode root, Visit visit)
{
    int depth = 0;
    CMarkupNode node = root;
    for (;;) {
        if (node.HasChildren()) {
            node = node.GetChild();
            ++depth;
            continue;
        }
        visit(node);
        while (depth > 0 && !node.HasSiblings()) {
            node = node.GetParent();
            --depth;
        }
        if (depth == 0)
            return;
        node = node.GetSibling();
    }
}

} // namespace

struct CResourceManager::Tables {
    std::mutex pathMutex;
    TextMap images;
    TextMap skins;
    TextMap texts;
};

CResourceManager::CResourceManager() : m_pTables(std::make_unique<Tables>()), m_pQuery(nullptr) {}

CResourceManager::~CResourceManager() = default;

CResourceManager* CResourceManager::GetInstance()
{
    const std::lock_guard lock(InstanceMutex());
    if (g_manager == nullptr)
        g_manager = new CResourceManager;
    return g_manager;
}

void CResourceManager::Release()
{
    {
        const std::lock_guard lock(InstanceMutex());
        g_manager = nullptr;
    }
    delete this;
}

BOOL CResourceManager::LoadResource(STRINGorID source, LPCTSTR type)
{
    CMarkup document;
    const bool isText = !IS_INTRESOURCE(source.m_lpstr);
    const bool loaded = !isText ? document.LoadFromResource(source, type, nullptr)
                        : source.m_lpstr[0] == L'<' ? document.Load(source.m_lpstr)
                                                    : document.LoadFromFile(source.m_lpstr);
    return loaded && LoadResource(document.GetRoot());
}

BOOL CResourceManager::LoadResource(CMarkupNode root)
{
    if (!root.IsValid())
        return FALSE;

    const std::lock_guard lock(m_pTables->pathMutex);
    ForEachLeaf(root, [this](CMarkupNode leaf) {
        const std::wstring_view name = leaf.GetName();
        const bool image = EqualsNoCase(name, L"Image");
        if (!image && !EqualsNoCase(name, L"Xml"))
            return;
        const LPCTSTR id = leaf.GetAttributeValue(L"id");
        const LPCTSTR path = leaf.GetAttributeValue(L"path");
        if (*id != 0 && *path != 0)
            (image ? m_pTables->images : m_pTables->skins).insert_or_assign(id, path);
    });
    return TRUE;
}

void CResourceManager::ResetResourceMap()
{
    const std::lock_guard lock(m_pTables->pathMutex);
    m_pTables->images.clear();
    m_pTables->skins.clear();
}

LPCTSTR CResourceManager::GetImagePath(LPCTSTR id)
{
    const std::lock_guard lock(m_pTables->pathMutex);
    return Find(m_pTables->images, id);
}

LPCTSTR CResourceManager::GetXmlPath(LPCTSTR id)
{
    const std::lock_guard lock(m_pTables->pathMutex);
    return Find(m_pTables->skins, id);
}

void CResourceManager::SetLanguage(LPCTSTR language)
{
    m_sLanguage = language;
}

LPCTSTR CResourceManager::GetLanguage()
{
    return m_sLanguage;
}

BOOL CResourceManager::LoadLanguage(LPCTSTR source)
{
    if (source == nullptr)
        return FALSE;
    CMarkup document;
    if (*source == L'<' ? !document.Load(source) : !document.LoadFromFile(source))
        return FALSE;

    ForEachLeaf(document.GetRoot(), [this](CMarkupNode leaf) {
        if (!EqualsNoCase(leaf.GetName(), L"Text") || !leaf.HasAttribute(L"value"))
            return;
        const LPCTSTR id = leaf.GetAttributeValue(L"id");
        if (*id != 0)
            m_pTables->texts.insert_or_assign(id, leaf.GetAttributeValue(L"value"));
    });
    return TRUE;
}

void CResourceManager::SetTextQueryInterface(IQueryControlText* query)
{
    m_pQuery = query;
}

CDuiString CResourceManager::GetText(LPCTSTR id, LPCTSTR type)
{
    if (id == nullptr)
        return {};
    if (const LPCTSTR text = Find(m_pTables->texts, id))
        return text;
    if (m_pQuery != nullptr) {
        if (const LPCTSTR answer = m_pQuery->QueryControlText(id, type)) {
            const CDuiString text = answer;
            m_pTables->texts.insert_or_assign(id, text);
            return text;
        }
    }
    return id;
}

void CResourceManager::ReloadText()
{
    if (m_pQuery == nullptr)
        return;

    // The query may add texts while it is asked.
    std::vector<std::wstring> ids;
    ids.reserve(m_pTables->texts.size());
    for (const auto& [id, text] : m_pTables->texts)
        ids.push_back(id);
    for (const auto& id : ids) {
        if (const LPCTSTR answer = m_pQuery->QueryControlText(id.c_str(), nullptr))
            m_pTables->texts.insert_or_assign(id, answer);
    }
}

void CResourceManager::ResetTextMap()
{
    m_pTables->texts.clear();
}

} // namespace DuiLib
