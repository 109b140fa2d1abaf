#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Control/UIList.h"
#include "Core/UIBase.h"
#include "Core/UIInterfaces.h"
#include "Core/UIManager.h"
#include "Utils/Utils.h"

#include <memory>
#include <vector>

// Popup menus that are built from skins.
//
//   <Window><Menu>
//     <MenuElement name="open" text="&amp;Open"/>
//     <MenuElement text="Recent"><MenuElement name="first" text="a.txt"/></MenuElement>
//   </Menu></Window>
//
// One menu is open at a time, with its sub-menus. An element that is chosen posts WM_MENUCLICK to
// the main window: wParam = MenuCmd*, which the receiver deletes, lParam = the CMenuElementUI*,
// which lives until the handler returns. Lengths are design pixels in setters and attributes and
// device pixels in getters; points of menus are screen coordinates.

namespace DuiLib {

class CMenuElementUI;
class CMenuUI;
class CMenuWnd;

// What the windows of a menu tell each other.
struct ContextMenuParam {
    WPARAM wParam; // 1 = close all, 2 = close the sub-menus of the window
    HWND hWnd;
};

// The check state of the elements of a name.
struct MenuItemInfo {
    TCHAR szName[256];
    bool bChecked;
};

// What was chosen; texts that are too long are cut.
struct MenuCmd {
    TCHAR szName[256];
    TCHAR szUserData[1024];
    TCHAR szText[1024];
    BOOL bChecked;
};

// Which corner of a menu is at its point.
enum MenuAlignment {
    eMenuAlignment_Left = 1 << 1,
    eMenuAlignment_Top = 1 << 2,
    eMenuAlignment_Right = 1 << 3,
    eMenuAlignment_Bottom = 1 << 4,
};

// Design pixels, and a colour.
enum MenuItemDefaultInfo : unsigned {
    ITEM_DEFAULT_HEIGHT = 30,
    ITEM_DEFAULT_WIDTH = 150,
    ITEM_DEFAULT_ICON_WIDTH = 26,
    ITEM_DEFAULT_ICON_SIZE = 16,
    ITEM_DEFAULT_EXPLAND_ICON_WIDTH = 20,
    ITEM_DEFAULT_EXPLAND_ICON_SIZE = 9,
    DEFAULT_LINE_LEFT_INSET = 29,
    DEFAULT_LINE_RIGHT_INSET = 7,
    DEFAULT_LINE_HEIGHT = 6,
    DEFAULT_LINE_COLOR = 0xFFBCBFC4,
};

class MenuMenuObserverImplBase;

// Hears what is broadcast.
class UILIB_API MenuMenuReceiverImplBase {
public:
    virtual ~MenuMenuReceiverImplBase();

    virtual void AddObserver(MenuMenuObserverImplBase* observer) = 0;
    virtual void RemoveObserver() = 0;
    virtual BOOL Receive(ContextMenuParam param) = 0;
};

// Broadcasts to its receivers, which it does not own.
class UILIB_API MenuMenuObserverImplBase {
public:
    virtual ~MenuMenuObserverImplBase();

    virtual void AddReceiver(MenuMenuReceiverImplBase* receiver) = 0;
    virtual void RemoveReceiver(MenuMenuReceiverImplBase* receiver) = 0;
    virtual BOOL RBroadcast(ContextMenuParam param) = 0;
};

// The open menus in the order in which they were opened, their main window, and the check states.
class UILIB_API MenuObserverImpl : public MenuMenuObserverImplBase {
public:
    MenuObserverImpl();
    ~MenuObserverImpl() override;
    MenuObserverImpl(const MenuObserverImpl&) = delete;
    MenuObserverImpl& operator=(const MenuObserverImpl&) = delete;

    // Visits the receivers, also when they come and go meanwhile.
    class UILIB_API Iterator {
    public:
        explicit Iterator(MenuObserverImpl& observer);
        ~Iterator();
        Iterator(const Iterator&) = delete;
        Iterator& operator=(const Iterator&) = delete;

        MenuMenuReceiverImplBase* next(); // null at the end

    private:
        friend class MenuObserverImpl;
        MenuObserverImpl* m_pObserver;
        Iterator* m_pOuter;
        std::size_t m_nNext = 0;
    };

    // The manager of the main window; null when it is gone.
    void SetManger(CPaintManagerUI* manager);
    CPaintManagerUI* GetManager() const;

    // The application's map of check states, from the name of an element to its MenuItemInfo*. With
    // null the observer keeps them in a map of its own.
    void SetMenuCheckInfo(CStdStringPtrMap* checkInfo);
    CStdStringPtrMap* GetMenuCheckInfo() const;

