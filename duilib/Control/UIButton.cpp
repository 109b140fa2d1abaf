#include "Control/UIButton.h"

#include "Core/BorderEdges.h"
#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "Layout/UITabLayout.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

// Columns of a state image.
constexpr int kNormalColumn = 0;
constexpr int kHotColumn = 1;
constexpr int kPushedColumn = 2;
constexpr int kDisabledColumn = 3;

bool Has(UINT state, UINT bit)
{
    return (state & bit) != 0;
}

// The column for a state; past the last one when the picture has none for it.
int ColumnOf(UINT state, int columns)
{
    if (Has(state, UISTATE_DISABLED))
        return kDisabledColumn;
    if (Has(state, UISTATE_PUSHED))
        return columns == 2 ? kHotColumn : kPushedColumn;
    if (Has(state, UISTATE_HOT))
        return kHotColumn;
    return kNormalColumn;
}

} // namespace

CButtonUI::Witness::Witness(CButtonUI& button)
    : m_pButton(&button), m_pNext(button.m_Witnesses.m_pFirst)
{
    button.m_Witnesses.m_pFirst = this;
}

// Witnesses live on the stack, so the one that goes is the one that came last.
CButtonUI::Witness::~Witness()
{
    if (m_pButton)
        m_pButton->m_Witnesses.m_pFirst = m_pNext;
}

CControlUI* CButtonUI::CreateControl()
{
    return new CButtonUI;
}

CButtonUI::CButtonUI()
    : m_uButtonState(0),
      m_iHotFont(-1),
      m_iPushedFont(-1),
      m_iFocusedFont(-1),
      m_dwHotBkColor(0),
      m_dwPushedBkColor(0),
      m_dwDisabledBkColor(0),
      m_dwHotTextColor(0),
      m_dwPushedTextColor(0),
      m_dwFocusedTextColor(0),
      m_dwHotBorderColor(0),
      m_dwPushedBorderColor(0),
      m_dwDisabledBorderColor(0),
      m_nStateCount(0),
      m_iBindTabIndex(-1)
{
    m_uTextStyle = DT_SINGLELINE | DT_VCENTER | DT_CENTER;
}

CButtonUI::~CButtonUI()
{
    for (Witness* witness = m_Witnesses.m_pFirst; witness; witness = witness->m_pNext)
        witness->m_pButton = NULL;
}

LPCTSTR CButtonUI::GetClass() const
{
    return L"ButtonUI";
}

LPVOID CButtonUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_BUTTON))
        return static_cast<CButtonUI*>(this);
    return CLabelUI::GetInterface(name);
}

UINT CButtonUI::GetControlFlags() const
{
    return (IsKeyboardEnabled() ? UIFLAG_TABSTOP : 0) | (IsEnabled() ? UIFLAG_SETCURSOR : 0);
}

bool CButtonUI::Activate()
{
    if (!CLabelUI::Activate())
        return false;
    if (m_pManager) {
        const Witness witness(*this);
        m_pManager->SendNotify(this, DUI_MSGTYPE_CLICK);
        if (!witness.ButtonIsGone())
            BindTriggerTabSel();
    }
    return true;
}

// A button that is disabled forgets the mouse: it is neither hot nor pressed when it comes back.
void CButtonUI::SetEnabled(bool enable)
{
    CLabelUI::SetEnabled(enable);
    if (IsEnabled())
        m_uButtonState &= ~UISTATE_DISABLED;
    else
        m_uButtonState = (m_uButtonState & UISTATE_SELECTED) | UISTATE_DISABLED;
}

