#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIContainer.h"

namespace DuiLib {

// Lets its children flow in rows of equal cells.
//
// XML classes "TileLayout" and "TileBox".
class UILIB_API CTileLayoutUI : public CContainerUI {
public:
    static CControlUI* CreateControl();

    CTileLayoutUI();

    // The size of a cell: set in design pixels, read in device pixels. 0 = the columns share the
    // width, and a row is as high as its highest child.
    SIZE GetItemSize() const;
    void SetItemSize(SIZE size);

    int GetColumns() const; // 0 = as many as fit
    void SetColumns(int columns);

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;

protected:
    SIZE m_szItem;
    int m_nColumns;
};

} // namespace DuiLib
