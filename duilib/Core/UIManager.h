#pragma once

#include "Core/UIExport.h"
#include "Core/UIPlatform.h"

#include "Core/UIDefine.h"
#include "Core/UIDropTarget.h"
#include "Core/UIInterfaces.h"
#include "Core/UIRecords.h"
#include "Utils/DPI.h"
#include "Utils/UIDelegate.h"
#include "Utils/Utils.h"

#include <memory>

namespace DuiLib {

class CControlUI;
class CShadowUI;

// Connects one window with a tree of controls: painting, layout, mouse and keyboard, focus, timers,
// notifications, fonts, pictures, defaults and styles.
//
// Rectangles, points and sizes of the window are device pixels unless a comment says design pixels
// (those of a screen of 96 dots per inch). Colours are ARGB, times are milliseconds. Everything
// belongs to the thread of the window; the static getters of paths and modules are plain reads.
// A handler that the manager calls may delete controls, remove itself, or destroy the window and
// the manager.
class UILIB_API CPaintManagerUI : public CIDropTarget {
public:
    CPaintManagerUI();
    ~CPaintManagerUI() override;
    CPaintManagerUI(const CPaintManagerUI&) = delete;
    CPaintManagerUI& operator=(const CPaintManagerUI&) = delete;

    // Binds to a window and drops the fonts, pictures, styles, defaults, option groups and timers
    // of an earlier life. The name serves GetPaintManager.
    void Init(HWND window, LPCTSTR name = NULL);

    // The window has to be laid out in its next paint.
    bool IsUpdateNeeded() const;
    void NeedUpdate();

    // Schedules a paint of the whole client area, or of a rectangle of it.
    void Invalidate();
    void Invalidate(RECT& rect);

    LPCTSTR GetName() const;
    HDC GetPaintDC() const; // the window's own, for measuring; kept until the end
    HWND GetPaintWindow() const;
    HWND GetTooltipWindow() const; // null before the first tip

    int GetHoverTime() const; // how long the mouse rests before a tip shows; 400 at start
    void SetHoverTime(int milliseconds);
    POINT GetMousePos() const; // in client coordinates; (-1,-1) at start
    SIZE GetClientSize() const;

    // The size that the window was given before it had a root. Setting it then sizes the window.
    SIZE GetInitSize();
    void SetInitSize(int width, int height);

    // Set in design pixels; the getters scale.
    RECT GetSizeBox();
    void SetSizeBox(RECT& box);
    RECT GetCaptionRect(); // distances from left, top and right; bottom is the height
    void SetCaptionRect(RECT& caption);
    SIZE GetRoundCorner();
    void SetRoundCorner(int width, int height);
    SIZE GetMinInfo();
    void SetMinInfo(int width, int height);
    SIZE GetMaxInfo();
    void SetMaxInfo(int width, int height);

    // Outlines what each paint has drawn, for debugging.
    bool IsShowUpdateRect();
    void SetShowUpdateRect(bool show);

    // True keeps mouse presses from focusing the window.
    bool IsNoActivate();
    void SetNoActivate(bool noActivate);

    // Makes the whole window translucent; 255 is opaque.
    BYTE GetOpacity() const;
    void SetOpacity(BYTE opacity);

    // A window with transparency of its own for every pixel; not for child windows.
    bool IsLayered();
    void SetLayered(bool layered);
    RECT& GetLayeredInset(); // moves the root in from the client edges; device pixels
    void SetLayeredInset(RECT& inset);
    CShadowUI* GetShadow(); // owned; never null

    BYTE GetLayeredOpacity();
    void SetLayeredOpacity(BYTE opacity);
    LPCTSTR GetLayeredImage(); // its alpha is the window's alpha and multiplies the colours
    void SetLayeredImage(LPCTSTR image);

    // Draws text with GDI+; the hint is one of Gdiplus::TextRenderingHint, 0 to 5.
    void SetUseGdiplusText(bool use);
    bool IsUseGdiplusText() const;
    void SetGdiplusTextRenderingHint(int hint);
    int GetGdiplusTextRenderingHint() const;

