#include "Core/ControlFactory.h"

#include "Control/UIButton.h"
#include "Control/UICheckBox.h"
#include "Control/UICombo.h"
#include "Control/UIEdit.h"
#include "Control/UILabel.h"
#include "Control/UIList.h"
#include "Control/UIListElement.h"
#include "Control/UIListHeader.h"
#include "Control/UIMenu.h"
#include "Control/UIOption.h"
#include "Control/UIProgress.h"
#include "Control/UIScrollBar.h"
#include "Control/UISlider.h"
#include "Control/UIText.h"
#include "Control/UITreeView.h"
#include "Core/UIContainer.h"
#include "Core/UIControl.h"
#include "Layout/UIChildLayout.h"
#include "Layout/UIHorizontalLayout.h"
#include "Layout/UITabLayout.h"
#include "Layout/UITileLayout.h"
#include "Layout/UIVerticalLayout.h"
#include "win32/TextParse.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

namespace DuiLib {

namespace {

// The "Button" of "CButtonUI".
struct XmlName {
    std::wstring_view text;
};

constexpr std::wstring_view kPrefix = L"C";
constexpr std::wstring_view kSuffix = L"UI";

// Texts that differ in case only have one hash. Fed in pieces, so that the name in a skin need not
// be put together with prefix and suffix.
class NameHash {
public:
    NameHash& Add(std::wstring_view text)
    {
        for (const wchar_t ch : text)
            m_hash = Quillet::Text::HashStep(m_hash, Quillet::Text::LowerCase(ch));
        return *this;
    }
    std::size_t Value() const { return m_hash; }

private:
    std::uint32_t m_hash = Quillet::Text::kHashSeed;
};

struct ClassNameHash {
    using is_transparent = void;

    std::size_t operator()(std::wstring_view name) const { return NameHash().Add(name).Value(); }
    std::size_t operator()(XmlName name) const
    {
        return NameHash().Add(kPrefix).Add(name.text).Add(kSuffix).Value();
    }
};

struct ClassNameEqual {
    using is_transparent = void;

    bool operator()(std::wstring_view left, std::wstring_view right) const
    {
        return Quillet::Text::EqualsNoCase(left, right);
    }
    bool operator()(std::wstring_view className, XmlName name) const
    {
        return className.size() == kPrefix.size() + name.text.size() + kSuffix.size() &&
               Quillet::Text::EqualsNoCase(className.substr(0, kPrefix.size()), kPrefix) &&
               Quillet::Text::EqualsNoCase(className.substr(kPrefix.size(), name.text.size()),
                                           name.text) &&
               Quillet::Text::EqualsNoCase(className.substr(kPrefix.size() + name.text.size()),
                                           kSuffix);
    }
    bool operator()(XmlName name, std::wstring_view className) const
    {
        return (*this)(className, name);
    }
};

template <class Control>
CControlUI* Make()
{
    return new Control;
}

struct KnownClass {
    const wchar_t* name;
    CreateClass create;
};

constexpr KnownClass kKnownClasses[] = {
    {L"CBoxUI", &Make<CContainerUI>},
    {L"CButtonUI", &Make<CButtonUI>},
    {L"CCheckBoxUI", &Make<CCheckBoxUI>},
    {L"CChildBoxUI", &Make<CChildLayoutUI>},
    {L"CChildLayoutUI", &Make<CChildLayoutUI>},
    {L"CComboUI", &Make<CComboUI>},
    {L"CContainerUI", &Make<CContainerUI>},
    {L"CControlUI", &Make<CControlUI>},
    {L"CEditUI", &Make<CEditUI>},
    {L"CHBoxUI", &Make<CHorizontalLayoutUI>},
    {L"CHorizontalLayoutUI", &Make<CHorizontalLayoutUI>},
    {L"CLabelUI", &Make<CLabelUI>},
    {L"CListContainerElementUI", &Make<CListContainerElementUI>},
    {L"CListHeaderItemUI", &Make<CListHeaderItemUI>},
    {L"CListHeaderUI", &Make<CListHeaderUI>},
    {L"CListLabelElementUI", &Make<CListLabelElementUI>},
    {L"CListTextElementUI", &Make<CListTextElementUI>},
    {L"CListUI", &Make<CListUI>},
    {L"CMenuElementUI", &Make<CMenuElementUI>},
    {L"CMenuUI", &Make<CMenuUI>},
    {L"COptionUI", &Make<COptionUI>},
    {L"CProgressUI", &Make<CProgressUI>},
    {L"CScrollBarUI", &Make<CScrollBarUI>},
    {L"CSliderUI", &Make<CSliderUI>},
    {L"CTabBoxUI", &Make<CTabLayoutUI>},
    {L"CTabLayoutUI", &Make<CTabLayoutUI>},
    {L"CTextUI", &Make<CTextUI>},
    {L"CTileBoxUI", &Make<CTileLayoutUI>},
    {L"CTileLayoutUI", &Make<CTileLayoutUI>},
    {L"CTreeNodeUI", &Make<CTreeNodeUI>},
    {L"CTreeViewUI", &Make<CTreeViewUI>},
    {L"CVBoxUI", &Make<CVerticalLayoutUI>},
    {L"CVerticalLayoutUI", &Make<CVerticalLayoutUI>},
};

CControlFactory* g_factory = nullptr;

} // namespace

struct CControlFactory::Classes {
    std::unordered_map<std::wstring, CreateClass, ClassNameHash, ClassNameEqual> byName;
};

CControlFactory::CControlFactory() : m_pClasses(std::make_unique<Classes>())
{
    for (const auto& known : kKnownClasses)
        m_pClasses->byName.emplace(known.name, known.create);
}

CControlFactory::~CControlFactory() = default;

CControlFactory* CControlFactory::GetInstance()
{
    if (g_factory == nullptr)
        g_factory = new CControlFactory;
    return g_factory;
}

void CControlFactory::Release()
{
    g_factory = nullptr;
    delete this;
}

CControlUI* CControlFactory::CreateControl(CDuiString className)
{
    const auto& classes = m_pClasses->byName;
    const auto found = classes.find(std::wstring_view(className.GetData()));
    return found != classes.end() ? found->second() : nullptr;
}

void CControlFactory::RegistControl(CDuiString className, CreateClass create)
{
    if (!className.IsEmpty() && create != nullptr)
        m_pClasses->byName.insert_or_assign(className.GetData(), create);
}

CControlUI* CControlFactory::CreateByXmlName(std::wstring_view name)
{
    const auto& classes = m_pClasses->byName;
    const auto found = classes.find(XmlName{name});
    return found != classes.end() ? found->second() : nullptr;
}

} // namespace DuiLib
