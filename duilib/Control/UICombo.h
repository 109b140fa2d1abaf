#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Control/UIList.h"
#include "Core/UIContainer.h"
#include "Core/UIInterfaces.h"

#include <string>

namespace DuiLib {

class ComboDropWindow;

// A field that shows one of its items; the others are chosen in a list that drops down.
//
// XML class "Combo". Items are list elements, owned by the combo; while the list is open they stand
// in a window of its own. Distances are design pixels in the setters and device pixels in the
// getters, colours are ARGB, 0 = the default, fonts are ids of the paint manager. Without state
// images the combo draws a frame and an arrow of its own.
//
// Sends "predropdown" and "dropdown" around opening, and "itemselect" (wParam = new index, lParam =
// old one, -1 = none) when the selection has changed. Handlers may delete the combo or its window.
class UILIB_API CComboUI : public CContainerUI, public IListOwnerUI {
public:
    static CControlUI* CreateControl();

    CComboUI();
    ~CComboUI() override;

    // How the text of the selected item looks.
    void SetTextStyle(UINT style); // DT_* bits
    UINT GetTextStyle() const;
    void SetTextColor(DWORD color);
    DWORD GetTextColor() const;
    void SetDisabledTextColor(DWORD color);
    DWORD GetDisabledTextColor() const;
    void SetFont(int index);
    int GetFont() const;
    RECT GetTextPadding() const;
    void SetTextPadding(RECT padding);
    bool IsShowHtml();
    void SetShowHtml(bool show = true);

    // Kept for the application; the list drops without a shadow.
    bool IsShowShadow();
    void SetShowShadow(bool show = true);

    // Attributes of the layout that the items drop down in.
    CDuiString GetDropBoxAttributeList();
    void SetDropBoxAttributeList(LPCTSTR attributes);

    // Width 0 = that of the combo. The list is no higher than its items need.
    SIZE GetDropBoxSize() const;
    void SetDropBoxSize(SIZE size);
    RECT GetDropBoxInset() const; // between the edges of the window and the items
    void SetDropBoxInset(RECT inset);

    // State images; one that is missing is replaced by the normal one.
    LPCTSTR GetNormalImage() const;
    void SetNormalImage(LPCTSTR image);
    LPCTSTR GetHotImage() const;
    void SetHotImage(LPCTSTR image);
    LPCTSTR GetPushedImage() const;
    void SetPushedImage(LPCTSTR image);
    LPCTSTR GetFocusedImage() const;
    void SetFocusedImage(LPCTSTR image);
    LPCTSTR GetDisabledImage() const;
    void SetDisabledImage(LPCTSTR image);

    // The wheel over the closed combo moves the selection; on at first.
    bool GetScrollSelect();
    void SetScrollSelect(bool select);

    // The look of the items.
    void SetItemFont(int index);
    void SetItemTextStyle(UINT style);
    void SetItemTextPadding(RECT padding);
    RECT GetItemTextPadding() const;
    void SetItemTextColor(DWORD color);
    DWORD GetItemTextColor() const;
    void SetItemBkColor(DWORD color);
    DWORD GetItemBkColor() const;
    void SetItemBkImage(LPCTSTR image);
    LPCTSTR GetItemBkImage() const;
    void SetAlternateBk(bool alternate);
    bool IsAlternateBk() const;
    void SetSelectedItemTextColor(DWORD color);
    DWORD GetSelectedItemTextColor() const;
    void SetSelectedItemBkColor(DWORD color);
    DWORD GetSelectedItemBkColor() const;
    void SetSelectedItemImage(LPCTSTR image);
    LPCTSTR GetSelectedItemImage() const;
    void SetHotItemTextColor(DWORD color);
    DWORD GetHotItemTextColor() const;
    void SetHotItemBkColor(DWORD color);
    DWORD GetHotItemBkColor() const;
    void SetHotItemImage(LPCTSTR image);
    LPCTSTR GetHotItemImage() const;
    void SetDisabledItemTextColor(DWORD color);
    DWORD GetDisabledItemTextColor() const;
    void SetDisabledItemBkColor(DWORD color);
    DWORD GetDisabledItemBkColor() const;
    void SetDisabledItemImage(LPCTSTR image);
    LPCTSTR GetDisabledItemImage() const;
    void SetItemLineColor(DWORD color);
    DWORD GetItemLineColor() const;
    bool IsItemShowHtml();
    void SetItemShowHtml(bool show = true);
    bool IsItemRSelected();
    void SetItemRSelected(bool select = true);