    // Settings of the process.
    static HINSTANCE GetInstance();
    static void SetInstance(HINSTANCE instance);
    static CDuiString GetInstancePath(); // folder of that module, with a trailing backslash
    static CDuiString GetCurrentPath();
    static void SetCurrentPath(LPCTSTR path);
    static HINSTANCE GetResourceDll(); // the instance when none was set
    static void SetResourceDll(HINSTANCE module);
    static const CDuiString& GetResourcePath();
    static void SetResourcePath(LPCTSTR path); // a trailing backslash is added
    static const CDuiString& GetResourceZip();
    static const CDuiString& GetResourceZipPwd();
    static bool IsCachedResourceZip();
    static HANDLE GetResourceZipHandle();
    static void SetResourceZip(LPVOID bytes, unsigned int size, LPCTSTR password = NULL); // copied
    static void SetResourceZip(LPCTSTR file, bool cached = false, LPCTSTR password = NULL);
    static void SetResourceType(int type); // UILIB_RESTYPE, for the application's information
    static int GetResourceType();

    // Hue 0 to 360, saturation and lightness 0 to 200; 180, 100, 100 change nothing.
    static bool GetHSL(short* H, short* S, short* L);
    static void SetHSL(bool use, short H, short S, short L);

    // Load the cached pictures again: of all windows and the process, of the process, of this
    // window.
    static void ReloadSkin();
    static void ReloadSharedImages();
    void ReloadImages();

    static CPaintManagerUI* GetPaintManager(LPCTSTR name);
    static CStdPtrArray* GetPaintManagers();

    // A plug-in is a module that exports `CControlUI* CreateControl(LPCTSTR)`; the list holds these
    // functions (LPCREATECONTROL).
    static bool LoadPlugin(LPCTSTR module);
    static CStdPtrArray* GetPlugins();

    // Runs until WM_QUIT.
    static void MessageLoop();

    // Offers a queued message to the managers; true means that it must not be dispatched.
    static bool TranslateMessage(const LPMSG message);

    // Releases what the process holds. Windows that still live keep what is their own.
    static void Term();

    // The reason of the latest failure in the process; empty when nothing has failed.
    static CDuiString GetLastErrorText();
    static void SetLastErrorText(LPCTSTR text);

    // Puts everything that is added from now on into the table of the process.
    bool IsForceUseSharedRes() const;
    void SetForceUseSharedRes(bool force);

    void DeletePtr(void* memory); // raw memory

    DWORD GetDefaultDisabledColor() const;
    void SetDefaultDisabledColor(DWORD color, bool shared = false);
    DWORD GetDefaultFontColor() const;
    void SetDefaultFontColor(DWORD color, bool shared = false);
    DWORD GetDefaultLinkFontColor() const;
    void SetDefaultLinkFontColor(DWORD color, bool shared = false);
    DWORD GetDefaultLinkHoverFontColor() const;
    void SetDefaultLinkHoverFontColor(DWORD color, bool shared = false);
    DWORD GetDefaultSelectedBkColor() const;
    void SetDefaultSelectedBkColor(DWORD color, bool shared = false);

    // Fonts. Sizes are in pixels at a scale of 100 percent. A handle is valid until SetDPI, an
    // AddFont of the same id, or its removal.
    TFontInfo* GetDefaultFontInfo();
    void SetDefaultFont(LPCTSTR name, int size, bool bold, bool underline, bool italic,
                        bool strikeout, bool shared = false);
    DWORD GetCustomFontCount(bool shared = false) const;
    void AddFontArray(LPCTSTR file); // makes the faces of a font file usable
    HFONT AddFont(int id, LPCTSTR name, int size, bool bold, bool underline, bool italic,
                  bool strikeout, bool shared = false);
    HFONT GetFont(int id); // the default font for an unknown id
    HFONT GetFont(LPCTSTR name, int size, bool bold, bool underline, bool italic,
                  bool strikeout);                     // null when there is none
    int GetFontIndex(HFONT font, bool shared = false); // the id, or -1
    int GetFontIndex(LPCTSTR name, int size, bool bold, bool underline, bool italic, bool strikeout,
                     bool shared = false);
    void RemoveFont(HFONT font, bool shared = false);
    void RemoveFont(int id, bool shared = false);
    void RemoveAllFonts(bool shared = false);
    TFontInfo* GetFontInfo(int id); // never null; with text metrics
    TFontInfo* GetFontInfo(HFONT font);

