#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

struct CLabelUIProtected : CLabelUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CLabelUI, CLabelUIProtected, m_dwTextColor, DWORD),
            MEMBER(CLabelUI, CLabelUIProtected, m_dwDisabledTextColor, DWORD),
            MEMBER(CLabelUI, CLabelUIProtected, m_iFont, int),
            MEMBER(CLabelUI, CLabelUIProtected, m_uTextStyle, UINT),
            MEMBER(CLabelUI, CLabelUIProtected, m_rcTextPadding, RECT),
            MEMBER(CLabelUI, CLabelUIProtected, m_bShowHtml, bool),
            MEMBER(CLabelUI, CLabelUIProtected, m_bAutoCalcWidth, bool),
            MEMBER(CLabelUI, CLabelUIProtected, m_bAutoCalcHeight, bool),
            MEMBER(CLabelUI, CLabelUIProtected, m_szAvailableLast, SIZE),
            MEMBER(CLabelUI, CLabelUIProtected, m_cxyFixedLast, SIZE),
            MEMBER(CLabelUI, CLabelUIProtected, m_bNeedEstimateSize, bool),
        };
    }
};

std::vector<Declaration> CLabelUIOperations()
{
    return {
        OPERATION(CLabelUI, CLabelUI, GetControlFlags, UINT() const),
        OPERATION(CLabelUI, CLabelUI, SetTextStyle, void(UINT)),
        OPERATION(CLabelUI, CLabelUI, GetTextStyle, UINT() const),
        OPERATION(CLabelUI, CLabelUI, SetTextColor, void(DWORD)),
        OPERATION(CLabelUI, CLabelUI, GetTextColor, DWORD() const),
        OPERATION(CLabelUI, CLabelUI, SetDisabledTextColor, void(DWORD)),
        OPERATION(CLabelUI, CLabelUI, GetDisabledTextColor, DWORD() const),
        OPERATION(CLabelUI, CLabelUI, SetFont, void(int)),
        OPERATION(CLabelUI, CLabelUI, GetFont, int() const),
        OPERATION(CLabelUI, CLabelUI, GetTextPadding, RECT() const),
        OPERATION(CLabelUI, CLabelUI, SetTextPadding, void(RECT)),
        OPERATION(CLabelUI, CLabelUI, IsShowHtml, bool()),
        OPERATION(CLabelUI, CLabelUI, SetShowHtml, void(bool)),
        OPERATION(CLabelUI, CLabelUI, GetAutoCalcWidth, bool() const),
        OPERATION(CLabelUI, CLabelUI, SetAutoCalcWidth, void(bool)),
        OPERATION(CLabelUI, CLabelUI, GetAutoCalcHeight, bool() const),
        OPERATION(CLabelUI, CLabelUI, SetAutoCalcHeight, void(bool)),
        OPERATION(CLabelUI, CLabelUI, SetText, void(LPCTSTR)),
        OPERATION(CLabelUI, CLabelUI, EstimateSize, SIZE(SIZE)),
        OPERATION(CLabelUI, CLabelUI, DoEvent, void(TEventUI&)),
        OPERATION(CLabelUI, CLabelUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        OPERATION(CLabelUI, CLabelUI, PaintText, void(HDC)),
        FUNCTION(CLabelUI, CLabelUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CLabelUIOverrides : CLabelUI {
    bool GetAutoCalcWidth() const override;
    void SetAutoCalcWidth(bool) override;
    bool GetAutoCalcHeight() const override;
    void SetAutoCalcHeight(bool) override;
    void SetText(LPCTSTR) override;
};

std::vector<Declaration> CTextUIOperations()
{
    return {
        OPERATION(CTextUI, CTextUI, GetLinkContent, CDuiString * (int)),
        OPERATION(CTextUI, CTextUI, GetControlFlags, UINT() const),
        OPERATION(CTextUI, CTextUI, DoEvent, void(TEventUI&)),
        OPERATION(CTextUI, CTextUI, EstimateSize, SIZE(SIZE)),
        OPERATION(CTextUI, CTextUI, PaintText, void(HDC)),
        FUNCTION(CTextUI, CTextUI, CreateControl, CControlUI * ()),
    };
}

struct CButtonUIProtected : CButtonUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CButtonUI, CButtonUIProtected, m_uButtonState, UINT),
            MEMBER(CButtonUI, CButtonUIProtected, m_iHotFont, int),
            MEMBER(CButtonUI, CButtonUIProtected, m_iPushedFont, int),
            MEMBER(CButtonUI, CButtonUIProtected, m_iFocusedFont, int),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwHotBkColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwPushedBkColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwDisabledBkColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwHotTextColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwPushedTextColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwFocusedTextColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwHotBorderColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwPushedBorderColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_dwDisabledBorderColor, DWORD),
            MEMBER(CButtonUI, CButtonUIProtected, m_sNormalImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sHotImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sHotForeImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sPushedImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sPushedForeImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sFocusedImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_sDisabledImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_nStateCount, int),
            MEMBER(CButtonUI, CButtonUIProtected, m_sStateImage, CDuiString),
            MEMBER(CButtonUI, CButtonUIProtected, m_iBindTabIndex, int),
            MEMBER(CButtonUI, CButtonUIProtected, m_sBindTabLayoutName, CDuiString),
        };
    }
};