    // MenuMenuObserverImplBase:
    void AddReceiver(MenuMenuReceiverImplBase* receiver) override;
    void RemoveReceiver(MenuMenuReceiverImplBase* receiver) override;
    BOOL RBroadcast(ContextMenuParam param) override; // FALSE when nobody was there

private:
    CPaintManagerUI* m_pManager;
    CStdStringPtrMap* m_pCheckInfo; // the application's
    std::unique_ptr<CStdStringPtrMap> m_pOwnCheckInfo;
    std::vector<MenuMenuReceiverImplBase*> m_receivers;
    Iterator* m_pIterators; // the running ones
};

// A receiver that remembers its observer and leaves it at its end.
class UILIB_API MenuReceiverImpl : public MenuMenuReceiverImplBase {
public:
    MenuReceiverImpl();
    ~MenuReceiverImpl() override;
    MenuReceiverImpl(const MenuReceiverImpl&) = delete;
    MenuReceiverImpl& operator=(const MenuReceiverImpl&) = delete;

    // MenuMenuReceiverImplBase:
    void AddObserver(MenuMenuObserverImplBase* observer) override;
    void RemoveObserver() override;
    BOOL Receive(ContextMenuParam param) override;

protected:
    MenuMenuObserverImplBase* m_pObserver;
};

// The rows of a menu. XML class "Menu". It takes nothing but menu elements.
class UILIB_API CMenuUI : public CListUI {
public:
    static CControlUI* CreateControl();

    CMenuUI();

    CMenuWnd* m_pWindow; // the window that shows it

    // CListUI:
    UINT GetListType() override;

    // CContainerUI:
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    SIZE EstimateSize(SIZE available) override; // what all rows need, with the inset

private:
    friend class CMenuWnd;

    void InheritLook(const CMenuUI& other);
};

// A row of a menu: icon or check mark, text, and an arrow when it has a sub-menu; or a line.
//
// XML class "MenuElement". Menu elements inside it are its sub-menu, other controls inside it stand
// in the row. Elements of one name share their check state, also from one opening to the next.
class UILIB_API CMenuElementUI : public CListContainerElementUI {
public:
    static CControlUI* CreateControl();

    CMenuElementUI();
    ~CMenuElementUI() override;

    CMenuWnd* GetMenuWnd(); // the open sub-menu, or null
    void CreateMenuWnd();   // opens the sub-menu beside the row

    // Makes the element a line that cannot be chosen.
    void SetLineType();
    void SetLineColor(DWORD color);
    DWORD GetLineColor() const;
    void SetLinePadding(RECT padding);
    RECT GetLinePadding() const;

    // The icon of a check item is its check mark.
    void SetIcon(LPCTSTR image);
    void SetIconSize(LONG width, LONG height);
    SIZE GetIconSize();

    void SetChecked(bool checked = true);
    bool GetChecked() const;
    void SetCheckItem(bool checkItem = false);
    bool GetCheckItem() const;

    // The arrow of an element with a sub-menu; on at first.
    void SetShowExplandIcon(bool show);

    // The check state of a name; null when there is none.
    MenuItemInfo* GetItemInfo(LPCTSTR name);
    MenuItemInfo* SetItemInfo(LPCTSTR name, bool checked);

    // CListContainerElementUI:
    void DrawItemBk(HDC dc, const RECT& item) override;
    void DrawItemText(HDC dc, const RECT& item) override;

    // CContainerUI. The elements of the sub-menu count after the controls of the row.
    CControlUI* GetItemAt(int index) const override;
    int GetItemIndex(CControlUI* control) const override;
    bool SetItemIndex(CControlUI* control, int index) override;
    int GetCount() const override;
    bool Add(CControlUI* control) override;
    bool AddAt(CControlUI* control, int index) override;
    bool Remove(CControlUI* control) override;
    bool RemoveAt(int index) override;
    void RemoveAll() override;

    // CControlUI:
    LPCTSTR GetClass() const override;
    LPVOID GetInterface(LPCTSTR name) override;
    bool Activate() override; // opens the sub-menu, or chooses the element
    void SetManager(CPaintManagerUI* manager, CControlUI* parent, bool init = true) override;
    SIZE EstimateSize(SIZE available) override;
    CControlUI* FindControl(FINDCONTROLPROC procedure, LPVOID data, UINT flags) override;
    void DoInit() override;
    void DoEvent(TEventUI& event) override;
    void SetAttribute(LPCTSTR name, LPCTSTR value) override;
    void PaintText(HDC dc) override;

private:
    friend class CMenuWnd;

