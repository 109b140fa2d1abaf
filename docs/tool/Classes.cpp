#include "docs/tool/Classes.h"

#include "duilib/Core/AttributeListing.h"
#include "quillet/AttributeListing.h"
#include "quillet/quillet.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>

namespace docs {

namespace {

using namespace DuiLib;
using Quillet::AttributeKind;

struct KnownClass {
    const char* name;
    const std::type_info* type;
    void (*ask)(); // an object of the class for an attribute that nobody has
};

// An abstract class is asked through one that is based on it.
template <class Control, class Asked = Control>
KnownClass Known(const char* name)
{
    return {name, &typeid(Control), [] { std::make_unique<Asked>()->SetAttribute(L"", L""); }};
}

const KnownClass kKnownClasses[] = {
    {"CPaintManagerUI", &typeid(CPaintManagerUI), &AskForWindowAttributes},
    Known<CButtonUI>("CButtonUI"),
    Known<CCheckBoxUI>("CCheckBoxUI"),
    Known<CChildLayoutUI>("CChildLayoutUI"),
    Known<CComboUI>("CComboUI"),
    Known<CContainerUI>("CContainerUI"),
    Known<CControlUI>("CControlUI"),
    Known<CEditUI>("CEditUI"),
    Known<CHorizontalLayoutUI>("CHorizontalLayoutUI"),
    Known<CImageAnimationControlUI>("CImageAnimationControlUI"),
    Known<CLabelUI>("CLabelUI"),
    Known<CListContainerElementUI>("CListContainerElementUI"),
    Known<CListElementUI, CListLabelElementUI>("CListElementUI"),
    Known<CListHeaderItemUI>("CListHeaderItemUI"),
    Known<CListHeaderUI>("CListHeaderUI"),
    Known<CListLabelElementUI>("CListLabelElementUI"),
    Known<CListTextElementUI>("CListTextElementUI"),
    Known<CListUI>("CListUI"),
    Known<CMenuElementUI>("CMenuElementUI"),
    Known<CMenuUI>("CMenuUI"),
    Known<COptionUI>("COptionUI"),
    Known<CProgressUI>("CProgressUI"),
    Known<CRoundedRectButtonUI>("CRoundedRectButtonUI"),
    Known<CScrollBarUI>("CScrollBarUI"),
    Known<CSliderUI>("CSliderUI"),
    Known<CTabLayoutUI>("CTabLayoutUI"),
    Known<CTextUI>("CTextUI"),
    Known<CTileLayoutUI>("CTileLayoutUI"),
    Known<CToggleSwitchUI>("CToggleSwitchUI"),
    Known<CTreeNodeUI>("CTreeNodeUI"),
    Known<CTreeViewUI>("CTreeViewUI"),
    Known<CVerticalLayoutUI>("CVerticalLayoutUI"),
};

struct ToldRow {
    const std::type_info* type;
    Attribute attribute;
};

std::vector<ToldRow>* toldRows = nullptr;

const char* WordOf(AttributeKind kind)
{
    switch (kind) {
    case AttributeKind::Text:
        return "text";
    case AttributeKind::Boolean:
        return "boolean";
    case AttributeKind::Number:
        return "number";
    case AttributeKind::Colour:
        return "colour";
    case AttributeKind::Rectangle:
        return "rectangle";
    case AttributeKind::Size:
        return "size";
    case AttributeKind::Image:
        return "image";
    case AttributeKind::Choice:
        return "choice";
    }
    return "";
}

void Record(const std::type_info& type, std::wstring_view name, AttributeKind kind)
{
    std::string plain; // names are ASCII
    for (const wchar_t unit : name)
        plain.push_back(static_cast<char>(unit));
    toldRows->push_back({&type, {std::move(plain), WordOf(kind)}});
}

// Hears all tables of both DLLs while it lives.
class Listening {
public:
    explicit Listening(std::vector<ToldRow>& rows)
    {
        toldRows = &rows;
        DuiLib::SetAttributeListener(&Record);
        Quillet::SetAttributeListener(&Record);
    }
    ~Listening()
    {
        DuiLib::SetAttributeListener(nullptr);
        Quillet::SetAttributeListener(nullptr);
        toldRows = nullptr;
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
};

std::string NameOf(const std::type_info& type)
{
    const auto known =
        std::ranges::find_if(kKnownClasses, [&](const auto& each) { return *each.type == type; });
    return known != std::end(kKnownClasses) ? known->name : type.name();
}

} // namespace

std::vector<ClassAttributes> AllClasses()
{
    std::vector<ClassAttributes> classes;
    for (const auto& known : kKnownClasses) {
        std::vector<ToldRow> rows;
        {
            const Listening listening(rows);
            known.ask();
        }
        ClassAttributes& made = classes.emplace_back();
        made.name = known.name;
        for (const auto& row : rows) {
            if (*row.type == *known.type)
                made.own.push_back(row.attribute);
            else if (made.base.empty())
                made.base = NameOf(*row.type);
        }
    }
    return classes;
}

} // namespace docs
