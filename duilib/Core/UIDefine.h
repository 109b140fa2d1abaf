#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Utils/Utils.h"

// Constants of the toolkit: events, flags, notification types, private window messages, cursors,
// window styles, and the macros of the message maps.

// What a control takes part in; CControlUI::GetControlFlags.
#define UIFLAG_TABSTOP 0x00000001
#define UIFLAG_SETCURSOR 0x00000002
#define UIFLAG_WANTRETURN 0x00000004

// How CControlUI::FindControl walks.
#define UIFIND_ALL 0x00000000
#define UIFIND_VISIBLE 0x00000001
#define UIFIND_ENABLED 0x00000002
#define UIFIND_HITTEST 0x00000004
#define UIFIND_UPDATETEST 0x00000008
#define UIFIND_TOP_FIRST 0x00000010
#define UIFIND_ME_FIRST 0x80000000

// State bits of controls that look different in each state.
#define UISTATE_FOCUSED 0x00000001
#define UISTATE_SELECTED 0x00000002
#define UISTATE_DISABLED 0x00000004
#define UISTATE_HOT 0x00000008
#define UISTATE_PUSHED 0x00000010
#define UISTATE_READONLY 0x00000020
#define UISTATE_CAPTURED 0x00000040

// Cursors; the numbers of the system's own.
#define DUI_ARROW 32512
#define DUI_IBEAM 32513
#define DUI_WAIT 32514
#define DUI_CROSS 32515
#define DUI_UPARROW 32516
#define DUI_SIZE 32640
#define DUI_ICON 32641
#define DUI_SIZENWSE 32642
#define DUI_SIZENESW 32643
#define DUI_SIZEWE 32644
#define DUI_SIZENS 32645
#define DUI_SIZEALL 32646
#define DUI_NO 32648
#define DUI_HAND 32649

#define MAX_FONT_ID 30000
#define CARET_TIMERID 0x1999
#define UILIST_MAX_COLUMNS 32

// Styles for CWindowWnd::Create and CWindowWnd::GetClassStyle.
#define UI_WNDSTYLE_CONTAINER (0)
#define UI_WNDSTYLE_FRAME (WS_VISIBLE | WS_OVERLAPPEDWINDOW)
#define UI_WNDSTYLE_CHILD (WS_VISIBLE | WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN)
#define UI_WNDSTYLE_DIALOG                                                                         \
    (WS_VISIBLE | WS_POPUPWINDOW | WS_CAPTION | WS_DLGFRAME | WS_CLIPSIBLINGS | WS_CLIPCHILDREN)
#define UI_WNDSTYLE_EX_FRAME (WS_EX_WINDOWEDGE)
#define UI_WNDSTYLE_EX_DIALOG (WS_EX_TOOLWINDOW | WS_EX_DLGMODALFRAME)
#define UI_CLASSSTYLE_CONTAINER (0)
#define UI_CLASSSTYLE_FRAME (CS_VREDRAW | CS_HREDRAW)
#define UI_CLASSSTYLE_CHILD (CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_SAVEBITS)
#define UI_CLASSSTYLE_DIALOG (CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_SAVEBITS)

