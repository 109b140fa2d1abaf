#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CMenuWndOperations()
{
    return {
        FUNCTION(CMenuWnd, CMenuWnd, GetGlobalContextMenuObserver, MenuObserverImpl & ()),
        FUNCTION(CMenuWnd, CMenuWnd, CreateMenu,
                 CMenuWnd * (CMenuElementUI*, STRINGorID, POINT, CPaintManagerUI*,
                             CStdStringPtrMap*, DWORD)),
        FUNCTION(CMenuWnd, CMenuWnd, DestroyMenu, void()),
        FUNCTION(CMenuWnd, CMenuWnd, SetMenuItemInfo, MenuItemInfo * (LPCTSTR, bool)),
        OPERATION(
            CMenuWnd, CMenuWnd, Init,
            void(CMenuElementUI*, STRINGorID, POINT, CPaintManagerUI*, CStdStringPtrMap*, DWORD)),
        OPERATION(CMenuWnd, CMenuWnd, Close, void(UINT)),
        OPERATION(CMenuWnd, CMenuWnd, GetMenuUI, CMenuUI * ()),
        OPERATION(CMenuWnd, CMenuWnd, ResizeMenu, void()),
        OPERATION(CMenuWnd, CMenuWnd, ResizeSubMenu, void()),
        OPERATION(CMenuWnd, CMenuWnd, setDPI, void(int)),
        OPERATION(CMenuWnd, CMenuWnd, GetWindowClassName, LPCTSTR() const),
        OPERATION(CMenuWnd, CMenuWnd, OnFinalMessage, void(HWND)),
        OPERATION(CMenuWnd, CMenuWnd, Notify, void(TNotifyUI&)),
        OPERATION(CMenuWnd, CMenuWnd, CreateControl, CControlUI * (LPCTSTR)),
        OPERATION(CMenuWnd, CMenuWnd, HandleMessage, LRESULT(UINT, WPARAM, LPARAM)),
        OPERATION(CMenuWnd, CMenuWnd, Receive, BOOL(ContextMenuParam)),
        MEMBER(CMenuWnd, CMenuWnd, isClosing, bool),
        MEMBER(CMenuWnd, CMenuWnd, m_bCaptured, bool),
        MEMBER(CMenuWnd, CMenuWnd, m_BasedPoint, POINT),
        MEMBER(CMenuWnd, CMenuWnd, m_xml, STRINGorID),
        MEMBER(CMenuWnd, CMenuWnd, m_pm, CPaintManagerUI),
        MEMBER(CMenuWnd, CMenuWnd, m_pOwner, CMenuElementUI*),
        MEMBER(CMenuWnd, CMenuWnd, m_pLayout, CMenuUI*),
        MEMBER(CMenuWnd, CMenuWnd, m_dwAlignment, DWORD),
    };
}

