#include "Core/UIDlgBuilder.h"

#include "Core/ControlFactory.h"
#include "Core/Diagnostics.h"
#include "Core/MarkupDocument.h"
#include "Core/UIContainer.h"
#include "Core/UIControl.h"
#include "Core/UIManager.h"
#include "Core/UIResourceManager.h"
#include "Core/WindowAttributes.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace DuiLib {

namespace {

using namespace Quillet::Text;

constexpr UINT kDeepestControl = 256;
constexpr std::size_t kDeepestInclude = 64;
constexpr int kMostControls = 100'000; // counting every inclusion as one
constexpr int kDefaultFontSize = 12;

// What an element other than a control is.
enum class ElementKind { Control, Include, Image, Font, Default, Style, Import, MultiLanguage };

struct NamedKind {
    std::wstring_view name;
    ElementKind kind;
};

constexpr NamedKind kNamedKinds[] = {
    {L"Include", ElementKind::Include},
    {L"Image", ElementKind::Image},
    {L"Font", ElementKind::Font},
    {L"Default", ElementKind::Default},
    {L"Style", ElementKind::Style},
    {L"Import", ElementKind::Import},
    {L"MultiLanguage", ElementKind::MultiLanguage},
};

ElementKind KindOf(std::wstring_view name)
{
    for (const auto& named : kNamedKinds) {
        if (named.name.size() == name.size() && EqualsNoCase(named.name, name))
            return named.kind;
    }
    return ElementKind::Control;
}

// What fails in one repetition of an Include fails in all of them, so it is told once.
class Repetition {
public:
    explicit Repetition(bool again) : m_outer(s_again) { s_again = m_outer || again; }
    ~Repetition() { s_again = m_outer; }
    Repetition(const Repetition&) = delete;
    Repetition& operator=(const Repetition&) = delete;

    static bool IsRunning() { return s_again; }

private:
    static thread_local bool s_again;

    bool m_outer;
};

thread_local bool Repetition::s_again = false;

// The element whose attributes are being set on this thread, for the reasons of failures.
class ElementScope {
public:
    ElementScope(const MarkupDocument& document, UINT index)
        : m_document(document), m_index(index), m_outer(s_current)
    {
        s_current = this;
        Quillet::onBadAttributeValue = &ReportBadValue;
    }
    ~ElementScope() { s_current = m_outer; }
    ElementScope(const ElementScope&) = delete;
    ElementScope& operator=(const ElementScope&) = delete;

private:
    static void ReportBadValue(std::wstring_view name, LPCTSTR value)
    {
        if (Repetition::IsRunning())
            return;
        const std::wstring what = std::wstring(name) + L": \"" + value + L"\" is not a colour";
        ReportFailure(s_current ? s_current->m_document.At(s_current->m_index, what) : what);
    }

    static thread_local const ElementScope* s_current;

    const MarkupDocument& m_document;
    UINT m_index;
    const ElementScope* m_outer;
};

thread_local const ElementScope* ElementScope::s_current = nullptr;

bool IsDigit(wchar_t ch)
{
    return ch >= L'0' && ch <= L'9';
}

// One spelling for all ways to write the name of a source.
std::wstring SourceKey(std::wstring_view source)
{
    std::wstring key(source);
    for (wchar_t& ch : key)
        ch = ch == L'/' ? L'\\' : LowerCase(ch);
    return key;
}

std::wstring SourceKey(STRINGorID source)
{
    if (IS_INTRESOURCE(source.m_lpstr))
        return std::to_wstring(reinterpret_cast<ULONG_PTR>(source.m_lpstr));
    return source.m_lpstr[0] == L'<' ? std::wstring()
                                     : SourceKey(std::wstring_view(source.m_lpstr));
}

// A type that is a number reads "#10", as the system accepts it.
std::wstring ResourceTypeText(LPCTSTR type)
{
    if (type == nullptr)
        return {};
    return IS_INTRESOURCE(type) ? L'#' + std::to_wstring(reinterpret_cast<ULONG_PTR>(type)) : type;
}

void ReadImage(CPaintManagerUI& manager, CMarkupNode node)
{
    const LPCTSTR name = node.GetAttributeValue(L"name");
    const LPCTSTR type = node.GetAttributeValue(L"restype");
    if (*name == 0)
        return;
    manager.AddImage(name, *type != 0 ? type : nullptr, ToColour(node.GetAttributeValue(L"mask")),
                     false, false, IsTrue(node.GetAttributeValue(L"shared")));
}

bool ReadFont(CPaintManagerUI& manager, CMarkupNode node)
{
    const LPCTSTR idText = node.GetAttributeValue(L"id");
    const int id = ToInt(idText);
    if (!IsDigit(*idText) || id < 0)
        return false;

    const LPCTSTR name = node.GetAttributeValue(L"name");
    const int size =
        node.HasAttribute(L"size") ? ToInt(node.GetAttributeValue(L"size")) : kDefaultFontSize;
    const bool bold = IsTrue(node.GetAttributeValue(L"bold"));
    const bool underline = IsTrue(node.GetAttributeValue(L"underline"));
    const bool italic = IsTrue(node.GetAttributeValue(L"italic"));
    const bool strikeout = IsTrue(node.GetAttributeValue(L"strikeout"));
    const bool shared = IsTrue(node.GetAttributeValue(L"shared"));
    manager.AddFont(id, name, size, bold, underline, italic, strikeout, shared);
    if (IsTrue(node.GetAttributeValue(L"default")))
        manager.SetDefaultFont(name, size, bold, underline, italic, strikeout, shared);
    return true;
}

void CopyText(LPCTSTR text, LPTSTR buffer, SIZE_T size)
{
    if (buffer == nullptr || size == 0)
        return;
    const std::wstring_view view(text);
    const auto length = std::min<SIZE_T>(view.size(), size - 1);
    std::copy_n(view.data(), length, buffer);
    buffer[length] = 0;
}

} // namespace

