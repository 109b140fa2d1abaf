#include "Control/UIList.h"

#include "Control/ListRows.h"
#include "Control/UIScrollBar.h"
#include "Core/UIManager.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

namespace DuiLib {

namespace {

constexpr int kFarthest = 1'000'000'000; // device pixels
constexpr int kSearchesPerNumbering = 8; // through all rows

int ToEdge(std::int64_t edge)
{
    return static_cast<int>(std::clamp<std::int64_t>(edge, -kFarthest, kFarthest));
}

int Clamp(int length, int lowest, int highest)
{
    return std::max(std::min(length, highest), lowest);
}

} // namespace

// What the body keeps between its layouts.
struct CListBodyUI::Layout {
    // What the heights of the rows depend on besides the rows.
    struct Key {
        int width = -1;
        unsigned scale = 0;
        HFONT font = nullptr;
        LONG fontHeight = 0;

        bool operator==(const Key&) const = default;
    };

    ListRows rows;
    Key measuredFor;
    RECT client{};                    // the area of the rows
    RECT content{};                   // as far as it can be scrolled, moved by the scroll position
    std::vector<CControlUI*> placed;  // the rows that the latest placing put in sight
    std::vector<CControlUI*> leaving; // those that an earlier one did, while they are moved away
    unsigned placing = 1;             // counts them; a row that follows an older one is out of date
    bool isPlacing = false;
    bool rowsMoved = false;    // by a caller, since the latest placing
    int wanted = -1;           // the row to show when the rows have their places
    std::int64_t searched = 0; // rows looked at for an index, since they last learned theirs

