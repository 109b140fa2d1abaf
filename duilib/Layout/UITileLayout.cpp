#include "Layout/UITileLayout.h"

#include "win32/AttributeTable.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace DuiLib {

using namespace Quillet::Text;
using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

namespace {

constexpr int kMostColumns = 10'000;
constexpr std::int64_t kFarthest = 100'000'000; // device pixels

LONG Edge(std::int64_t position)
{
    return static_cast<LONG>(std::clamp(position, -kFarthest, kFarthest));
}

// A child in its cell.
struct Tile {
    CControlUI* control;
    RECT padding;
    SIZE wish; // 0: fills the cell
};

LONG Fit(LONG wish, LONG room, LONG lowest, LONG highest)
{
    return std::max({std::min({wish > 0 ? wish : room, room, highest}), lowest, 0L});
}

} // namespace

CControlUI* CTileLayoutUI::CreateControl()
{
    return new CTileLayoutUI;
}

CTileLayoutUI::CTileLayoutUI() : m_szItem{}, m_nColumns(0) {}

SIZE CTileLayoutUI::GetItemSize() const
{
    return ScaleLength(m_szItem);
}

void CTileLayoutUI::SetItemSize(SIZE size)
{
    size = ClampLength(size);
    size = {std::max(size.cx, 0L), std::max(size.cy, 0L)};
    if (m_szItem.cx == size.cx && m_szItem.cy == size.cy)
        return;
    m_szItem = size;
    NeedUpdate();
}

int CTileLayoutUI::GetColumns() const
{
    return m_nColumns;
}

void CTileLayoutUI::SetColumns(int columns)
{
    columns = std::clamp(columns, 0, kMostColumns);
    if (m_nColumns == columns)
        return;
    m_nColumns = columns;
    NeedUpdate();
}

LPCTSTR CTileLayoutUI::GetClass() const
{
    return L"TileLayoutUI";
}

LPVOID CTileLayoutUI::GetInterface(LPCTSTR name)
{
    if (EqualsNoCase(View(name), L"TileLayout"))
        return this;
    return CContainerUI::GetInterface(name);
}

void CTileLayoutUI::SetPos(RECT rect, bool invalidate)
{
    CControlUI::SetPos(rect, invalidate);

    const RECT client = GetChildArea();
    const LONG clientWidth = client.right - client.left;
    const LONG gap = GetChildPadding();
    SIZE cell = GetItemSize();

    std::vector<Tile> tiles;
    tiles.reserve(static_cast<std::size_t>(GetCount()));
    LONG widest = 0;
    ChildWalk watch(*this);
    for (ChildWalk walk(*this); CControlUI* const control = walk.Next();) {
        if (!control->IsVisible() || control->IsFloat())
            continue;
        const SIZE available{cell.cx > 0 ? cell.cx : clientWidth,
                             cell.cy > 0 ? cell.cy : client.bottom - client.top};
        const Tile tile{control, control->GetPadding(), control->EstimateSize(available)};
        widest = std::max(widest, tile.wish.cx + tile.padding.left + tile.padding.right);
        tiles.push_back(tile);
    }
    if (!watch.IsAlive())
        return;

    std::int64_t columns = m_nColumns;
    if (cell.cx == 0 && columns > 0)
        cell.cx = std::max<LONG>(Edge((clientWidth - (columns - 1) * gap) / columns), 0);
    else if (cell.cx == 0)
        cell.cx = widest > 0 ? widest : clientWidth;
    if (columns == 0) {
        const LONG step = cell.cx + gap;
        columns = step > 0 ? std::max<std::int64_t>((clientWidth + gap) / step, 1) : 1;
    }

    // The rows first: without an item height each is as high as its highest child.
    std::vector<LONG> rowHeights;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (i % static_cast<std::size_t>(columns) == 0)
            rowHeights.push_back(cell.cy);
        if (cell.cy == 0) {
            const auto& padding = tiles[i].padding;
            const LONG height = std::max<LONG>(tiles[i].wish.cy, tiles[i].control->GetMinHeight());
            rowHeights.back() = std::max(rowHeights.back(), height + padding.top + padding.bottom);
        }
    }
    std::int64_t neededHeight = 0;
    for (const LONG height : rowHeights)
        neededHeight += height;
    if (!rowHeights.empty())
        neededHeight += gap * static_cast<std::int64_t>(rowHeights.size() - 1);
    const auto usedColumns =
        std::min<std::int64_t>(columns, static_cast<std::int64_t>(tiles.size()));
    const std::int64_t neededWidth =
        usedColumns > 0 ? usedColumns * cell.cx + (usedColumns - 1) * gap : 0;
    const SIZE needed{Edge(neededWidth), Edge(neededHeight)};

    const RECT content = GetContentArea(client, needed);
    std::size_t next = 0;
    std::size_t nextRow = 0;
    std::int64_t top = content.top;
    for (ChildWalk walk(*this); CControlUI* const control = walk.Next();) {
        if (control->IsFloat()) {
            SetFloatPos(walk.GetIndex());
            continue;
        }
        // A handler may have changed the children since they were measured.
        std::size_t found = next;
        while (found < tiles.size() && tiles[found].control != control)
            ++found;
        if (found == tiles.size())
            continue;
        next = found + 1;
        const auto row = found / static_cast<std::size_t>(columns);
        const auto column = static_cast<std::int64_t>(found % static_cast<std::size_t>(columns));
        for (; nextRow < row; ++nextRow)
            top += rowHeights[nextRow] + gap;

        const Tile& tile = tiles[found];
        const LONG left = Edge(content.left + column * (cell.cx + gap) + tile.padding.left);
        const LONG width = Fit(tile.wish.cx, cell.cx - tile.padding.left - tile.padding.right,
                               control->GetMinWidth(), control->GetMaxWidth());
        const LONG height =
            Fit(tile.wish.cy, rowHeights[row] - tile.padding.top - tile.padding.bottom,
                control->GetMinHeight(), control->GetMaxHeight());
        const LONG tileTop = Edge(top + tile.padding.top);
        control->SetPos({left, tileTop, left + width, tileTop + height}, false);
    }
    if (watch.IsAlive())
        ProcessScrollBar(client, needed.cx, needed.cy);
}

void CTileLayoutUI::SetAttribute(LPCTSTR name, LPCTSTR value)
{
    using Self = CTileLayoutUI;
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Self>({
        {L"itemsize", AttributeKind::Size,
         [](Self& self, LPCTSTR v) { self.SetItemSize(ToSize(v)); }},
        {L"columns", AttributeKind::Number,
         [](Self& self, LPCTSTR v) { self.SetColumns(ToInt(v)); }},
    });
    if (!kTable.Apply(*this, name, value))
        CContainerUI::SetAttribute(name, value);
}

} // namespace DuiLib