std::vector<Declaration> CButtonUIOperations()
{
    return {
        OPERATION(CButtonUI, CButtonUI, GetControlFlags, UINT() const),
        OPERATION(CButtonUI, CButtonUI, Activate, bool()),
        OPERATION(CButtonUI, CButtonUI, SetEnabled, void(bool)),
        OPERATION(CButtonUI, CButtonUI, DoEvent, void(TEventUI&)),
        OPERATION(CButtonUI, CButtonUI, GetNormalImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetNormalImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetHotImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetHotImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetPushedImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetPushedImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetFocusedImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetFocusedImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetDisabledImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetDisabledImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetHotForeImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetHotForeImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetPushedForeImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetPushedForeImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, GetStateImage, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetStateImage, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, SetStateCount, void(int)),
        OPERATION(CButtonUI, CButtonUI, GetStateCount, int() const),
        OPERATION(CButtonUI, CButtonUI, BindTabIndex, void(int)),
        OPERATION(CButtonUI, CButtonUI, BindTabLayoutName, void(LPCTSTR)),
        OPERATION(CButtonUI, CButtonUI, BindTriggerTabSel, void(int)),
        OPERATION(CButtonUI, CButtonUI, RemoveBindTabIndex, void()),
        OPERATION(CButtonUI, CButtonUI, GetBindTabLayoutIndex, int()),
        OPERATION(CButtonUI, CButtonUI, GetBindTabLayoutName, LPCTSTR()),
        OPERATION(CButtonUI, CButtonUI, SetHotFont, void(int)),
        OPERATION(CButtonUI, CButtonUI, GetHotFont, int() const),
        OPERATION(CButtonUI, CButtonUI, SetPushedFont, void(int)),
        OPERATION(CButtonUI, CButtonUI, GetPushedFont, int() const),
        OPERATION(CButtonUI, CButtonUI, SetFocusedFont, void(int)),
        OPERATION(CButtonUI, CButtonUI, GetFocusedFont, int() const),
        OPERATION(CButtonUI, CButtonUI, SetHotBkColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetHotBkColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetPushedBkColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetPushedBkColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetDisabledBkColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetDisabledBkColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetHotTextColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetHotTextColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetPushedTextColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetPushedTextColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetFocusedTextColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetFocusedTextColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetHotBorderColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetHotBorderColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetPushedBorderColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetPushedBorderColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, SetDisabledBorderColor, void(DWORD)),
        OPERATION(CButtonUI, CButtonUI, GetDisabledBorderColor, DWORD() const),
        OPERATION(CButtonUI, CButtonUI, PaintText, void(HDC)),
        OPERATION(CButtonUI, CButtonUI, PaintBkColor, void(HDC)),
        OPERATION(CButtonUI, CButtonUI, PaintStatusImage, void(HDC)),
        OPERATION(CButtonUI, CButtonUI, PaintBorder, void(HDC)),
        OPERATION(CButtonUI, CButtonUI, PaintForeImage, void(HDC)),
        OPERATION(
            CButtonUI, CButtonUI, DrawBorder,
            void(HDC, const RECT&, const DWORD&, const int&, const RECT&, const SIZE&, const int&)),
        FUNCTION(CButtonUI, CButtonUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CButtonUIOverrides : CButtonUI {
    LPCTSTR GetNormalImage() override;
    void SetNormalImage(LPCTSTR) override;
    LPCTSTR GetHotImage() override;
    void SetHotImage(LPCTSTR) override;
    LPCTSTR GetPushedImage() override;
    void SetPushedImage(LPCTSTR) override;
    LPCTSTR GetFocusedImage() override;
    void SetFocusedImage(LPCTSTR) override;
    LPCTSTR GetDisabledImage() override;
    void SetDisabledImage(LPCTSTR) override;
    LPCTSTR GetHotForeImage() override;
    void SetHotForeImage(LPCTSTR) override;
    LPCTSTR GetPushedForeImage() override;
    void SetPushedForeImage(LPCTSTR) override;
    LPCTSTR GetStateImage() override;
    void SetStateImage(LPCTSTR) override;
};

struct COptionUIProtected : COptionUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(COptionUI, COptionUIProtected, m_bSelected, bool),
            MEMBER(COptionUI, COptionUIProtected, m_sGroupName, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_sGroupType, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_iSelectedFont, int),
            MEMBER(COptionUI, COptionUIProtected, m_dwSelectedBkColor, DWORD),
            MEMBER(COptionUI, COptionUIProtected, m_dwSelectedTextColor, DWORD),
            MEMBER(COptionUI, COptionUIProtected, m_sSelectedImage, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_sSelectedHotImage, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_sSelectedPushedImage, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_sSelectedForeImage, CDuiString),
            MEMBER(COptionUI, COptionUIProtected, m_nSelectedStateCount, int),
            MEMBER(COptionUI, COptionUIProtected, m_sSelectedStateImage, CDuiString),
        };
    }
};

