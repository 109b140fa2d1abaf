#pragma once

#include "Core/UIManager.h"

#include "Control/UIShadow.h"
#include "Core/FontTable.h"
#include "Core/UIControl.h"
#include "Core/WalkedList.h"
#include "win32/ComPointer.h"
#include "win32/GdiPlus.h"
#include "win32/Handles.h"
#include "win32/TextParse.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace DuiLib {

// The message that a manager posts to itself for delayed deletions and queued notifications.
constexpr UINT kDeferredWorkMessage = WM_APP + 1;

// The client point of a mouse message.
inline POINT PointOf(LPARAM lParam)
{
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

inline bool HasClientPoint(UINT message)
{
    return message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK;
}

// For tables by text that are searched without a copy of it.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const
    {
        return std::hash<std::wstring_view>()(text);
    }
};

template <class Value>
using TextTable = std::unordered_map<std::wstring, Value, TextHash, std::equal_to<>>;

// Pictures by name. What is replaced lives on until its name is removed, because holders keep it.
class ImageTable {
public:
    ImageTable() = default;
    ~ImageTable() { Clear(); }
    ImageTable(const ImageTable&) = delete;
    ImageTable& operator=(const ImageTable&) = delete;

    const TImageInfo* Find(std::wstring_view name) const;
    const TImageInfo* Add(std::wstring_view name, const TImageInfo* image, bool cached);
    void Remove(std::wstring_view name);
    void Clear();
    void Reload();
    void AdjustColours(bool use, short H, short S, short L);

private:
    struct Held {
        const TImageInfo* image;
        bool cached; // belongs to the process-wide cache
    };
    static void LetGo(const Held& held);

    TextTable<std::vector<Held>> m_images; // the last of a name is the one in force
};

// Named attribute lists, in the form in which they are handed out.
class StyleTable {
public:
    StyleTable() = default;
    ~StyleTable() { Clear(); }
    StyleTable(const StyleTable&) = delete;
    StyleTable& operator=(const StyleTable&) = delete;

    void Add(LPCTSTR name, LPCTSTR attributes);
    LPCTSTR Find(LPCTSTR name) const;
    bool Remove(LPCTSTR name);
    void Clear();
    const CStdStringPtrMap& All() const { return m_styles; }

private:
    CStdStringPtrMap m_styles; // owns its CDuiString values
};

struct DefaultColours {
    DWORD disabled = 0xFFA7A6AA;
    DWORD font = 0xFF000000;
    DWORD link = 0xFF0000FF;
    DWORD linkHover = 0xFFD3215F;
    DWORD selectedBack = 0xFFBAE4FF;
};

// The colours that a window has for itself.
struct OwnColours {
    std::optional<DWORD> disabled;
    std::optional<DWORD> font;
    std::optional<DWORD> link;
    std::optional<DWORD> linkHover;
    std::optional<DWORD> selectedBack;
};

// What all windows of the process share.
struct SharedState {
    static SharedState& Instance();

    // Drops what holds memory or handles; settings stay.
    void Release();

    HINSTANCE instance = nullptr;
    HINSTANCE resourceModule = nullptr;
    CDuiString resourcePath;
    CDuiString zipName;
    CDuiString zipPassword;
    bool zipCached = false;
    bool zipInMemory = false;
    int resourceType = UILIB_FILE;
    bool useHSL = false;
    short hue = 180;
    short saturation = 100;
    short lightness = 100;

    CStdPtrArray managers;
    CStdPtrArray plugins;
    std::vector<Quillet::UniqueModule> pluginModules;

    DefaultColours colours;
    std::unique_ptr<Font> defaultFont; // made at first use
    FontTable fonts;
    ImageTable images;
    StyleTable styles;
    TextTable<CDuiString> defaults;
    ULONG_PTR gdiplus = 0; // for the shared pictures
};

// A registered font file.
struct RemoveFontMemory {
    void operator()(HANDLE font) const noexcept { ::RemoveFontMemResourceEx(font); }
};
using UniqueFontFile = Quillet::UniqueHandle<HANDLE, RemoveFontMemory>;

// A pair of image string and modifier, as key and as what is looked for.
struct DrawKeyView {
    std::wstring_view image;
    std::wstring_view modify;
};
struct DrawKey {
    std::wstring image;
    std::wstring modify;
    operator DrawKeyView() const { return {image, modify}; }
};
struct DrawKeyHash {
    using is_transparent = void;
    std::size_t operator()(const DrawKeyView& key) const
    {
        const TextHash hash;
        return hash(key.image) * 31 + hash(key.modify);
    }
};
struct DrawKeyEqual {
    using is_transparent = void;
    bool operator()(const DrawKeyView& first, const DrawKeyView& second) const
    {
        return first.image == second.image && first.modify == second.modify;
    }
};