// What one call of Create carries through the tree.
struct CDialogBuilder::Build {
    IDialogBuilderCallback* callback;
    CPaintManagerUI* manager;
    CControlFactory* factory;
    const CDuiString& resourceType;
    HINSTANCE instance;

    std::vector<std::wstring> sources; // the documents being built, outermost first
    std::unordered_map<std::wstring, CMarkup> included;
    int controls = 0;

    std::wstring error; // set when the whole skin is refused
    std::wstring errorPlace;

    bool IsRefused() const { return !error.empty(); }
};

CDialogBuilder::CDialogBuilder() : m_instance(nullptr) {}

CControlUI* CDialogBuilder::Create(STRINGorID source, LPCTSTR type,
                                   IDialogBuilderCallback* callback, CPaintManagerUI* manager,
                                   CControlUI* parent)
{
    const bool isNumber = IS_INTRESOURCE(source.m_lpstr);
    m_sSource = SourceKey(source).c_str();
    m_sResType = isNumber ? ResourceTypeText(type).c_str() : L"";
    m_sError.Empty();
    m_sErrorPlace.Empty();
    if (!LoadMarkup(m_xml, source, type, m_instance))
        return nullptr;
    return Create(callback, manager, parent);
}

CControlUI* CDialogBuilder::Create(IDialogBuilderCallback* callback, CPaintManagerUI* manager,
                                   CControlUI* parent)
{
    m_sError.Empty();
    m_sErrorPlace.Empty();

    // A callback may use this builder again, so the text is held here.
    CMarkup document = m_xml;
    const CMarkupNode root = document.GetRoot();
    if (!root.IsValid())
        return nullptr;

    const CDuiString resourceType = m_sResType;
    Build build{
        callback, manager, CControlFactory::GetInstance(), resourceType, m_instance, {}, {}, 0,
        {},       {}};
    build.sources.push_back(m_sSource.GetData());
    ReadHead(build, root);

    CControlUI* first = nullptr;
    BuildChildren(build, root, parent, 1, &first);
    if (!build.IsRefused()) {
        if (first == nullptr)
            Report(root, L"there is no control");
        return first;
    }

    m_sError = build.error.c_str();
    m_sErrorPlace = build.errorPlace.c_str();
    if (parent == nullptr)
        delete first;
    return nullptr;
}

bool CDialogBuilder::LoadMarkup(CMarkup& markup, STRINGorID source, LPCTSTR type, HINSTANCE module)
{
    if (IS_INTRESOURCE(source.m_lpstr))
        return markup.LoadFromResource(source, type, module);
    if (source.m_lpstr[0] == L'<')
        return markup.Load(source.m_lpstr);
    const LPCTSTR path = CResourceManager::GetInstance()->GetXmlPath(source.m_lpstr);
    return markup.LoadFromFile(path != nullptr ? path : source.m_lpstr);
}

