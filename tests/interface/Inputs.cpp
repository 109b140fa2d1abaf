#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CEditUIOperations()
{
    return {
        OPERATION(CEditUI, CEditUI, SetMaxChar, void(UINT)),
        OPERATION(CEditUI, CEditUI, GetMaxChar, UINT()),
        OPERATION(CEditUI, CEditUI, SetReadOnly, void(bool)),
        OPERATION(CEditUI, CEditUI, IsReadOnly, bool() const),
        OPERATION(CEditUI, CEditUI, SetPasswordMode, void(bool)),
        OPERATION(CEditUI, CEditUI, IsPasswordMode, bool() const),
        OPERATION(CEditUI, CEditUI, SetPasswordChar, void(TCHAR)),
        OPERATION(CEditUI, CEditUI, GetPasswordChar, TCHAR() const),
        OPERATION(CEditUI, CEditUI, SetNumberOnly, void(bool)),
        OPERATION(CEditUI, CEditUI, IsNumberOnly, bool() const),
        OPERATION(CEditUI, CEditUI, GetWindowStyls, int() const),
        OPERATION(CEditUI, CEditUI, GetNormalImage, LPCTSTR()),
        OPERATION(CEditUI, CEditUI, SetNormalImage, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetHotImage, LPCTSTR()),
        OPERATION(CEditUI, CEditUI, SetHotImage, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetFocusedImage, LPCTSTR()),
        OPERATION(CEditUI, CEditUI, SetFocusedImage, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetDisabledImage, LPCTSTR()),
        OPERATION(CEditUI, CEditUI, SetDisabledImage, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, SetNativeEditBkColor, void(DWORD)),
        OPERATION(CEditUI, CEditUI, GetNativeEditBkColor, DWORD() const),
        OPERATION(CEditUI, CEditUI, SetNativeEditTextColor, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetNativeEditTextColor, DWORD() const),
        OPERATION(CEditUI, CEditUI, IsAutoSelAll, bool()),
        OPERATION(CEditUI, CEditUI, SetAutoSelAll, void(bool)),
        OPERATION(CEditUI, CEditUI, SetSel, void(long, long)),
        OPERATION(CEditUI, CEditUI, SetSelAll, void()),
        OPERATION(CEditUI, CEditUI, SetReplaceSel, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, SetTipValue, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetTipValue, LPCTSTR()),
        OPERATION(CEditUI, CEditUI, SetTipValueColor, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, GetTipValueColor, DWORD()),
        OPERATION(CEditUI, CEditUI, GetHWND, HWND()),
        OPERATION(CEditUI, CEditUI, SetText, void(LPCTSTR)),
        OPERATION(CEditUI, CEditUI, SetEnabled, void(bool)),
        OPERATION(CEditUI, CEditUI, SetPos, void(RECT, bool)),
        OPERATION(CEditUI, CEditUI, Move, void(SIZE, bool)),
        OPERATION(CEditUI, CEditUI, SetVisible, void(bool)),
        OPERATION(CEditUI, CEditUI, SetInternVisible, void(bool)),
        OPERATION(CEditUI, CEditUI, EstimateSize, SIZE(SIZE)),
        OPERATION(CEditUI, CEditUI, DoEvent, void(TEventUI&)),
        OPERATION(CEditUI, CEditUI, PaintStatusImage, void(HDC)),
        OPERATION(CEditUI, CEditUI, PaintText, void(HDC)),
        FUNCTION(CEditUI, CEditUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> CSliderUIOperations()
{
    return {
        OPERATION(CSliderUI, CSliderUI, GetChangeStep, int()),
        OPERATION(CSliderUI, CSliderUI, SetChangeStep, void(int)),
        OPERATION(CSliderUI, CSliderUI, SetThumbSize, void(SIZE)),
        OPERATION(CSliderUI, CSliderUI, GetThumbRect, RECT() const),
        OPERATION(CSliderUI, CSliderUI, GetThumbImage, LPCTSTR() const),
        OPERATION(CSliderUI, CSliderUI, SetThumbImage, void(LPCTSTR)),
        OPERATION(CSliderUI, CSliderUI, GetThumbHotImage, LPCTSTR() const),
        OPERATION(CSliderUI, CSliderUI, SetThumbHotImage, void(LPCTSTR)),
        OPERATION(CSliderUI, CSliderUI, GetThumbPushedImage, LPCTSTR() const),
        OPERATION(CSliderUI, CSliderUI, SetThumbPushedImage, void(LPCTSTR)),
        OPERATION(CSliderUI, CSliderUI, SetValue, void(int)),
        OPERATION(CSliderUI, CSliderUI, SetCanSendMove, void(bool)),
        OPERATION(CSliderUI, CSliderUI, GetCanSendMove, bool() const),
        FUNCTION(CSliderUI, CSliderUI, CreateControl, CControlUI * ()),
    };
}

// What may be left out of a call.
static_assert(requires(CEditUI & it) { it.SetEnabled(); });
static_assert(requires(CEditUI & it, RECT a0) { it.SetPos(a0); });
static_assert(requires(CEditUI & it, SIZE a0) { it.Move(a0); });
static_assert(requires(CEditUI & it) { it.SetVisible(); });
static_assert(requires(CEditUI & it) { it.SetInternVisible(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Inputs()
{
    return Join({CEditUIOperations(), CSliderUIOperations()});
}

} // namespace interface_test