std::vector<Declaration> COptionUIOperations()
{
    return {
        OPERATION(COptionUI, COptionUI, SetManager, void(CPaintManagerUI*, CControlUI*, bool)),
        OPERATION(COptionUI, COptionUI, Activate, bool()),
        OPERATION(COptionUI, COptionUI, GetSelectedImage, LPCTSTR()),
        OPERATION(COptionUI, COptionUI, SetSelectedImage, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, GetSelectedHotImage, LPCTSTR()),
        OPERATION(COptionUI, COptionUI, SetSelectedHotImage, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, GetSelectedPushedImage, LPCTSTR()),
        OPERATION(COptionUI, COptionUI, SetSelectedPushedImage, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, GetSelectedForedImage, LPCTSTR()),
        OPERATION(COptionUI, COptionUI, SetSelectedForedImage, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, SetSelectedTextColor, void(DWORD)),
        OPERATION(COptionUI, COptionUI, GetSelectedTextColor, DWORD()),
        OPERATION(COptionUI, COptionUI, SetSelectedBkColor, void(DWORD)),
        OPERATION(COptionUI, COptionUI, GetSelectBkColor, DWORD()),
        OPERATION(COptionUI, COptionUI, SetSelectedStateCount, void(int)),
        OPERATION(COptionUI, COptionUI, GetSelectedStateCount, int() const),
        OPERATION(COptionUI, COptionUI, GetSelectedStateImage, LPCTSTR()),
        OPERATION(COptionUI, COptionUI, SetSelectedStateImage, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, SetSelectedFont, void(int)),
        OPERATION(COptionUI, COptionUI, GetSelectedFont, int() const),
        OPERATION(COptionUI, COptionUI, GetGroup, LPCTSTR() const),
        OPERATION(COptionUI, COptionUI, SetGroup, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, GetGroupType, LPCTSTR() const),
        OPERATION(COptionUI, COptionUI, SetGroupType, void(LPCTSTR)),
        OPERATION(COptionUI, COptionUI, IsSelected, bool() const),
        OPERATION(COptionUI, COptionUI, Selected, void(bool, bool)),
        OPERATION(COptionUI, COptionUI, PaintBkColor, void(HDC)),
        OPERATION(COptionUI, COptionUI, PaintStatusImage, void(HDC)),
        OPERATION(COptionUI, COptionUI, PaintForeImage, void(HDC)),
        OPERATION(COptionUI, COptionUI, PaintText, void(HDC)),
        FUNCTION(COptionUI, COptionUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct COptionUIOverrides : COptionUI {
    LPCTSTR GetSelectedStateImage() override;
    void SetSelectedStateImage(LPCTSTR) override;
    void Selected(bool, bool) override;
};

struct CCheckBoxUIProtected : CCheckBoxUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CCheckBoxUI, CCheckBoxUIProtected, m_bAutoCheck, bool),
        };
    }
};

