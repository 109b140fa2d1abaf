#include "Control/UIOption.h"

#include "Core/UIDefine.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <vector>

namespace DuiLib {

namespace {

namespace Text = Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

} // namespace

CControlUI* COptionUI::CreateControl()
{
    return new COptionUI;
}

COptionUI::COptionUI()
    : m_bSelected(false),
      m_iSelectedFont(-1),
      m_dwSelectedBkColor(0),
      m_dwSelectedTextColor(0),
      m_nSelectedStateCount(0)
{
}

COptionUI::~COptionUI()
{
    LeaveGroup();
}

LPCTSTR COptionUI::GetClass() const
{
    return L"OptionUI";
}

LPVOID COptionUI::GetInterface(LPCTSTR name)
{
    if (name && Text::EqualsNoCase(name, DUI_CTR_OPTION))
        return static_cast<COptionUI*>(this);
    return CButtonUI::GetInterface(name);
}

void COptionUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    if (m_pManager != manager)
        LeaveGroup();
    JoinGroup(manager);
    CButtonUI::SetManager(manager, parent, init);
    if (m_bSelected)
        DeselectOthers(false);
}

bool COptionUI::Activate()
{
    const Witness witness(*this);
    if (!CButtonUI::Activate())
        return false;
    if (!witness.ButtonIsGone())
        Selected(m_sGroupName.IsEmpty() ? !m_bSelected : true);
    return true;
}

LPCTSTR COptionUI::GetSelectedImage()
{
    return m_sSelectedImage;
}

void COptionUI::SetSelectedImage(LPCTSTR image)
{
    SetImage(m_sSelectedImage, image);
}

LPCTSTR COptionUI::GetSelectedHotImage()
{
    return m_sSelectedHotImage;
}

void COptionUI::SetSelectedHotImage(LPCTSTR image)
{
    SetImage(m_sSelectedHotImage, image);
}

LPCTSTR COptionUI::GetSelectedPushedImage()
{
    return m_sSelectedPushedImage;
}

void COptionUI::SetSelectedPushedImage(LPCTSTR image)
{
    SetImage(m_sSelectedPushedImage, image);
}

LPCTSTR COptionUI::GetSelectedForedImage()
{
    return m_sSelectedForeImage;
}

void COptionUI::SetSelectedForedImage(LPCTSTR image)
{
    SetImage(m_sSelectedForeImage, image);
}

void COptionUI::SetSelectedTextColor(DWORD color)
{
    SetColor(m_dwSelectedTextColor, color);
}

DWORD COptionUI::GetSelectedTextColor()
{
    return m_dwSelectedTextColor;
}

void COptionUI::SetSelectedBkColor(DWORD color)
{
    SetColor(m_dwSelectedBkColor, color);
}

DWORD COptionUI::GetSelectBkColor()
{
    return m_dwSelectedBkColor;
}

void COptionUI::SetSelectedStateCount(int count)
{
    if (m_nSelectedStateCount == count)
        return;
    m_nSelectedStateCount = count;
    Invalidate();
}

int COptionUI::GetSelectedStateCount() const
{
    return m_nSelectedStateCount;
}

LPCTSTR COptionUI::GetSelectedStateImage()
{
    return m_sSelectedStateImage;
}

void COptionUI::SetSelectedStateImage(LPCTSTR image)
{
    SetImage(m_sSelectedStateImage, image);
}

void COptionUI::SetSelectedFont(int index)
{
    SetStateFont(m_iSelectedFont, index);
}

int COptionUI::GetSelectedFont() const
{
    return m_iSelectedFont;
}

LPCTSTR COptionUI::GetGroup() const
{
    return m_sGroupName;
}

void COptionUI::SetGroup(LPCTSTR group)
{
    const CDuiString name = group ? group : L"";
    if (m_sGroupName == name)
        return;
    LeaveGroup();
    m_sGroupName = name;
    JoinGroup(m_pManager);
    if (m_bSelected)
        DeselectOthers(false);
}

LPCTSTR COptionUI::GetGroupType() const
{
    return m_sGroupType;
}

void COptionUI::SetGroupType(LPCTSTR type)
{
    m_sGroupType = type ? type : L"";
}

bool COptionUI::IsSelected() const
{
    return m_bSelected;
}

void COptionUI::Selected(bool selected, bool notify)
{
    if (m_bSelected == selected)
        return;
    m_bSelected = selected;
    m_uButtonState =
        selected ? m_uButtonState | UISTATE_SELECTED : m_uButtonState & ~UISTATE_SELECTED;
    Invalidate();

    const Witness witness(*this);
    if (selected)
        DeselectOthers(notify);
    // A handler may have deleted this option, or changed it back and told everybody so.
    if (witness.ButtonIsGone() || m_bSelected != selected)
        return;
    if (notify && m_pManager)
        m_pManager->SendNotify(this, DUI_MSGTYPE_SELECTCHANGED, selected);
}

void COptionUI::JoinGroup(CPaintManagerUI* manager)
{
    if (manager && !m_sGroupName.IsEmpty())
        manager->AddOptionGroup(m_sGroupName, this);
}

void COptionUI::LeaveGroup()
{
    if (m_pManager && !m_sGroupName.IsEmpty())
        m_pManager->RemoveOptionGroup(m_sGroupName, this);
}