    // Pictures. What is handed out stays valid until RemoveImage of it, RemoveAllImages, Init or
    // the manager's end; a change of scale keeps it.
    const TImageInfo* GetImage(LPCTSTR name); // null when it is not in a table
    const TImageInfo* GetImageEx(LPCTSTR name, LPCTSTR type = NULL, DWORD mask = 0,
                                 bool useHSL = false, bool gdiplus = false,
                                 HINSTANCE instance = NULL); // loaded when it is not
    const TImageInfo* GetImageEx(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL,
                                 HINSTANCE instance, bool gdiplus);
    const TImageInfo* AddImage(LPCTSTR name, LPCTSTR type = NULL, DWORD mask = 0,
                               bool useHSL = false, bool gdiplus = false, bool shared = false,
                               HINSTANCE instance = NULL);
    const TImageInfo* AddImage(LPCTSTR name, HBITMAP bitmap, int width, int height, bool alpha,
                               bool shared = false);     // takes the bitmap
    void RemoveImage(LPCTSTR name, bool shared = false); // also the one named for the scale
    void RemoveAllImages(bool shared = false);

    // Parsed image strings: an image and a modifier over it, either may be null.
    const TDrawInfo* GetDrawInfo(LPCTSTR image, LPCTSTR modify);
    void RemoveDrawInfo(LPCTSTR image, LPCTSTR modify);
    void RemoveAllDrawInfos();
    const TImageInfo* GetImageString(LPCTSTR image, LPCTSTR modify = NULL);

    // Attribute lists for every control of an XML name, exact.
    void AddDefaultAttributeList(LPCTSTR control, LPCTSTR attributes, bool shared = false);
    LPCTSTR GetDefaultAttributeList(LPCTSTR control) const; // null when there is none
    bool RemoveDefaultAttributeList(LPCTSTR control, bool shared = false);
    void RemoveAllDefaultAttributeList(bool shared = false);

    void AddWindowCustomAttribute(LPCTSTR name, LPCTSTR value);
    LPCTSTR GetWindowCustomAttribute(LPCTSTR name) const; // null when there is none
    bool RemoveWindowCustomAttribute(LPCTSTR name);
    void RemoveAllWindowCustomAttribute();

    // Named attribute lists. The values of the maps are CDuiString*.
    void AddStyle(LPCTSTR name, LPCTSTR attributes, bool shared = false);
    LPCTSTR GetStyle(LPCTSTR name) const; // null when there is none
    BOOL RemoveStyle(LPCTSTR name, bool shared = false);
    const CStdStringPtrMap& GetStyles(bool shared = false) const;
    void RemoveAllStyle(bool shared = false);

    bool IsValid(); // has a window and a root

    // Takes the control as the root of the window; the old root is deleted later.
    bool AttachDialog(CControlUI* root);

    // Hands a subtree its manager and parent, and registers its names.
    bool InitControls(CControlUI* control, CControlUI* parent = NULL);

    // Forgets a control that dies or leaves: captures, focus, hover, timers, its name, its queued
    // notifications, its entries in the lists below.
    void ReapObjects(CControlUI* control);

    bool AddOptionGroup(LPCTSTR group, CControlUI* control);
    CStdPtrArray* GetOptionGroup(LPCTSTR group); // null when there is none
    void RemoveOptionGroup(LPCTSTR group, CControlUI* control);
    void RemoveAllOptionGroups();

    CControlUI* GetFocus() const;
    void SetFocus(CControlUI* control);       // null: nobody
    void SetFocusNeeded(CControlUI* control); // at the next paint
    bool SetNextTabControl(bool forward = true);

    // Makes the window a drop target, or ends that; needs OleInitialize. False when nothing changes
    // or the system refuses. While it is one, the window is sent UIMSG_DRAGENTER, UIMSG_DRAGOVER,
    // UIMSG_DRAGLEAVE and UIMSG_DRAGRELEASE, and a pressed control that is enabled for dragging
    // can be dragged: UIMSG_DRAG asks first. The data of such a drag is the picture of the control.
    bool EnableDragDrop(bool enable);
    // Asked before a drag starts; not owned, null for nobody.
    void SetDragDrop(IDragDropUI* hook);

