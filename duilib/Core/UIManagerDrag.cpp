#include "Core/DragSource.h"
#include "Core/ManagerState.h"
#include "Core/UIRender.h"

#include <cstdlib>

// Dragging controls out of the window and data into it.
namespace DuiLib {

namespace {

LPARAM PackPoint(POINT point)
{
    return MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y));
}

// What a target answers that takes nothing.
HRESULT Refuse(DWORD* effect)
{
    *effect = DROPEFFECT_NONE;
    return S_OK;
}

FORMATETC FormatOf(CLIPFORMAT id, DWORD medium)
{
    return {id, nullptr, DVASPECT_CONTENT, -1, medium};
}

} // namespace

bool CPaintManagerUI::EnableDragDrop(bool enable)
{
    auto& state = *m_pState;
    if (enable == state.dropEnabled || !state.HasWindow())
        return false;
    if (!enable) {
        state.StopDropping();
        return true;
    }
    if (!state.formatsAdded) {
        for (FORMATETC format : {FormatOf(CF_BITMAP, TYMED_GDI), FormatOf(CF_HDROP, TYMED_HGLOBAL)})
            AddSuportedFormat(format);
        state.formatsAdded = true;
    }
    SetTargetWnd(state.window);
    state.dropEnabled = SUCCEEDED(::RegisterDragDrop(state.window, this));
    return state.dropEnabled;
}

void CPaintManagerUI::SetDragDrop(IDragDropUI* hook)
{
    m_pState->dragDropHook = hook;
}

bool CPaintManagerUI::OnDrop(FORMATETC*, STGMEDIUM&, DWORD*)
{
    return true;
}

void CPaintManagerUI::State::StopDropping()
{
    if (!std::exchange(dropEnabled, false))
        return;
    ::RevokeDragDrop(window);
    manager.SetTargetWnd(nullptr);
    draggedData.reset();
}

// Tells the window, which may end itself or the manager. The effect is what the receiver leaves of
// it, within what the source allows.
void CPaintManagerUI::State::TellDrag(UINT message, IDataObject* data, DWORD keys, DWORD allowed,
                                      DWORD* effect)
{
    DWORD answer = *effect;
    TDragDropUI drag{data, keys, dragPoint, &answer, manager.FindControl(dragPoint)};
    ::SendMessageW(window, message, reinterpret_cast<WPARAM>(&drag), PackPoint(dragPoint));
    *effect = answer & allowed;
}

HRESULT CPaintManagerUI::DragEnter(IDataObject* data, DWORD keys, POINTL point, DWORD* effect)
{
    if (data == nullptr || effect == nullptr)
        return E_INVALIDARG;
    auto& state = *m_pState;
    if (!state.dropEnabled)
        return Refuse(effect);
    const DWORD allowed = *effect;
    CIDropTarget::DragEnter(data, keys, point, effect);
    state.draggedData = Quillet::ShareInterface(data);
    state.SetDragPoint(point);
    state.TellDrag(UIMSG_DRAGENTER, data, keys, allowed, effect);
    return S_OK;
}

HRESULT CPaintManagerUI::DragOver(DWORD keys, POINTL point, DWORD* effect)
{
    if (effect == nullptr)
        return E_INVALIDARG;
    auto& state = *m_pState;
    if (!state.dropEnabled)
        return Refuse(effect);
    const DWORD allowed = *effect;
    CIDropTarget::DragOver(keys, point, effect);
    state.SetDragPoint(point);
    const auto data = Quillet::ShareInterface(state.draggedData.get());
    state.TellDrag(UIMSG_DRAGOVER, data.get(), keys, allowed, effect);
    return S_OK;
}

HRESULT CPaintManagerUI::DragLeave()
{
    auto& state = *m_pState;
    CIDropTarget::DragLeave();
    state.draggedData.reset();
    if (!state.dropEnabled)
        return S_OK;
    DWORD effect = DROPEFFECT_NONE;
    state.TellDrag(UIMSG_DRAGLEAVE, nullptr, 0, DROPEFFECT_NONE, &effect);
    return S_OK;
}

// The window is told first; then what the manager supports goes to OnDrop.
HRESULT CPaintManagerUI::Drop(IDataObject* data, DWORD keys, POINTL point, DWORD* effect)
{
    if (data == nullptr || effect == nullptr)
        return E_INVALIDARG;
    auto& state = *m_pState;
    if (!state.dropEnabled)
        return Refuse(effect);
    const DWORD allowed = *effect;
    const auto kept = Quillet::ShareInterface(data);
    state.draggedData.reset();
    state.SetDragPoint(point);

    const State::Watch watch(state);
    QueryDrop(keys, effect);
    state.TellDrag(UIMSG_DRAGRELEASE, data, keys, allowed, effect);
    if (!watch.ManagerLives())
        return S_OK;
    DWORD dropped = allowed;
    CIDropTarget::Drop(data, keys, point, &dropped);
    return S_OK;
}

void CPaintManagerUI::State::SetDragPoint(POINTL point)
{
    dragPoint = {point.x, point.y};
    ::ScreenToClient(window, &dragPoint);
}

// True when a drag was begun, or forbidden, and the move is used up by it.
bool CPaintManagerUI::State::DragPressed(WPARAM wParam)
{
    if (!dropEnabled || dragAsked || !pressed || (wParam & MK_LBUTTON) == 0 ||
        !pressed->IsDragEnabled())
        return false;
    if (std::abs(mouse.x - pressPoint.x) < ::GetSystemMetrics(SM_CXDRAG) &&
        std::abs(mouse.y - pressPoint.y) < ::GetSystemMetrics(SM_CYDRAG))
        return false;
    dragAsked = true; // once for each press

    const Watch watch(*this, pressed);
    if (dragDropHook && dragDropHook->OnDragDrop(pressed))
        return true;
    if (!watch.Lives() || !HasWindow())
        return true;

    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
    const DWORD keys = static_cast<DWORD>(wParam);
    TDragDropUI drag{nullptr, keys, mouse, &effect, watch.Control()};
    ::SendMessageW(window, UIMSG_DRAG, reinterpret_cast<WPARAM>(&drag), PackPoint(mouse));
    if (!watch.Lives() || !HasWindow())
        return true;
    if (effect == DROPEFFECT_NONE)
        return false;

    auto* const control = watch.Control();
    Quillet::UniqueBitmap picture(
        CRenderEngine::GenerateBitmap(&manager, control, control->GetPos()));
    // The loop of the drag swallows the release of the button, so the control is told before:
    // outside of it, where a release activates nothing.
    manager.ReleaseCapture();
    const POINT at = std::exchange(mouse, {-1, -1});
    const bool lives = MoveHover(nullptr) &&
                       Send(std::exchange(pressed, nullptr), UIEVENT_BUTTONUP, 0, PackPoint(mouse));
    if (!lives || !HasWindow())
        return true;
    mouse = at;
    if (!picture)
        return true;
    const auto data = MakePictureData(std::move(picture));
    const auto source = MakeDropSource();
    DWORD done = DROPEFFECT_NONE;
    ::DoDragDrop(data.get(), source.get(), effect, &done);
    return true;
}

} // namespace DuiLib