// Reads what serves the controls of a document: the resources among the root's children and the
// window's attributes.
void CDialogBuilder::ReadHead(Build& build, CMarkupNode root)
{
    if (build.manager == nullptr)
        return;

    auto& manager = *build.manager;
    for (auto node = root.GetChild(); node.IsValid(); node = node.GetSibling()) {
        const LPCTSTR name = node.GetAttributeValue(L"name");
        const LPCTSTR value = node.GetAttributeValue(L"value");
        const bool shared = IsTrue(node.GetAttributeValue(L"shared"));
        switch (KindOf(node.GetName())) {
        case ElementKind::Image:
            ReadImage(manager, node);
            break;
        case ElementKind::Font:
            if (!ReadFont(manager, node))
                Report(node, L"a font needs an id of 0 or more");
            break;
        case ElementKind::Default:
            if (*name != 0)
                manager.AddDefaultAttributeList(name, value, shared);
            break;
        case ElementKind::Style:
            if (*name != 0)
                manager.AddStyle(name, value, shared);
            break;
        case ElementKind::Import:
            if (node.HasAttribute(L"fontfile"))
                manager.AddFontArray(node.GetAttributeValue(L"fontfile"));
            break;
        default:
            break;
        }
    }

    if (manager.GetPaintWindow() == nullptr || !EqualsNoCase(root.GetName(), L"Window"))
        return;
    const ElementScope element(*root.m_pDocument, root.m_uIndex);
    for (int i = 0; i < root.GetAttributeCount(); ++i)
        ApplyWindowAttribute(manager, root.GetAttributeName(i), root.GetAttributeValue(i));
}

// Builds the elements below one and gives them to the parent. Without a parent the first control is
// kept in `first` and the others are deleted.
void CDialogBuilder::BuildChildren(Build& build, CMarkupNode parentNode, CControlUI* parent,
                                   UINT depth, CControlUI** first)
{
    IContainerUI* const container =
        parent != nullptr ? static_cast<IContainerUI*>(parent->GetInterface(DUI_CTR_ICONTAINER))
                          : nullptr;

    for (auto node = parentNode.GetChild(); node.IsValid(); node = node.GetSibling()) {
        const auto kind = KindOf(node.GetName());
        if (kind == ElementKind::Include)
            BuildIncluded(build, node, parent, depth, first);
        if (build.IsRefused())
            return;
        if (kind != ElementKind::Control)
            continue;

        std::unique_ptr<CControlUI> control(BuildControl(build, node, depth));
        if (build.IsRefused())
            return;
        if (!control)
            continue;
        if (parent == nullptr) {
            if (*first == nullptr) {
                SetAttributes(build, node, *control, nullptr);
                *first = control.release();
            }
            continue;
        }
        // A parent on a window registers the names of what it gets there and then.
        if (parent->GetManager() != nullptr && node.HasAttribute(L"name"))
            control->SetName(node.GetAttributeValue(L"name"));
        if (container == nullptr || !container->Add(control.get())) {
            Report(node, L"the control around it takes no children");
            continue;
        }
        CControlUI& added = *control.release();
        SetAttributes(build, node, added, parent);
        if (*first == nullptr)
            *first = &added;
    }
}

// A control with its children, not yet with its attributes; null when nobody can make it.
CControlUI* CDialogBuilder::BuildControl(Build& build, CMarkupNode node, UINT depth)
{
    if (depth > kDeepestControl) {
        Refuse(build, node, L"the controls nest more than 256 levels deep");
        return nullptr;
    }
    if (++build.controls > kMostControls) {
        Refuse(build, node, L"the skin has more than 100,000 controls");
        return nullptr;
    }

    std::unique_ptr<CControlUI> control(NewControl(build, node.GetName()));
    if (!control) {
        Report(node, L"nobody makes a control \"" + std::wstring(node.GetName()) + L'"');
        return nullptr;
    }
    if (node.HasChildren()) {
        CControlUI* first = nullptr;
        BuildChildren(build, node, control.get(), depth + 1, &first);
    }
    return control.release();
}

CControlUI* CDialogBuilder::NewControl(Build& build, LPCTSTR name)
{
    if (CControlUI* const control = build.factory->CreateByXmlName(name))
        return control;

    const CStdPtrArray& plugins = *CPaintManagerUI::GetPlugins();
    for (int i = 0; i < plugins.GetSize(); ++i) {
        const auto create = reinterpret_cast<LPCREATECONTROL>(plugins.GetAt(i));
        if (CControlUI* const control = create != nullptr ? create(name) : nullptr)
            return control;
    }
    return build.callback != nullptr ? build.callback->CreateControl(name) : nullptr;
}