bool COptionUI::Excludes(const COptionUI& other) const
{
    return m_sGroupType.IsEmpty() || m_sGroupType != other.m_sGroupType;
}

// Handlers may add, remove and delete options, so every one is looked up again before its turn.
void COptionUI::DeselectOthers(bool notify)
{
    if (!m_pManager || m_sGroupName.IsEmpty())
        return;
    const CStdPtrArray* group = m_pManager->GetOptionGroup(m_sGroupName);
    if (!group)
        return;
    std::vector<CControlUI*> members;
    for (int i = 0; i < group->GetSize(); ++i)
        members.push_back(static_cast<CControlUI*>(group->GetAt(i)));

    const Witness witness(*this);
    for (CControlUI* const member : members) {
        if (witness.ButtonIsGone() || !m_bSelected || !m_pManager)
            return;
        const CStdPtrArray* now = m_pManager->GetOptionGroup(m_sGroupName);
        if (member == this || !now || now->Find(member) < 0)
            continue;
        auto* const other = static_cast<COptionUI*>(member->GetInterface(DUI_CTR_OPTION));
        if (other && Excludes(*other))
            other->Selected(false, notify);
    }
}

void COptionUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    static constexpr auto kAttributes = MakeAttributeTable<NameMatch::NoCase, COptionUI>({
        {L"group", AttributeKind::Text,
         [](COptionUI& self, LPCTSTR group) { self.SetGroup(group); }},
        {L"grouptype", AttributeKind::Text,
         [](COptionUI& self, LPCTSTR type) { self.SetGroupType(type); }},
        {L"selected", AttributeKind::Boolean,
         [](COptionUI& self, LPCTSTR on) { self.Selected(Text::IsTrue(on)); }},
        {L"selectedimage", AttributeKind::Image,
         [](COptionUI& self, LPCTSTR image) { self.SetSelectedImage(image); }},
        {L"selectedhotimage", AttributeKind::Image,
         [](COptionUI& self, LPCTSTR image) { self.SetSelectedHotImage(image); }},
        {L"selectedpushedimage", AttributeKind::Image,
         [](COptionUI& self, LPCTSTR image) { self.SetSelectedPushedImage(image); }},
        {L"selectedforeimage", AttributeKind::Image,
         [](COptionUI& self, LPCTSTR image) { self.SetSelectedForedImage(image); }},
        {L"selectedstateimage", AttributeKind::Image,
         [](COptionUI& self, LPCTSTR image) { self.SetSelectedStateImage(image); }},
        {L"selectedstatecount", AttributeKind::Number,
         [](COptionUI& self, LPCTSTR count) { self.SetSelectedStateCount(Text::ToInt(count)); }},
        {L"selectedfont", AttributeKind::Number,
         [](COptionUI& self, LPCTSTR id) { self.SetSelectedFont(Text::ToInt(id)); }},
        {L"selectedbkcolor", AttributeKind::Colour,
         [](COptionUI& self, LPCTSTR color) { self.SetSelectedBkColor(Text::ToColour(color)); }},
        {L"selectedtextcolor", AttributeKind::Colour,
         [](COptionUI& self, LPCTSTR color) { self.SetSelectedTextColor(Text::ToColour(color)); }},
    });
    if (!kAttributes.Apply(*this, name, value))
        CButtonUI::SetAttribute(name, value);
}

void COptionUI::PaintBkColor(HDC dc)
{
    if (m_bSelected && m_dwSelectedBkColor != 0)
        CRenderEngine::DrawColor(dc, m_rcPaint, GetAdjustColor(m_dwSelectedBkColor));
    else
        CButtonUI::PaintBkColor(dc);
}

bool COptionUI::DrawSelectedImage(HDC dc)
{
    const UINT state = ShownState();
    const LPCTSTR columns = GetSelectedStateImage();
    if (m_sSelectedImage.IsEmpty() && *columns)
        return DrawColumn(dc, columns, m_nSelectedStateCount, state);

    LPCTSTR image = NULL;
    if ((state & UISTATE_PUSHED) != 0)
        image = m_sSelectedPushedImage;
    else if ((state & UISTATE_HOT) != 0)
        image = m_sSelectedHotImage;
    return DrawOwnImage(dc, image) || DrawOwnImage(dc, m_sSelectedImage);
}

void COptionUI::PaintStatusImage(HDC dc)
{
    if (m_bSelected && DrawSelectedImage(dc))
        m_uButtonState = ShownState();
    else
        CButtonUI::PaintStatusImage(dc);
    if (m_bSelected)
        m_uButtonState |= UISTATE_SELECTED;
}

void COptionUI::PaintForeImage(HDC dc)
{
    if (!m_bSelected || !DrawOwnImage(dc, m_sSelectedForeImage))
        CButtonUI::PaintForeImage(dc);
}

void COptionUI::PaintText(HDC dc)
{
    if (!m_bSelected) {
        CButtonUI::PaintText(dc);
        return;
    }
    const UINT state = ShownState();
    const bool ownColor = IsEnabled() && m_dwSelectedTextColor != 0;
    DrawLabelText(dc, ownColor ? m_dwSelectedTextColor : StateTextColor(state),
                  m_iSelectedFont != -1 ? m_iSelectedFont : StateFont(state));
}

} // namespace DuiLib