    CMenuUI* OwnerMenu() const;
    CMenuWnd* OwnerWindow() const;
    bool HasSubMenu() const;
    void LetGoOf(CMenuElementUI* element);
    void CloseSubMenu();
    void Choose();
    bool PostCommand(CPaintManagerUI& main);
    void Enter();
    void Leave();
    void Rest();

    RECT TextRect(const RECT& item) const;
    void DrawIcon(HDC dc, const RECT& item);
    void DrawExpland(HDC dc, const RECT& item);
    void DrawLine(HDC dc, const RECT& item);

    std::vector<CMenuElementUI*> m_subElements; // owned
    CMenuWnd* m_pWindow;                        // the open sub-menu
    CDuiString m_sIcon;
    SIZE m_szIcon;
    bool m_bLine;
    DWORD m_dwLineColor;
    RECT m_rcLinePadding;
    bool m_bCheckItem;
    bool m_bChecked;     // where the name has no shared state
    bool m_bCheckWanted; // the skin says so, unless the name has a state already
    bool m_bShowExpland;
    bool m_bInitialised;
};

// The window of a menu or sub-menu. It deletes itself in its final message.
class UILIB_API CMenuWnd : public CWindowWnd,
                           public MenuReceiverImpl,
                           public INotifyUI,
                           public IDialogBuilderCallback {
public:
    // One per process.
    static MenuObserverImpl& GetGlobalContextMenuObserver();

    // Opens a menu. Null when the skin is missing or is no menu; the reason is in
    // CPaintManagerUI::GetLastErrorText.
    static CMenuWnd* CreateMenu(CMenuElementUI* owner, STRINGorID xml, POINT point,
                                CPaintManagerUI* manager, CStdStringPtrMap* checkInfo = NULL,
                                DWORD alignment = eMenuAlignment_Left | eMenuAlignment_Top);

    // Frees the check states and empties their map.
    static void DestroyMenu();

    // Sets the check state of a name; null for an empty name.
    static MenuItemInfo* SetMenuItemInfo(LPCTSTR name, bool checked);

    CMenuWnd();
    ~CMenuWnd() override;
    CMenuWnd(const CMenuWnd&) = delete;
    CMenuWnd& operator=(const CMenuWnd&) = delete;

    // Creates and shows the window at the point. `owner` is the element of a sub-menu, null for a
    // top menu; `manager` is that of the main window. Right and Bottom hang the menu to the other
    // side of the point; it is always kept on the monitor. When it fails, the object is gone.
    void Init(CMenuElementUI* owner, STRINGorID xml, POINT point, CPaintManagerUI* manager,
              CStdStringPtrMap* checkInfo = NULL,
              DWORD alignment = eMenuAlignment_Left | eMenuAlignment_Top);

    void Close(UINT code = IDOK); // hides the base operation: marks the menu as closing first

    CMenuUI* GetMenuUI();
    void ResizeMenu();    // measures and places the menu again
    void ResizeSubMenu(); // the same beside the owner element
    void setDPI(int dpi);

    // CWindowWnd:
    LPCTSTR GetWindowClassName() const override;
    void OnFinalMessage(HWND window) override;
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // INotifyUI:
    void Notify(TNotifyUI& notification) override;

    // IDialogBuilderCallback:
    CControlUI* CreateControl(LPCTSTR className) override;

    // MenuReceiverImpl:
    BOOL Receive(ContextMenuParam param) override;

    bool isClosing;
    bool m_bCaptured; // a mouse button is held down in the menu
    POINT m_BasedPoint;
    STRINGorID m_xml;
    CPaintManagerUI m_pm;
    CMenuElementUI* m_pOwner;
    CMenuUI* m_pLayout;
    DWORD m_dwAlignment; // MenuAlignment bits

private:
    friend class CMenuElementUI;

    CMenuUI* BuildMenu();
    CMenuUI* BorrowElements();
    void ReturnElements();
    void InheritFont(CPaintManagerUI& main);
    void Open();
    void Place(SIZE size, POINT corner, const RECT& workArea);
    SIZE Measure(const RECT& workArea);
    void FocusMoved(HWND next);

    static CMenuWnd* Innermost();
    bool PressKey(WPARAM key);
    bool PressCharacter(wchar_t character);
    void SelectFrom(int index, bool forward);
    void OpenSelected();
    CMenuElementUI* ElementAt(int index) const;
    bool IsChoosable(int index) const;
    bool KeysBelongToControl() const;

    std::shared_ptr<bool> m_pAlive;
    bool m_bDeleting;
    bool m_bShown; // losing the focus counts
};

} // namespace DuiLib