// Types of notifications (TNotifyUI::sType), compared exactly.
#define DUI_MSGTYPE_MENU (L"menu")
#define DUI_MSGTYPE_LINK (L"link")
#define DUI_MSGTYPE_TIMER (L"timer")
#define DUI_MSGTYPE_CLICK (L"click")
#define DUI_MSGTYPE_DBCLICK (L"dbclick")
#define DUI_MSGTYPE_RETURN (L"return")
#define DUI_MSGTYPE_SCROLL (L"scroll")
#define DUI_MSGTYPE_PREDROPDOWN (L"predropdown")
#define DUI_MSGTYPE_DROPDOWN (L"dropdown")
#define DUI_MSGTYPE_SETFOCUS (L"setfocus")
#define DUI_MSGTYPE_KILLFOCUS (L"killfocus")
#define DUI_MSGTYPE_ITEMCLICK (L"itemclick")
#define DUI_MSGTYPE_ITEMRCLICK (L"itemrclick")
#define DUI_MSGTYPE_TABSELECT (L"tabselect")
#define DUI_MSGTYPE_ITEMSELECT (L"itemselect")
#define DUI_MSGTYPE_ITEMEXPAND (L"itemexpand")
#define DUI_MSGTYPE_ITEMCOLLAPSE (L"itemcollapse")
#define DUI_MSGTYPE_WINDOWINIT (L"windowinit")
#define DUI_MSGTYPE_WINDOWSIZE (L"windowsize")
#define DUI_MSGTYPE_BUTTONDOWN (L"buttondown")
#define DUI_MSGTYPE_MOUSEENTER (L"mouseenter")
#define DUI_MSGTYPE_MOUSELEAVE (L"mouseleave")
#define DUI_MSGTYPE_TEXTCHANGED (L"textchanged")
#define DUI_MSGTYPE_HEADERCLICK (L"headerclick")
#define DUI_MSGTYPE_ITEMDBCLICK (L"itemdbclick")
#define DUI_MSGTYPE_SHOWACTIVEX (L"showactivex")
#define DUI_MSGTYPE_ITEMACTIVATE (L"itemactivate")
#define DUI_MSGTYPE_VALUECHANGED (L"valuechanged")
#define DUI_MSGTYPE_VALUECHANGED_MOVE (L"movevaluechanged")
#define DUI_MSGTYPE_SELECTCHANGED (L"selectchanged")
#define DUI_MSGTYPE_UNSELECTED (L"unselected")
#define DUI_MSGTYPE_TREEITEMDBCLICK (L"treeitemdbclick")
#define DUI_MSGTYPE_CHECKCLICK (L"checkclick")
#define DUI_MSGTYPE_TEXTROLLEND (L"textrollend")
#define DUI_MSGTYPE_COLORCHANGED (L"colorchanged")
#define DUI_MSGTYPE_LISTITEMSELECT (L"listitemselect")
#define DUI_MSGTYPE_LISTITEMCHECKED (L"listitemchecked")
#define DUI_MSGTYPE_COMBOITEMSELECT (L"comboitemselect")
#define DUI_MSGTYPE_LISTHEADERCLICK (L"listheaderclick")
#define DUI_MSGTYPE_LISTHEADITEMCHECKED (L"listheaditemchecked")
#define DUI_MSGTYPE_LISTPAGECHANGED (L"listpagechanged")
#define DUI_MSGTYPE_PAGECHANED (L"page_selected_changed")
#define DUI_MSGTYPE_VKBACK (L"vk_back")
#define DUI_MSGTYPE_ESCAPE (L"escape")

// Names of the control classes in a skin, and of their interfaces.
#define DUI_CTR_CONTROL (L"Control")
#define DUI_CTR_CONTAINER (L"Container")
#define DUI_CTR_BOX (L"Box")
#define DUI_CTR_VERTICALLAYOUT (L"VerticalLayout")
#define DUI_CTR_VBOX (L"VBox")
#define DUI_CTR_HORIZONTALLAYOUT (L"HorizontalLayout")
#define DUI_CTR_HBOX (L"HBox")
#define DUI_CTR_TABLAYOUT (L"TabLayout")
#define DUI_CTR_TAB_BOX (L"TabBox")
#define DUI_CTR_TILELAYOUT (L"TileLayout")
#define DUI_CTR_TILE_BOX (L"TileBox")
#define DUI_CTR_CHILDLAYOUT (L"ChildLayout")
#define DUI_CTR_CHILD_BOX (L"ChildBox")
#define DUI_CTR_LABEL (L"Label")
#define DUI_CTR_TEXT (L"Text")
#define DUI_CTR_BUTTON (L"Button")
#define DUI_CTR_OPTION (L"Option")
#define DUI_CTR_CHECKBOX (L"CheckBox")
#define DUI_CTR_EDIT (L"Edit")
#define DUI_CTR_RICHEDIT (L"RichEdit")
#define DUI_CTR_PROGRESS (L"Progress")
#define DUI_CTR_SLIDER (L"Slider")
#define DUI_CTR_SCROLLBAR (L"ScrollBar")
#define DUI_CTR_COMBO (L"Combo")
#define DUI_CTR_LIST (L"List")
#define DUI_CTR_LISTHEADER (L"ListHeader")
#define DUI_CTR_LISTHEADERITEM (L"ListHeaderItem")
#define DUI_CTR_LISTITEM (L"ListItem")
#define DUI_CTR_LISTELEMENT (L"ListElement")
#define DUI_CTR_LISTLABELELEMENT (L"ListLabelElement")
#define DUI_CTR_LISTTEXTELEMENT (L"ListTextElement")
#define DUI_CTR_LISTCONTAINERELEMENT (L"ListContainerElement")
#define DUI_CTR_TREEVIEW (L"TreeView")
#define DUI_CTR_TREENODE (L"TreeNode")
#define DUI_CTR_MENU (L"Menu")
#define DUI_CTR_MENUELEMENT (L"MenuElement")
#define DUI_CTR_ICONTAINER (L"IContainer")
#define DUI_CTR_ILIST (L"IList")
#define DUI_CTR_ILISTOWNER (L"IListOwner")