    // By text, in the user's language; or by a comparison of two items as CControlUI* (negative:
    // the first comes first). Stable; the selection stays with its item.
    void SortItems();
    BOOL SortItems(PULVCompareFunc compare, UINT_PTR data);

    // IListOwnerUI:
    UINT GetListType() override;
    TListInfoUI* GetListInfo() override;
    int GetCurSel() const override;
    // -1 selects none. False, and nothing changes, for an item that is missing, hidden or disabled.
    bool SelectItem(int index, bool takeFocus = false) override;
    bool SelectMultiItem(int index, bool takeFocus = false) override;
    bool UnSelectItem(int index, bool others = false) override;

    // CContainerUI:
    bool SetItemIndex(CControlUI* control, int index) override;
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    UINT GetControlFlags() const override;
    CDuiString GetText() const override; // of the selected item
    bool Activate() override;            // drops the list down
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    void SetVisible(bool visible = true) override;
    void SetInternVisible(bool visible = true) override;
    void SetEnabled(bool enable = true) override;
    void SetPos(RECT rect, bool invalidate = true) override;
    void Move(SIZE offset, bool invalidate = true) override;
    SIZE EstimateSize(SIZE available) override;
    CControlUI* FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags) override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    bool DoPaint(HDC dc, const RECT& paint, CControlUI* stop) override;
    void PaintBkColor(HDC dc) override;
    void PaintStatusImage(HDC dc) override;
    void PaintText(HDC dc) override;
    void PaintBorder(HDC dc) override;

protected:
    DWORD m_dwTextColor;
    DWORD m_dwDisabledTextColor;
    int m_iFont;
    UINT m_uTextStyle;
    RECT m_rcTextPadding;
    bool m_bShowHtml;
    bool m_bShowShadow;
    bool m_bScrollSelect;
    int m_iCurSel;
    UINT m_uButtonState;
    CDuiString m_sDropBoxAttributes;
    SIZE m_szDropBox;
    RECT m_rcDropBoxInset;
    CDuiString m_sNormalImage;
    CDuiString m_sHotImage;
    CDuiString m_sPushedImage;
    CDuiString m_sFocusedImage;
    CDuiString m_sDisabledImage;
    TListInfoUI m_ListInfo;

private:
    friend class ComboDropWindow;

    template <class Value>
    void SetItemLook(Value& member, const Value& value);
    void SetItemLook(CDuiString& member, LPCTSTR value);
    void SetStateImage(CDuiString& member, LPCTSTR image);
    void ItemsChanged();
    void Renumber(int from);
    void ItemRemoved(int index);
    static void Disown(CControlUI* control);
    template <class Compare>
    void Sort(Compare compare);

    bool Open();
    void CloseDrop();
    bool PressKey(WPARAM key);
    bool StepSelection(int from, bool forward);
    void TypeCharacter(wchar_t character, DWORD time);
    int PageSize() const;
    bool PressSystemKey(WPARAM key);

    CControlUI* SelectedItem() const;
    bool HasOwnLook() const;
    RECT ArrowRect() const;

    ComboDropWindow* m_pDrop; // while the list is open
    std::wstring m_sTyped;    // the characters of a text being typed
    DWORD m_dwTypedTime;      // of the last one
};

} // namespace DuiLib