void CButtonUI::DoEvent(TEventUI& event)
{
    const bool isMouse = event.Type > UIEVENT__MOUSEBEGIN && event.Type < UIEVENT__MOUSEEND;
    if (!IsMouseEnabled() && isMouse) {
        if (m_pParent)
            m_pParent->DoEvent(event);
        else
            CLabelUI::DoEvent(event);
        return;
    }

    switch (event.Type) {
    case UIEVENT_KEYDOWN:
        if (IsKeyboardEnabled() && (event.chKey == VK_SPACE || event.chKey == VK_RETURN)) {
            Activate();
            return;
        }
        break;
    case UIEVENT_BUTTONDOWN:
    case UIEVENT_DBLCLICK:
        MousePressed(event);
        return;
    case UIEVENT_MOUSEMOVE:
        if (Has(m_uButtonState, UISTATE_CAPTURED)) {
            SetPushed(::PtInRect(&m_rcItem, event.ptMouse) != FALSE);
            return;
        }
        break;
    case UIEVENT_BUTTONUP:
        if (Has(m_uButtonState, UISTATE_CAPTURED)) {
            MouseReleased(event);
            return;
        }
        break;
    case UIEVENT_CONTEXTMENU:
        if (IsContextMenuUsed() && m_pManager)
            m_pManager->SendNotify(this, DUI_MSGTYPE_MENU, event.wParam, event.lParam);
        return;
    case UIEVENT_MOUSEENTER:
    case UIEVENT_MOUSELEAVE: {
        const Witness witness(*this);
        SetHot(event.Type == UIEVENT_MOUSEENTER, event);
        if (witness.ButtonIsGone())
            return;
        break;
    }
    default:
        break;
    }
    CLabelUI::DoEvent(event);
}

void CButtonUI::MousePressed(const TEventUI& event)
{
    if (!IsEnabled() || !::PtInRect(&m_rcItem, event.ptMouse))
        return;
    m_uButtonState |= UISTATE_PUSHED | UISTATE_CAPTURED;
    Invalidate();
    if (IsRichEvent() && m_pManager)
        m_pManager->SendNotify(this, DUI_MSGTYPE_BUTTONDOWN, event.wParam, event.lParam);
}

// The handler of the click may delete the button, so activating it comes last.
void CButtonUI::MouseReleased(const TEventUI& event)
{
    m_uButtonState &= ~(UISTATE_PUSHED | UISTATE_CAPTURED);
    Invalidate();
    if (::PtInRect(&m_rcItem, event.ptMouse))
        Activate();
}

void CButtonUI::SetPushed(bool pushed)
{
    if (Has(m_uButtonState, UISTATE_PUSHED) == pushed)
        return;
    m_uButtonState ^= UISTATE_PUSHED;
    Invalidate();
}

void CButtonUI::SetHot(bool hot, const TEventUI& event)
{
    if (!IsEnabled())
        return;
    m_uButtonState = hot ? m_uButtonState | UISTATE_HOT : m_uButtonState & ~UISTATE_HOT;
    Invalidate();
    if (IsRichEvent() && m_pManager) {
        m_pManager->SendNotify(this, hot ? DUI_MSGTYPE_MOUSEENTER : DUI_MSGTYPE_MOUSELEAVE,
                               event.wParam, event.lParam);
    }
}

void CButtonUI::SetImage(CDuiString& member, LPCTSTR image)
{
    member = image ? image : L"";
    Invalidate();
}

LPCTSTR CButtonUI::GetNormalImage()
{
    return m_sNormalImage;
}

void CButtonUI::SetNormalImage(LPCTSTR image)
{
    SetImage(m_sNormalImage, image);
}

LPCTSTR CButtonUI::GetHotImage()
{
    return m_sHotImage;
}

void CButtonUI::SetHotImage(LPCTSTR image)
{
    SetImage(m_sHotImage, image);
}

LPCTSTR CButtonUI::GetPushedImage()
{
    return m_sPushedImage;
}

void CButtonUI::SetPushedImage(LPCTSTR image)
{
    SetImage(m_sPushedImage, image);
}

LPCTSTR CButtonUI::GetFocusedImage()
{
    return m_sFocusedImage;
}

void CButtonUI::SetFocusedImage(LPCTSTR image)
{
    SetImage(m_sFocusedImage, image);
}

LPCTSTR CButtonUI::GetDisabledImage()
{
    return m_sDisabledImage;
}

void CButtonUI::SetDisabledImage(LPCTSTR image)
{
    SetImage(m_sDisabledImage, image);
}

LPCTSTR CButtonUI::GetHotForeImage()
{
    return m_sHotForeImage;
}

void CButtonUI::SetHotForeImage(LPCTSTR image)
{
    SetImage(m_sHotForeImage, image);
}

LPCTSTR CButtonUI::GetPushedForeImage()
{
    return m_sPushedForeImage;
}

void CButtonUI::SetPushedForeImage(LPCTSTR image)
{
    SetImage(m_sPushedForeImage, image);
}

LPCTSTR CButtonUI::GetStateImage()
{
    return m_sStateImage;
}

