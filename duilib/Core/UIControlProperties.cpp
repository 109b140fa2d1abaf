#include "Core/UIControl.h"

#include "Core/UIManager.h"
#include "Core/UIResourceManager.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <utility>

// The values of a control: what a setter stores, a getter reads and, where it is a length, scales.
namespace DuiLib {

namespace {

constexpr double kLargestFraction = 100.0; // of the container

double Tidy(double fraction)
{
    return std::isfinite(fraction) ? std::clamp(fraction, -kLargestFraction, kLargestFraction) : 0;
}

bool Equal(const SIZE& first, const SIZE& second)
{
    return first.cx == second.cx && first.cy == second.cy;
}

// The text with every `mark` replaced; most texts have none.
void AssignReplacing(CDuiString& target, LPCTSTR text, LPCTSTR mark, LPCTSTR replacement)
{
    target = text;
    if (std::wcsstr(target, mark) != nullptr)
        target.Replace(mark, replacement);
}

} // namespace

CDuiString CControlUI::GetName() const
{
    return m_sName;
}

void CControlUI::SetName(LPCTSTR name)
{
    m_sName = name;
}

LPCTSTR CControlUI::GetClass() const
{
    return L"ControlUI";
}

CDuiString CControlUI::GetText() const
{
    return m_bResourceText ? CResourceManager::GetInstance()->GetText(m_sText) : m_sText;
}

void CControlUI::SetText(LPCTSTR text)
{
    CDuiString converted;
    AssignReplacing(converted, text, L"{\\n}", L"\n");
    if (m_sText == converted)
        return;
    m_sText = std::move(converted);
    Invalidate();
}

bool CControlUI::IsResourceText() const
{
    return m_bResourceText;
}

void CControlUI::SetResourceText(bool resource)
{
    SetLook(m_bResourceText, resource);
}

bool CControlUI::IsDragEnabled() const
{
    return m_bDragEnabled;
}

void CControlUI::SetDragEnable(bool enable)
{
    m_bDragEnabled = enable;
}

bool CControlUI::IsDropEnabled() const
{
    return m_bDropEnabled;
}

void CControlUI::SetDropEnable(bool enable)
{
    m_bDropEnabled = enable;
}

bool CControlUI::IsRichEvent() const
{
    return m_bRichEvent;
}

void CControlUI::SetRichEvent(bool enable)
{
    m_bRichEvent = enable;
}

void CControlUI::Move(SIZE offset, bool invalidate)
{
    m_cXY.cx = ClampLength(m_cXY.cx + ClampLength(offset.cx));
    m_cXY.cy = ClampLength(m_cXY.cy + ClampLength(offset.cy));
    NeedParentUpdate();
    if (invalidate)
        Invalidate();
}

int CControlUI::GetWidth() const
{
    return m_rcItem.right - m_rcItem.left;
}

int CControlUI::GetHeight() const
{
    return m_rcItem.bottom - m_rcItem.top;
}

int CControlUI::GetX() const
{
    return m_rcItem.left;
}

int CControlUI::GetY() const
{
    return m_rcItem.top;
}

RECT CControlUI::GetPadding() const
{
    return ScaleLength(m_rcPadding);
}

void CControlUI::SetPadding(RECT padding)
{
    padding = ClampLength(padding);
    if (::EqualRect(&m_rcPadding, &padding))
        return;
    m_rcPadding = padding;
    NeedParentUpdate();
}

SIZE CControlUI::GetFixedXY() const
{
    return ScaleLength(m_cXY);
}

void CControlUI::SetFixedXY(SIZE position)
{
    position = ClampLength(position);
    if (Equal(m_cXY, position))
        return;
    m_cXY = position;
    NeedParentUpdate();
}

SIZE CControlUI::GetFixedSize() const
{
    return ScaleLength(m_cxyFixed);
}

int CControlUI::GetFixedWidth() const
{
    return ScaleLength(m_cxyFixed.cx);
}

void CControlUI::SetFixedWidth(int width)
{
    SetLength(m_cxyFixed.cx, width);
}

int CControlUI::GetFixedHeight() const
{
    return ScaleLength(m_cxyFixed.cy);
}

void CControlUI::SetFixedHeight(int height)
{
    SetLength(m_cxyFixed.cy, height);
}

int CControlUI::GetMinWidth() const
{
    return ScaleLength(m_cxyMin.cx);
}

void CControlUI::SetMinWidth(int width)
{
    SetLength(m_cxyMin.cx, width);
}

int CControlUI::GetMaxWidth() const
{
    return ScaleLength(m_cxyMax.cx);
}

void CControlUI::SetMaxWidth(int width)
{
    SetLength(m_cxyMax.cx, width);
}

int CControlUI::GetMinHeight() const
{
    return ScaleLength(m_cxyMin.cy);
}

void CControlUI::SetMinHeight(int height)
{
    SetLength(m_cxyMin.cy, height);
}

int CControlUI::GetMaxHeight() const
{
    return ScaleLength(m_cxyMax.cy);
}

void CControlUI::SetMaxHeight(int height)
{
    SetLength(m_cxyMax.cy, height);
}

TPercentInfo CControlUI::GetFloatPercent() const
{
    return m_piFloatPercent;
}

void CControlUI::SetFloatPercent(TPercentInfo percent)
{
    m_piFloatPercent = {Tidy(percent.left), Tidy(percent.top), Tidy(percent.right),
                        Tidy(percent.bottom)};
    NeedParentUpdate();
}

void CControlUI::SetFloatAlign(UINT align)
{
    m_uFloatAlign = align;
    NeedParentUpdate();
}

UINT CControlUI::GetFloatAlign() const
{
    return m_uFloatAlign;
}

CDuiString CControlUI::GetToolTip() const
{
    return m_sToolTip;
}

void CControlUI::SetToolTip(LPCTSTR text)
{
    AssignReplacing(m_sToolTip, text, L"<n>", L"\r\n");
}

void CControlUI::SetToolTipWidth(int width)
{
    m_nTooltipWidth = ClampLength(width);
}

int CControlUI::GetToolTipWidth(void)
{
    return ScaleLength(m_nTooltipWidth);
}

WORD CControlUI::GetCursor()
{
    return m_wCursor;
}

void CControlUI::SetCursor(WORD cursor)
{
    m_wCursor = cursor;
}

TCHAR CControlUI::GetShortcut() const
{
    return m_chShortcut;
}

void CControlUI::SetShortcut(TCHAR shortcut)
{
    m_chShortcut = shortcut;
}

bool CControlUI::IsContextMenuUsed() const
{
    return m_bMenuUsed;
}

void CControlUI::SetContextMenuUsed(bool use)
{
    m_bMenuUsed = use;
}

const CDuiString& CControlUI::GetUserData()
{
    return m_sUserData;
}

void CControlUI::SetUserData(LPCTSTR data)
{
    m_sUserData = data;
}

UINT_PTR CControlUI::GetTag() const
{
    return m_pTag;
}

void CControlUI::SetTag(UINT_PTR tag)
{
    m_pTag = tag;
}

bool CControlUI::IsEnabled() const
{
    return m_bEnabled;
}

void CControlUI::SetEnabled(bool enable)
{
    SetLook(m_bEnabled, enable);
}

bool CControlUI::IsMouseEnabled() const
{
    return m_bMouseEnabled;
}

void CControlUI::SetMouseEnabled(bool enable)
{
    m_bMouseEnabled = enable;
}

bool CControlUI::IsKeyboardEnabled() const
{
    return m_bKeyboardEnabled;
}

void CControlUI::SetKeyboardEnabled(bool enable)
{
    m_bKeyboardEnabled = enable;
}

bool CControlUI::IsFloat() const
{
    return m_bFloat;
}

void CControlUI::SetFloat(bool isFloat)
{
    if (m_bFloat == isFloat)
        return;
    m_bFloat = isFloat;
    NeedParentUpdate();
}

void CControlUI::setInstance(HINSTANCE instance)
{
    m_instance = instance;
}

LPCTSTR CControlUI::GetGradient()
{
    return m_sGradient;
}

void CControlUI::SetGradient(LPCTSTR gradient)
{
    SetLook(m_sGradient, gradient);
}

DWORD CControlUI::GetBkColor() const
{
    return m_dwBackColor;
}

void CControlUI::SetBkColor(DWORD color)
{
    SetLook(m_dwBackColor, color);
}

DWORD CControlUI::GetBkColor2() const
{
    return m_dwBackColor2;
}

void CControlUI::SetBkColor2(DWORD color)
{
    SetLook(m_dwBackColor2, color);
}

DWORD CControlUI::GetBkColor3() const
{
    return m_dwBackColor3;
}

void CControlUI::SetBkColor3(DWORD color)
{
    SetLook(m_dwBackColor3, color);
}

DWORD CControlUI::GetForeColor() const
{
    return m_dwForeColor;
}

void CControlUI::SetForeColor(DWORD color)
{
    SetLook(m_dwForeColor, color);
}

LPCTSTR CControlUI::GetBkImage()
{
    return m_sBkImage;
}

void CControlUI::SetBkImage(LPCTSTR image)
{
    SetLook(m_sBkImage, image);
}

LPCTSTR CControlUI::GetForeImage() const
{
    return m_sForeImage;
}

void CControlUI::SetForeImage(LPCTSTR image)
{
    SetLook(m_sForeImage, image);
}

DWORD CControlUI::GetFocusBorderColor() const
{
    return m_dwFocusBorderColor;
}

void CControlUI::SetFocusBorderColor(DWORD color)
{
    SetLook(m_dwFocusBorderColor, color);
}

DWORD CControlUI::GetBorderColor() const
{
    return m_dwBorderColor;
}

void CControlUI::SetBorderColor(DWORD color)
{
    SetLook(m_dwBorderColor, color);
}

bool CControlUI::IsColorHSL() const
{
    return m_bColorHSL;
}

void CControlUI::SetColorHSL(bool enable)
{
    SetLook(m_bColorHSL, enable);
}

SIZE CControlUI::GetBorderRound() const
{
    return ScaleLength(m_cxyBorderRound);
}

void CControlUI::SetBorderRound(SIZE round)
{
    round = ClampLength(round);
    if (Equal(m_cxyBorderRound, round))
        return;
    m_cxyBorderRound = round;
    Invalidate();
}

int CControlUI::GetBorderSize() const
{
    return ScaleLength(m_nBorderSize);
}

void CControlUI::SetBorderSize(int size)
{
    SetLook(m_nBorderSize, ClampLength(size));
}

RECT CControlUI::GetBorderRectSize() const
{
    return {GetLeftBorderSize(), GetTopBorderSize(), GetRightBorderSize(), GetBottomBorderSize()};
}

void CControlUI::SetBorderSize(RECT sizes)
{
    sizes = ClampLength(sizes);
    if (::EqualRect(&m_rcBorderSize, &sizes))
        return;
    m_rcBorderSize = sizes;
    Invalidate();
}

int CControlUI::GetLeftBorderSize() const
{
    return ScaleLength(m_rcBorderSize.left);
}

void CControlUI::SetLeftBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.left, ClampLength(size));
}

