#include "Control/UIList.h"

#include "Control/TextStyle.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

// How the rows of a list look.
namespace DuiLib {

namespace {

using namespace Quillet::Text;
using namespace TextStyle;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

} // namespace

// The heights of the rows may depend on the look too.
void CListUI::LookChanged()
{
    m_pList->ForgetHeights();
    Invalidate();
}

bool CListUI::GetScrollSelect()
{
    return m_bScrollSelect;
}

void CListUI::SetScrollSelect(bool select)
{
    m_bScrollSelect = select;
}

IListCallbackUI* CListUI::GetTextCallback() const
{
    return m_pCallback;
}

void CListUI::SetTextCallback(IListCallbackUI* callback)
{
    m_pCallback = callback;
    LookChanged();
}

void CListUI::SetItemFont(int index)
{
    m_ListInfo.nFont = index;
    LookChanged();
}

void CListUI::SetItemTextStyle(UINT style)
{
    m_ListInfo.uTextStyle = style;
    LookChanged();
}

void CListUI::SetItemTextPadding(RECT padding)
{
    m_ListInfo.rcTextPadding = ClampLength(padding);
    LookChanged();
}

RECT CListUI::GetItemTextPadding() const
{
    return ScaleLength(m_ListInfo.rcTextPadding);
}

void CListUI::SetItemShowHtml(bool show)
{
    if (m_ListInfo.bShowHtml == show)
        return;
    m_ListInfo.bShowHtml = show;
    LookChanged();
}

bool CListUI::IsItemShowHtml()
{
    return m_ListInfo.bShowHtml;
}

void CListUI::SetItemRSelected(bool select)
{
    m_ListInfo.bRSelected = select;
}

bool CListUI::IsItemRSelected()
{
    return m_ListInfo.bRSelected;
}

void CListUI::SetAlternateBk(bool alternate)
{
    m_ListInfo.bAlternateBk = alternate;
    Invalidate();
}

bool CListUI::IsAlternateBk() const
{
    return m_ListInfo.bAlternateBk;
}

void CListUI::SetItemShowRowLine(bool show)
{
    m_ListInfo.bShowRowLine = show;
    Invalidate();
}

void CListUI::SetItemShowColumnLine(bool show)
{
    m_ListInfo.bShowColumnLine = show;
    Invalidate();
}

void CListUI::SetItemTextColor(DWORD color)
{
    m_ListInfo.dwTextColor = color;
    Invalidate();
}

DWORD CListUI::GetItemTextColor() const
{
    return m_ListInfo.dwTextColor;
}

void CListUI::SetItemBkColor(DWORD color)
{
    m_ListInfo.dwBkColor = color;
    Invalidate();
}

DWORD CListUI::GetItemBkColor() const
{
    return m_ListInfo.dwBkColor;
}

void CListUI::SetSelectedItemTextColor(DWORD color)
{
    m_ListInfo.dwSelectedTextColor = color;
    Invalidate();
}

DWORD CListUI::GetSelectedItemTextColor() const
{
    return m_ListInfo.dwSelectedTextColor;
}

void CListUI::SetSelectedItemBkColor(DWORD color)
{
    m_ListInfo.dwSelectedBkColor = color;
    Invalidate();
}

DWORD CListUI::GetSelectedItemBkColor() const
{
    return m_ListInfo.dwSelectedBkColor;
}

void CListUI::SetHotItemTextColor(DWORD color)
{
    m_ListInfo.dwHotTextColor = color;
    Invalidate();
}

DWORD CListUI::GetHotItemTextColor() const
{
    return m_ListInfo.dwHotTextColor;
}

void CListUI::SetHotItemBkColor(DWORD color)
{
    m_ListInfo.dwHotBkColor = color;
    Invalidate();
}

DWORD CListUI::GetHotItemBkColor() const
{
    return m_ListInfo.dwHotBkColor;
}

void CListUI::SetDisabledItemTextColor(DWORD color)
{
    m_ListInfo.dwDisabledTextColor = color;
    Invalidate();
}

DWORD CListUI::GetDisabledItemTextColor() const
{
    return m_ListInfo.dwDisabledTextColor;
}

void CListUI::SetDisabledItemBkColor(DWORD color)
{
    m_ListInfo.dwDisabledBkColor = color;
    Invalidate();
}

DWORD CListUI::GetDisabledItemBkColor() const
{
    return m_ListInfo.dwDisabledBkColor;
}

void CListUI::SetItemLineColor(DWORD color)
{
    m_ListInfo.dwLineColor = color;
    Invalidate();
}

DWORD CListUI::GetItemLineColor() const
{
    return m_ListInfo.dwLineColor;
}

void CListUI::SetItemBkImage(LPCTSTR image)
{
    m_ListInfo.sBkImage = image;
    Invalidate();
}

LPCTSTR CListUI::GetItemBkImage() const
{
    return m_ListInfo.sBkImage;
}

void CListUI::SetSelectedItemImage(LPCTSTR image)
{
    m_ListInfo.sSelectedImage = image;
    Invalidate();
}

LPCTSTR CListUI::GetSelectedItemImage() const
{
    return m_ListInfo.sSelectedImage;
}

void CListUI::SetHotItemImage(LPCTSTR image)
{
    m_ListInfo.sHotImage = image;
    Invalidate();
}

LPCTSTR CListUI::GetHotItemImage() const
{
    return m_ListInfo.sHotImage;
}

void CListUI::SetDisabledItemImage(LPCTSTR image)
{
    m_ListInfo.sDisabledImage = image;
    Invalidate();
}

LPCTSTR CListUI::GetDisabledItemImage() const
{
    return m_ListInfo.sDisabledImage;
}

// Attributes

void CListUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CListUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"header", AttributeKind::Choice,
         [](Self& self, LPCTSTR v) { self.m_pHeader->SetVisible(!EqualsNoCase(View(v), L"hidden")); }},
        {L"headerbkimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.m_pHeader->SetBkImage(v); }},
        {L"scrollselect", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetScrollSelect(IsTrue(v)); }},
        {L"multiexpanding", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetMultiExpanding(IsTrue(v)); }},
        {L"multiselect", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetMultiSelect(IsTrue(v)); }},
        {L"itemrselected", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemRSelected(IsTrue(v)); }},
        {L"itemaltbk", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetAlternateBk(IsTrue(v)); }},
        {L"itemshowrowline", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemShowRowLine(IsTrue(v)); }},
        {L"itemshowcolumnline", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemShowColumnLine(IsTrue(v)); }},
        {L"itemshowhtml", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.SetItemShowHtml(IsTrue(v)); }},
        {L"itemendellipsis", AttributeKind::Boolean, [](Self& self, LPCTSTR v) { self.SetItemTextStyle(WithFlag(self.m_ListInfo.uTextStyle, DT_END_ELLIPSIS, IsTrue(v))); }},
        {L"itemfont", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetItemFont(ToInt(v)); }},
        {L"itemalign", AttributeKind::Choice, [](Self& self, LPCTSTR v) { self.SetItemTextStyle(WithHorizontalAlignment(self.m_ListInfo.uTextStyle, v)); }},
        {L"itemvalign", AttributeKind::Choice, [](Self& self, LPCTSTR v) { self.SetItemTextStyle(WithVerticalAlignment(self.m_ListInfo.uTextStyle, v)); }},
        {L"itemtextpadding", AttributeKind::Rectangle,
         [](Self& self, LPCTSTR v) { self.SetItemTextPadding(ToRect(v)); }},
        {L"itemtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemTextColor(ToColour(v)); }},
        {L"itembkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemBkColor(ToColour(v)); }},
        {L"itemselectedtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemTextColor(ToColour(v)); }},
        {L"itemselectedbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemBkColor(ToColour(v)); }},
        {L"itemhottextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetHotItemTextColor(ToColour(v)); }},
        {L"itemhotbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetHotItemBkColor(ToColour(v)); }},
        {L"itemdisabledtextcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemTextColor(ToColour(v)); }},
        {L"itemdisabledbkcolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemBkColor(ToColour(v)); }},
        {L"itemlinecolor", AttributeKind::Colour,
         [](Self& self, LPCTSTR v) { self.SetItemLineColor(ToColour(v)); }},
        {L"itembkimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetItemBkImage(v); }},
        {L"itemselectedimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetSelectedItemImage(v); }},
        {L"itemhotimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetHotItemImage(v); }},
        {L"itemdisabledimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.SetDisabledItemImage(v); }},
        {L"itemforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.m_ListInfo.sForeImage = v; self.Invalidate(); }},
        {L"itemhotforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.m_ListInfo.sHotForeImage = v; self.Invalidate(); }},
        {L"itemselectedforeimage", AttributeKind::Image,
         [](Self& self, LPCTSTR v) { self.m_ListInfo.sSelectedForeImage = v; self.Invalidate(); }},
    });
    // The bars belong to the body.
    static constexpr std::wstring_view kOfTheBody[] = {L"vscrollbarstyle", L"hscrollbarstyle",
                                                       L"fixedscrollbar", L"showscrollbar"};
    for (const auto attribute : kOfTheBody) {
        if (EqualsNoCase(View(name), attribute)) {
            m_pList->SetAttribute(name, value);
            return;
        }
    }
    if (!kTable.Apply(*this, name, value))
        CVerticalLayoutUI::SetAttribute(name, value);
}

} // namespace DuiLib