void CButtonUI::SetStateImage(LPCTSTR image)
{
    SetImage(m_sStateImage, image);
}

void CButtonUI::SetStateCount(int count)
{
    if (m_nStateCount == count)
        return;
    m_nStateCount = count;
    Invalidate();
}

int CButtonUI::GetStateCount() const
{
    return m_nStateCount;
}

void CButtonUI::BindTabIndex(int index)
{
    m_iBindTabIndex = index;
}

void CButtonUI::BindTabLayoutName(LPCTSTR name)
{
    m_sBindTabLayoutName = name ? name : L"";
}

void CButtonUI::BindTriggerTabSel(int index)
{
    const int page = index >= 0 ? index : m_iBindTabIndex;
    if (page < 0 || m_sBindTabLayoutName.IsEmpty() || !m_pManager)
        return;
    CControlUI* const found = m_pManager->FindControl(m_sBindTabLayoutName);
    if (!found)
        return;
    if (auto* tabs = static_cast<CTabLayoutUI*>(found->GetInterface(DUI_CTR_TABLAYOUT)))
        tabs->SelectItem(page);
}

void CButtonUI::RemoveBindTabIndex()
{
    m_iBindTabIndex = -1;
    m_sBindTabLayoutName.Empty();
}

int CButtonUI::GetBindTabLayoutIndex()
{
    return m_iBindTabIndex;
}

LPCTSTR CButtonUI::GetBindTabLayoutName()
{
    return m_sBindTabLayoutName;
}

void CButtonUI::SetStateFont(int& member, int index)
{
    if (member == index)
        return;
    member = index;
    Invalidate();
}

void CButtonUI::SetHotFont(int index)
{
    SetStateFont(m_iHotFont, index);
}

int CButtonUI::GetHotFont() const
{
    return m_iHotFont;
}

void CButtonUI::SetPushedFont(int index)
{
    SetStateFont(m_iPushedFont, index);
}

int CButtonUI::GetPushedFont() const
{
    return m_iPushedFont;
}

void CButtonUI::SetFocusedFont(int index)
{
    SetStateFont(m_iFocusedFont, index);
}

int CButtonUI::GetFocusedFont() const
{
    return m_iFocusedFont;
}

void CButtonUI::SetColor(DWORD& member, DWORD color)
{
    if (member == color)
        return;
    member = color;
    Invalidate();
}

void CButtonUI::SetHotBkColor(DWORD color)
{
    SetColor(m_dwHotBkColor, color);
}

DWORD CButtonUI::GetHotBkColor() const
{
    return m_dwHotBkColor;
}

void CButtonUI::SetPushedBkColor(DWORD color)
{
    SetColor(m_dwPushedBkColor, color);
}

DWORD CButtonUI::GetPushedBkColor() const
{
    return m_dwPushedBkColor;
}

void CButtonUI::SetDisabledBkColor(DWORD color)
{
    SetColor(m_dwDisabledBkColor, color);
}

DWORD CButtonUI::GetDisabledBkColor() const
{
    return m_dwDisabledBkColor;
}

void CButtonUI::SetHotTextColor(DWORD color)
{
    SetColor(m_dwHotTextColor, color);
}

DWORD CButtonUI::GetHotTextColor() const
{
    return m_dwHotTextColor;
}

void CButtonUI::SetPushedTextColor(DWORD color)
{
    SetColor(m_dwPushedTextColor, color);
}

DWORD CButtonUI::GetPushedTextColor() const
{
    return m_dwPushedTextColor;
}

void CButtonUI::SetFocusedTextColor(DWORD color)
{
    SetColor(m_dwFocusedTextColor, color);
}

DWORD CButtonUI::GetFocusedTextColor() const
{
    return m_dwFocusedTextColor;
}

void CButtonUI::SetHotBorderColor(DWORD color)
{
    SetColor(m_dwHotBorderColor, color);
}

DWORD CButtonUI::GetHotBorderColor() const
{
    return m_dwHotBorderColor;
}

void CButtonUI::SetPushedBorderColor(DWORD color)
{
    SetColor(m_dwPushedBorderColor, color);
}

DWORD CButtonUI::GetPushedBorderColor() const
{
    return m_dwPushedBorderColor;
}

void CButtonUI::SetDisabledBorderColor(DWORD color)
{
    SetColor(m_dwDisabledBorderColor, color);
}