    // CIDropTarget; pictures and files are supported. Does nothing and answers true.
    bool OnDrop(FORMATETC* format, STGMEDIUM& medium, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL point,
                                        DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL point, DWORD* effect) override;
    HRESULT STDMETHODCALLTYPE DragLeave() override;
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL point,
                                   DWORD* effect) override;

    // A timer for (control, id). False, and nothing changes, when it runs already.
    bool SetTimer(CControlUI* control, UINT id, UINT milliseconds);
    bool KillTimer(CControlUI* control, UINT id);
    void KillTimer(CControlUI* control);
    void RemoveAllTimers();

    void SetCapture();
    void ReleaseCapture();
    bool IsCaptured();

    bool IsPainting();
    void SetPainting(bool painting);

    // Receivers of notifications, in order of registration. A notification reaches the sender's
    // OnNotify first; an asynchronous one is delivered from the message queue.
    bool AddNotifier(INotifyUI* notifier);
    bool RemoveNotifier(INotifyUI* notifier);
    void SendNotify(TNotifyUI& notification, bool async = false);
    void SendNotify(CControlUI* control, LPCTSTR type, WPARAM wParam = 0, LPARAM lParam = 0,
                    bool async = false);

    // Filters. Adding one twice and removing an unknown one are refused.
    bool AddPreMessageFilter(IMessageFilterUI* filter);
    bool RemovePreMessageFilter(IMessageFilterUI* filter);
    bool AddMessageFilter(IMessageFilterUI* filter);
    bool RemoveMessageFilter(IMessageFilterUI* filter);

    // Controls whose DoPostPaint runs after the tree was painted, in this order.
    int GetPostPaintCount() const;
    bool IsPostPaint(CControlUI* control);
    bool AddPostPaint(CControlUI* control);
    bool RemovePostPaint(CControlUI* control);
    bool SetPostPaintIndex(CControlUI* control, int index);

    // Child windows that a layered window must print itself.
    int GetNativeWindowCount() const;
    RECT GetNativeWindowRect(HWND child);
    bool AddNativeWindow(CControlUI* control, HWND child);
    bool RemoveNativeWindow(HWND child);

    // Detaches a control now and deletes it from the message queue.
    void AddDelayedCleanup(CControlUI* control);

    // Extra receivers of the next mouse-leave event.
    void AddMouseLeaveNeeded(CControlUI* control);
    bool RemoveMouseLeaveNeeded(CControlUI* control);

    bool AddTranslateAccelerator(ITranslateAccelerator* accelerator);
    bool RemoveTranslateAccelerator(ITranslateAccelerator* accelerator);
    bool TranslateAccelerator(LPMSG message);

    CControlUI* GetRoot() const;

    // The topmost visible, mouse-enabled control under a client point; a control by name, exact.
    CControlUI* FindControl(POINT point) const;
    CControlUI* FindControl(LPCTSTR name) const;

    // Below a control, null being the root. Names in any case, classes exact ("*" is any).
    CControlUI* FindSubControlByPoint(CControlUI* parent, POINT point) const;
    CControlUI* FindSubControlByName(CControlUI* parent, LPCTSTR name) const;
    CControlUI* FindSubControlByClass(CControlUI* parent, LPCTSTR className, int index = 0);
    CStdPtrArray* FindSubControlsByClass(CControlUI* parent,
                                         LPCTSTR className); // valid until the next call

    CDPI* GetDPIObj();

    // Drops parsed image strings and rebuilds the fonts of this window, or one font, for the scale.
    void ResetDPIAssets();
    void RebuildFont(TFontInfo* font);

    // Scales the window, its fonts and its controls to a new number of dots per inch.
    void SetDPI(int dpi);
    static void SetAllDPI(int dpi);

    // For the window procedure; true: handled, with that result.
    bool MessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    // For the message loop, or for a window procedure that offers all its messages: filters, Tab,
    // shortcuts.
    bool PreMessageHandler(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    // Notifications carry the name of the sender's virtual window.
    void UsedVirtualWnd(bool used);

private:
    friend class CControlUI;
    friend struct PopupLink;

    // ReapObjects for a control that is about to end, be it the root or waiting for deletion.
    void ForgetDying(CControlUI* control);

    struct State;
    std::unique_ptr<State> m_pState;
};

} // namespace DuiLib
