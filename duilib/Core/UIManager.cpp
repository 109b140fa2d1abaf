#include "Core/ManagerState.h"

#include "Core/HtmlText.h"

#include <algorithm>

namespace DuiLib {

namespace {

ULONG_PTR StartGdiplus()
{
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok ? token : 0;
}

void SetExtendedStyle(HWND window, DWORD bits, bool set)
{
    const LONG_PTR style = ::GetWindowLongPtrW(window, GWL_EXSTYLE);
    const LONG_PTR wanted = set ? style | bits : style & ~static_cast<LONG_PTR>(bits);
    if (wanted != style)
        ::SetWindowLongPtrW(window, GWL_EXSTYLE, wanted);
}

} // namespace

CPaintManagerUI::State::State(CPaintManagerUI& manager)
    : manager(manager), life(std::make_shared<Life>(Life{this})), gdiplus(StartGdiplus())
{
    auto& shared = SharedState::Instance();
    if (shared.gdiplus == 0)
        shared.gdiplus = StartGdiplus();
}

CPaintManagerUI::State::~State()
{
    ReleaseAssets();
    if (gdiplus != 0)
        Gdiplus::GdiplusShutdown(gdiplus);
}

CPaintManagerUI::State::Watch::Watch(State& state, CControlUI* control)
    : m_life(state.life), m_control(control), m_next(m_life->watches)
{
    m_life->watches = this;
}

CPaintManagerUI::State::Watch::~Watch()
{
    m_life->watches = m_next;
    if (!m_next && m_life->cleanupDeferred && m_life->state) {
        m_life->cleanupDeferred = false;
        m_life->state->PostDeferredWork();
    }
}

// Everything that depends on the window, while it can still be given back.
void CPaintManagerUI::State::ReleaseWindow()
{
    manager.RemoveAllTimers();
    StopDropping();
    DestroyTip();
    if (windowDc)
        ::ReleaseDC(window, windowDc);
    windowDc = nullptr;
    windowLives = false;
    tracking = false;
    captured = false;
    workPosted = false;
}

void CPaintManagerUI::State::ReleaseAssets()
{
    drawInfos.clear();
    defaultFont.reset();
    fonts.Clear();
    fontFiles.clear();
    images.Clear();
    styles.Clear();
    defaults.clear();
    customAttributes.clear();
    optionGroups.clear();
    layeredMaskSize = {};
}

CPaintManagerUI::CPaintManagerUI() : m_pState(std::make_unique<State>(*this))
{
    m_pState->shadow.Create(this);
}

CPaintManagerUI::~CPaintManagerUI()
{
    auto& managers = SharedState::Instance().managers;
    managers.Remove(managers.Find(this));

    // Nobody is told any more, but the controls may still call their manager.
    auto& state = *m_pState;
    state.notifiers.Clear();
    state.filters.Clear();
    state.preFilters.Clear();
    state.accelerators.Clear();
    state.queue.clear();
    state.hover = state.pressed = state.rightClicked = state.keyReceiver = nullptr;
    state.focus = state.owedFocus = nullptr;
    delete std::exchange(state.root, nullptr);
    while (!state.delayed.empty()) {
        CControlUI* const control = *state.delayed.begin();
        state.delayed.erase(state.delayed.begin());
        delete control;
    }
    state.ReleaseWindow();
    ForgetHtmlTexts(this);
    state.life->state = nullptr;
}

void CPaintManagerUI::Init(HWND window, LPCTSTR name)
{
    auto& state = *m_pState;
    state.ReleaseWindow();
    state.ReleaseAssets();
    state.rootIsOfEarlierWindow =
        state.root && (state.rootIsOfEarlierWindow || state.window != window);
    state.window = window;
    state.windowLives = window != nullptr;
    state.windowDc = window ? ::GetDC(window) : nullptr;
    state.name = name;
    state.mouse = {-1, -1};
    if (!state.delayed.empty() || !state.queue.empty())
        state.PostDeferredWork();

    auto& managers = SharedState::Instance().managers;
    if (managers.Find(this) < 0)
        managers.Add(this);
}

bool CPaintManagerUI::IsUpdateNeeded() const
{
    return m_pState->layoutNeeded;
}

void CPaintManagerUI::NeedUpdate()
{
    m_pState->layoutNeeded = true;
}

void CPaintManagerUI::Invalidate()
{
    if (m_pState->HasWindow())
        ::InvalidateRect(m_pState->window, nullptr, FALSE);
}

void CPaintManagerUI::Invalidate(RECT& rect)
{
    rect.left = std::max<LONG>(rect.left, 0);
    rect.top = std::max<LONG>(rect.top, 0);
    rect.right = std::max(rect.right, rect.left);
    rect.bottom = std::max(rect.bottom, rect.top);
    if (m_pState->HasWindow())
        ::InvalidateRect(m_pState->window, &rect, FALSE);
}

LPCTSTR CPaintManagerUI::GetName() const
{
    return m_pState->name;
}

HDC CPaintManagerUI::GetPaintDC() const
{
    return m_pState->windowDc;
}

HWND CPaintManagerUI::GetPaintWindow() const
{
    return m_pState->window;
}

HWND CPaintManagerUI::GetTooltipWindow() const
{
    return m_pState->tip;
}

int CPaintManagerUI::GetHoverTime() const
{
    return m_pState->hoverTime;
}

void CPaintManagerUI::SetHoverTime(int milliseconds)
{
    m_pState->hoverTime = milliseconds;
    m_pState->tracking = false;
}

POINT CPaintManagerUI::GetMousePos() const
{
    return m_pState->mouse;
}

SIZE CPaintManagerUI::GetClientSize() const
{
    RECT client{};
    if (m_pState->HasWindow())
        ::GetClientRect(m_pState->window, &client);
    return {client.right, client.bottom};
}

SIZE CPaintManagerUI::GetInitSize()
{
    return m_pState->initSize;
}

void CPaintManagerUI::SetInitSize(int width, int height)
{
    m_pState->initSize = {width, height};
    if (m_pState->HasWindow() && (!m_pState->root || m_pState->rootIsOfEarlierWindow)) {
        ::SetWindowPos(m_pState->window, nullptr, 0, 0, width, height,
                       SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    }
}

RECT CPaintManagerUI::GetSizeBox()
{
    const auto& box = m_pState->sizeBox;
    auto& dpi = m_pState->dpi;
    return {dpi.Scale(box.left), dpi.Scale(box.top), dpi.Scale(box.right), dpi.Scale(box.bottom)};
}

void CPaintManagerUI::SetSizeBox(RECT& box)
{
    m_pState->sizeBox = box;
}

RECT CPaintManagerUI::GetCaptionRect()
{
    const auto& area = m_pState->caption;
    auto& dpi = m_pState->dpi;
    return {dpi.Scale(area.left), dpi.Scale(area.top), dpi.Scale(area.right),
            dpi.Scale(area.bottom)};
}

void CPaintManagerUI::SetCaptionRect(RECT& caption)
{
    m_pState->caption = caption;
}

SIZE CPaintManagerUI::GetRoundCorner()
{
    return m_pState->dpi.Scale(m_pState->roundCorner);
}

void CPaintManagerUI::SetRoundCorner(int width, int height)
{
    m_pState->roundCorner = {width, height};
}

SIZE CPaintManagerUI::GetMinInfo()
{
    return m_pState->dpi.Scale(m_pState->minInfo);
}

void CPaintManagerUI::SetMinInfo(int width, int height)
{
    m_pState->minInfo = {width, height};
}

SIZE CPaintManagerUI::GetMaxInfo()
{
    return m_pState->dpi.Scale(m_pState->maxInfo);
}

void CPaintManagerUI::SetMaxInfo(int width, int height)
{
    m_pState->maxInfo = {width, height};
}

bool CPaintManagerUI::IsShowUpdateRect()
{
    return m_pState->showUpdateRect;
}

void CPaintManagerUI::SetShowUpdateRect(bool show)
{
    m_pState->showUpdateRect = show;
}

bool CPaintManagerUI::IsNoActivate()
{
    return m_pState->noActivate;
}

void CPaintManagerUI::SetNoActivate(bool noActivate)
{
    m_pState->noActivate = noActivate;
}

BYTE CPaintManagerUI::GetOpacity() const
{
    return m_pState->opacity;
}

void CPaintManagerUI::SetOpacity(BYTE opacity)
{
    auto& state = *m_pState;
    state.opacity = opacity;
    state.opacityUsed = true;
    if (!state.HasWindow())
        return;

    // A window that shows a picture of its own gets the opacity with the next picture.
    if (state.layered) {
        Invalidate();
        return;
    }
    SetExtendedStyle(state.window, WS_EX_LAYERED, true);
    ::SetLayeredWindowAttributes(state.window, 0, opacity, LWA_ALPHA);
}

bool CPaintManagerUI::IsLayered()
{
    return m_pState->layered;
}

void CPaintManagerUI::SetLayered(bool layered)
{
    auto& state = *m_pState;
    if (!state.HasWindow() || state.layered == layered ||
        (::GetWindowLongPtrW(state.window, GWL_STYLE) & WS_CHILD) != 0)
        return;
    state.layered = layered;

    // The two kinds of layered window exclude each other until the style is taken away once.
    SetExtendedStyle(state.window, WS_EX_LAYERED, false);
    if (layered)
        SetExtendedStyle(state.window, WS_EX_LAYERED, true);
    else if (state.opacityUsed)
        SetOpacity(state.opacity);
    if (state.root)
        state.root->NeedUpdate();
    Invalidate();
}

RECT& CPaintManagerUI::GetLayeredInset()
{
    return m_pState->layeredInset;
}

void CPaintManagerUI::SetLayeredInset(RECT& inset)
{
    m_pState->layeredInset = inset;
    if (m_pState->root)
        m_pState->root->NeedUpdate();
    Invalidate();
}

BYTE CPaintManagerUI::GetLayeredOpacity()
{
    return m_pState->layeredOpacity;
}

void CPaintManagerUI::SetLayeredOpacity(BYTE opacity)
{
    m_pState->layeredOpacity = opacity;
    Invalidate();
}

LPCTSTR CPaintManagerUI::GetLayeredImage()
{
    return m_pState->layeredImage;
}

void CPaintManagerUI::SetLayeredImage(LPCTSTR image)
{
    m_pState->layeredImage = image;
    m_pState->layeredMaskSize = {};
    Invalidate();
}

void CPaintManagerUI::SetUseGdiplusText(bool use)
{
    m_pState->gdiplusText = use;
}

bool CPaintManagerUI::IsUseGdiplusText() const
{
    return m_pState->gdiplusText;
}

void CPaintManagerUI::SetGdiplusTextRenderingHint(int hint)
{
    m_pState->textRenderingHint = hint;
}

int CPaintManagerUI::GetGdiplusTextRenderingHint() const
{
    return m_pState->textRenderingHint;
}

void CPaintManagerUI::DeletePtr(void* memory)
{
    ::operator delete(memory);
}

bool CPaintManagerUI::IsForceUseSharedRes() const
{
    return m_pState->forceShared;
}

void CPaintManagerUI::SetForceUseSharedRes(bool force)
{
    m_pState->forceShared = force;
}

bool CPaintManagerUI::IsPainting()
{
    return m_pState->painting;
}

void CPaintManagerUI::SetPainting(bool painting)
{
    m_pState->painting = painting;
}

void CPaintManagerUI::UsedVirtualWnd(bool used)
{
    m_pState->useVirtualWindows = used;
}

CDPI* CPaintManagerUI::GetDPIObj()
{
    return &m_pState->dpi;
}

void CPaintManagerUI::SetDPI(int dpi)
{
    auto& state = *m_pState;
    const int before = state.Scale();
    state.dpi.SetScale(static_cast<UINT>(dpi));
    const int now = state.Scale();
    ResetDPIAssets();
    if (!state.HasWindow())
        return;

    const State::Watch watch(state);
    if (now != before && before > 0 && !::IsZoomed(state.window)) {
        RECT place{};
        ::GetWindowRect(state.window, &place);
        ::SetWindowPos(state.window, nullptr, 0, 0, ::MulDiv(place.right - place.left, now, before),
                       ::MulDiv(place.bottom - place.top, now, before),
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        if (!watch.ManagerLives() || !state.HasWindow())
            return;
    }
    if (state.root)
        state.root->NeedUpdate();
    ::PostMessageW(state.window, UIMSG_SET_DPI, 0, 0);
}

bool CPaintManagerUI::IsValid()
{
    return m_pState->HasWindow() && m_pState->root;
}

} // namespace DuiLib
