#include "Control/UIMenu.h"

#include "Control/UIListHeader.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

namespace {

using namespace Quillet::Text;

// The look of a menu whose skin says nothing.
constexpr DWORD kMenuColor = 0xFFFFFFFF;
constexpr DWORD kMenuBorderColor = 0xFFC8CDD4;
constexpr DWORD kHotElementColor = 0xFFE2EEFC;
constexpr int kMenuBorderSize = 1; // design pixels
constexpr RECT kMenuInset{1, 4, 1, 4};

bool IsMenuElement(CControlUI* control)
{
    return control != nullptr && control->GetInterface(DUI_CTR_MENUELEMENT) != nullptr;
}

} // namespace

CControlUI* CMenuUI::CreateControl()
{
    return new CMenuUI;
}

CMenuUI::CMenuUI() : m_pWindow(nullptr)
{
    GetHeader()->SetVisible(false);
    SetBkColor(kMenuColor);
    SetBorderColor(kMenuBorderColor);
    SetBorderSize(kMenuBorderSize);
    SetInset(kMenuInset);
    m_ListInfo.dwHotBkColor = kHotElementColor;
    m_ListInfo.dwDisabledBkColor = 0;
    m_ListInfo.dwDisabledTextColor = 0;
    m_ListInfo.uTextStyle = DT_VCENTER | DT_SINGLELINE;
    m_ListInfo.rcTextPadding = {};
}

UINT CMenuUI::GetListType()
{
    return LT_MENU;
}

bool CMenuUI::Add(CControlUI* control)
{
    return IsMenuElement(control) && CListUI::Add(control);
}

bool CMenuUI::AddAt(CControlUI* control, int index)
{
    return IsMenuElement(control) && CListUI::AddAt(control, index);
}

LPCTSTR CMenuUI::GetClass() const
{
    return L"MenuUI";
}

LPVOID CMenuUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_MENU))
        return static_cast<CMenuUI*>(this);
    return CListUI::GetInterface(name);
}

SIZE CMenuUI::EstimateSize(SIZE available)
{
    SIZE size = GetFixedSize();
    SIZE rows{};
    LONG gap = 0;
    for (int i = 0; i < GetCount(); ++i) {
        CControlUI& element = *GetItemAt(i);
        if (!element.IsVisible())
            continue;
        const SIZE wish = element.EstimateSize(available);
        rows.cx = std::max(rows.cx, wish.cx);
        rows.cy += wish.cy + gap;
        gap = GetChildPadding();
    }
    const RECT inset = GetInset();
    if (size.cx <= 0)
        size.cx = std::clamp<LONG>(rows.cx + inset.left + inset.right, GetMinWidth(),
                                   std::max(GetMaxWidth(), GetMinWidth()));
    if (size.cy <= 0)
        size.cy = std::clamp<LONG>(rows.cy + inset.top + inset.bottom, GetMinHeight(),
                                   std::max(GetMaxHeight(), GetMinHeight()));
    return size;
}

// A sub-menu looks like the menu that it belongs to.
void CMenuUI::InheritLook(const CMenuUI& other)
{
    m_ListInfo = other.m_ListInfo;
    m_dwBackColor = other.m_dwBackColor;
    m_dwBackColor2 = other.m_dwBackColor2;
    m_dwBackColor3 = other.m_dwBackColor3;
    m_sGradient = other.m_sGradient;
    m_sBkImage = other.m_sBkImage;
    m_dwForeColor = other.m_dwForeColor;
    m_sForeImage = other.m_sForeImage;
    m_dwBorderColor = other.m_dwBorderColor;
    m_nBorderSize = other.m_nBorderSize;
    m_nBorderStyle = other.m_nBorderStyle;
    m_rcBorderSize = other.m_rcBorderSize;
    m_cxyBorderRound = other.m_cxyBorderRound;
    m_bColorHSL = other.m_bColorHSL;
    m_instance = other.m_instance;
    SetInset(other.m_rcInset);
    if (other.m_pManager != nullptr)
        SetChildPadding(other.m_pManager->GetDPIObj()->ScaleBack(other.GetChildPadding()));
}

} // namespace DuiLib