    void Inserted(int first, int count)
    {
        rows.Insert(first, count);
        if (wanted >= first)
            wanted += count;
    }
    void Removed(int first, int count)
    {
        rows.Remove(first, count);
        if (wanted >= first)
            wanted = wanted >= first + count ? wanted - count : -1;
    }
    void Sorted(const std::vector<int>& oldIndices)
    {
        rows.Permute(oldIndices);
        const auto found = std::find(oldIndices.begin(), oldIndices.end(), wanted);
        wanted = found != oldIndices.end() ? static_cast<int>(found - oldIndices.begin()) : -1;
    }
    template <class Gone>
    void Forget(Gone&& gone)
    {
        std::erase_if(placed, gone);
        std::erase_if(leaving, gone);
    }
};

CListBodyUI::CListBodyUI(CListUI* owner)
    : m_pOwner(owner),
      m_pCompareFunc(nullptr),
      m_compareData(0),
      m_pLayout(std::make_unique<Layout>())
{
}

// The rows go while the body can still answer them.
CListBodyUI::~CListBodyUI()
{
    m_pOwner = nullptr;
    m_bDelayedDestroy = false;
    RemoveAll();
}

int CListBodyUI::GetScrollStepSize() const
{
    return m_pOwner != nullptr ? m_pOwner->GetScrollStepSize()
                               : CVerticalLayoutUI::GetScrollStepSize();
}

void CListBodyUI::SetScrollPos(SIZE position, bool notify)
{
    const SIZE old = GetScrollPos();
    const ChildWalk watch(*this);
    CVerticalLayoutUI::SetScrollPos(position, false);
    if (!watch.IsAlive())
        return;
    const SIZE now = GetScrollPos();
    if (old.cx == now.cx && old.cy == now.cy)
        return;
    if (old.cx != now.cx && m_pOwner != nullptr)
        m_pOwner->LayOutColumns();
    if (notify && m_pManager != nullptr && watch.IsAlive()) {
        const int line = m_pVerticalScrollBar != nullptr ? m_pVerticalScrollBar->GetLineSize() : 1;
        CControlUI* const sender = m_pOwner != nullptr ? static_cast<CControlUI*>(m_pOwner) : this;
        m_pManager->SendNotify(
            sender, DUI_MSGTYPE_SCROLL,
            static_cast<WPARAM>((now.cy + std::max(line, 1)) / std::max(line, 1)), 0);
    }
}

// The index that a row knows is right unless somebody set another one. While some do not know
// theirs, they are searched for, until that has cost as much as telling them all.
int CListBodyUI::GetItemIndex(CControlUI* control) const
{
    if (control == nullptr)
        return -1;
    if (!AreRowsNumbered()) {
        const int index = CVerticalLayoutUI::GetItemIndex(control);
        m_pLayout->searched += index >= 0 ? index : m_items.GetSize();
        if (m_pLayout->searched > kSearchesPerNumbering * m_items.GetSize())
            NumberRows();
        return index;
    }
    if (auto* const item = static_cast<IListItemUI*>(control->GetInterface(DUI_CTR_LISTITEM))) {
        const int index = item->GetIndex();
        if (m_items.GetAt(index) == control)
            return index;
    }
    return CVerticalLayoutUI::GetItemIndex(control);
}

bool CListBodyUI::AreRowsNumbered() const
{
    return m_pOwner == nullptr || m_pOwner->m_nNumbered >= m_items.GetSize();
}

void CListBodyUI::NumberRows() const
{
    m_pLayout->searched = 0;
    if (!AreRowsNumbered())
        m_pOwner->NumberRows();
}

bool CListBodyUI::Remove(CControlUI* control)
{
    return Detach(GetItemIndex(control));
}

BOOL CListBodyUI::SortItems(PULVCompareFunc compare, UINT_PTR data)
{
    if (compare == nullptr || (m_pOwner != nullptr && m_pOwner->HasOrderOfItsOwn()))
        return FALSE;
    m_pCompareFunc = compare;
    m_compareData = data;
    auto* const first = reinterpret_cast<CControlUI**>(m_items.GetData());
    const CStdPtrArray old = m_items;
    std::stable_sort(first, first + m_items.GetSize(), [this](CControlUI* left, CControlUI* right) {
        return m_pCompareFunc(reinterpret_cast<UINT_PTR>(left), reinterpret_cast<UINT_PTR>(right),
                              m_compareData) < 0;
    });

    std::vector<std::pair<CControlUI*, int>> places;
    places.reserve(static_cast<std::size_t>(old.GetSize()));
    for (int i = 0; i < old.GetSize(); ++i)
        places.emplace_back(static_cast<CControlUI*>(old[i]), i);
    std::sort(places.begin(), places.end());
    std::vector<int> oldIndices;
    oldIndices.reserve(places.size());
    for (int i = 0; i < m_items.GetSize(); ++i) {
        const auto place =
            std::lower_bound(places.begin(), places.end(),
                             std::pair<CControlUI*, int>(static_cast<CControlUI*>(m_items[i]), 0));
        oldIndices.push_back(place->second);
    }
    m_pLayout->Sorted(oldIndices);
    if (m_pOwner != nullptr)
        m_pOwner->RowsSorted(oldIndices);
    NeedUpdate();
    return TRUE;
}

void CListBodyUI::SetPos(RECT rect, bool invalidate)
{
    const ChildWalk watch(*this);
    CControlUI::SetPos(rect, invalidate);
    if (!watch.IsAlive())
        return;

    NumberRows();
    Layout& layout = *m_pLayout;
    layout.client = GetChildArea();
    MeasureRows(layout.client);
    if (!watch.IsAlive())
        return;
    const auto limit = [this](int index, int height) {
        const auto& row = *static_cast<CControlUI*>(m_items[index]);
        return Clamp(height, row.GetMinHeight(), row.GetMaxHeight());
    };
    layout.rows.Stack(GetChildPadding(), layout.client.bottom - layout.client.top, limit);

    const int headerWidth = m_pOwner != nullptr ? m_pOwner->ColumnsWidth() : 0;
    const SIZE needed{std::max(layout.rows.WidestWish(), headerWidth), ToEdge(layout.rows.Total())};
    layout.content = GetContentArea(layout.client, needed);
    PlaceRowsInSight();
    if (!watch.IsAlive())
        return;
    ProcessScrollBar(layout.client, needed.cx, needed.cy);
    if (watch.IsAlive() && layout.wanted >= 0 && layout.rows.IsStacked())
        EnsureVisible(std::exchange(layout.wanted, -1));
}

void CListBodyUI::MeasureRows(const RECT& client)
{
    Layout& layout = *m_pLayout;
    Layout::Key key;
    key.width = client.right - client.left;
    if (m_pManager != nullptr) {
        const int id = m_pOwner != nullptr ? m_pOwner->GetListInfo()->nFont : -1;
        key.scale = m_pManager->GetDPIObj()->GetScale();
        key.font = m_pManager->GetFont(id);
        key.fontHeight = m_pManager->GetFontInfo(id)->tm.tmHeight;
    }
    if (!(key == layout.measuredFor)) {
        layout.measuredFor = key;
        layout.rows.ForgetAll();
    }

    const SIZE range = GetScrollRange();
    const SIZE available{client.right - client.left + range.cx,
                         client.bottom - client.top + range.cy};
    layout.rows.MeasureUnknown([&](int index) -> ListRows::Wish {
        auto& row = *static_cast<CControlUI*>(m_items[index]);
        if (!row.IsVisible())
            return {ListRows::kHidden, 0};
        if (row.IsFloat())
            return {ListRows::kFloating, 0};
        const RECT padding = row.GetPadding();
        const int fixedHeight = row.GetFixedHeight();
        const SIZE room{
            std::max<LONG>(available.cx - padding.left - padding.right, 0),
            std::min<LONG>(available.cy, fixedHeight > 0 ? fixedHeight : row.GetMaxHeight())};
        const SIZE wish = row.EstimateSize(room);
        const int width =
            std::max(row.GetMinWidth(), row.GetFixedWidth()) + padding.left + padding.right;
        if (wish.cy <= 0)
            return {ListRows::kShares, width};
        const int height = Clamp(wish.cy, row.GetMinHeight(), row.GetMaxHeight());
        return {std::max<int>(height + padding.top + padding.bottom, 0), width};
    });
}

RECT CListBodyUI::PlaceOf(CControlUI& row, int index) const
{
    const ListRows& rows = m_pLayout->rows;
    const RECT& content = m_pLayout->content;
    const RECT padding = row.GetPadding();
    const std::int64_t top = content.top + rows.TopOf(index);
    RECT place{content.left + padding.left, ToEdge(top + padding.top),
               content.right - padding.right, ToEdge(top + rows.HeightOf(index) - padding.bottom)};
    place.right =
        place.left + Clamp(place.right - place.left, row.GetMinWidth(), row.GetMaxWidth());
    place.bottom = std::max(place.bottom, place.top);
    return place;
}

void CListBodyUI::PlaceRow(CControlUI& row, int index)
{
    const bool wasPlacing = std::exchange(m_pLayout->isPlacing, true);
    const ChildWalk watch(*this);
    row.SetPos(PlaceOf(row, index), false);
    if (watch.IsAlive())
        m_pLayout->isPlacing = wasPlacing;
}

// Puts the rows in sight where they belong, and those that were until now once more, so that what
// they hold leaves the sight too.
void CListBodyUI::PlaceRowsInSight()
{
    Layout& layout = *m_pLayout;
    ++layout.placing;
    layout.rowsMoved = false;
    const ChildWalk watch(*this);
    layout.leaving.insert(layout.leaving.end(), layout.placed.begin(), layout.placed.end());
    layout.placed.clear();

    int first;
    int last;
    GetChildrenInSight(first, last);
    if (layout.rows.HasFloating()) {
        first = 0;
        last = m_items.GetSize();
    }
    for (int i = first; i < std::min(last, m_items.GetSize()); ++i) {
        auto& row = *static_cast<CControlUI*>(m_items[i]);
        if (row.IsFloat()) {
            SetFloatPos(i);
        } else if (layout.rows.IsStacked() && layout.rows.IsShown(i)) {
            layout.placed.push_back(&row);
            PlaceRow(row, i);
        }
        if (!watch.IsAlive())
            return;
    }
    while (!layout.leaving.empty()) {
        CControlUI* const row = layout.leaving.back();
        layout.leaving.pop_back();
        const auto& now = layout.placed;
        if (std::find(now.begin(), now.end(), row) != now.end())
            continue;
        const int index = GetItemIndex(row);
        if (index >= 0 && layout.rows.IsStacked() && layout.rows.IsShown(index))
            PlaceRow(*row, index);
        if (!watch.IsAlive())
            return;
    }
}

void CListBodyUI::GetChildrenInSight(int& first, int& last) const
{
    const Layout& layout = *m_pLayout;
    first = 0;
    last = m_items.GetSize();
    if (!layout.rows.IsStacked() || layout.rowsMoved || layout.rows.HasFloating() || last == 0)
        return;
    const std::int64_t top = std::int64_t(layout.client.top) - layout.content.top;
    first = layout.rows.IndexAt(top);
    last = layout.rows.IndexAt(top + layout.client.bottom - layout.client.top) + 1;
}

unsigned CListBodyUI::GetPlacing() const
{
    return m_pLayout->placing;
}

void CListBodyUI::EnsureRowPlaced(CControlUI& row, int index)
{
    const Layout& layout = *m_pLayout;
    if (!layout.isPlacing && layout.rows.IsStacked() && m_items.GetAt(index) == &row &&
        layout.rows.IsShown(index))
        PlaceRow(row, index);
}

// A row was put somewhere by whoever calls its SetPos.
void CListBodyUI::RowMoved(CControlUI& row, int index, const RECT& rect)
{
    Layout& layout = *m_pLayout;
    if (layout.isPlacing || !layout.rows.IsStacked() || m_items.GetAt(index) != &row ||
        !layout.rows.IsShown(index))
        return;
    const RECT place = PlaceOf(row, index);
    if (!::EqualRect(&place, &rect))
        layout.rowsMoved = true;
}

void CListBodyUI::ShiftChildren(int dx, int dy)
{
    ::OffsetRect(&m_pLayout->content, dx, dy);
    PlaceRowsInSight();
}

void CListBodyUI::EnsureVisible(int index)
{
    Layout& layout = *m_pLayout;
    if (!layout.rows.IsStacked() || IsUpdateNeeded()) {
        layout.wanted = index;
        return;
    }
    if (index < 0 || index >= m_items.GetSize() || !layout.rows.IsShown(index))
        return;
    const std::int64_t top = layout.rows.TopOf(index);
    const std::int64_t bottom = top + layout.rows.HeightOf(index);
    const int height = layout.client.bottom - layout.client.top;
    SIZE position = GetScrollPos();
    if (bottom > position.cy + height)
        position.cy = ToEdge(bottom - height);
    if (top < position.cy)
        position.cy = ToEdge(top);
    SetScrollPos(position);
}

// The row that a page up or down leads to.
int CListBodyUI::IndexAPageAway(int index, bool forward) const
{
    const Layout& layout = *m_pLayout;
    if (!layout.rows.IsStacked() || m_items.IsEmpty())
        return index;
    const std::int64_t page = layout.client.bottom - layout.client.top;
    const std::int64_t top = index >= 0 ? layout.rows.TopOf(index) : 0;
    const int away =
        layout.rows.IndexAt(std::max<std::int64_t>(forward ? top + page : top - page, 0));
    // At least one row further, also when a row is higher than a page.
    return forward ? std::min(std::max(away, index + 1), m_items.GetSize() - 1)
                   : std::clamp(away, 0, std::max(index - 1, 0));
}

void CListBodyUI::ForgetHeights()
{
    m_pLayout->rows.ForgetAll();
    NeedUpdate();
}

void CListBodyUI::ForgetHeight(int index)
{
    if (index >= 0 && index < m_pLayout->rows.GetCount())
        m_pLayout->rows.Forget(index);
}

void CListBodyUI::ChildNeedsLayout(CControlUI* child)
{
    ForgetHeight(GetItemIndex(child));
}

void CListBodyUI::ChildInserted(int index)
{
    RangeInserted(index, 1);
}

void CListBodyUI::RangeInserted(int first, int count)
{
    m_pLayout->Inserted(first, count);
    if (m_pOwner == nullptr)
        return;
    try {
        m_pOwner->RowsInserted(first, count);
    } catch (const std::bad_alloc&) {
        m_pLayout->Removed(first, count);
        throw;
    }
}

void CListBodyUI::ChildRemoved(int index, CControlUI* child)
{
    CStdPtrArray children(1);
    children.Add(child);
    RangeRemoved(index, children);
}

void CListBodyUI::RangeRemoved(int first, const CStdPtrArray& children)
{
    m_pLayout->Removed(first, children.GetSize());
    // Those in sight are few.
    m_pLayout->Forget([&](CControlUI* row) { return children.Find(row) >= 0; });
    if (m_pOwner != nullptr)
        m_pOwner->RowsRemoved(first, children);
}

void CListBodyUI::ChildrenRemoved()
{
    m_pLayout->rows.Clear();
    m_pLayout->Forget([](CControlUI*) { return true; });
    m_pLayout->wanted = -1;
    if (m_pOwner != nullptr)
        m_pOwner->RowsRemoved();
}

void CListBodyUI::DoEvent(TEventUI& event)
{
    if (m_pOwner != nullptr)
        m_pOwner->DoEvent(event);
    else
        CVerticalLayoutUI::DoEvent(event);
}

} // namespace DuiLib