// Messages that the toolkit sends or posts to windows. WM_USER + 4 belongs to applications.
#define UIMSG_TRAYICON (WM_USER + 1)
// The scale of the window changed; wParam and lParam 0.
#define UIMSG_SET_DPI (WM_USER + 2)
// A menu element was chosen: wParam = MenuCmd* (the receiver deletes it), lParam = the element.
#define WM_MENUCLICK (WM_USER + 3)
// The first number for applications.
#define UIMSG_USER (WM_USER + 100)
// Dragging: wParam = TDragDropUI*, lParam = MAKELPARAM(x, y) of its point. The receiver answers
// through TDragDropUI::pdwEffect; the result of the message is not used.
#define UIMSG_DRAG (WM_USER + 1000)
#define UIMSG_DRAGENTER (WM_USER + 1002)
#define UIMSG_DRAGLEAVE (WM_USER + 1003)
#define UIMSG_DRAGOVER (WM_USER + 1004)
#define UIMSG_DRAGRELEASE (WM_USER + 1005)

namespace DuiLib {

class CControlUI;
class CNotifyPump;
class CPaintManagerUI;
typedef struct tagTNotifyUI TNotifyUI;

// TEventUI::Type.
enum EVENTTYPE_UI {
    UIEVENT__FIRST = 1,
    UIEVENT__KEYBEGIN,
    UIEVENT_KEYDOWN,
    UIEVENT_KEYUP,
    UIEVENT_CHAR,
    UIEVENT_SYSKEY,
    UIEVENT__KEYEND,
    UIEVENT__MOUSEBEGIN,
    UIEVENT_MOUSEMOVE,
    UIEVENT_MOUSELEAVE,
    UIEVENT_MOUSEENTER,
    UIEVENT_MOUSEHOVER,
    UIEVENT_BUTTONDOWN,
    UIEVENT_BUTTONUP,
    UIEVENT_RBUTTONDOWN,
    UIEVENT_RBUTTONUP,
    UIEVENT_MBUTTONDOWN,
    UIEVENT_MBUTTONUP,
    UIEVENT_DBLCLICK,
    UIEVENT_CONTEXTMENU,
    UIEVENT_SCROLLWHEEL,
    UIEVENT__MOUSEEND,
    UIEVENT_KILLFOCUS,
    UIEVENT_SETFOCUS,
    UIEVENT_WINDOWSIZE,
    UIEVENT_SETCURSOR,
    UIEVENT_TIMER,
    UIEVENT__LAST,
};

// Where an application keeps its skins; CPaintManagerUI::SetResourceType.
enum UILIB_RESTYPE {
    UILIB_FILE = 1,
    UILIB_ZIP,
    UILIB_RESOURCE,
    UILIB_ZIPRESOURCE,
};

// What kind of list owns an element; IListOwnerUI::GetListType.
enum ListType {
    LT_LIST = 0,
    LT_COMBO,
    LT_TREE,
    LT_MENU,
};

// How the bytes of a markup text are to be read.
enum {
    XMLFILE_ENCODING_UTF8 = 0,
    XMLFILE_ENCODING_UNICODE = 1,
    XMLFILE_ENCODING_ASNI = 2,
};

// How the handler of a message-map entry is called.
enum DuiSig {
    DuiSig_end = 0, // ends a table
    DuiSig_lwl,     // LRESULT (WPARAM, LPARAM)
    DuiSig_vn,      // void (TNotifyUI&)
};

typedef void (CNotifyPump::*DUI_PMSG)(TNotifyUI& notification);

struct DUI_MSGMAP_ENTRY {
    CDuiString sMsgType;
    CDuiString sCtrlName; // empty: any sender
    UINT nSig;
    DUI_PMSG pfn;
};

struct DUI_MSGMAP {
    const DUI_MSGMAP*(PASCAL* pfnGetBaseMap)(); // null in the least derived class
    const DUI_MSGMAP_ENTRY* lpEntries;
};

} // namespace DuiLib