DWORD CButtonUI::GetDisabledBorderColor() const
{
    return m_dwDisabledBorderColor;
}

void CButtonUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, CButtonUI>({
        {L"normalimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetNormalImage(image); }},
        {L"hotimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetHotImage(image); }},
        {L"pushedimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetPushedImage(image); }},
        {L"focusedimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetFocusedImage(image); }},
        {L"disabledimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetDisabledImage(image); }},
        {L"hotforeimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetHotForeImage(image); }},
        {L"pushedforeimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetPushedForeImage(image); }},
        {L"stateimage", AttributeKind::Image,
         [](CButtonUI& self, LPCTSTR image) { self.SetStateImage(image); }},
        {L"statecount", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR count) { self.SetStateCount(Text::ToInt(count)); }},
        {L"bindtabindex", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR index) { self.BindTabIndex(Text::ToInt(index)); }},
        {L"bindtablayoutname", AttributeKind::Text,
         [](CButtonUI& self, LPCTSTR layout) { self.BindTabLayoutName(layout); }},
        {L"hotfont", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR id) { self.SetHotFont(Text::ToInt(id)); }},
        {L"pushedfont", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR id) { self.SetPushedFont(Text::ToInt(id)); }},
        {L"focusedfont", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR id) { self.SetFocusedFont(Text::ToInt(id)); }},
        // Skins rely on this spelling.
        {L"focuedfont", AttributeKind::Number,
         [](CButtonUI& self, LPCTSTR id) { self.SetFocusedFont(Text::ToInt(id)); }},
        {L"hotbkcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetHotBkColor(Text::ToColour(color)); }},
        {L"pushedbkcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetPushedBkColor(Text::ToColour(color)); }},
        {L"disabledbkcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetDisabledBkColor(Text::ToColour(color)); }},
        {L"hottextcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetHotTextColor(Text::ToColour(color)); }},
        {L"pushedtextcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetPushedTextColor(Text::ToColour(color)); }},
        {L"focusedtextcolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetFocusedTextColor(Text::ToColour(color)); }},
        {L"hotbordercolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetHotBorderColor(Text::ToColour(color)); }},
        {L"pushedbordercolor", AttributeKind::Colour,
         [](CButtonUI& self, LPCTSTR color) { self.SetPushedBorderColor(Text::ToColour(color)); }},
        {L"disabledbordercolor", AttributeKind::Colour,
         [](CButtonUI& self,
            LPCTSTR color) { self.SetDisabledBorderColor(Text::ToColour(color)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CLabelUI::SetAttribute(name, value);
}

// The state bits as they are to be shown: focus and enabled state up to date, and while the window
// itself is disabled nothing else.
UINT CButtonUI::ShownState() const
{
    UINT state = m_uButtonState & ~(UISTATE_FOCUSED | UISTATE_DISABLED);
    const HWND window = m_pManager ? m_pManager->GetPaintWindow() : NULL;
    if (window && !::IsWindowEnabled(window))
        state = 0;
    if (IsFocused())
        state |= UISTATE_FOCUSED;
    if (!IsEnabled())
        state |= UISTATE_DISABLED;
    return state;
}

void CButtonUI::PaintBkColor(HDC dc)
{
    const UINT state = ShownState();
    DWORD color = 0;
    if (Has(state, UISTATE_DISABLED))
        color = m_dwDisabledBkColor;
    else if (Has(state, UISTATE_PUSHED))
        color = m_dwPushedBkColor;
    else if (Has(state, UISTATE_HOT))
        color = m_dwHotBkColor;

    if (color != 0)
        CRenderEngine::DrawColor(dc, m_rcPaint, GetAdjustColor(color));
    else
        CLabelUI::PaintBkColor(dc);
}

bool CButtonUI::DrawOwnImage(HDC dc, LPCTSTR image)
{
    return image && *image && DrawImage(dc, image);
}

// One column of a picture with a column per state; the first one when there is none for the state.
bool CButtonUI::DrawColumn(HDC dc, LPCTSTR image, int columns, UINT state)
{
    if (columns <= 1)
        return DrawOwnImage(dc, image);
    const TImageInfo* const picture = m_pManager ? m_pManager->GetImageString(image) : NULL;
    if (!picture)
        return false;
    const int width = picture->nX / columns;
    const int column = ColumnOf(state, columns);
    const int left = (column < columns ? column : kNormalColumn) * width;
    CDuiString part;
    part.SmallFormat(L"source='%d,0,%d,%d'", left, left + width, picture->nY);
    return DrawImage(dc, image, part);
}

void CButtonUI::PaintStatusImage(HDC dc)
{
    const UINT state = ShownState();
    m_uButtonState = state;

    const LPCTSTR normal = GetNormalImage();
    const LPCTSTR columns = GetStateImage();
    if (!*normal && *columns) {
        DrawColumn(dc, columns, m_nStateCount, state);
        return;
    }

    LPCTSTR image = normal;
    if (Has(state, UISTATE_DISABLED))
        image = GetDisabledImage();
    else if (Has(state, UISTATE_PUSHED))
        image = GetPushedImage();
    else if (Has(state, UISTATE_HOT))
        image = GetHotImage();
    else if (Has(state, UISTATE_FOCUSED))
        image = GetFocusedImage();

    if (!DrawOwnImage(dc, image) && image != normal)
        DrawOwnImage(dc, normal);
}

void CButtonUI::PaintForeImage(HDC dc)
{
    const UINT state = ShownState();
    LPCTSTR image = NULL;
    if (Has(state, UISTATE_PUSHED))
        image = GetPushedForeImage();
    else if (Has(state, UISTATE_HOT))
        image = GetHotForeImage();

    if (!DrawOwnImage(dc, image))
        CLabelUI::PaintForeImage(dc);
}

// The first state that holds and has a colour of its own decides.
DWORD CButtonUI::StateTextColor(UINT state) const
{
    if (!Has(state, UISTATE_DISABLED)) {
        if (Has(state, UISTATE_PUSHED) && m_dwPushedTextColor != 0)
            return m_dwPushedTextColor;
        if (Has(state, UISTATE_HOT) && m_dwHotTextColor != 0)
            return m_dwHotTextColor;
        if (Has(state, UISTATE_FOCUSED) && m_dwFocusedTextColor != 0)
            return m_dwFocusedTextColor;
    }
    return LabelTextColor();
}

int CButtonUI::StateFont(UINT state) const
{
    if (!Has(state, UISTATE_DISABLED)) {
        if (Has(state, UISTATE_PUSHED) && m_iPushedFont != -1)
            return m_iPushedFont;
        if (Has(state, UISTATE_HOT) && m_iHotFont != -1)
            return m_iHotFont;
        if (Has(state, UISTATE_FOCUSED) && m_iFocusedFont != -1)
            return m_iFocusedFont;
    }
    return m_iFont;
}

void CButtonUI::PaintText(HDC dc)
{
    const UINT state = ShownState();
    DrawLabelText(dc, StateTextColor(state), StateFont(state));
}

void CButtonUI::PaintBorder(HDC dc)
{
    const UINT state = ShownState();
    DWORD color = 0;
    if (Has(state, UISTATE_DISABLED) && m_dwDisabledBorderColor != 0)
        color = m_dwDisabledBorderColor;
    else if (Has(state, UISTATE_PUSHED) && m_dwPushedBorderColor != 0)
        color = m_dwPushedBorderColor;
    else if (Has(state, UISTATE_HOT) && m_dwHotBorderColor != 0)
        color = m_dwHotBorderColor;

    const bool showsFocus = IsFocused() && GetFocusBorderColor() != 0 && GetBorderSize() > 0;
    if (color == 0 || showsFocus) {
        CLabelUI::PaintBorder(dc);
        return;
    }
    DrawBorder(dc, m_rcItem, GetAdjustColor(color), GetBorderSize(), GetBorderRectSize(),
               GetBorderRound(), GetBorderStyle());
}

void CButtonUI::DrawBorder(HDC dc, const RECT& item, const DWORD& color, const int& size,
                           const RECT& sizes, const SIZE& round, const int& style)
{
    if (size > 0 && (round.cx > 0 || round.cy > 0)) {
        CRenderEngine::DrawRoundRect(dc, item, size, round.cx, round.cy, color, style);
        return;
    }
    if (sizes.left > 0 || sizes.top > 0 || sizes.right > 0 || sizes.bottom > 0)
        DrawBorderEdges(dc, item, sizes, color, style);
    else if (size > 0)
        CRenderEngine::DrawRect(dc, item, size, color, style);
}

} // namespace DuiLib
