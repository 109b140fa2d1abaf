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

using Shared = ListRow<CListElementUI>;

} // namespace

CListElementUI::CListElementUI()
    : m_iIndex(-1), m_bSelected(false), m_uButtonState(0), m_pOwner(nullptr)
{
}

CListElementUI::CListElementUI(const CListElementUI& other)
    : CControlUI(other),
      m_iIndex(other.m_iIndex),
      m_bSelected(other.m_bSelected),
      m_uButtonState(other.m_uButtonState),
      m_pOwner(other.m_pOwner)
{
}

CListElementUI& CListElementUI::operator=(const CListElementUI& other)
{
    CControlUI::operator=(other);
    return *this;
}

CListElementUI::~CListElementUI()
{
    RowWitness::RowDies(this);
}

int CListElementUI::GetIndex() const
{
    return Shared::IndexOf(*this);
}

void CListElementUI::SetIndex(int index)
{
    m_iIndex = index;
}

IListOwnerUI* CListElementUI::GetOwner()
{
    return m_pOwner;
}

void CListElementUI::SetOwner(CControlUI* owner)
{
    m_pOwner = owner != nullptr
                   ? static_cast<IListOwnerUI*>(owner->GetInterface(DUI_CTR_ILISTOWNER))
                   : nullptr;
}

bool CListElementUI::IsSelected() const
{
    return m_bSelected;
}

bool CListElementUI::Select(bool select)
{
    return Shared::Select(*this, select);
}

bool CListElementUI::SelectMulti(bool select)
{
    return Shared::SelectMulti(*this, select);
}

bool CListElementUI::IsExpanded() const
{
    return false;
}

bool CListElementUI::Expand(bool)
{
    return false;
}

void CListElementUI::DrawItemBk(HDC dc, const RECT& item)
{
    Shared::DrawBk(*this, dc, item);
}

void CListElementUI::Invalidate()
{
    Shared::Invalidate(*this);
}

LPCTSTR CListElementUI::GetClass() const
{
    return L"ListElementUI";
}

LPVOID CListElementUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), DUI_CTR_LISTITEM))
        return static_cast<IListItemUI*>(this);
    if (EqualsNoCase(View(name), DUI_CTR_LISTELEMENT))
        return this;
    return CControlUI::GetInterface(name);
}

UINT CListElementUI::GetControlFlags() const
{
    return UIFLAG_WANTRETURN;
}

void CListElementUI::SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init)
{
    const RowWitness witness(this);
    CControlUI::SetManager(manager, parent, init);
    if (witness.RowLives())
        Shared::FindBody(*this);
}

const RECT& CListElementUI::GetPos() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetPos();
}

RECT CListElementUI::GetRelativePos() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetRelativePos();
}

RECT CListElementUI::GetClientPos() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetClientPos();
}

int CListElementUI::GetWidth() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetWidth();
}

int CListElementUI::GetHeight() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetHeight();
}

int CListElementUI::GetX() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetX();
}

int CListElementUI::GetY() const
{
    Shared::EnsurePlaced(*this);
    return CControlUI::GetY();
}

void CListElementUI::SetPos(RECT rect, bool invalidate)
{
    Shared::HasBeenPlaced(*this, rect);
    CControlUI::SetPos(rect, invalidate);
}

void CListElementUI::SetVisible(bool visible)
{
    CControlUI::SetVisible(visible);
    Shared::HasBeenHidden(*this);
}

void CListElementUI::SetEnabled(bool enable)
{
    CControlUI::SetEnabled(enable);
    Shared::HasBeenEnabled(*this);
}

bool CListElementUI::Activate()
{
    if (!CControlUI::Activate())
        return false;
    Shared::NotifyActivated(*this);
    return true;
}

void CListElementUI::DoEvent(TEventUI& event)
{
    Shared::DoEvent(*this, event);
}

void CListElementUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CListElementUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"selected", AttributeKind::Boolean,
         [](Self& self, LPCTSTR v) { self.Select(IsTrue(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CControlUI::SetAttribute(name, value);
}

void CListElementUI::NotifyDoubleClick()
{
    if (m_pManager != nullptr)
        m_pManager->SendNotify(this, DUI_MSGTYPE_ITEMDBCLICK);
}

void CListElementUI::DrawItemText(HDC, const RECT&) {}

} // namespace DuiLib