// A 32-bit picture to draw in, which only grows.
class BackBuffer {
public:
    bool Holds(SIZE size) const { return m_bitmap && size.cx <= m_width && size.cy <= m_height; }
    bool Reserve(SIZE size); // loses the picture when it grows; false without memory for it
    bool IsWhole(const RECT& rect) const
    {
        return rect.left <= 0 && rect.top <= 0 && rect.right >= m_width && rect.bottom >= m_height;
    }
    HDC Dc() const { return m_dc.get(); }
    std::uint32_t* Row(int y) const { return m_pixels + static_cast<std::size_t>(y) * m_width; }

private:
    Quillet::UniqueBitmap m_bitmap;
    Quillet::UniqueMemoryDc m_dc; // dies before its bitmap
    std::uint32_t* m_pixels = nullptr;
    int m_width = 0;
    int m_height = 0;
};

// The inside of a manager.
//
// Whoever calls a control, a filter or a notifier holds a Watch and asks it before touching
// anything of the manager or the control again.
struct CPaintManagerUI::State {
    explicit State(CPaintManagerUI& manager);
    ~State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    class Watch;

    // Outlives the manager as long as somebody watches.
    struct Life {
        State* state;
        Watch* watches = nullptr;     // innermost first
        bool cleanupDeferred = false; // a control could not be deleted because it was being called
    };

    // Knows whether the manager and a control still live.
    class Watch {
    public:
        explicit Watch(State& state, CControlUI* control = nullptr);
        ~Watch();
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

        bool ManagerLives() const { return m_life->state != nullptr; }
        CControlUI* Control() const { return m_control; }
        bool Lives() const { return ManagerLives() && m_control; }
        Watch* Next() const { return m_next; }
        void Forget(const CControlUI* control)
        {
            if (m_control == control)
                m_control = nullptr;
        }

    private:
        std::shared_ptr<Life> m_life;
        CControlUI* m_control;
        Watch* m_next;
    };

    // Life (UIManager.cpp)
    bool HasWindow() const { return window && windowLives; }
    void ReleaseWindow();
    void ReleaseAssets();
    int Scale() { return static_cast<int>(dpi.GetScale()); }