// While attributes are set, a control knows its manager but no parent.
void CDialogBuilder::SetAttributes(Build& build, CMarkupNode node, CControlUI& control,
                                   CControlUI* parent)
{
    const ElementScope element(*node.m_pDocument, node.m_uIndex);
    // What a list is given stands in its body or in its header.
    CControlUI* const holder = control.GetParent() != nullptr ? control.GetParent() : parent;
    if (build.manager != nullptr) {
        control.SetManager(build.manager, nullptr, false);
        if (const LPCTSTR defaults = build.manager->GetDefaultAttributeList(node.GetName()))
            control.ApplyAttributeList(defaults);
    }
    const int count = node.GetAttributeCount();
    for (int i = 0; i < count; ++i)
        control.SetAttribute(node.GetAttributeName(i), node.GetAttributeValue(i));

    if (build.manager == nullptr)
        return;
    // A parent on a window goes on being the parent; all others wait for the root to be attached.
    CPaintManagerUI* const living = parent != nullptr ? parent->GetManager() : nullptr;
    control.SetManager(living, living != nullptr ? holder : nullptr, false);
}

void CDialogBuilder::BuildIncluded(Build& build, CMarkupNode node, CControlUI* parent, UINT depth,
                                   CControlUI** first)
{
    const LPCTSTR source = node.GetAttributeValue(L"source");
    if (*source == 0) {
        Report(node, L"an Include needs a source");
        return;
    }
    const auto key = SourceKey(std::wstring_view(source));
    if (std::find(build.sources.begin(), build.sources.end(), key) != build.sources.end() ||
        build.sources.size() > kDeepestInclude) {
        Refuse(build, node, L"the Include of \"" + std::wstring(source) + L"\" never ends");
        return;
    }

    auto found = build.included.find(key);
    if (found == build.included.end()) {
        CMarkup document;
        const bool isNumber = !build.resourceType.IsEmpty() && IsDigit(*source);
        if (!LoadMarkup(document,
                        isNumber ? STRINGorID(static_cast<UINT>(static_cast<WORD>(ToInt(source))))
                                 : STRINGorID(source),
                        build.resourceType, build.instance))
            Report(node, std::wstring(L"the Include failed, ") + LastFailure().GetData());
        found = build.included.emplace(key, document).first;
        if (document.IsValid())
            ReadHead(build, document.GetRoot());
    }
    CMarkup& document = found->second;
    if (!document.IsValid())
        return;

    const int count = node.HasAttribute(L"count") ? ToInt(node.GetAttributeValue(L"count")) : 1;
    build.sources.push_back(key);
    for (int i = 0; i < count && !build.IsRefused(); ++i) {
        const Repetition repetition(i > 0);
        if (++build.controls > kMostControls)
            Refuse(build, node, L"the skin has more than 100,000 controls");
        else
            BuildChildren(build, document.GetRoot(), parent, depth, first);
    }
    build.sources.pop_back();
}

void CDialogBuilder::Report(CMarkupNode node, const std::wstring& what)
{
    if (!Repetition::IsRunning())
        ReportFailure(node.m_pDocument->At(node.m_uIndex, what));
}

void CDialogBuilder::Refuse(Build& build, CMarkupNode node, const std::wstring& what)
{
    const auto& document = *node.m_pDocument;
    const auto position = document.PositionOf(document.elements[node.m_uIndex].offset);
    build.error = what;
    build.errorPlace = PlaceOf(document.source, position.line, position.column);
    ReportFailure(document.At(node.m_uIndex, what));
}

CMarkup* CDialogBuilder::GetMarkup()
{
    return &m_xml;
}

void CDialogBuilder::GetLastErrorMessage(LPTSTR buffer, SIZE_T size) const
{
    if (m_sError.IsEmpty())
        m_xml.GetLastErrorMessage(buffer, size);
    else
        CopyText(m_sError, buffer, size);
}

void CDialogBuilder::GetLastErrorLocation(LPTSTR buffer, SIZE_T size) const
{
    if (m_sError.IsEmpty())
        m_xml.GetLastErrorLocation(buffer, size);
    else
        CopyText(m_sErrorPlace, buffer, size);
}

void CDialogBuilder::SetInstance(HINSTANCE instance)
{
    m_instance = instance;
}

} // namespace DuiLib