std::vector<Declaration> CCheckBoxUIOperations()
{
    return {
        OPERATION(CCheckBoxUI, CCheckBoxUI, SetCheck, void(bool)),
        OPERATION(CCheckBoxUI, CCheckBoxUI, GetCheck, bool() const),
        OPERATION(CCheckBoxUI, CCheckBoxUI, SetAutoCheck, void(bool)),
        FUNCTION(CCheckBoxUI, CCheckBoxUI, CreateControl, CControlUI * ()),
    };
}

struct CProgressUIProtected : CProgressUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CProgressUI, CProgressUIProtected, m_bShowText, bool),
            MEMBER(CProgressUI, CProgressUIProtected, m_bHorizontal, bool),
            MEMBER(CProgressUI, CProgressUIProtected, m_bStretchForeImage, bool),
            MEMBER(CProgressUI, CProgressUIProtected, m_nMax, int),
            MEMBER(CProgressUI, CProgressUIProtected, m_nMin, int),
            MEMBER(CProgressUI, CProgressUIProtected, m_nValue, int),
            MEMBER(CProgressUI, CProgressUIProtected, m_sForeImageModify, CDuiString),
        };
    }
};

std::vector<Declaration> CProgressUIOperations()
{
    return {
        OPERATION(CProgressUI, CProgressUI, IsShowText, bool()),
        OPERATION(CProgressUI, CProgressUI, SetShowText, void(bool)),
        OPERATION(CProgressUI, CProgressUI, UpdateText, void()),
        OPERATION(CProgressUI, CProgressUI, IsHorizontal, bool()),
        OPERATION(CProgressUI, CProgressUI, SetHorizontal, void(bool)),
        OPERATION(CProgressUI, CProgressUI, IsStretchForeImage, bool()),
        OPERATION(CProgressUI, CProgressUI, SetStretchForeImage, void(bool)),
        OPERATION(CProgressUI, CProgressUI, GetMinValue, int() const),
        OPERATION(CProgressUI, CProgressUI, SetMinValue, void(int)),
        OPERATION(CProgressUI, CProgressUI, GetMaxValue, int() const),
        OPERATION(CProgressUI, CProgressUI, SetMaxValue, void(int)),
        OPERATION(CProgressUI, CProgressUI, GetValue, int() const),
        OPERATION(CProgressUI, CProgressUI, SetValue, void(int)),
        OPERATION(CProgressUI, CProgressUI, PaintForeColor, void(HDC)),
        OPERATION(CProgressUI, CProgressUI, PaintForeImage, void(HDC)),
        FUNCTION(CProgressUI, CProgressUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CProgressUIOverrides : CProgressUI {
    void UpdateText() override;
};

struct CScrollBarUIProtected : CScrollBarUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_bShowButton1, bool),
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_rcButton1, RECT),
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_uButton1State, UINT),
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_rcThumb, RECT),
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_uThumbState, UINT),
            MEMBER(CScrollBarUI, CScrollBarUIProtected, m_sImageModify, CDuiString),
        };
    }
};