// In a class derived from CNotifyPump: declares its message map, GetMessageMap().
#define DUI_DECLARE_MESSAGE_MAP()                                                                  \
protected:                                                                                         \
    static const DuiLib::DUI_MSGMAP* PASCAL _GetBaseMessageMap();                                  \
    static const DuiLib::DUI_MSGMAP* PASCAL _GetThisMessageMap();                                  \
    const DuiLib::DUI_MSGMAP* GetMessageMap() const override;

#define DUI_DEFINE_MESSAGE_MAP_(theClass)                                                          \
    const DuiLib::DUI_MSGMAP* theClass::GetMessageMap() const                                      \
    {                                                                                              \
        return _GetThisMessageMap();                                                               \
    }                                                                                              \
    const DuiLib::DUI_MSGMAP* PASCAL theClass::_GetThisMessageMap()                                \
    {                                                                                              \
        typedef theClass DuiThisClass_;                                                            \
        static const DuiLib::DUI_MSGMAP_ENTRY entries[] = {

// The map of a class whose base classes have none.
#define DUI_BASE_BEGIN_MESSAGE_MAP(theClass)                                                       \
    const DuiLib::DUI_MSGMAP* PASCAL theClass::_GetBaseMessageMap()                                \
    {                                                                                              \
        return nullptr;                                                                            \
    }                                                                                              \
    DUI_DEFINE_MESSAGE_MAP_(theClass)

// The map of a class; what it does not handle goes on to the map of baseClass.
#define DUI_BEGIN_MESSAGE_MAP(theClass, baseClass)                                                 \
    const DuiLib::DUI_MSGMAP* PASCAL theClass::_GetBaseMessageMap()                                \
    {                                                                                              \
        return baseClass::_GetThisMessageMap();                                                    \
    }                                                                                              \
    DUI_DEFINE_MESSAGE_MAP_(theClass)

#define DUI_END_MESSAGE_MAP()                                                                      \
    {                                                                                              \
        DuiLib::CDuiString(), DuiLib::CDuiString(), DuiLib::DuiSig_end, nullptr                    \
    }                                                                                              \
    }                                                                                              \
    ;                                                                                              \
    static const DuiLib::DUI_MSGMAP map = {&DuiThisClass_::_GetBaseMessageMap, entries};           \
    return &map;                                                                                   \
    }

// A handler may be written with or without the name of its class: OnClick or CPage::OnClick.
#define DUI_HANDLER_(memberFn)                                                                     \
    static_cast<DuiLib::DUI_PMSG>(                                                                 \
        static_cast<void (DuiThisClass_::*)(DuiLib::TNotifyUI&)>(&DuiThisClass_::memberFn))

// Any sender.
#define DUI_ON_MSGTYPE(msgtype, memberFn) {msgtype, L"", DuiLib::DuiSig_vn, DUI_HANDLER_(memberFn)},

// The sender of that name; wins over an entry without a name.
#define DUI_ON_MSGTYPE_CTRNAME(msgtype, ctrname, memberFn)                                         \
    {msgtype, ctrname, DuiLib::DuiSig_vn, DUI_HANDLER_(memberFn)},

#define DUI_ON_CLICK_CTRNAME(ctrname, memberFn)                                                    \
    DUI_ON_MSGTYPE_CTRNAME(DUI_MSGTYPE_CLICK, ctrname, memberFn)
#define DUI_ON_SELECTCHANGED_CTRNAME(ctrname, memberFn)                                            \
    DUI_ON_MSGTYPE_CTRNAME(DUI_MSGTYPE_SELECTCHANGED, ctrname, memberFn)
#define DUI_ON_KILLFOCUS_CTRNAME(ctrname, memberFn)                                                \
    DUI_ON_MSGTYPE_CTRNAME(DUI_MSGTYPE_KILLFOCUS, ctrname, memberFn)
#define DUI_ON_MENU_CTRNAME(ctrname, memberFn)                                                     \
    DUI_ON_MSGTYPE_CTRNAME(DUI_MSGTYPE_MENU, ctrname, memberFn)

// Timer notifications go to the class's own OnTimer(TNotifyUI&).
#define DUI_ON_TIMER() DUI_ON_MSGTYPE(DUI_MSGTYPE_TIMER, OnTimer)
