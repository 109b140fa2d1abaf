#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CVerticalLayoutUIOperations()
{
    return {
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, SetSepHeight, void(int)),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, GetSepHeight, int() const),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, SetSepImmMode, void(bool)),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, IsSepImmMode, bool() const),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, GetThumbRect, RECT(bool) const),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, GetControlFlags, UINT() const),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, SetPos, void(RECT, bool)),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, DoEvent, void(TEventUI&)),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, DoPostPaint, void(HDC, const RECT&)),
        OPERATION(CVerticalLayoutUI, CVerticalLayoutUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        FUNCTION(CVerticalLayoutUI, CVerticalLayoutUI, CreateControl, CControlUI * ()),
    };
}

struct CHorizontalLayoutUIProtected : CHorizontalLayoutUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CHorizontalLayoutUI, CHorizontalLayoutUIProtected, m_uButtonState, UINT),
            MEMBER(CHorizontalLayoutUI, CHorizontalLayoutUIProtected, ptLastMouse, POINT),
            MEMBER(CHorizontalLayoutUI, CHorizontalLayoutUIProtected, m_rcNewPos, RECT),
            MEMBER(CHorizontalLayoutUI, CHorizontalLayoutUIProtected, m_bImmMode, bool),
        };
    }
};

std::vector<Declaration> CHorizontalLayoutUIOperations()
{
    return {
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, SetSepWidth, void(int)),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, GetSepWidth, int() const),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, SetSepImmMode, void(bool)),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, IsSepImmMode, bool() const),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, GetThumbRect, RECT(bool) const),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, GetControlFlags, UINT() const),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, SetPos, void(RECT, bool)),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, DoEvent, void(TEventUI&)),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, DoPostPaint, void(HDC, const RECT&)),
        OPERATION(CHorizontalLayoutUI, CHorizontalLayoutUI, SetAttribute, void(LPCTSTR, LPCTSTR)),
        FUNCTION(CHorizontalLayoutUI, CHorizontalLayoutUI, CreateControl, CControlUI * ()),
    };
}

struct CTabLayoutUIProtected : CTabLayoutUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CTabLayoutUI, CTabLayoutUIProtected, m_iCurSel, int),
        };
    }
};

std::vector<Declaration> CTabLayoutUIOperations()
{
    return {
        OPERATION(CTabLayoutUI, CTabLayoutUI, Add, bool(CControlUI*)),
        OPERATION(CTabLayoutUI, CTabLayoutUI, AddAt, bool(CControlUI*, int)),
        OPERATION(CTabLayoutUI, CTabLayoutUI, Remove, bool(CControlUI*)),
        OPERATION(CTabLayoutUI, CTabLayoutUI, RemoveAll, void()),
        OPERATION(CTabLayoutUI, CTabLayoutUI, GetCurSel, int() const),
        OPERATION(CTabLayoutUI, CTabLayoutUI, SelectItem, bool(int)),
        OPERATION(CTabLayoutUI, CTabLayoutUI, SelectItem, bool(CControlUI*)),
        OPERATION(CTabLayoutUI, CTabLayoutUI, SetPos, void(RECT, bool)),
        FUNCTION(CTabLayoutUI, CTabLayoutUI, CreateControl, CControlUI * ()),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CTabLayoutUIOverrides : CTabLayoutUI {
    bool SelectItem(int) override;
    bool SelectItem(CControlUI*) override;
};

struct CTileLayoutUIProtected : CTileLayoutUI {
    static std::vector<Declaration> List()
    {
        return {
            MEMBER(CTileLayoutUI, CTileLayoutUIProtected, m_szItem, SIZE),
            MEMBER(CTileLayoutUI, CTileLayoutUIProtected, m_nColumns, int),
        };
    }
};

std::vector<Declaration> CTileLayoutUIOperations()
{
    return {
        OPERATION(CTileLayoutUI, CTileLayoutUI, GetItemSize, SIZE() const),
        OPERATION(CTileLayoutUI, CTileLayoutUI, SetItemSize, void(SIZE)),
        OPERATION(CTileLayoutUI, CTileLayoutUI, GetColumns, int() const),
        OPERATION(CTileLayoutUI, CTileLayoutUI, SetColumns, void(int)),
        OPERATION(CTileLayoutUI, CTileLayoutUI, SetPos, void(RECT, bool)),
        FUNCTION(CTileLayoutUI, CTileLayoutUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> CChildLayoutUIOperations()
{
    return {
        OPERATION(CChildLayoutUI, CChildLayoutUI, SetChildLayoutXML, void(CDuiString)),
        OPERATION(CChildLayoutUI, CChildLayoutUI, GetChildLayoutXML, CDuiString()),
        OPERATION(CChildLayoutUI, CChildLayoutUI, Init, void()),
        FUNCTION(CChildLayoutUI, CChildLayoutUI, CreateControl, CControlUI * ()),
    };
}

// What may be left out of a call.
static_assert(requires(CVerticalLayoutUI & it) { it.GetThumbRect(); });
static_assert(requires(CVerticalLayoutUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CHorizontalLayoutUI & it) { it.GetThumbRect(); });
static_assert(requires(CHorizontalLayoutUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CTabLayoutUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CTileLayoutUI & it, RECT a0) { it.SetPos(a0); });

} // namespace

namespace interface_test {

std::vector<Declaration> Layouts()
{
    return Join({CVerticalLayoutUIOperations(), CHorizontalLayoutUIProtected::List(),
                 CHorizontalLayoutUIOperations(), CTabLayoutUIProtected::List(),
                 CTabLayoutUIOperations(), CTileLayoutUIProtected::List(),
                 CTileLayoutUIOperations(), CChildLayoutUIOperations()});
}

} // namespace interface_test