std::vector<Declaration> CScrollBarUIOperations()
{
    return {
        OPERATION(CScrollBarUI, CScrollBarUI, GetOwner, CContainerUI * () const),
        OPERATION(CScrollBarUI, CScrollBarUI, SetOwner, void(CContainerUI*)),
        OPERATION(CScrollBarUI, CScrollBarUI, SetVisible, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, SetEnabled, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, SetFocus, void()),
        OPERATION(CScrollBarUI, CScrollBarUI, IsHorizontal, bool()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetHorizontal, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetScrollRange, int() const),
        OPERATION(CScrollBarUI, CScrollBarUI, SetScrollRange, void(int)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetScrollPos, int() const),
        OPERATION(CScrollBarUI, CScrollBarUI, SetScrollPos, void(int)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetLineSize, int() const),
        OPERATION(CScrollBarUI, CScrollBarUI, SetLineSize, void(int)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetShowButton1, bool()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetShowButton1, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton1NormalImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton1NormalImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton1HotImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton1HotImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton1PushedImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton1PushedImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton1DisabledImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton1DisabledImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetShowButton2, bool()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetShowButton2, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton2NormalImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton2NormalImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton2HotImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton2HotImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton2PushedImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton2PushedImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetButton2DisabledImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetButton2DisabledImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetThumbNormalImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetThumbNormalImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetThumbHotImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetThumbHotImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetThumbPushedImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetThumbPushedImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetThumbDisabledImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetThumbDisabledImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetRailNormalImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetRailNormalImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetRailHotImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetRailHotImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetRailPushedImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetRailPushedImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetRailDisabledImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetRailDisabledImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetBkNormalImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetBkNormalImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetBkHotImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetBkHotImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetBkPushedImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetBkPushedImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetBkDisabledImage, LPCTSTR()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetBkDisabledImage, void(LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, GetShow, bool()),
        OPERATION(CScrollBarUI, CScrollBarUI, SetShow, void(bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, SetPos, void(RECT, bool)),
        OPERATION(CScrollBarUI, CScrollBarUI, DoEvent, void(TEventUI&)),
        OPERATION(CScrollBarUI, CScrollBarUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        OPERATION(CScrollBarUI, CScrollBarUI, DoPaint, bool(HDC, const RECT&, CControlUI*)),
        OPERATION(CScrollBarUI, CScrollBarUI, PaintBk, void(HDC)),
        OPERATION(CScrollBarUI, CScrollBarUI, PaintButton1, void(HDC)),
        OPERATION(CScrollBarUI, CScrollBarUI, PaintButton2, void(HDC)),
        OPERATION(CScrollBarUI, CScrollBarUI, PaintThumb, void(HDC)),
        OPERATION(CScrollBarUI, CScrollBarUI, PaintRail, void(HDC)),
        FUNCTION(CScrollBarUI, CScrollBarUI, CreateControl, CControlUI * ()),
    };
}

// What may be left out of a call.
static_assert(requires(CLabelUI & it) { it.SetShowHtml(); });
static_assert(requires(CButtonUI & it) { it.SetEnabled(); });
static_assert(requires(CButtonUI & it) { it.BindTriggerTabSel(); });
static_assert(requires(COptionUI & it, CPaintManagerUI* a0, CControlUI* a1) {
    it.SetManager(a0, a1);
});
static_assert(requires(COptionUI & it) { it.SetGroup(); });
static_assert(requires(COptionUI & it) { it.SetGroupType(); });
static_assert(requires(COptionUI & it, bool a0) { it.Selected(a0); });
static_assert(requires(CProgressUI & it) { it.SetShowText(); });
static_assert(requires(CProgressUI & it) { it.SetHorizontal(); });
static_assert(requires(CProgressUI & it) { it.SetStretchForeImage(); });
static_assert(requires(CScrollBarUI & it) { it.SetVisible(); });
static_assert(requires(CScrollBarUI & it) { it.SetEnabled(); });
static_assert(requires(CScrollBarUI & it) { it.SetHorizontal(); });
static_assert(requires(CScrollBarUI & it, RECT a0) { it.SetPos(a0); });

} // namespace

namespace interface_test {

std::vector<Declaration> Labels()
{
    return Join({CLabelUIProtected::List(), CLabelUIOperations(), CTextUIOperations(),
                 CButtonUIProtected::List(), CButtonUIOperations(), COptionUIProtected::List(),
                 COptionUIOperations(), CCheckBoxUIProtected::List(), CCheckBoxUIOperations(),
                 CProgressUIProtected::List(), CProgressUIOperations(),
                 CScrollBarUIProtected::List(), CScrollBarUIOperations()});
}

} // namespace interface_test
