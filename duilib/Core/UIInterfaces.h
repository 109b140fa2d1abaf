#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIRecords.h"

// What the toolkit calls in an application, and what controls offer each other. None of these
// interfaces owns or deletes the object behind it.

namespace DuiLib {

class CContainerUI;
class CControlUI;
class CListHeaderUI;
typedef struct tagTListInfoUI TListInfoUI;

typedef CControlUI*(CALLBACK* FINDCONTROLPROC)(CControlUI* control, LPVOID data);
typedef CControlUI* (*LPCREATECONTROL)(LPCTSTR className);
typedef int(CALLBACK* PULVCompareFunc)(UINT_PTR first, UINT_PTR second, UINT_PTR data);

// Receives the notifications of a window's controls.
class INotifyUI {
public:
    virtual void Notify(TNotifyUI& notification) = 0;
};

// Sees window messages first; `handled` comes in false and stops the message when set.
class IMessageFilterUI {
public:
    virtual LRESULT MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, bool& handled) = 0;
};

// Offered every queued message; S_OK means consumed.
class ITranslateAccelerator {
public:
    virtual LRESULT TranslateAccelerator(MSG* message) = 0;
};

// Makes the controls that the factory does not know; null for an unknown name. The caller owns the
// result.
class IDialogBuilderCallback {
public:
    virtual CControlUI* CreateControl(LPCTSTR className) = 0;
};

// Supplies texts by id; null means no such text.
class UILIB_API IQueryControlText {
public:
    virtual LPCTSTR QueryControlText(LPCTSTR id, LPCTSTR type) = 0;
};

// Asked before a control is dragged; true takes the drag over.
class IDragDropUI {
public:
    virtual bool OnDragDrop(CControlUI* /*control*/) { return false; }
};

// A control that holds others and owns what is added to it.
class IContainerUI {
public:
    virtual CControlUI* GetItemAt(int index) const = 0;
    virtual int GetItemIndex(CControlUI* control) const = 0;
    virtual bool SetItemIndex(CControlUI* control, int index) = 0;
    virtual int GetCount() const = 0;
    virtual bool Add(CControlUI* control) = 0;
    virtual bool AddAt(CControlUI* control, int index) = 0;
    virtual bool Remove(CControlUI* control) = 0;
    virtual bool RemoveAt(int index) = 0;
    virtual void RemoveAll() = 0;
};

// Texts and colours of list elements.
class IListCallbackUI {
public:
    virtual LPCTSTR GetItemText(CControlUI* list, int item, int subItem) = 0;

    // state: 0 normal, 1 hot, 2 selected, 3 disabled.
    virtual DWORD GetItemTextColor(CControlUI* list, int item, int subItem, int state) = 0;
};

// What a list element asks of the list, combo, tree or menu that it is in.
class IListOwnerUI {
public:
    virtual UINT GetListType() = 0; // ListType
    virtual TListInfoUI* GetListInfo() = 0;
    virtual int GetCurSel() const = 0; // -1: none
    virtual bool SelectItem(int index, bool takeFocus = false) = 0;
    virtual bool SelectMultiItem(int index, bool takeFocus = false) = 0;
    virtual bool UnSelectItem(int index, bool others = false) = 0;
    virtual void DoEvent(TEventUI& event) = 0;
};

class IListUI : public IListOwnerUI {
public:
    virtual CListHeaderUI* GetHeader() const = 0;
    virtual CContainerUI* GetList() const = 0;
    virtual IListCallbackUI* GetTextCallback() const = 0;
    virtual void SetTextCallback(IListCallbackUI* callback) = 0;
    virtual bool ExpandItem(int index, bool expand = true) = 0;
    virtual int GetExpandedItem() const = 0;
    virtual void SetMultiSelect(bool multiSelect) = 0;
    virtual bool IsMultiSelect() const = 0;
    virtual void SelectAllItems() = 0;
    virtual void UnSelectAllItems() = 0;
    virtual int GetSelectItemCount() const = 0;
    virtual int GetNextSelItem(int index) const = 0;
};

class IListItemUI {
public:
    virtual int GetIndex() const = 0;
    virtual void SetIndex(int index) = 0;
    virtual IListOwnerUI* GetOwner() = 0;
    virtual void SetOwner(CControlUI* owner) = 0;
    virtual bool IsSelected() const = 0;
    virtual bool Select(bool select = true) = 0;
    virtual bool SelectMulti(bool select = true) = 0;
    virtual bool IsExpanded() const = 0;
    virtual bool Expand(bool expand = true) = 0;
    virtual void DrawItemText(HDC dc, const RECT& item) = 0;
};

} // namespace DuiLib