    // Events (UIManagerMessages.cpp, UIManagerMouse.cpp). The answer of Send is whether the manager
    // lives.
    TEventUI MakeEvent(int type, WPARAM wParam = 0, LPARAM lParam = 0) const;
    bool Send(CControlUI* control, TEventUI& event);
    bool Send(CControlUI* control, int type, WPARAM wParam = 0, LPARAM lParam = 0);
    bool Filter(WalkedList<IMessageFilterUI>& list, UINT message, WPARAM wParam, LPARAM lParam,
                LRESULT& result);
    bool OfferQueued(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool ActivateShortcut(WPARAM character);
    bool HandleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    bool HandleOther(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void MoveMouse(WPARAM wParam, LPARAM lParam);
    bool MoveHover(CControlUI* control);
    bool HoverMouse(LPARAM lParam);
    void PressMouse(UINT message, WPARAM wParam, LPARAM lParam);
    void ReleaseMouse(WPARAM wParam, LPARAM lParam);
    void PressOtherButton(int type, WPARAM wParam, LPARAM lParam);
    void ReleaseOtherButton(int type, WPARAM wParam, LPARAM lParam);
    void TurnWheel(WPARAM wParam, LPARAM lParam);
    void OpenContextMenu(LPARAM lParam);
    bool ShowCursor(LPARAM lParam);
    void CloseWindow();

    // Tip (UIManagerTooltip.cpp)
    void ShowTip(CControlUI& control);
    void HideTip();
    void DestroyTip();

    // Focus (UIManagerFocus.cpp)
    void MoveFocus(CControlUI* control, bool takeKeyboard);
    void GiveOwedFocus();
    bool FocusNext(bool forward, bool takeKeyboard);

    // Timers (UIManagerTimers.cpp)
    void Tick(WPARAM timer, LPARAM lParam);

    // Controls (UIManagerControls.cpp)
    void Forget(CControlUI* control);        // keeps watches and queued notifications
    void ForgetSubtree(CControlUI* control); // the same for a control and all below it
    void RegisterName(CControlUI* control);
    void ForgetName(const CControlUI* control);
    void DeleteDelayed();
    bool IsBeingCalled(const CControlUI* control) const;
    void PostDeferredWork();

    // Notifications (UIManagerNotify.cpp)
    void Deliver(TNotifyUI& notification);
    void DeliverQueued();

    // Painting (UIManagerPaint.cpp, UIManagerLayered.cpp)
    void Paint();
    int QueryUpdateRegion();
    void PaintWithoutRoot();
    bool LayOut();
    bool LayOutDirtyControls();
    void CollectDirtyRects(const RECT& client, int kind);
    void Draw(const RECT& client);
    void DrawTree(HDC dc, const RECT& dirty);
    void PrintChildren(HDC dc);
    void PrintNativeWindows(HDC dc, const RECT& dirty);
    void FinishPixels(const RECT& dirty);
    void MultiplyByImage(const RECT& client, const RECT& dirty);
    void ShowLayered();

    // Assets (UIManagerFonts.cpp, UIManagerResources.cpp). Those of a popup's main window come
    // after its own and before the shared ones.
    CPaintManagerUI* Lender() const
    {
        return lender && lender->state ? &lender->state->manager : nullptr;
    }
    TFontInfo* FindOwnFont(int id);
    TFontInfo& DefaultFont();
    TFontInfo* FindFont(int id);
    FontTable& Fonts(bool shared);
    ImageTable& Images(bool shared);
    TextTable<CDuiString>& Defaults(bool shared);
    StyleTable& Styles(bool shared);

    CPaintManagerUI& manager;
    std::shared_ptr<Life> life;
    ULONG_PTR gdiplus = 0;

    HWND window = nullptr;
    bool windowLives = false; // until WM_DESTROY
    HDC windowDc = nullptr;
    CDuiString name;
    CDPI dpi;
    CControlUI* root = nullptr; // owned
    bool rootIsOfEarlierWindow = false;

    SIZE initSize{};
    RECT sizeBox{};
    RECT caption{};
    SIZE roundCorner{};
    SIZE minInfo{};
    SIZE maxInfo{};
    bool noActivate = false;
    bool showUpdateRect = false;
    bool useVirtualWindows = false;
    bool forceShared = false;
    bool gdiplusText = false;
    int textRenderingHint = Gdiplus::TextRenderingHintSystemDefault;

    CShadowUI shadow;

    BYTE opacity = 255;
    bool opacityUsed = false;
    bool layered = false;
    RECT layeredInset{};
    BYTE layeredOpacity = 255;
    CDuiString layeredImage;
    BackBuffer layeredMask;
    SIZE layeredMaskSize{}; // empty: to be drawn again

    bool layoutNeeded = false;
    bool firstLayout = false;
    bool painting = false;
    bool drawing = false;
    BackBuffer buffer;
    Quillet::UniqueRegion updateRegion;
    std::vector<BYTE> regionData;
    std::vector<RECT> dirtyRects;
    std::vector<CControlUI*> layoutQueue; // null where a control died
    WalkedList<CControlUI> postPaint;
    std::map<HWND, CControlUI*> nativeWindows;

    // Dragging (UIManagerDrag.cpp)
    void StopDropping();
    void SetDragPoint(POINTL point);
    void TellDrag(UINT message, IDataObject* data, DWORD keys, DWORD allowed, DWORD* effect);
    bool DragPressed(WPARAM wParam);

    bool dropEnabled = false;
    bool formatsAdded = false;
    IDragDropUI* dragDropHook = nullptr;
    Quillet::ComPointer<IDataObject> draggedData; // while it is over the window
    POINT dragPoint{};
    POINT pressPoint{};
    bool dragAsked = false; // since the left button was pressed

    POINT mouse{-1, -1};
    CControlUI* hover = nullptr;
    CControlUI* pressed = nullptr;
    CControlUI* rightClicked = nullptr;
    CControlUI* keyReceiver = nullptr; // of the last key-down
    WalkedList<CControlUI> mouseLeave;
    bool tracking = false; // hover and leave messages are asked for
    bool captured = false;
    int hoverTime = 400;
    HWND tip = nullptr;
    bool tipShown = false;

    CControlUI* focus = nullptr;
    CControlUI* owedFocus = nullptr; // null: the first in tab order
    bool focusOwed = false;
    bool movingFocus = false; // the window gets the keyboard for another control

    std::map<std::pair<CControlUI*, UINT>, UINT_PTR> timers;
    std::unordered_map<UINT_PTR, std::pair<CControlUI*, UINT>> timerOwners;

    TextTable<CControlUI*> names;
    std::unordered_map<const CControlUI*, const std::wstring*> registeredNames;
    TextTable<CStdPtrArray> optionGroups;
    std::unordered_set<CControlUI*> delayed; // owned
    bool workPosted = false;
    CStdPtrArray found;

    WalkedList<INotifyUI> notifiers;
    WalkedList<IMessageFilterUI> preFilters;
    WalkedList<IMessageFilterUI> filters;
    WalkedList<ITranslateAccelerator> accelerators;
    struct Queued {
        std::uint64_t number;
        TNotifyUI notification;
    };
    std::deque<Queued> queue;
    std::uint64_t queuedCount = 0;

    // The queued message that TranslateMessage has just passed on.
    struct PassedOn {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LONG time;
    };
    std::optional<PassedOn> passedOn;

    std::shared_ptr<Life> lender; // of the main window whose assets a popup uses
    OwnColours colours;
    std::unique_ptr<Font> defaultFont;
    FontTable fonts;
    std::vector<UniqueFontFile> fontFiles;
    ImageTable images;
    StyleTable styles;
    TextTable<CDuiString> defaults;
    TextTable<CDuiString> customAttributes;
    std::unordered_map<DrawKey, std::unique_ptr<TDrawInfo>, DrawKeyHash, DrawKeyEqual> drawInfos;
};

} // namespace DuiLib
