#include "Control/UIListElement.h"

#include "Control/ListRow.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

namespace DuiLib {

namespace {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

using Shared = ListRow<CListContainerElementUI>;

} // namespace

CControlUI* CListContainerElementUI::CreateControl()
{
    return new CListContainerElementUI;
}

CListContainerElementUI::CListContainerElementUI()
    : m_iIndex(-1), m_bSelected(false), m_uButtonState(0), m_pOwner(nullptr)
{
}

CListContainerElementUI::~CListContainerElementUI()
{
    RowWitness::RowDies(this);
}

int CListContainerElementUI::GetIndex() const
{
    return Shared::IndexOf(*this);
}

void CListContainerElementUI::SetIndex(int index)
{
    m_iIndex = index;
}

IListOwnerUI* CListContainerElementUI::GetOwner()
{
    return m_pOwner;
}

void CListContainerElementUI::SetOwner(CControlUI* owner)
{
    m_pOwner = owner != nullptr
                   ? static_cast<IListOwnerUI*>(owner->GetInterface(DUI_CTR_ILISTOWNER))
                   : nullptr;
}

bool CListContainerElementUI::IsSelected() const
{
    return m_bSelected;
}

bool CListContainerElementUI::Select(bool select)
{
    return Shared::Select(*this, select);
}

bool CListContainerElementUI::SelectMulti(bool select)
{
    return Shared::SelectMulti(*this, select);
}

bool CListContainerElementUI::IsExpanded() const
{
    return false;
}

bool CListContainerElementUI::Expand(bool)
{
    return false;
}

void CListContainerElementUI::DrawItemBk(HDC dc, const RECT& item)
{
    Shared::DrawBk(*this, dc, item);
}

void CListContainerElementUI::Invalidate()
{
    Shared::Invalidate(*this);
}

LPCTSTR CListContainerElementUI::GetClass() const
{
    return L"ListContainerElementUI";
}

LPVOID CListContainerElementUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTITEM))
        return static_cast<IListItemUI*>(this);
    if (EqualsNoCase(View(name), DUI_CTR_LISTCONTAINERELEMENT))
        return this;
    return CHorizontalLayoutUI::GetInterface(name);
}

UINT CListContainerElementUI::GetControlFlags() const
{
    return UIFLAG_WANTRETURN | CHorizontalLayoutUI::GetControlFlags();
}

void CListContainerElementUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    const RowWitness witness(this);
    CHorizontalLayoutUI::SetManager(manager, parent, init);
    if (witness.RowLives())
        Shared::FindBody(*this);
}

const RECT& CListContainerElementUI::GetPos() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetPos();
}

RECT CListContainerElementUI::GetRelativePos() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetRelativePos();
}

RECT CListContainerElementUI::GetClientPos() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetClientPos();
}

int CListContainerElementUI::GetWidth() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetWidth();
}

int CListContainerElementUI::GetHeight() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetHeight();
}

int CListContainerElementUI::GetX() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetX();
}

int CListContainerElementUI::GetY() const
{
    Shared::EnsurePlaced(*this);
    return CHorizontalLayoutUI::GetY();
}

void CListContainerElementUI::SetPos(RECT rect, bool invalidate)
{
    Shared::HasBeenPlaced(*this, rect);
    CHorizontalLayoutUI::SetPos(rect, invalidate);
}

void CListContainerElementUI::SetVisible(bool visible)
{
    CHorizontalLayoutUI::SetVisible(visible);
    Shared::HasBeenHidden(*this);
}

void CListContainerElementUI::SetEnabled(bool enable)
{
    CHorizontalLayoutUI::SetEnabled(enable);
    Shared::HasBeenEnabled(*this);
}

bool CListContainerElementUI::Activate()
{
    if (!CHorizontalLayoutUI::Activate())
        return false;
    Shared::NotifyActivated(*this);
    return true;
}

void CListContainerElementUI::DoEvent(TEventUI& event)
{
    Shared::DoEvent(*this, event);
}

void CListContainerElementUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CListContainerElementUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"selected", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.Select(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CHorizontalLayoutUI::SetAttribute(name, value);
}

void CListContainerElementUI::NotifyDoubleClick()
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMDBCLICK);
}

void CListContainerElementUI::DrawItemText(HDC dc, const RECT& item)
{
    if (const TListInfoUI* const info = Shared::Info(*this)) {
        const RECT room = LessPadding(item, ScaleLength(info->rcTextPadding));
        Shared::DrawText(*this, dc, room, GetText(), Shared::TextColor(*this, *info), *info);
    }
}

bool CListContainerElementUI::DoPaint(HDC dc, const RECT& paint, CControlUI* stop)
{
    if (!::IntersectRect(&m_rcPaint, &paint, &m_rcItem))
        return true;
    DrawItemBk(dc, m_rcItem);
    return CHorizontalLayoutUI::DoPaint(dc, paint, stop);
}

} // namespace DuiLib