std::vector<Declaration> CMenuElementUIOperations()
{
    return {
        OPERATION(CMenuElementUI, CMenuElementUI, GetMenuWnd, CMenuWnd * ()),
        OPERATION(CMenuElementUI, CMenuElementUI, CreateMenuWnd, void()),
        OPERATION(CMenuElementUI, CMenuElementUI, SetLineType, void()),
        OPERATION(CMenuElementUI, CMenuElementUI, SetLineColor, void(DWORD)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetLineColor, DWORD() const),
        OPERATION(CMenuElementUI, CMenuElementUI, SetLinePadding, void(RECT)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetLinePadding, RECT() const),
        OPERATION(CMenuElementUI, CMenuElementUI, SetIcon, void(LPCTSTR)),
        OPERATION(CMenuElementUI, CMenuElementUI, SetIconSize, void(LONG, LONG)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetIconSize, SIZE()),
        OPERATION(CMenuElementUI, CMenuElementUI, SetChecked, void(bool)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetChecked, bool() const),
        OPERATION(CMenuElementUI, CMenuElementUI, SetCheckItem, void(bool)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetCheckItem, bool() const),
        OPERATION(CMenuElementUI, CMenuElementUI, SetShowExplandIcon, void(bool)),
        OPERATION(CMenuElementUI, CMenuElementUI, GetItemInfo, MenuItemInfo * (LPCTSTR)),
        OPERATION(CMenuElementUI, CMenuElementUI, SetItemInfo, MenuItemInfo * (LPCTSTR, bool)),
        FUNCTION(CMenuElementUI, CMenuElementUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> MenuMenuReceiverImplBaseOperations()
{
    return {
        OPERATION(MenuMenuReceiverImplBase, MenuMenuReceiverImplBase, AddObserver,
                  void(MenuMenuObserverImplBase*)),
        OPERATION(MenuMenuReceiverImplBase, MenuMenuReceiverImplBase, RemoveObserver, void()),
        OPERATION(MenuMenuReceiverImplBase, MenuMenuReceiverImplBase, Receive,
                  BOOL(ContextMenuParam)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct MenuMenuReceiverImplBaseOverrides : MenuMenuReceiverImplBase {
    void AddObserver(MenuMenuObserverImplBase*) override;
    void RemoveObserver() override;
    BOOL Receive(ContextMenuParam) override;
};

std::vector<Declaration> MenuMenuObserverImplBaseOperations()
{
    return {
        OPERATION(MenuMenuObserverImplBase, MenuMenuObserverImplBase, AddReceiver,
                  void(MenuMenuReceiverImplBase*)),
        OPERATION(MenuMenuObserverImplBase, MenuMenuObserverImplBase, RemoveReceiver,
                  void(MenuMenuReceiverImplBase*)),
        OPERATION(MenuMenuObserverImplBase, MenuMenuObserverImplBase, RBroadcast,
                  BOOL(ContextMenuParam)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct MenuMenuObserverImplBaseOverrides : MenuMenuObserverImplBase {
    void AddReceiver(MenuMenuReceiverImplBase*) override;
    void RemoveReceiver(MenuMenuReceiverImplBase*) override;
    BOOL RBroadcast(ContextMenuParam) override;
};

std::vector<Declaration> MenuObserverImplOperations()
{
    return {
        OPERATION(MenuObserverImpl, MenuObserverImpl, SetManger, void(CPaintManagerUI*)),
        OPERATION(MenuObserverImpl, MenuObserverImpl, GetManager, CPaintManagerUI * () const),
        OPERATION(MenuObserverImpl, MenuObserverImpl, SetMenuCheckInfo, void(CStdStringPtrMap*)),
        OPERATION(MenuObserverImpl, MenuObserverImpl, GetMenuCheckInfo,
                  CStdStringPtrMap * () const),
    };
}

std::vector<Declaration> CMenuUIOperations()
{
    return {
        FUNCTION(CMenuUI, CMenuUI, CreateControl, CControlUI * ()),
    };
}

std::vector<Declaration> ContextMenuParamMembers()
{
    return {
        MEMBER(ContextMenuParam, ContextMenuParam, wParam, WPARAM),
        MEMBER(ContextMenuParam, ContextMenuParam, hWnd, HWND),
    };
}

std::vector<Declaration> MenuItemInfoMembers()
{
    return {
        MEMBER(MenuItemInfo, MenuItemInfo, szName, TCHAR[256]),
        MEMBER(MenuItemInfo, MenuItemInfo, bChecked, bool),
    };
}

std::vector<Declaration> MenuCmdMembers()
{
    return {
        MEMBER(MenuCmd, MenuCmd, szName, TCHAR[256]),
        MEMBER(MenuCmd, MenuCmd, szUserData, TCHAR[1024]),
        MEMBER(MenuCmd, MenuCmd, szText, TCHAR[1024]),
        MEMBER(MenuCmd, MenuCmd, bChecked, BOOL),
    };
}

// What may be left out of a call.
static_assert(requires(CMenuWnd & it, CMenuElementUI* a0, STRINGorID a1, POINT a2,
                       CPaintManagerUI* a3) { it.CreateMenu(a0, a1, a2, a3); });
static_assert(requires(CMenuWnd & it, CMenuElementUI* a0, STRINGorID a1, POINT a2,
                       CPaintManagerUI* a3,
                       CStdStringPtrMap* a4) { it.CreateMenu(a0, a1, a2, a3, a4); });
static_assert(requires(CMenuWnd & it, CMenuElementUI* a0, STRINGorID a1, POINT a2,
                       CPaintManagerUI* a3) { it.Init(a0, a1, a2, a3); });
static_assert(requires(CMenuWnd & it, CMenuElementUI* a0, STRINGorID a1, POINT a2,
                       CPaintManagerUI* a3, CStdStringPtrMap* a4) { it.Init(a0, a1, a2, a3, a4); });
static_assert(requires(CMenuWnd & it) { it.Close(); });
static_assert(requires(CMenuElementUI & it) { it.SetChecked(); });
static_assert(requires(CMenuElementUI & it) { it.SetCheckItem(); });

} // namespace

namespace interface_test {

std::vector<Declaration> Menus()
{
    return Join({CMenuWndOperations(), CMenuElementUIOperations(),
                 MenuMenuReceiverImplBaseOperations(), MenuMenuObserverImplBaseOperations(),
                 MenuObserverImplOperations(), CMenuUIOperations(), ContextMenuParamMembers(),
                 MenuItemInfoMembers(), MenuCmdMembers()});
}

} // namespace interface_test