int CControlUI::GetTopBorderSize() const
{
    return ScaleLength(m_rcBorderSize.top);
}

void CControlUI::SetTopBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.top, ClampLength(size));
}

int CControlUI::GetRightBorderSize() const
{
    return ScaleLength(m_rcBorderSize.right);
}

void CControlUI::SetRightBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.right, ClampLength(size));
}

int CControlUI::GetBottomBorderSize() const
{
    return ScaleLength(m_rcBorderSize.bottom);
}

void CControlUI::SetBottomBorderSize(int size)
{
    SetLook<LONG>(m_rcBorderSize.bottom, ClampLength(size));
}

int CControlUI::GetBorderStyle() const
{
    return m_nBorderStyle;
}

void CControlUI::SetBorderStyle(int style)
{
    SetLook(m_nBorderStyle, style);
}

void CControlUI::SetVirtualWnd(LPCTSTR name)
{
    m_sVirtualWnd = name;
}

CDuiString CControlUI::GetVirtualWnd() const
{
    const CControlUI* control = this;
    while (control->m_sVirtualWnd.IsEmpty() && control->m_pParent != nullptr)
        control = control->m_pParent;
    return control->m_sVirtualWnd;
}

template <class Value>
void CControlUI::SetLook(Value& member, Value value)
{
    if (member == value)
        return;
    member = value;
    Invalidate();
}

void CControlUI::SetLook(CDuiString& member, LPCTSTR value)
{
    if (member == value)
        return;
    member = value;
    Invalidate();
}

void CControlUI::SetLength(LONG& member, int length)
{
    if (length < 0)
        return;
    length = ClampLength(length);
    if (member == length)
        return;
    member = length;
    NeedParentUpdate();
}

} // namespace DuiLib
